// SPDX-License-Identifier: MIT
#include "platform/FileHold.h"

#include "base/Error.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostError.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/InPlace.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/Sharing.h"
#include "platform/posix/SignalShield.h"

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace vlgs {

using namespace posix;

/// A held file, a member of the list of all that this process holds.
struct FileHold::Open {
    explicit Open(Descriptor held);
    ~Open();

    Descriptor file;
    pid_t process = ::getpid();
    Open* previous = nullptr;
    Open* next = nullptr;
};

namespace {

/// A lock of an open file description lives until every copy of the descriptor is closed, and fork copies
/// them: a forked child therefore closes at once what its parent holds. The list is one for the process, as
/// the descriptors are.
template <class Open>
class HeldFiles {
  public:
    static void add(Open& open) {
        static const int registered = ::pthread_atfork(lock, unlock, closeInChild);
        (void)registered;
        const std::lock_guard guard(mutex);
        open.next = first;
        if (first)
            first->previous = &open;
        first = &open;
    }

    static void remove(Open& open) {
        const std::lock_guard guard(mutex);
        if (open.previous)
            open.previous->next = open.next;
        else if (first == &open)
            first = open.next;
        if (open.next)
            open.next->previous = open.previous;
    }

  private:
    static void lock() { mutex.lock(); }
    static void unlock() { mutex.unlock(); }
    static void closeInChild() {
        for (auto* open = std::exchange(first, nullptr); open;) {
            open->file.reset();
            open->previous = nullptr;
            open = std::exchange(open->next, nullptr);
        }
        mutex.unlock();
    }

    static constinit inline std::mutex mutex;
    static constinit inline Open* first = nullptr;
};

/// Each one more means that somebody else has replaced the file meanwhile.
constexpr int attempts = 1000;
constexpr int mostRefusals = 3;

/// Opens a file that can be held: 70 for anything but a plain file, and for a read-only one to be written.
Descriptor openPlainFile(const std::string& path, int flags) {
    auto file = openFile(path, flags);
    struct stat status;
    if (!file || ::fstat(file.get(), &status) != 0)
        raiseHostError(errno, path);
    const bool mayOpen = (flags & O_ACCMODE) == O_RDONLY || (status.st_mode & 0222) != 0;
    if (!S_ISREG(status.st_mode) || !mayOpen)
        raise(RunTimeError::PermissionDenied);
    finishOverwriting(file.get(), path);
    return file;
}

/// A claimed file that lies where the path says and that nobody else uses in a way that the claim forbids.
Descriptor openClaimed(std::u16string_view path, int flags, Claim kind) {
    const auto host = hostPath(path);
    const auto waiting = kind == Claim::Shared ? Waiting::ForSavers : Waiting::None;
    int refusals = 0;
    for (int i = 0; i < attempts && refusals < mostRefusals; ++i) {
        auto file = openPlainFile(host, flags);
        if (claim(file.get(), kind, waiting) != ClaimResult::Taken)
            break;
        if (!isStillAt(file.get(), host))
            continue;
        if (!Lease(file.get(), kind).refused())
            return file;
        // A file that is just being closed loses its claim a moment before it counts as closed.
        ++refusals;
        waitBriefly();
    }
    raise(RunTimeError::PermissionDenied);
}

constexpr mode_t anybody = 0666;

/// A file that others cannot read looks held to them for ever, so the process's mask does not count there.
void letOthersRead(int file) noexcept {
    struct stat status;
    if (::fstat(file, &status) == 0)
        ::fchmod(file, (status.st_mode & 0777) | 0444);
}

/// Writes and claims a file before it has its name; no descriptor where the host cannot.
Descriptor createNameless(const std::string& path, std::string_view bytes) {
    auto file = NewFile::create(parentFolder(path), anybody);
    if (!file)
        raiseHostError(errno, path);
    letOthersRead(file->descriptor());
    auto shared = file->openShared();
    if (!shared)
        return {};
    int error = file->write(bytes);
    if (error == 0)
        error = file->publish(path);
    if (error != 0)
        raiseHostError(error, path);
    return shared;
}

/// Claims a file that may have been deleted since it was made; false when it was.
bool claimMade(int file, const std::string& path) {
    const auto result = claim(file, Claim::Shared, Waiting::ForSavers);
    if (result == ClaimResult::Unsupported) {
        ::unlink(path.c_str());
        raise(RunTimeError::PathFileAccessError);
    }
    return result == ClaimResult::Taken && isStillAt(file, path, false);
}

/// The same under its name from the beginning. The claim that lasts is taken while the first one, of the
/// opening that writes, is still there.
Descriptor createNamed(const std::string& path, std::string_view bytes) {
    for (int i = 0; i < attempts; ++i) {
        const auto file = openFile(path, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, anybody);
        if (!file)
            raiseHostError(errno, path);
        if (!claimMade(file.get(), path))
            continue; // swept away before it was claimed
        letOthersRead(file.get());
        if (const int error = writeAll(file.get(), bytes.data(), bytes.size())) {
            ::unlink(path.c_str());
            raiseHostError(error, path);
        }
        auto shared = openFile(path, O_RDONLY | O_NOFOLLOW);
        if (shared && claimMade(shared.get(), path))
            return shared;
        ::unlink(path.c_str());
        raise(RunTimeError::PermissionDenied);
    }
    raise(RunTimeError::PermissionDenied);
}

} // namespace

FileHold::Open::Open(Descriptor held) : file(std::move(held)) {
    HeldFiles<Open>::add(*this);
}

FileHold::Open::~Open() {
    HeldFiles<Open>::remove(*this);
    if (file && process == ::getpid())
        disclaim(file.get());
}

FileHold::FileHold() noexcept = default;
FileHold::FileHold(std::unique_ptr<Open> open) noexcept : open_(std::move(open)) {}
FileHold::FileHold(FileHold&& other) noexcept = default;
FileHold& FileHold::operator=(FileHold&& other) noexcept = default;
FileHold::~FileHold() = default;

FileHold FileHold::denyingWriters(std::u16string_view path) {
    return FileHold(std::make_unique<Open>(openClaimed(path, O_RDONLY, Claim::Shared)));
}

FileHold FileHold::exclusive(std::u16string_view path) {
    return FileHold(std::make_unique<Open>(openClaimed(path, O_RDWR, Claim::Sole)));
}

FileHold FileHold::create(std::u16string_view path, std::string_view bytes) {
    const SizeLimitShield shield;
    const auto host = hostPath(path);
    struct stat status;
    if (::lstat(host.c_str(), &status) == 0)
        raise(RunTimeError::FileAlreadyExists);
    auto file = createNameless(host, bytes);
    if (!file)
        file = createNamed(host, bytes);
    return FileHold(std::make_unique<Open>(std::move(file)));
}

bool FileHold::releaseDeleting(std::u16string_view path) noexcept {
    bool deleted = false;
    try {
        const auto host = hostPath(path);
        struct stat status;
        deleted = held() && ::fstat(open_->file.get(), &status) == 0 && (status.st_mode & 0222) != 0 &&
                  claim(open_->file.get(), Claim::Sole, Waiting::ForSavers) == ClaimResult::Taken &&
                  isStillAt(open_->file.get(), host, false) && ::unlink(host.c_str()) == 0;
    } catch (...) {
        // A path that names nothing names no held file.
    }
    release();
    return deleted;
}

bool FileHold::held() const noexcept {
    return open_ && open_->file && open_->process == ::getpid();
}

void FileHold::release() noexcept {
    open_.reset();
}

void FileHold::abandon() noexcept {
    (void)open_.release();
}

} // namespace vlgs
