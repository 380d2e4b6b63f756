// SPDX-License-Identifier: MIT
#include "platform/posix/Sharing.h"

#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace vlgs::posix {

namespace {

constexpr int waits = 400;
constexpr int sharedAnswers = 3;
constexpr std::chrono::milliseconds waitTime{5};

int lockFile(int file, int operation) {
    int result;
    do
        result = ::flock(file, operation | LOCK_NB);
    while (result != 0 && errno == EINTR);
    return result;
}

/// Whether a program has locked a part of the file in the other way the host offers (fcntl).
bool hasRecordLock([[maybe_unused]] int file, [[maybe_unused]] Claim kind) {
#ifdef F_OFD_GETLK
    struct flock lock {};
    lock.l_type = kind == Claim::Sole ? F_WRLCK : F_RDLCK;
    lock.l_whence = SEEK_SET;
    return ::fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
#else
    return false;
#endif
}

enum class Obstacle { None, Shared, Sole };

/// What refuses a sole claim; None means that it is taken now. Those who ask have a shared claim themselves
/// for an instant, so it takes more than one answer to be sure that it is one that lasts.
Obstacle obstacleToSole(int file) {
    if (lockFile(file, LOCK_SH) != 0)
        return Obstacle::Sole;
    if (lockFile(file, LOCK_EX) == 0)
        return Obstacle::None;
    lockFile(file, LOCK_UN);
    return Obstacle::Shared;
}

bool isLeaseSignal(const siginfo_t& info) {
    return info.si_code > 0;
}

} // namespace

ClaimResult claim(int file, Claim kind, Waiting waiting) noexcept {
    if (hasRecordLock(file, kind))
        return ClaimResult::Refused;
    int shared = 0;
    for (int i = 0; i < waits && shared < sharedAnswers; ++i) {
        if (lockFile(file, kind == Claim::Sole ? LOCK_EX : LOCK_SH) == 0)
            return ClaimResult::Taken;
        if (errno != EWOULDBLOCK)
            return ClaimResult::Unsupported;
        if (waiting == Waiting::None)
            break;
        const auto obstacle = kind == Claim::Sole ? obstacleToSole(file) : Obstacle::Sole;
        if (obstacle == Obstacle::None)
            return ClaimResult::Taken;
        shared = obstacle == Obstacle::Shared ? shared + 1 : 0;
        waitBriefly();
    }
    return ClaimResult::Refused;
}

void waitBriefly() {
    std::this_thread::sleep_for(waitTime);
}

void disclaim(int file) noexcept {
    lockFile(file, LOCK_UN);
}

#ifdef F_SETLEASE

// An open that meets the lease sends a signal, to this thread alone: the last real-time one, which carries
// its cause, is never merged with another, and is the least likely to mean anything to the program.
Lease::Lease(int file, Claim kind) noexcept : shield_(SIGRTMAX, isLeaseSignal), file_(file) {
    const f_owner_ex owner{F_OWNER_TID, ::gettid()};
    if (::fcntl(file, F_SETSIG, SIGRTMAX) != 0 || ::fcntl(file, F_SETOWN_EX, &owner) != 0)
        return;
    taken_ = ::fcntl(file, F_SETLEASE, kind == Claim::Sole ? F_WRLCK : F_RDLCK) == 0;
    refused_ = !taken_ && errno == EAGAIN;
}

Lease::~Lease() {
    if (taken_)
        ::fcntl(file_, F_SETLEASE, F_UNLCK);
}

#else

Lease::Lease(int file, Claim) noexcept : file_(file) {}
Lease::~Lease() = default;

#endif

bool isStillAt(int file, const std::string& path, bool followLinks) noexcept {
    struct stat open;
    struct stat named;
    return ::fstat(file, &open) == 0 &&
           ::fstatat(AT_FDCWD, path.c_str(), &named, followLinks ? 0 : AT_SYMLINK_NOFOLLOW) == 0 &&
           isSameFile(open, named);
}

} // namespace vlgs::posix
