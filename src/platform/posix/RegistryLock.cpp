// SPDX-License-Identifier: MIT
#include "platform/posix/RegistryLock.h"

#include "platform/posix/HostPath.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/Sharing.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace vlgs::posix {

namespace {

/// How long a change waits for others that make one, until it is given up.
constexpr std::chrono::milliseconds longestWait{5000};
/// So often the wait begins again when others have changed the hive meanwhile.
constexpr int mostTurns = 12;
/// How long those are waited for who have a lock but cannot insist on it.
constexpr std::chrono::milliseconds courtesy{1000};
constexpr std::chrono::milliseconds noWait{0};
constexpr std::chrono::microseconds lockInterval{500};

/// Takes a lock of an open file unless others keep it for longer; a file system without locks has one user.
bool lockWithin(int file, int operation, std::chrono::milliseconds wait) {
    const auto end = std::chrono::steady_clock::now() + wait;
    while (::flock(file, operation | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR)) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        std::this_thread::sleep_for(lockInterval);
    }
    return true;
}

/// Who may write a hive may read and write its lock file, and nobody else.
mode_t lockModeOf(const struct stat& hive) noexcept {
    const auto writers = hive.st_mode & 0222;
    return 0600 | writers | writers << 1;
}

/// Makes a hive's lock file, or gives it the rights that the hive has now. Only the hive's owner can.
void settleLockFile(const std::string& path, const struct stat& hive, int file) {
    struct stat status;
    if (::geteuid() != hive.st_uid && ::geteuid() != 0)
        return;
    if (file >= 0) {
        if (::fstat(file, &status) == 0 && (status.st_mode & 07777) != lockModeOf(hive))
            ::fchmod(file, lockModeOf(hive));
        return;
    }
    auto made = NewFile::create(parentFolder(path), 0600);
    if (!made)
        return;
    const int descriptor = made->descriptor();
    const bool own =
        ::fstat(descriptor, &status) == 0 && status.st_uid == hive.st_uid && status.st_gid == hive.st_gid;
    if ((own || ::fchown(descriptor, hive.st_uid, hive.st_gid) == 0) &&
        ::fchmod(descriptor, lockModeOf(hive)) == 0)
        made->publish(path);
}

/// Whoever has the lock too long is not waited for, but many who each have it for a moment are.
bool takeInTurn(int lock, const std::string& hive) {
    struct stat before;
    struct stat now;
    for (int i = 0; i < mostTurns && ::stat(hive.c_str(), &before) == 0; ++i) {
        if (lockWithin(lock, LOCK_EX, longestWait))
            return true;
        if (::stat(hive.c_str(), &now) != 0 || isSameVersion(before, now))
            return false;
    }
    return false;
}

Descriptor openLockFile(const std::string& hive) {
    struct stat status;
    if (::stat(hive.c_str(), &status) != 0 || ::access(hive.c_str(), W_OK) != 0)
        return {};
    const auto path = withoutLinks(hive) + ".lock";
    auto file = openFile(path, O_RDWR | O_NOFOLLOW);
    if (file || errno == ENOENT)
        settleLockFile(path, status, file.get());
    return file ? std::move(file) : openFile(path, O_RDWR | O_NOFOLLOW);
}

} // namespace

LockedFile::LockedFile(const std::string& path, int flags, int operation, std::chrono::milliseconds wait) {
    do {
        file_ = openFile(path, flags);
        if (!file_) {
            error_ = errno;
            return;
        }
        locked_ = lockWithin(file_.get(), operation, wait);
    } while (!isStillAt(file_.get(), path));
}

LockedFile::~LockedFile() {
    // A child that another thread has just forked would keep it.
    if (file_ && locked_)
        disclaim(file_.get());
}

ReaderLock::ReaderLock(const std::string& hive) : LockedFile(hive, O_RDONLY, LOCK_SH, courtesy) {}

WriterLock::WriterLock(const std::string& hive)
    : lock_(openLockFile(hive)), taken_(lock_ && takeInTurn(lock_.get(), hive)), file_(hive, O_RDWR, LOCK_EX,
                                                                                       !lock_   ? longestWait
                                                                                       : taken_ ? courtesy
                                                                                                : noWait) {}

WriterLock::~WriterLock() {
    if (taken_)
        disclaim(lock_.get());
}

int WriterLock::error() const noexcept {
    if (!file_)
        return file_.error();
    return taken_ || (!lock_ && file_.locked()) ? 0 : EBUSY;
}

} // namespace vlgs::posix
