// SPDX-License-Identifier: MIT
// Keys and values, their text form, and what holds when several processes change a hive or are killed.
#include "platform/Registry.h"

#include "OtherProcess.h"
#include "platform/ComponentRegistration.h"
#include "platform/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace vlgs::test {
namespace {

using enum RegistryStatus;

constexpr std::uint32_t fullAccess = 0x2003F;
constexpr std::uint32_t readAccess = 0x20001;
const std::string hiveFile = "HKEY_CURRENT_USER.reg";

std::string utf16(std::u16string_view text) {
    return "\xFF\xFE" + registryBytes(text);
}

RegistryData textData(std::u16string_view characters) {
    return {registryType::text, registryBytes(concat(characters, std::u16string_view(u"\0", 1)))};
}

RegistryKey root() {
    return RegistryKey(RegistryHive::CurrentUser);
}
RegistryKey create(std::u16string_view path) {
    RegistryKey key;
    EXPECT_EQ(root().create(path, fullAccess, key), Success);
    return key;
}
RegistryKey open(std::u16string_view path) {
    RegistryKey key;
    EXPECT_EQ(root().open(path, fullAccess, key), Success);
    return key;
}
RegistryData query(const RegistryKey& key, std::u16string_view name) {
    RegistryData data{99, {}};
    EXPECT_EQ(key.query(name, data), Success) << String(name).toUtf8();
    return data;
}
std::vector<String> valueNames(const RegistryKey& key) {
    std::vector<String> names;
    std::vector<RegistryValue> values;
    EXPECT_EQ(key.values(values), Success);
    names.reserve(values.size());
    for (const auto& value : values)
        names.push_back(value.name);
    return names;
}
std::vector<String> keyNames(const RegistryKey& key) {
    std::vector<String> names;
    EXPECT_EQ(key.keyNames(names), Success);
    return names;
}

class Registry : public testing::Test {
  protected:
    Registry() { use(scratch_); }
    ~Registry() override {
        letGo();
        ::unsetenv("VLGS_REGISTRY");
    }
    static void use(const Scratch& scratch) { ::setenv("VLGS_REGISTRY", scratch.host("r").c_str(), 1); }
    /// Ends the use of the hives, so that the next one reads the files anew.
    void letGo() {
        const Scratch other;
        use(other);
        RegistryKey key;
        EXPECT_EQ(root().open(u"", readAccess, key), Success);
        use(scratch_);
    }
    std::string content() const { return scratch_.read("r/" + hiveFile); }
    void setContent(const std::string& bytes) {
        std::filesystem::create_directory(scratch_.host("r"));
        scratch_.write("r/" + hiveFile, bytes);
    }

    Scratch scratch_;
};

// Another user's folder takes no new file, so a form without additions is once written over.
TEST_F(Registry, AHiveOfAnyFormIsChangedInPlaceWhereTheFolderIsClosed) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs to act as another user";
    ::chmod(scratch_.folder().c_str(), 0755);
    for (const std::string& text :
         {std::string("Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"o\"=\"1\""),
          std::string("REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"o\"=\"1\"\r\n")}) {
        setContent(text);
        ::chmod(scratch_.host("r").c_str(), 0755);
        ::chmod(scratch_.host("r/" + hiveFile).c_str(), 0666);
        EXPECT_EQ(1, elsewhere([&] {
                      const auto key = becomeNobody() ? open(u"A") : RegistryKey();
                      return key.set(u"v", textData(u"w")) == Success &&
                             key.set(u"x", textData(u"y")) == Success;
                  }));
        EXPECT_EQ(query(open(u"A"), u"o"), textData(u"1"));
        EXPECT_EQ(query(open(u"A"), u"v"), textData(u"w"));
        EXPECT_EQ(valueNames(open(u"A")).size(), 3u);
        letGo();
    }
}

TEST_F(Registry, AllNamesOfAHiveSeeTheSame) {
    create(u"A");
    std::filesystem::create_hard_link(scratch_.host("r/" + hiveFile), scratch_.host("r/other"));
    for (const auto* value : {u"v", u"w"}) {
        EXPECT_EQ(open(u"A").set(value, textData(u"x")), Success);
        letGo();
    }
    EXPECT_EQ(scratch_.read("r/other"), content());
}

TEST_F(Registry, AHiveThatAKilledProcessLeftHalfWrittenOverIsFinished) {
    const Scratch state;
    const Setting stateFolder("XDG_STATE_HOME", state.folder());
    const std::string before = "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"o\"=\"1\"\r\n";
    const auto after =
        utf16(u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\A]\r\n\"o\"=\"2\"\r\n");
    setContent(after.substr(0, 20) + before.substr(20));
    leaveRecoveryCopy(state, scratch_.host("r/" + hiveFile), before, after);
    EXPECT_EQ(query(open(u"A"), u"o"), textData(u"2"));
    EXPECT_EQ(content(), after);
}

TEST_F(Registry, KeepsEveryTypeNameAndByte) {
    const std::string bytes("\x00\x01\xFE\xFF\x0A\x0D", 6);
    const std::vector<std::pair<String, RegistryData>> values{
        {u"", textData(u"default")},
        {u"plain", textData(u"text with \"quotes\" and \\ and Größe \xD834\xDD1E")},
        {u"empty", textData(u"")},
        {u"lines", textData(u"a\r\nb\n\n[HKEY_CURRENT_USER\\x]\r\n\r\n;+\r\n\"c\"=\"d\"")},
        {u"NUL", textData(std::u16string_view(u"a\0b", 3))},
        {u"no end", {registryType::text, registryBytes(u"ab")}},
        {u"odd", {registryType::text, "abc"}},
        {u"half pair", textData(u"\xD834")},
        {u"name = \"x\" \\ ; ]\r\n\tü", textData(u"v")},
        {u"@", textData(u"not the default")},
        {u"nothing", {registryType::none, ""}},
        {u"none", {registryType::none, bytes}},
        {u"expand", {registryType::expandableText, registryBytes(std::u16string_view(u"%A%\0", 4))}},
        {u"binary", {registryType::binary, bytes}},
        {u"long", {registryType::binary, std::string(100'000, '\xA5')}},
        {u"number", {registryType::number, std::string("\x78\x56\x34\xFF", 4)}},
        {u"short number", {registryType::number, "\x01"}},
        {u"big endian", {registryType::bigEndianNumber, std::string("\x00\x00\x01\x02", 4)}},
        {u"link", {6, bytes}},
        {u"multi", {registryType::multiText, registryBytes(std::u16string_view(u"a\0b\0\0", 5))}},
        {u"resources", {8, bytes}},
        {u"64 bits", {11, "12345678"}},
        {u"unknown", {0xFFFFFFFF, bytes}},
    };
    const auto* const path = u"Key [with] name\r\n\xF05Cn\\sub";
    {
        const auto key = create(path);
        for (const auto& [name, data] : values)
            EXPECT_EQ(key.set(name, data), Success);
    }
    // From the file with its additions, and from the tidy one.
    for (int round = 0; round < 2; ++round) {
        if (round == 0)
            setContent(content() + registryBytes(u"; by another program\r\n"));
        else
            letGo();
        const auto key = open(path);
        const auto names = valueNames(key);
        ASSERT_EQ(names.size(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_EQ(names[i], values[i].first);
            EXPECT_EQ(query(key, names[i]), values[i].second) << names[i].toUtf8();
        }
    }
    EXPECT_EQ(keyNames(root()), std::vector<String>{u"Key [with] name\r\n\xF05Cn"});
}

TEST_F(Registry, WritesWhatEditorsImport) {
    const auto key = create(u"Software\\Größe");
    key.set(u"", textData(u"C:\\x \"y\""));
    key.set(u"n", {registryType::number, std::string("\x2A\0\0\0", 4)});
    key.set(u"b", {registryType::binary, std::string(26, '\xAB')});
    key.set(u"m", {registryType::multiText, registryBytes(std::u16string_view(u"a\0\0", 3))});
    key.set(u"gone", textData(u"x"));
    key.deleteValue(u"gone");
    create(u"Software\\gone");
    root().deleteKey(u"Software\\gone");
    letGo();
    EXPECT_EQ(content(), utf16(u"Windows Registry Editor Version 5.00\r\n\r\n"
                               u"[HKEY_CURRENT_USER]\r\n\r\n"
                               u"[HKEY_CURRENT_USER\\Software]\r\n\r\n"
                               u"[HKEY_CURRENT_USER\\Software\\Größe]\r\n"
                               u"@=\"C:\\\\x \\\"y\\\"\"\r\n"
                               u"\"n\"=dword:0000002a\r\n"
                               u"\"b\"=hex:ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,"
                               u"ab,\\\r\n  ab,ab,ab\r\n"
                               u"\"m\"=hex(7):61,00,00,00,00,00\r\n\r\n"));
}

TEST_F(Registry, ReadsWhatEditorsExport) {
    const std::u16string lines =
        u"\r\n\r\n[HKEY_CURRENT_USER\\Soft]\r\n"
        u"@=\"dé\"\r\n\"two\\\\\"=\"first\r\nsecond\"\r\n"
        u"\"exp\"=hex(2):EXPAND\r\n"
        u"\"d\" = DWORD:1f ; comment\r\n; comment\r\n"
        u"\"b\"=hex:1,\\\r\n  02, \\\r\n  ff\r\n\"none\"=hex(0):\r\n"
        u"\"old\"=\"x\"\r\n\"old\"=-\r\nrubbish\r\n\"open\r\n\r\n"
        u"[hkcu\\soft\\A]\r\n[HKEY_CURRENT_USER\\Soft\\B]\n[-HKEY_CURRENT_USER\\Soft\\B]\n"
        u"[HKEY_LOCAL_MACHINE\\Other]\r\n\"not\"=\"here\"\r\n[HKEY_CURRENT_USER\\Last";
    const auto form = [&](std::u16string_view heading, std::u16string_view expand) {
        std::u16string text(heading);
        text += lines;
        return text.replace(text.find(u"EXPAND"), 6, expand);
    };
    const auto unicode = form(u"Windows Registry Editor Version 5.00", u"25,00,e9,00,00,00");
    const auto ansi = form(u"REGEDIT4", u"25,e9,00");
    std::string bytes1252;
    for (char16_t character : ansi)
        bytes1252 += static_cast<char>(character);
    for (const auto& bytes : {utf16(unicode), registryBytes(unicode), String(unicode).toUtf8(),
                              "\xEF\xBB\xBF" + String(unicode).toUtf8(), bytes1252}) {
        setContent(bytes);
        for (int round = 0; round < 2; ++round) {
            const auto key = open(u"SOFT");
            EXPECT_EQ(valueNames(key), (std::vector<String>{u"", u"two\\", u"exp", u"d", u"b", u"none"}));
            EXPECT_EQ(query(key, u""), textData(u"dé"));
            EXPECT_EQ(query(key, u"TWO\\"), textData(u"first\r\nsecond"));
            EXPECT_EQ(query(key, u"exp").bytes, registryBytes(std::u16string_view(u"%é\0", 3)));
            EXPECT_EQ(query(key, u"d"), (RegistryData{4, std::string("\x1F\0\0\0", 4)}));
            EXPECT_EQ(query(key, u"b"), (RegistryData{3, "\x01\x02\xFF"}));
            EXPECT_EQ(query(key, u"none"), (RegistryData{0, ""}));
            EXPECT_EQ(keyNames(key), std::vector<String>{u"A"});
            // The change puts the file into the library's own form.
            EXPECT_EQ(open(u"Soft\\a").set(u"v", textData(u"w")), Success);
        }
        EXPECT_TRUE(content().starts_with("\xFF\xFE"));
    }
}

TEST_F(Registry, LeavesAloneWhatIsNoRegistry) {
    setContent("[HKEY_CURRENT_USER\\a]\r\n");
    RegistryKey key;
    EXPECT_EQ(root().open(u"a", readAccess, key), BadDatabase);
    EXPECT_EQ(root().create(u"b", fullAccess, key), BadDatabase);
    EXPECT_EQ(content(), "[HKEY_CURRENT_USER\\a]\r\n");
    setContent("");
    EXPECT_EQ(root().create(u"b", fullAccess, key), Success);
}

TEST_F(Registry, AnswersThePlatformsStatusCodes) {
    create(u"A\\B");
    const auto key = open(u"a");
    RegistryKey other;
    RegistryData data;
    String name;
    EXPECT_EQ(RegistryKey().open(u"A", readAccess, other), InvalidHandle);
    EXPECT_EQ(RegistryKey().set(u"v", data), InvalidHandle);
    EXPECT_EQ(root().open(u"None\\B", readAccess, other), NotFound);
    EXPECT_EQ(root().open(u"\\A", readAccess, other), BadPathName);
    EXPECT_EQ(root().open(u"A\\\\B\\", readAccess, other), Success);
    EXPECT_EQ(root().open(u"A", 0, other), AccessDenied);
    EXPECT_EQ(root().open(u"A", 0x40, other), AccessDenied);
    EXPECT_EQ(root().open(u"A", 0x80000000, other), Success);
    EXPECT_EQ(other.set(u"v", data), AccessDenied);
    EXPECT_EQ(other.create(u"new", fullAccess, other), AccessDenied);
    EXPECT_EQ(other.query(u"v", data), NotFound);
    EXPECT_EQ(key.query(u"v", data), NotFound);
    EXPECT_EQ(key.deleteValue(u"v"), NotFound);
    EXPECT_EQ(key.renameValue(u"v", u"w"), NotFound);
    EXPECT_TRUE(valueNames(key).empty());
    EXPECT_EQ(root().deleteKey(u"A"), AccessDenied);
    EXPECT_EQ(root().deleteKey(u"A\\C"), NotFound);
    EXPECT_EQ(root().deleteKey(u""), AccessDenied);
    EXPECT_EQ(key.create(String(255, u'k'), fullAccess, other), Success);
    EXPECT_EQ(key.create(String(256, u'k'), fullAccess, other), InvalidParameter);
    EXPECT_EQ(key.set(String(16383, u'v'), data), Success);
    EXPECT_EQ(key.set(String(16384, u'v'), data), InvalidParameter);
    std::u16string deep = u"D";
    for (int level = 2; level <= 512; ++level)
        deep += u"\\D";
    EXPECT_EQ(root().create(deep, fullAccess, other), Success);
    EXPECT_EQ(other.create(u"D", fullAccess, other), InvalidParameter);
    const auto dead = open(u"A\\B");
    EXPECT_EQ(key.deleteKey(u"b"), Success);
    EXPECT_EQ(dead.query(u"v", data), KeyDeleted);
    EXPECT_EQ(dead.set(u"v", data), KeyDeleted);
}

TEST_F(Registry, WriteProtectionIsDeniedAccess) {
    create(u"A");
    ::chmod(scratch_.host("r/" + hiveFile).c_str(), 0444);
    RegistryKey key;
    EXPECT_EQ(root().open(u"A", readAccess, key), Success);
    EXPECT_EQ(root().open(u"A", fullAccess, key), AccessDenied);
}

TEST_F(Registry, NamesAreFoundInAnyCaseAndKeptAsWritten) {
    const auto key = create(u"Köln\\Straße");
    EXPECT_EQ(create(u"KÖLN\\STRAßE").set(u"Äpfel", textData(u"1")), Success);
    EXPECT_EQ(key.set(u"äPFEL", textData(u"2")), Success);
    EXPECT_EQ(key.renameValue(u"äpfel", u"äpfel"), Success);
    EXPECT_EQ(valueNames(key), std::vector<String>{u"äpfel"});
    key.set(u"other", textData(u"3"));
    EXPECT_EQ(key.renameValue(u"ÄPFEL", u"Other"), Success);
    letGo();
    EXPECT_EQ(keyNames(root()), std::vector<String>{u"Köln"});
    EXPECT_EQ(valueNames(key), std::vector<String>{u"Other"});
    EXPECT_EQ(query(key, u"other"), textData(u"2"));
}

TEST_F(Registry, SeesWhatOtherProgramsDoToTheFile) {
    create(u"A");
    const auto before = content();
    EXPECT_EQ(1, elsewhere([] { return create(u"B").set(u"v", textData(u"w")) == Success; }));
    EXPECT_EQ(query(open(u"B"), u"v"), textData(u"w"));
    auto edited = content();
    edited.replace(edited.rfind('w'), 1, "x");
    setContent(edited);
    EXPECT_EQ(query(open(u"B"), u"v"), textData(u"x"));
    setContent(before);
    EXPECT_EQ(keyNames(root()), std::vector<String>{u"A"});
    std::filesystem::remove(scratch_.host("r/" + hiveFile));
    EXPECT_TRUE(keyNames(root()).empty());
}

TEST_F(Registry, IsTidiedAtTheEndOfAThreadThatWroteElsewhereToo) {
    std::thread([&] {
        EXPECT_EQ(create(u"A").set(u"v", textData(u"w")), Success);
        replaceFile(scratch_.path("other"), "text");
    }).join();
    EXPECT_EQ(query(open(u"A"), u"v"), textData(u"w"));
}

TEST_F(Registry, AnAdditionCountsOnceItIsWhole) {
    const auto key = create(u"A");
    key.set(u"v", textData(u"old"));
    const auto before = content().size();
    key.renameValue(u"v", u"w");
    const auto whole = content();
    const auto ending = whole.substr(before);
    for (auto size = before; size <= whole.size(); size += 5) {
        for (const bool halted : {false, true}) {
            // A halted machine leaves zeros, a killed process nothing.
            setContent(whole.substr(0, size) + std::string(halted ? whole.size() - size : 0, '\0'));
            const std::vector<String> expected{content() == whole ? u"w" : u"v"};
            ASSERT_EQ(valueNames(key), expected) << size - before;
            ASSERT_EQ(key.set(u"next", textData(u"n")), Success);
            letGo();
            ASSERT_EQ(valueNames(key).size(), 2u) << size - before;
            ASSERT_EQ(query(key, expected[0]), textData(u"old"));
        }
    }
}

TEST_F(Registry, ProcessesThatAddAtOnceLoseNothing) {
    constexpr int processes = 4;
    constexpr int each = 400;
    std::vector<pid_t> children;
    children.reserve(processes);
    for (int process = 0; process < processes; ++process)
        children.push_back(start([process] {
            const auto key = create(u"Shared");
            for (int i = 0; i < each; ++i) {
                const auto name = String::fromUtf8(std::to_string(process) + "." + std::to_string(i));
                if (key.set(name, {registryType::binary, std::string(100, 'x')}) != Success)
                    return 1;
            }
            return valueNames(key).size() >= each ? 0 : 2;
        }));
    for (const auto child : children)
        EXPECT_EQ(finish(child), 0);
    EXPECT_EQ(valueNames(open(u"Shared")).size(), std::size_t{processes} * each);
}

/// What a killed writer has reported as done.
struct Progress {
    volatile int number;
};

int writeUntilKilled(Progress& progress) {
    const auto key = open(u"K");
    for (int i = progress.number + 1;; ++i) {
        const auto size = static_cast<std::size_t>(i) % 7 * 5000;
        if (key.set(u"blob", {registryType::binary, std::string(size, static_cast<char>(i))}) != Success ||
            key.renameValue(i % 2 ? u"even" : u"odd", i % 2 ? u"odd" : u"even") != Success ||
            key.set(u"number", textData(String::fromUtf8(std::to_string(i)))) != Success)
            return 1;
        progress.number = i;
    }
}

TEST_F(Registry, NobodyWhoMayOnlyReadKeepsOthersFromTheHive) {
    create(u"Key");
    const auto path = scratch_.host("r/" + hiveFile);
    const int reader = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(reader, LOCK_EX), 0);
    EXPECT_EQ(open(u"Key").set(u"v", textData(u"x")), Success);
    letGo();
    EXPECT_EQ(query(open(u"Key"), u"v"), textData(u"x"));
    ::close(reader);
}

TEST_F(Registry, AWriterWhoDoesNotGoOnMakesTheOthersBusyAndOneWhoDoesIsWaitedFor) {
    const auto add = [](RegistryHive hive, std::u16string_view name) {
        RegistryKey key;
        const auto status = RegistryKey(hive).create(u"Key", fullAccess, key);
        return static_cast<int>(status == Success ? key.set(name, textData(u"x")) : status);
    };
    const auto lock = [&](const std::string& file) {
        const auto path = scratch_.host("r/" + file + ".lock");
        struct stat status {};
        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600u);
        const int writer = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_EQ(::flock(writer, LOCK_EX), 0);
        return writer;
    };
    ASSERT_EQ(add(RegistryHive::CurrentUser, u"a"), 0);
    ASSERT_EQ(add(RegistryHive::LocalMachine, u"a"), 0);
    const int stuck = lock(hiveFile);
    const int atWork = lock("HKEY_LOCAL_MACHINE.reg");
    const auto refused = start([&] { return add(RegistryHive::CurrentUser, u"b"); });
    const auto patient = start([&] { return add(RegistryHive::LocalMachine, u"b"); });
    // One wait lasts five seconds, and begins again when the hive has changed meanwhile.
    for (int i = 0; i < 60; ++i) {
        std::filesystem::last_write_time(scratch_.host("r/HKEY_LOCAL_MACHINE.reg"),
                                         std::filesystem::file_time_type::clock::now());
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    ::flock(atWork, LOCK_UN);
    EXPECT_EQ(finish(refused), 170);
    EXPECT_EQ(finish(patient), 0);
    ::flock(stuck, LOCK_UN);
    EXPECT_EQ(valueNames(open(u"Key")), std::vector<String>{u"a"});
    EXPECT_EQ(add(RegistryHive::CurrentUser, u"b"), 0);
    for (const int file : {stuck, atWork})
        ::close(file);
}

TEST_F(Registry, AKilledWriterTearsAndLosesNothing) {
    void* const shared =
        ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(shared, MAP_FAILED);
    auto& progress = *static_cast<Progress*>(shared);
    progress.number = 0;
    create(u"K").set(u"even", textData(u"kept"));
    std::mt19937 random(1);
    for (int round = 0; round < 300; ++round) {
        killAtWork(std::chrono::microseconds(random() % 4000), [&] { return writeUntilKilled(progress); });
        const auto key = open(u"K");
        RegistryData number;
        RegistryData blob;
        const bool begun = key.query(u"number", number) == Success;
        const int stored = begun ? std::stoi(registryText(number.bytes).toUtf8()) : 0;
        ASSERT_TRUE(stored == progress.number || stored == progress.number + 1) << round;
        const int later = stored + 1;
        if (begun) {
            ASSERT_EQ(key.query(u"blob", blob), Success);
            const auto is = [&](int i) {
                return blob.bytes ==
                       std::string(static_cast<std::size_t>(i) % 7 * 5000, static_cast<char>(i));
            };
            ASSERT_TRUE(is(stored) || is(later)) << round << ": torn";
        }
        RegistryData odd;
        RegistryData even;
        const bool hasOdd = key.query(u"odd", odd) == Success;
        const bool hasEven = key.query(u"even", even) == Success;
        ASSERT_NE(hasOdd, hasEven) << round;
        ASSERT_EQ(hasOdd ? odd : even, textData(u"kept"));
        // The next writer begins where this one was killed.
        if (hasOdd != (stored % 2 == 1)) {
            ASSERT_EQ(key.renameValue(hasOdd ? u"odd" : u"even", hasOdd ? u"even" : u"odd"), Success);
        }
        progress.number = stored;
    }
    EXPECT_GT(progress.number, 0);
    EXPECT_LE(std::filesystem::file_size(scratch_.host("r/" + hiveFile)), 1'000'000u);
    ::munmap(shared, sizeof(Progress));
}

TEST_F(Registry, ReadingLeavesTheFileUntouched) {
    const auto key = create(u"A");
    key.set(u"v", textData(u"x"));
    const auto before = content();
    EXPECT_EQ(key.set(u"v", textData(u"x")), Success);
    EXPECT_EQ(create(u"A").set(u"V", textData(u"x")), Success);
    EXPECT_EQ(root().deleteKey(u"none"), NotFound);
    EXPECT_EQ(content(), before);
    const RegistryKey machine(RegistryHive::LocalMachine);
    EXPECT_EQ(machine.deleteValue(u"v"), NotFound);
    EXPECT_FALSE(std::filesystem::exists(scratch_.host("r/HKEY_LOCAL_MACHINE.reg")));
}

TEST_F(Registry, ComponentsAreRegisteredUnderTheClassesRoot) {
    constexpr const char16_t* id = u"{6D0C33A1-5B0B-4B52-9E0B-2C1F0C5A7EAF}";
    const auto set = [](std::u16string_view path, std::u16string_view value) {
        RegistryKey key;
        EXPECT_EQ(RegistryKey(RegistryHive::ClassesRoot).create(path, fullAccess, key), Success);
        EXPECT_EQ(key.set(u"", textData(value)), Success);
    };
    EXPECT_FALSE(registeredClassId(u"Some.Class.1"));
    set(u"Some.Class.1\\CLSID", id);
    set(u"Some.Class\\CurVer", u"Some.Class.1");
    EXPECT_EQ(registeredClassId(u"some.class.1"), parseGuid(id));
    EXPECT_EQ(registeredClassId(u"Some.Class"), parseGuid(id));
    EXPECT_FALSE(registeredClassId(u"Some.Class.1\\CLSID\\.."));
    EXPECT_FALSE(registeredProgId(*parseGuid(id)));
    set(concat(u"CLSID\\", id, u"\\VersionIndependentProgID"), u"Some.Class");
    EXPECT_EQ(registeredProgId(*parseGuid(id)), String(u"Some.Class"));
    set(concat(u"CLSID\\", id, u"\\ProgID"), u"Some.Class.1");
    EXPECT_EQ(registeredProgId(*parseGuid(id)), String(u"Some.Class.1"));
    set(u"Bad.Class\\CLSID", u"no identifier");
    EXPECT_FALSE(registeredClassId(u"Bad.Class"));
}

} // namespace
} // namespace vlgs::test
