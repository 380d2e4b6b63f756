// SPDX-License-Identifier: MIT
// One of the processes that torture/locks.py sets on one project: takes, changes and releases locks at random
// and keeps a log of it.
//
//     LockTaker FOLDER LOG SEED STEPS
//
// A line of the log begins with a time in nanoseconds of the machine's steady clock, so the logs of several
// processes can be laid side by side:
//
//     T ? TARGET KIND      asks for a lock; target 0 is the project, 1 to 3 are documents
//     T + TARGET KIND      was granted one, which is written when it is there
//     T - TARGET KIND      is about to release one
//     T ! NUMBER           was refused
//     T s                  has made a step
//
// With 0 steps it takes every lock exclusively, one after the other, and fails where one is refused.
#include "base/Error.h"
#include "locking/CorvaTools.h"
#include "platform/Volumes.h"

#include <array>
#include <chrono>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <thread>

namespace vlgs {
namespace {

constexpr std::size_t targets = 4;

class LockTaker {
  public:
    LockTaker(const std::string& folder, const char* log, unsigned seed)
        : path_(fullPath(String::fromUtf8(folder + "/project.VLS"))), log_(log, std::ios::binary),
          random_(seed) {}

    void step() {
        const auto target = random_() % targets;
        auto& lock = locks_[target];
        if (lock.document && random_() % 2 == 0)
            release(target, lock);
        else
            take(target);
        pause();
        note("s");
    }

    void takeAll() {
        for (std::size_t target = 0; target < targets; ++target)
            if (!take(target, eUserLock_Exclusive))
                throw Error(RunTimeError::PermissionDenied);
    }

  private:
    struct Lock {
        Ref<INIFile> document;
        enumUserLockTypes kind = eUserLock_ReadOnly;
    };

    void take(std::size_t target) {
        static constexpr std::int32_t kinds[] = {eUserLock_ReadWrite, eUserLock_ReadWrite, eUserLock_ReadOnly,
                                                 eUserLock_Exclusive};
        const auto flag = random_() % 8 == 0 ? eUserLock_FallbackToReadOnly : eUserLock_ReadWrite;
        take(target, enumUserLockTypes(kinds[random_() % std::size(kinds)] | flag));
    }

    /// Takes a lock beside the one of the same target, which is then released.
    bool take(std::size_t target, enumUserLockTypes kind) {
        note("?", target, kind);
        Lock next;
        String own = locks_[target].document ? locks_[target].document->Filename() : String();
        try {
            next.document =
                target == 0 ? tools_->InitiateLock2(path_, kind, &own, &next.kind)
                            : tools_->InitiateDocLock(path_, documents[target - 1], kind, &own, &next.kind);
        } catch (const Error& error) {
            note("!", std::size_t(error.number() - objectErrorBase), kind);
            if (error.number() == objectErrorBase + eMsg_ErrorWritingUserLockFileX)
                std::cerr << "LockTaker: " << error.description().toUtf8() << '\n';
            return false;
        }
        if (next.document)
            note("+", target, next.kind);
        release(target, locks_[target]);
        locks_[target] = next;
        return true;
    }

    void release(std::size_t target, Lock& lock) {
        if (lock.document)
            note("-", target, lock.kind);
        lock = {};
    }

    void pause() { std::this_thread::sleep_for(std::chrono::microseconds(random_() % 300)); }

    void note(const char* event) { log_ << now() << ' ' << event << std::endl; }
    void note(const char* event, std::size_t number, enumUserLockTypes kind) {
        log_ << now() << ' ' << event << ' ' << number << ' ' << std::int32_t{kind} << std::endl;
    }
    static long long now() {
        using namespace std::chrono;
        return duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
    }

    static constexpr const char16_t* documents[] = {u"{11111111-5B0B-4B52-9E0B-2C1F0C5A7EAF}",
                                                    u"{22222222-5B0B-4B52-9E0B-2C1F0C5A7EAF}",
                                                    u"{33333333-5B0B-4B52-9E0B-2C1F0C5A7EAF}"};

    Ref<CorvaTools> tools_ = make<CorvaTools>();
    String path_;
    std::ofstream log_;
    std::mt19937 random_;
    std::array<Lock, targets> locks_;
};

} // namespace
} // namespace vlgs

int main(int count, char** words) {
    if (count != 5) {
        std::cerr << "usage: LockTaker FOLDER LOG SEED STEPS\n";
        return 2;
    }
    try {
        vlgs::LockTaker taker(words[1], words[2], static_cast<unsigned>(std::stoul(words[3])));
        const int steps = std::stoi(words[4]);
        for (int i = 0; i < steps; ++i)
            taker.step();
        if (steps == 0)
            taker.takeAll();
    } catch (const vlgs::Error& error) {
        std::cerr << "LockTaker: " << error.number() << ' ' << error.description().toUtf8() << '\n';
        return 1;
    }
}
