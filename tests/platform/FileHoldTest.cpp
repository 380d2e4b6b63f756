// SPDX-License-Identifier: MIT
#include "platform/FileHold.h"

#include "Scratch.h"
#include "platform/Files.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <spawn.h>
#include <thread>
#include <utility>

namespace vlgs::test {
namespace {

class Holding : public ::testing::Test {
  protected:
    Holding() { scratch.write("f", "old"); }

    /// Whether another process of this library can write, and delete, the file.
    bool isFree() const {
        return elsewhere([&] { return errorOf([&] { replaceFile(path, "new"); }); }) == 0;
    }
    int errorOfHold() const {
        return errorOf([&] { FileHold::denyingWriters(path); });
    }
    int errorOfExclusive() const {
        return errorOf([&] { FileHold::exclusive(path); });
    }

    Scratch scratch;
    String path = scratch.path("f");
};

/// A process that has something open until it is told to end.
class Companion {
  public:
    template <class Open>
    explicit Companion(const Open& open) {
        if (::pipe2(ready_, O_CLOEXEC) != 0)
            return;
        child_ = start([&] {
            [[maybe_unused]] const auto kept = open();
            (void)!::write(ready_[1], "x", 1);
            for (;;)
                ::pause();
            return 0;
        });
        char byte;
        (void)!::read(ready_[0], &byte, 1);
    }
    ~Companion() { kill(); }
    pid_t kill() {
        if (child_ > 0) {
            ::kill(child_, SIGKILL);
            finish(child_);
        }
        return std::exchange(child_, 0);
    }

  private:
    int ready_[2] = {-1, -1};
    pid_t child_ = 0;
};

TEST_F(Holding, KeepsWritersAndDeletersOutAndReadersIn) {
    auto hold = FileHold::denyingWriters(scratch.path("F"));
    EXPECT_TRUE(hold.held());
    EXPECT_FALSE(isFree());
    EXPECT_EQ(errorOf([&] { replaceFile(path, "new"); }), 70) << "in the holder's own process too";
    EXPECT_EQ(errorOf([&] { deleteFile(path); }), 70);
    EXPECT_EQ(errorOfExclusive(), 70);
    EXPECT_EQ(readFile(path), "old") << "and this open and close of the file changes nothing";
    auto second = FileHold::denyingWriters(path);
    hold.release();
    EXPECT_FALSE(hold.held());
    EXPECT_FALSE(isFree());
    second = {};
    EXPECT_TRUE(isFree());
    deleteFile(path);
    EXPECT_EQ(errorOfHold(), 53);
}

TEST_F(Holding, BeginsWithTheFileItself) {
    const auto made = scratch.path("made");
    auto hold = FileHold::create(made, "content");
    EXPECT_EQ(readFile(made), "content");
    EXPECT_EQ(errorOf([&] { deleteFile(made); }), 70);
    EXPECT_EQ(errorOf([&] { FileHold::create(made, ""); }), 58);
    auto second = FileHold::denyingWriters(made);
    EXPECT_FALSE(hold.releaseDeleting(made)) << "another holds it too";
    EXPECT_TRUE(second.held());
    const FileReader reader(made);
    EXPECT_TRUE(second.releaseDeleting(made)) << "a reader keeps no file";
    EXPECT_FALSE(second.held());
    EXPECT_EQ(scratch.entries(), 1u);
    EXPECT_EQ(errorOf([&] { FileHold::create(scratch.path("no/made"), ""); }), 76);
    // What has taken its place is not deleted.
    hold = FileHold::create(made, "");
    std::filesystem::rename(scratch.host("made"), scratch.host("moved"));
    scratch.write("made", "another");
    EXPECT_FALSE(hold.releaseDeleting(made));
    EXPECT_EQ(scratch.read("made"), "another");
}

TEST_F(Holding, IsRefusedWhereTheFileIsInUse) {
    scratch.write("r", "");
    setAttributes(scratch.path("r"), FileAttributes::ReadOnly);
    EXPECT_EQ(errorOf([&] { FileHold::exclusive(scratch.path("r")); }), 70);
    EXPECT_EQ(errorOf([&] { FileHold::denyingWriters(scratch.path("")); }), 70);
    const auto hold = FileHold::exclusive(path);
    EXPECT_EQ(errorOfExclusive(), 70);
    EXPECT_EQ(errorOf([&] { deleteFile(path); }), 70);
}

TEST_F(Holding, EndsWithItsProcessHoweverThatEnds) {
    Companion companion([&] { return FileHold::denyingWriters(path); });
    EXPECT_FALSE(isFree());
    EXPECT_EQ(errorOfHold(), 0);
    companion.kill();
    EXPECT_TRUE(isFree());
    Companion other([&] {
        FileHold::denyingWriters(path).abandon();
        return 0;
    });
    EXPECT_FALSE(isFree());
    other.kill();
    EXPECT_TRUE(isFree());
}

TEST_F(Holding, PassesToNoChild) {
    auto hold = FileHold::denyingWriters(path);
    EXPECT_FALSE(elsewhere([&] {
        const bool held = hold.held();
        hold.release();
        return held;
    }));
    EXPECT_FALSE(isFree()) << "a child's copy of the object is not the hold";
    hold.release();

    // The children of a holder live on when it is killed; its hold does not.
    Companion holder([&] {
        ::setpgid(0, 0);
        auto kept = FileHold::denyingWriters(path);
        pid_t program = 0;
        const char* arguments[] = {"sleep", "60", nullptr};
        ::posix_spawnp(&program, "sleep", nullptr, nullptr, const_cast<char**>(arguments), environ);
        auto child = std::make_shared<Companion>([] { return 0; });
        return std::pair(std::move(kept), child);
    });
    EXPECT_FALSE(isFree());
    const pid_t group = holder.kill();
    EXPECT_TRUE(isFree());
    EXPECT_EQ(::kill(-group, SIGKILL), 0) << "the children should be there still";
}

TEST_F(Holding, SeesProgramsThatKnowNothingOfIt) {
    const auto openBy = [&](int flags) {
        return Companion([&] { return ::open(scratch.host("f").c_str(), flags); });
    };
    if (Companion probe = openBy(O_RDWR); errorOfExclusive() == 0)
        GTEST_SKIP() << "the file system has no leases";
    {
        const Companion reader = openBy(O_RDONLY);
        EXPECT_EQ(errorOfExclusive(), 70);
        EXPECT_EQ(errorOf([&] { deleteFile(path); }), 70);
        EXPECT_EQ(errorOfHold(), 0) << "a reader is no obstacle";
        EXPECT_TRUE(isFree());
        scratch.write("f", "old");
    }
    {
        const Companion writer = openBy(O_WRONLY);
        EXPECT_EQ(errorOfHold(), 70);
    }
    {
        const Companion stuck([&] {
            static_cast<void>(std::signal(SIGIO, SIG_IGN));
            return ::fcntl(::open(scratch.host("f").c_str(), O_RDWR), F_SETLEASE, F_WRLCK);
        });
        EXPECT_EQ(errorOf([&] { readFile(path); }), 70) << "it does not answer to its lease";
    }
    const Companion locker([&] {
        const int file = ::open(scratch.host("f").c_str(), O_RDWR);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        return ::fcntl(file, F_SETLK, &lock);
    });
    EXPECT_FALSE(isFree());
}

TEST_F(Holding, EndsUpOnTheFileThatIsThere) {
    // While one process replaces the file all the time, a hold is either refused or of the file in its place.
    Companion replacer([&] {
        std::thread([&] {
            for (;;)
                errorOf([&] { replaceFile(path, "new"); });
        }).detach();
        return 0;
    });
    int taken = 0;
    for (int i = 0; i < 100; ++i) {
        FileHold hold;
        if (errorOf([&] { hold = FileHold::denyingWriters(path); }) != 0)
            continue;
        ++taken;
        const auto before = std::filesystem::last_write_time(scratch.host("f"));
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        ASSERT_EQ(std::filesystem::last_write_time(scratch.host("f")), before);
    }
    EXPECT_GT(taken, 0);
}

std::atomic<int> signalsSeen = 0;

TEST_F(Holding, LetsNoSignalReachTheProgram) {
    struct sigaction count {};
    count.sa_handler = [](int) { ++signalsSeen; };
    struct sigaction before[2];
    ::sigaction(SIGIO, &count, &before[0]);
    ::sigaction(SIGRTMAX, &count, &before[1]);
    // Opens by others break the lease in the moment that it lasts.
    Companion opener([&] {
        std::thread([&] {
            for (;;)
                ::close(::open(scratch.host("f").c_str(), O_RDWR));
        }).detach();
        return 0;
    });
    const auto probe = [&] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
        while (std::chrono::steady_clock::now() < end)
            errorOfExclusive();
    };
    signalsSeen = 0;
    probe();
    EXPECT_EQ(signalsSeen, 0);

    // One that the program was sent meanwhile is not lost.
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGRTMAX);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    ::sigqueue(::getpid(), SIGRTMAX, {});
    probe();
    ::pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
    EXPECT_EQ(signalsSeen, 1);
    ::sigaction(SIGIO, &before[0], nullptr);
    ::sigaction(SIGRTMAX, &before[1], nullptr);
}

} // namespace
} // namespace vlgs::test
