// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "Scratch.h"
#include "platform/Environment.h"
#include "platform/Module.h"

#include <cstdlib>
#include <set>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>

namespace vlgs::test {
namespace {

using enum FileAttributes;

mode_t modeOf(const std::string& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

bool keepsAttributes(const Scratch& scratch) {
    scratch.write("probe", "");
    return ::setxattr(scratch.host("probe").c_str(), "user.DOSATTRIB", "0x2", 3, 0) == 0;
}

std::string kept(const Scratch& scratch, const std::string& name) {
    char value[64];
    const auto size = ::getxattr(scratch.host(name).c_str(), "user.DOSATTRIB", value, sizeof value);
    return size < 0 ? "none" : std::string(value, static_cast<std::size_t>(size));
}

TEST(Attributes, ReadOnlyIsAFileThatNobodyMayWrite) {
    const Scratch scratch;
    scratch.write("f", "x");
    EXPECT_FALSE(has(attributes(scratch.path("f")), ReadOnly));
    setAttributes(scratch.path("f"), ReadOnly);
    EXPECT_EQ(modeOf(scratch.host("f")) & 0222, 0u);
    EXPECT_TRUE(has(attributes(scratch.path("f")), ReadOnly));
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("f"), "y"); }), 70);
    EXPECT_EQ(errorOf([&] { deleteFile(scratch.path("f")); }), 70);
    setAttributes(scratch.path("f"), Normal);
    EXPECT_EQ(modeOf(scratch.host("f")) & 0222, 0200u);
    EXPECT_EQ(attributes(scratch.path("")), Directory);
    EXPECT_EQ(errorOf([&] { attributes(scratch.path("none")); }), 53);
}

TEST(Attributes, AreKeptWhereSambaAndWineKeepThem) {
    const Scratch scratch;
    if (!keepsAttributes(scratch))
        GTEST_SKIP() << "the file system keeps no extended attributes";
    scratch.write("f", "x");
    const auto path = scratch.path("f");
    setAttributes(path, Hidden | System | Archive);
    EXPECT_EQ(kept(scratch, "f"), "0x26");
    setAttributes(path, Hidden | ReadOnly);
    EXPECT_EQ(attributes(path), Hidden | ReadOnly);
    setAttributes(path, Normal);
    EXPECT_EQ(kept(scratch, "f"), "none");
    EXPECT_EQ(attributes(path), Normal);

    scratch.write(".dotted", "x");
    EXPECT_EQ(attributes(scratch.path(".dotted")), Normal);

    // A record as Samba writes it, version 5 with the attributes and a creation time.
    std::string record("\0\0\5\0\5\0\0\0\x11\0\0\0\x22\0\0\0\x9d\x5c\x2b\x3c\xb3\xa9\xd4\1", 24);
    ::setxattr(scratch.host("f").c_str(), "user.DOSATTRIB", record.data(), record.size(), 0);
    EXPECT_EQ(attributes(path), Hidden | Archive);
    setAttributes(path, System);
    record[12] = 4;
    EXPECT_EQ(kept(scratch, "f"), record);

    // Anything else that stands there is no attribute, and no reason to fail.
    for (const std::string other : {"", "0x", "junk", "\0\0\3\0", "0xFFFFFFFFFFFF"}) {
        ::setxattr(scratch.host("f").c_str(), "user.DOSATTRIB", other.data(), other.size(), 0);
        EXPECT_EQ(attributes(path), Normal) << other;
    }
}

TEST(Attributes, DecideWhatAListingShows) {
    const Scratch scratch;
    if (!keepsAttributes(scratch))
        GTEST_SKIP() << "the file system keeps no extended attributes";
    std::filesystem::create_directory(scratch.host("folder"));
    for (const auto* name : {"plain", "hidden", "both"})
        scratch.write(name, "");
    setAttributes(scratch.path("hidden"), Hidden | ReadOnly);
    setAttributes(scratch.path("both"), Hidden | System);
    const struct {
        const char* name;
        FileAttributes include;
        bool listed;
    } cases[] = {
        {"plain", Normal, true},         {"plain", Directory, true},    {"none", Directory, false},
        {"hidden", Normal, false},       {"hidden", Hidden, true},      {"both", Hidden, false},
        {"both", Hidden | System, true}, {"folder", Normal, false},     {"folder", Directory, true},
        {"folder\\", Directory, true},   {"plain\\", Directory, false}, {"*", Directory | Hidden, false},
    };
    for (const auto& [name, include, listed] : cases)
        EXPECT_EQ(isListed(scratch.path(name), include), listed) << name;
    EXPECT_TRUE(isListed(u"C:\\", Directory));
}

TEST(Reading, GivesTheWholeContentOrTheError) {
    const Scratch scratch;
    std::string content(3 << 20, 'x');
    content[5] = '\0';
    scratch.write("big", content);
    EXPECT_EQ(readFile(scratch.path("big")), content);
    EXPECT_EQ(fileLength(scratch.path("big")), content.size());

    FileReader reader(scratch.path("big"));
    std::string chunk(1 << 20, ' ');
    std::string all;
    while (const auto count = reader.read(chunk.data(), 700001))
        all.append(chunk, 0, count);
    EXPECT_EQ(all, content);

    // The length that the host tells of these is not that of their content.
    EXPECT_NE(readFile(u"/proc/self/status").find("Uid"), std::string::npos);
    ::mkfifo(scratch.host("pipe").c_str(), 0600);
    EXPECT_EQ(readFile(scratch.path("pipe")), "") << "a pipe without a writer is not waited for";
    EXPECT_EQ(errorOf([&] { readFile(scratch.path("")); }), 70);
    for (const auto* device : {u"/dev/zero", u"/dev/ptmx"})
        EXPECT_EQ(errorOf([&] { readFile(device); }), 70);
    EXPECT_EQ(readFile(u"/dev/null"), "");
    scratch.write("sparse", "");
    std::filesystem::resize_file(scratch.host("sparse"), std::uintmax_t{1} << 40);
    EXPECT_EQ(errorOf([&] { readFile(scratch.path("sparse")); }), 7);
    EXPECT_EQ(errorOf([&] { readFile(scratch.path(std::string(300, 'a'))); }), 52);
}

TEST(Deletion, TouchesNothingButPlainFilesAndLinksThemselves) {
    const Scratch scratch;
    std::filesystem::create_directory(scratch.host("folder"));
    ::mkfifo(scratch.host("pipe").c_str(), 0600);
    scratch.write("target", "x");
    std::filesystem::create_symlink("target", scratch.host("link"));
    std::filesystem::create_symlink("folder", scratch.host("folder link"));
    std::filesystem::create_symlink("nowhere", scratch.host("dangling"));
    EXPECT_EQ(errorOf([&] { deleteFile(scratch.path("folder")); }), 70);
    EXPECT_EQ(errorOf([&] { deleteFile(scratch.path("pipe")); }), 70);
    EXPECT_EQ(errorOf([&] { deleteFile(scratch.path("none")); }), 53);
    for (const auto* link : {"link", "folder link", "dangling"})
        deleteFile(scratch.path(link));
    EXPECT_EQ(scratch.read("target"), "x");
    EXPECT_EQ(scratch.entries(), 3u);
    deleteFile(scratch.path("TARGET"));
    EXPECT_EQ(scratch.entries(), 2u);
}

TEST(Listing, IsOnePassOverOneKindOfName) {
    const Scratch scratch;
    for (const auto* name : {"rw1.~sd", "EX2.~SD", "x.~sdx", "~sd", ".~sd", "a.b.~Sd"})
        scratch.write(name, "");
    std::filesystem::create_directory(scratch.host("folder.~sd"));
    std::filesystem::create_symlink("/etc/passwd", scratch.host("link.~sd"));
    ::mkfifo(scratch.host("pipe.~sd").c_str(), 0600);
    std::set<std::string> files;
    std::set<std::string> others;
    for (const auto& entry : listFolder(scratch.path(""), u"~sd"))
        (has(entry.attributes, Directory | Link) ? others : files).insert(entry.name.toUtf8());
    EXPECT_EQ(files, (std::set<std::string>{"rw1.~sd", "EX2.~SD", ".~sd", "a.b.~Sd"}));
    EXPECT_EQ(others, (std::set<std::string>{"folder.~sd", "link.~sd"}));
    EXPECT_EQ(listFolder(scratch.path("")).size(), 8u);
    EXPECT_EQ(errorOf([&] { listFolder(scratch.path("none")); }), 76);
    EXPECT_EQ(errorOf([&] { listFolder(scratch.path("~sd")); }), 76);
}

TEST(Copying, MakesANewFileOrNothing) {
    const Scratch scratch;
    const std::string content(300000, 'c');
    scratch.write("from", content);
    ::chmod(scratch.host("from").c_str(), 0444);
    copyFile(scratch.path("FROM"), scratch.path("to"));
    EXPECT_EQ(scratch.read("to"), content);
    EXPECT_EQ(attributes(scratch.path("to")), ReadOnly);
    copyFile(scratch.path("from"), scratch.path("private"), Readable::ByUserOnly);
    EXPECT_EQ(modeOf(scratch.host("private")), 0400u);
    setAttributes(scratch.path("private"), Normal);
    EXPECT_EQ(modeOf(scratch.host("private")), 0600u);

    // Nothing that was planted under the name is followed or overwritten.
    scratch.write("victim", "v");
    std::filesystem::create_symlink("victim", scratch.host("planted"));
    std::filesystem::create_symlink("nowhere", scratch.host("dangling"));
    for (const auto* name : {"victim", "VICTIM", "planted", "dangling"}) {
        EXPECT_EQ(errorOf([&] { copyFile(scratch.path("from"), scratch.path(name)); }), 58) << name;
        EXPECT_EQ(errorOf([&] { createFile(scratch.path(name), "n"); }), 58) << name;
    }
    EXPECT_EQ(scratch.read("victim"), "v");
    EXPECT_EQ(errorOf([&] { copyFile(scratch.path("none"), scratch.path("x")); }), 53);
    EXPECT_EQ(errorOf([&] { copyFile(scratch.path("from"), scratch.path("none\\x")); }), 76);
    EXPECT_EQ(errorOf([&] { copyFile(u"/dev/zero", scratch.path("x")); }), 70);
    createFile(scratch.path("new"), "n", Readable::ByUserOnly);
    EXPECT_EQ(scratch.read("new"), "n");
    EXPECT_EQ(modeOf(scratch.host("new")), 0600u);
    EXPECT_EQ(scratch.entries(), 7u);
}

TEST(Module, LiesWhereTheLibraryWasLoadedFrom) {
    const auto file = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(concat(moduleFolder(), u"\\", moduleFileName()), fullPath(String::fromUtf8(file.string())));
    EXPECT_EQ(resourcePath(u"no such resource"), u"");
}

TEST(Environment, IsReadAtTheMoment) {
    EXPECT_FALSE(environmentVariable(u"VLGS_TEST_VARIABLE"));
    const Setting setting("VLGS_TEST_VARIABLE", "größer");
    EXPECT_EQ(environmentVariable(u"VLGS_TEST_VARIABLE"), u"größer");
}

TEST(Environment, IsNotReadByAProgramWithMoreRightsThanItsUser) {
    const Scratch scratch;
    const auto program = scratch.host("program");
    struct statvfs system {};
    ::statvfs(scratch.folder().c_str(), &system);
    if (::geteuid() != 0 || (system.f_flag & ST_NOSUID) != 0)
        GTEST_SKIP() << "needs to make a program that runs as another user";
    ::chmod(scratch.folder().c_str(), 0755);
    std::filesystem::copy_file("/proc/self/exe", program);
    const auto readsIt = [&] {
        return std::system((program + " --gtest_filter=Environment.IsReadAtTheMoment >/dev/null").c_str()) ==
               0;
    };
    EXPECT_TRUE(readsIt());
    ASSERT_EQ(::chown(program.c_str(), 65534, 65534), 0);
    ::chmod(program.c_str(), 04755);
    EXPECT_FALSE(readsIt());
}

} // namespace
} // namespace vlgs::test
