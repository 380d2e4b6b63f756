// SPDX-License-Identifier: MIT
#include "platform/Volumes.h"

#include "Scratch.h"
#include "platform/Files.h"

#include <optional>
#include <random>

namespace vlgs::test {
namespace {

struct Case {
    const char16_t* path;
    const char16_t* full;
};

TEST(FullPath, IsMadeAsThePlatformMakesIt) {
    const Case cases[] = {
        {u"", u""},
        {u"   ", u""},
        {u"x", u"C:\\base\\dir\\x"},
        {u".", u"C:\\base\\dir"},
        {u"..", u"C:\\base"},
        {u"..\\", u"C:\\base\\"},
        {u"..\\..\\..\\x", u"C:\\x"},
        {u".\\a\\.\\b\\..\\c", u"C:\\base\\dir\\a\\c"},
        {u"a/b//c\\\\d", u"C:\\base\\dir\\a\\b\\c\\d"},
        {u"a\\", u"C:\\base\\dir\\a\\"},
        {u"a. . ", u"C:\\base\\dir\\a"},
        {u"a.\\b.", u"C:\\base\\dir\\a\\b"},
        {u"a..\\b", u"C:\\base\\dir\\a..\\b"},
        {u"a\\...", u"C:\\base\\dir\\a\\"},
        {u"  a", u"C:\\base\\dir\\  a"},
        {u"\\x", u"C:\\x"},
        {u"/x/../y", u"C:\\y"},
        {u"C:", u"C:\\base\\dir"},
        {u"c:x", u"c:\\base\\dir\\x"},
        {u"C:..\\x", u"C:\\base\\x"},
        {u"D:x", u"D:\\x"},
        {u"D:", u"D:\\"},
        {u"D:\\a\\..\\..", u"D:\\"},
        {u"C:/a/./b", u"C:\\a\\b"},
        {u"\\\\srv\\share\\a\\..\\..\\b", u"\\\\srv\\share\\b"},
        {u"\\\\srv\\share", u"\\\\srv\\share"},
        {u"\\\\srv\\share\\", u"\\\\srv\\share\\"},
        {u"//srv/share/a", u"\\\\srv\\share\\a"},
        {u"\\\\", u"\\\\"},
        {u"\\\\srv", u"\\\\srv"},
    };
    for (const auto& [path, full] : cases)
        EXPECT_EQ(fullPath(path, u"C:\\base\\dir").toUtf8(), String(full).toUtf8());
    EXPECT_EQ(fullPath(u"\\x", u"\\\\srv\\share\\dir").toUtf8(), "\\\\srv\\share\\x");
    EXPECT_EQ(fullPath(u"..\\x\\", u"\\\\srv\\share").toUtf8(), "\\\\srv\\share\\x\\");
    EXPECT_EQ(fullPath(std::u16string_view(u"a\0b", 3)), u"");
}

TEST(FullPath, OfAFullPathIsThatPathWhateverItHolds) {
    constexpr std::u16string_view characters = u"\\\\/..: aC?\xD800\xDC5C\xDCFFé";
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        std::u16string path;
        for (auto length = random() % 12; length > 0; --length)
            path += characters[random() % characters.size()];
        const auto full = fullPath(path, u"C:\\no such folder\\x");
        EXPECT_EQ(fullPath(full), full) << String(path).toUtf8();
        pathExists(full);
    }
}

TEST(FullPath, IsLinearInTheNumberOfParts) {
    std::u16string path = u"C:";
    for (int i = 0; i < 200000; ++i)
        path += u"\\a\\..\\bc";
    EXPECT_EQ(fullPath(path).length(), 2u + 200000u * 3);
}

TEST(Volumes, AreThoseOfTheTable) {
    const Scratch scratch;
    scratch.write("data.txt", "x");
    const Setting table("VLGS_VOLUMES", "C:=/;m:=" + scratch.folder() + "/|\\\\srv\\data;D:=/no/such/folder");
    EXPECT_EQ(driveType(u"C:\\"), DriveType::Fixed);
    EXPECT_EQ(driveType(u"M:\\"), DriveType::Remote);
    EXPECT_EQ(driveType(u"\\\\SRV\\data\\"), DriveType::Remote);
    for (const auto* root : {u"Q:\\", u"D:\\", u"\\\\srv\\other\\", u"", u"C", u"C:\\x"})
        EXPECT_EQ(driveType(root), DriveType::NoRootFolder) << String(root).toUtf8();
    EXPECT_EQ(mappedShare(u"m:"), u"\\\\srv\\data");
    EXPECT_EQ(mappedShare(u"C:"), u"");

    EXPECT_TRUE(fileExists(u"M:\\data.txt"));
    EXPECT_TRUE(fileExists(u"\\\\Srv\\DATA\\Data.TXT"));
    EXPECT_TRUE(fileExists(scratch.path("data.txt")));
    EXPECT_EQ(scratch.path("data.txt"), u"M:\\data.txt");
    EXPECT_TRUE(folderExists(u"\\\\srv\\data"));
    EXPECT_FALSE(pathExists(u"\\\\srv\\other\\data.txt"));
    EXPECT_EQ(errorOf([] { fileLength(u"Q:\\x"); }), 76);
}

TEST(Volumes, AFileOutsideTheTableHasANameToo) {
    const Scratch scratch;
    scratch.write("x", "1");
    const Setting table("VLGS_VOLUMES", "M:=/no/such");
    const auto path = scratch.path("x");
    EXPECT_TRUE(path.view().starts_with(u"\\\\?\\unix\\"));
    EXPECT_EQ(readFile(path), "1");
    EXPECT_EQ(fullPath(u"..\\x", concat(fullPath(String::fromUtf8(scratch.folder())), u"\\sub")), path);
}

TEST(Volumes, AMalformedTableIsToldOf) {
    for (const auto* table : {"C", "C:", "C=/", "1:=/", "C:=x", "C:=/;c:=/tmp", "C:=/|srv", "C:=/|\\\\srv",
                              "C:=/|\\\\srv\\a\\b", "C:=/|\\\\\\a"}) {
        const Setting setting("VLGS_VOLUMES", table);
        EXPECT_EQ(errorOf([] { driveType(u"C:\\"); }), 5) << table;
    }
}

TEST(Names, AreFoundAsSpelledFirstAndThenWithoutRegardToCase) {
    const Scratch scratch;
    std::filesystem::create_directories(scratch.host("Ordner/Größe"));
    scratch.write("Ordner/Größe/Über.INI", "1");
    EXPECT_EQ(readFile(scratch.path("ordner/GRÖßE/üBER.ini")), "1");
    scratch.write("a.txt", "lower");
    scratch.write("A.TXT", "upper");
    EXPECT_EQ(readFile(scratch.path("a.txt")), "lower");
    EXPECT_EQ(readFile(scratch.path("A.txt")), "upper");
    EXPECT_EQ(errorOf([&] { readFile(scratch.path("b.txt")); }), 53);
    EXPECT_EQ(errorOf([&] { readFile(scratch.path("no\\b.txt")); }), 76);
    EXPECT_EQ(errorOf([&] { readFile(scratch.path("a.txt\\b.txt")); }), 76);
    EXPECT_FALSE(pathExists(scratch.path("*.txt")));
}

TEST(Names, OfEveryHostFileLeadBackToIt) {
    const Scratch scratch;
    const std::string names[] = {"\xFFraw\xC3", "back\\slash", "\xED\xA0\x80", "\xF0\x9F\x98\x80\xBF",
                                 "ordinary"};
    for (const auto& name : names)
        scratch.write(name, name);
    const auto folder = fullPath(String::fromUtf8(scratch.folder()));
    const auto entries = listFolder(folder);
    EXPECT_EQ(entries.size(), std::size(names));
    for (const auto& entry : entries) {
        EXPECT_EQ(entry.name.view().find(u'\\'), std::u16string_view::npos);
        const auto content = readFile(concat(folder, u"\\", entry.name));
        EXPECT_EQ(scratch.read(content), content);
    }
    EXPECT_EQ(errorOf([&] { readFile(concat(folder, u"\\", String(1, char16_t(0xD800)))); }), 52);
}

TEST(CurrentFolder, IsTheProcesssOwnUnderTheNameItWasGiven) {
    const Scratch scratch;
    std::filesystem::create_directory(scratch.host("Sub"));
    const auto before = currentFolder();
    std::optional<Setting> table(std::in_place, "VLGS_VOLUMES", "C:=/;M:=" + scratch.folder());
    EXPECT_TRUE(setCurrentFolder(u"M:\\"));
    EXPECT_EQ(currentFolder(), u"M:\\");
    EXPECT_TRUE(setCurrentFolder(u"SUB\\"));
    EXPECT_EQ(currentFolder(), u"M:\\SUB");
    EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(scratch.host("Sub")));
    EXPECT_EQ(fullPath(u"..\\x"), u"M:\\x");
    EXPECT_EQ(fullPath(u"C:x"), u"C:\\x");
    EXPECT_EQ(fullPath(u"/tmp/x"), u"C:\\tmp\\x");
    EXPECT_FALSE(setCurrentFolder(u"M:\\none"));
    EXPECT_EQ(currentFolder(), u"M:\\SUB");
    std::filesystem::current_path(scratch.folder());
    EXPECT_EQ(currentFolder(), u"M:\\");
    EXPECT_TRUE(setCurrentFolder(u"M:\\Sub"));
    table.reset();
    EXPECT_EQ(currentFolder(), scratch.path("Sub"));
    EXPECT_TRUE(setCurrentFolder(before));
}

TEST(TemporaryFolder, IsTheHostsOwn) {
    const Setting setting("TMPDIR", "/var/../tmp/");
    EXPECT_EQ(temporaryFolder(), u"C:\\tmp\\");
}

TEST(Volumes, NamesThatEndInDotsOrBlanksAreFoundWhereTheHostHasThem) {
    const Scratch scratch;
    std::filesystem::create_directory(scratch.host("Acme Inc."));
    scratch.write("Acme Inc./demo. ", "x");
    const String folder = fullPath(String::fromUtf8(scratch.folder()));
    for (const auto& path :
         {concat(folder, u"\\Acme Inc.\\demo. "), concat(folder, u"\\ACME inc.\\.\\DEMO. "),
          String::fromUtf8(scratch.folder() + "/Acme Inc./demo. ")}) {
        EXPECT_TRUE(fileExists(path)) << path.toUtf8();
        EXPECT_TRUE(fullPath(path).view().ends_with(u". ")) << path.toUtf8();
        EXPECT_EQ(readFile(fullPath(path)), "x");
    }
    const auto before = currentFolder();
    ASSERT_TRUE(setCurrentFolder(concat(folder, u"\\Acme Inc.")));
    EXPECT_EQ(currentFolder(), concat(folder, u"\\Acme Inc."));
    EXPECT_TRUE(fileExists(u"demo. "));
    EXPECT_FALSE(fileExists(u"demo"));
    EXPECT_TRUE(setCurrentFolder(before));
    EXPECT_EQ(fullPath(concat(folder, u"\\Beta Inc.\\x. ")), concat(folder, u"\\Beta Inc\\x"));
}

TEST(Volumes, TheHostsOwnPathsGetTheirLibraryForm) {
    EXPECT_EQ(libraryPath(u"/tmp/a.ini"), u"C:\\tmp\\a.ini");
    for (const auto* path : {u"a/b.ini", u"//srv/share/x", u"C:/x", u"", u"a.ini"})
        EXPECT_EQ(libraryPath(path), path);
}

} // namespace
} // namespace vlgs::test
