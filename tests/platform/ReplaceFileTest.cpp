// SPDX-License-Identifier: MIT
#include "OtherProcess.h"
#include "platform/FileHold.h"
#include "platform/Files.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace vlgs::test {
namespace {

constexpr int skipped = 77;

struct stat statusOf(const std::string& path) {
    struct stat status {};
    ::lstat(path.c_str(), &status);
    return status;
}

class Replacing : public testing::Test {
  protected:
    const Scratch scratch;
    const Scratch state; // where copies stand while a file is written in place
    const Setting stateFolder{"XDG_STATE_HOME", state.folder()};
};

TEST_F(Replacing, KeepsEverythingButTheContent) {
    scratch.write("Name.ini", "old");
    ::chmod(scratch.host("Name.ini").c_str(), 0642);
    ::setxattr(scratch.host("Name.ini").c_str(), "user.other", "v", 1, 0);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(scratch.host("Name.ini").c_str(), nobody, nobody), 0);
    }
    const auto before = statusOf(scratch.host("Name.ini"));
    replaceFile(scratch.path("NAME.INI"), std::string(100000, 'n'));
    const auto after = statusOf(scratch.host("Name.ini"));
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    EXPECT_EQ(after.st_size, 100000);
    EXPECT_NE(after.st_ino, before.st_ino);
    char value = 0;
    ::getxattr(scratch.host("Name.ini").c_str(), "user.other", &value, 1);
    EXPECT_TRUE(value == 'v' || ::setxattr(scratch.host("Name.ini").c_str(), "user.o", "v", 1, 0) != 0);
    replaceFile(scratch.path("new"), "");
    EXPECT_EQ(scratch.entries(), 2u);
}

TEST_F(Replacing, GoesThroughLinksToTheirTarget) {
    std::filesystem::create_directory(scratch.host("sub"));
    scratch.write("sub/target", "old");
    std::filesystem::create_symlink("../link 1", scratch.host("sub/link 2"));
    std::filesystem::create_symlink("sub/target", scratch.host("link 1"));
    std::filesystem::create_symlink("sub/made", scratch.host("dangling"));
    std::filesystem::create_symlink("loop", scratch.host("loop"));
    replaceFile(scratch.path("sub\\link 2"), "new");
    replaceFile(scratch.path("dangling"), "made");
    EXPECT_EQ(scratch.read("sub/target"), "new");
    EXPECT_EQ(scratch.read("sub/made"), "made");
    EXPECT_TRUE(std::filesystem::is_symlink(scratch.host("sub/link 2")));
    EXPECT_TRUE(std::filesystem::is_symlink(scratch.host("dangling")));
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("loop"), "x"); }), 75);
}

TEST_F(Replacing, StrangersLinksInASharedFolderLeadNowhere) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs to act as another user";
    const Scratch target;
    ::chmod(scratch.folder().c_str(), 01777);
    for (const auto* name : {"theirs", "own"})
        std::filesystem::create_symlink(target.host(name), scratch.host(name));
    std::filesystem::create_symlink(scratch.host("theirs"), target.host("to theirs"));
    ASSERT_EQ(::lchown(scratch.host("theirs").c_str(), nobody, nobody), 0);
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("theirs"), "x"); }), 70);
    EXPECT_EQ(errorOf([&] { replaceFile(target.path("to theirs"), "x"); }), 70);
    replaceFile(scratch.path("own"), "x");
    EXPECT_EQ(target.entries(), 2u) << "nothing was made for the stranger's link";
    if (std::ifstream("/proc/sys/fs/protected_symlinks").get() == '1') {
        target.write("theirs", "old");
        EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("theirs"), "x"); }), 70);
        EXPECT_EQ(target.read("theirs"), "old");
    }
}

/// What has happened, in order.
std::vector<std::uint32_t> masksOf(int events) {
    alignas(inotify_event) char bytes[4096];
    const auto size = std::max<ssize_t>(::read(events, bytes, sizeof bytes), 0);
    std::vector<std::uint32_t> masks;
    inotify_event event;
    for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(sizeof event + event.len)) {
        std::memcpy(&event, bytes + at, sizeof event);
        masks.push_back(event.mask);
    }
    return masks;
}

TEST_F(Replacing, AllNamesOfAFileGetTheNewContent) {
    scratch.write("f", "a longer old content");
    std::filesystem::create_hard_link(scratch.host("f"), scratch.host("g"));
    const auto copies = state.host("vlgs/recovery");
    std::filesystem::create_directories(copies);
    const int events = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    ::inotify_add_watch(events, copies.c_str(), IN_MOVED_TO | IN_DELETE);
    ::inotify_add_watch(events, scratch.host("f").c_str(), IN_MODIFY);
    replaceFile(scratch.path("f"), "new");
    EXPECT_EQ(scratch.read("g"), "new");
    EXPECT_EQ(scratch.entries(), 2u);
    EXPECT_EQ(masksOf(events), (std::vector<std::uint32_t>{IN_MOVED_TO, IN_MODIFY, IN_DELETE}))
        << "a copy is there before the first byte is written, and goes after the last";
    ::close(events);
}

TEST_F(Replacing, SweepsAwayWhatKilledProcessesHaveLeftAndNothingElse) {
    std::filesystem::create_directory(scratch.host("sub"));
    std::filesystem::create_directory_symlink("sub", scratch.host("other spelling"));
    const std::string left = ".vlgs-0123456789abcde";
    for (const auto* name : {"0", "1", "2", "g"})
        scratch.write("sub/" + left + name, "left");
    std::filesystem::create_directory(scratch.host("sub/" + left + "d"));
    const auto age = [&](const std::string& name) {
        std::filesystem::last_write_time(scratch.host("sub/" + left + name),
                                         std::filesystem::file_time_type::clock::now() -
                                             std::chrono::hours(1));
    };
    for (const auto* name : {"0", "1", "g", "d"})
        age(name);
    const auto hold = FileHold::exclusive(scratch.path("sub\\" + left + "1"));
    replaceFile(scratch.path("other spelling\\f"), "x");
    EXPECT_FALSE(fileExists(scratch.path("sub\\" + left + "0")));
    for (const auto* name : {"1", "2", "g", "d"})
        EXPECT_TRUE(pathExists(scratch.path("sub\\" + left + name))) << name;
}

TEST_F(Replacing, SetsTheAttributesItIsToldInTheSameStep) {
    scratch.write("f", "old");
    setAttributes(scratch.path("f"), FileAttributes::ReadOnly);
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("f"), "x"); }), 70);
    replaceFile(scratch.path("f"), "kept", {{}, true});
    EXPECT_EQ(attributes(scratch.path("f")), FileAttributes::ReadOnly);
    replaceFile(scratch.path("f"), "new", {FileAttributes::Archive, true});
    EXPECT_FALSE(has(attributes(scratch.path("f")), FileAttributes::ReadOnly));
    EXPECT_EQ(scratch.read("f"), "new");
}

TEST_F(Replacing, FailsWithTheRunTimesErrors) {
    scratch.write("f", "old");
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path(""), "x"); }), 70);
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("none\\f"), "x"); }), 76);
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("f\\f"), "x"); }), 76);
    std::filesystem::create_symlink("/dev/full", scratch.host("full"));
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("full"), "x"); }), 61);
    ::mkfifo(scratch.host("pipe").c_str(), 0600);
    const int pipe = ::open(scratch.host("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const auto reader = start([&] {
        pollfd waiting{pipe, POLLIN, 0};
        return ::poll(&waiting, 1, -1);
    });
    ::close(pipe);
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("pipe"), std::string(1 << 20, 'x')); }), 57);
    EXPECT_EQ(finish(reader), 1) << "it goes when the first bytes are there";
    const auto hold = FileHold::denyingWriters(scratch.path("f"));
    EXPECT_EQ(errorOf([&] { replaceFile(scratch.path("F"), "x"); }), 70);
    EXPECT_EQ(scratch.read("f"), "old");
    EXPECT_EQ(scratch.entries(), 3u);
}

/// What is left after a failure for want of room: the old file and nothing more.
int failsWholly(const Scratch& scratch, std::size_t size) {
    const auto error = errorOf([&] { replaceFile(scratch.path("f"), std::string(size, 'n')); });
    const auto errorOfNew = errorOf([&] { replaceFile(scratch.path("new"), std::string(size, 'n')); });
    const auto errorOfCopy = errorOf([&] { copyFile(u"/proc/self/exe", scratch.path("copy")); });
    if (error != 61 || errorOfNew != 61 || errorOfCopy != 61)
        return 1;
    return scratch.read("f") == "old" && scratch.entries() == 1 ? 0 : 2;
}

TEST_F(Replacing, LeavesTheOldFileWholeWhenASizeLimitIsMet) {
    scratch.write("f", "old");
    EXPECT_EQ(0, elsewhere([&] {
                  const rlimit limit{65536, 65536};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  return failsWholly(scratch, 100000);
              }));
}

TEST_F(Replacing, LeavesTheOldFileWholeWhenTheDiskIsFull) {
    const int result = elsewhere([&] {
        if (::unshare(CLONE_NEWNS) != 0 || ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("tmpfs", scratch.folder().c_str(), "tmpfs", 0, "size=128k") != 0)
            return skipped;
        scratch.write("f", "old");
        int status = failsWholly(scratch, 200000);
        // In place as well: the folder takes no new file, and the old one finds no room to grow.
        ::chmod(scratch.folder().c_str(), 0555);
        ::chmod(scratch.host("f").c_str(), 0666);
        if (status == 0 && (!becomeNobody() || errorOf([&] {
                                                   replaceFile(scratch.path("f"), std::string(200000, 'n'));
                                               }) != 61 ||
                            scratch.read("f") != "old"))
            status = 3;
        return status;
    });
    if (result == skipped)
        GTEST_SKIP() << "no small file system may be mounted here";
    EXPECT_EQ(result, 0);
}

TEST_F(Replacing, WritesInPlaceWhereTheFolderTakesNoNewFile) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "needs to act as another user";
    const Scratch open;
    scratch.write("f", "a longer old content");
    scratch.write("mine", "old");
    open.write("theirs", "old");
    ::chmod(scratch.folder().c_str(), 0755);
    ::chmod(open.folder().c_str(), 0777);
    ::chmod(scratch.host("f").c_str(), 0666);
    ::chmod(open.host("theirs").c_str(), 0666);
    ::chmod(scratch.host("mine").c_str(), 0444);
    ASSERT_EQ(::chown(scratch.host("mine").c_str(), nobody, nobody), 0);
    const auto inode = statusOf(scratch.host("f")).st_ino;
    EXPECT_EQ(70, elsewhere([&] {
                  if (!becomeNobody())
                      return 1;
                  replaceFile(scratch.path("f"), "new");
                  replaceFile(open.path("theirs"), "new");
                  replaceFile(scratch.path("mine"), "new", {{}, true});
                  return errorOf([&] { replaceFile(scratch.path("g"), "x"); });
              }));
    EXPECT_EQ(scratch.read("f"), "new");
    EXPECT_EQ(statusOf(scratch.host("f")).st_ino, inode);
    EXPECT_EQ(open.read("theirs"), "new");
    EXPECT_EQ(statusOf(open.host("theirs")).st_uid, 0u) << "the owner stays";
    EXPECT_EQ(scratch.read("mine"), "new");
    EXPECT_EQ(statusOf(scratch.host("mine")).st_mode & 0777, 0444u);
}

// That a save survives being killed at any moment is torture/kills.py's to show.

TEST_F(Replacing, WhatAKilledProcessBeganIsFinishedUnlessOthersWroteSince) {
    for (const std::string found : {"old content", "new content", "new!", "another program's"}) {
        scratch.write("f", found);
        const auto copy = leaveRecoveryCopy(state, scratch.host("f"), "old content", "new!");
        // What another user has put there, whose home folder this process was given, is nothing to go by.
        if (::chown(copy.c_str(), nobody, nobody) == 0) {
            EXPECT_EQ(readFile(scratch.path("f")), found);
            ::chown(copy.c_str(), ::geteuid(), ::getegid());
        }
        EXPECT_EQ(readFile(scratch.path("f")), found.starts_with("another") ? found : "new!");
        EXPECT_FALSE(std::filesystem::exists(copy));
    }
}

TEST_F(Replacing, ByManyAtOnceGivesTheContentOfOne) {
    scratch.write("f", std::string(1000, '0'));
    pid_t children[4];
    for (auto& child : children)
        child = start([&] {
            for (int n = 0; n < 50; ++n) {
                const auto content = readFile(scratch.path("f"));
                if (content != std::string(1000, content.at(0)))
                    return 1;
                replaceFile(scratch.path("f"), std::string(1000, static_cast<char>('a' + n % 26)));
            }
            return 0;
        });
    for (const auto child : children)
        EXPECT_EQ(finish(child), 0);
    EXPECT_EQ(scratch.entries(), 1u);
}

} // namespace
} // namespace vlgs::test
