// SPDX-License-Identifier: MIT
#include "platform/posix/RegistryFile.h"

#include "platform/posix/Attributes.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/InPlace.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/RegistryLock.h"
#include "platform/posix/Sharing.h"
#include "platform/posix/SignalShield.h"
#include "platform/posix/UserFolders.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

namespace vlgs::posix {

namespace {

constexpr std::size_t rememberedBytes = 128;
/// Additions up to this size wait for a better time, longer ones until they are as long as the text.
constexpr std::size_t shortAdditions = 65'536;
/// A file up to this size is left without additions.
constexpr std::size_t largestTidied = 1'048'576;
/// What is written goes to the disk at once, but not more often than this.
constexpr std::chrono::seconds diskInterval{1};
constexpr int unlockedReads = 20;
/// The platform's status of a resource that others do not let go.
constexpr RegistryStatus busy{170};

RegistryStatus statusOf(int error) noexcept {
    switch (error) {
    case 0:
        return RegistryStatus::Success;
    case EACCES:
    case EPERM:
    case EROFS:
        return RegistryStatus::AccessDenied;
    case EBUSY:
        return busy;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return RegistryStatus::DiskFull;
    default:
        return RegistryStatus::InputOutputFailed;
    }
}

std::size_t sizeOf(const struct stat& status) noexcept {
    return static_cast<std::size_t>(status.st_size);
}

/// What a file holds from an offset on; 0, or the value of errno.
int readFrom(int file, std::size_t offset, std::size_t size, std::string& bytes) {
    bytes.resize(size);
    std::size_t used = 0;
    if (::lseek(file, static_cast<off_t>(offset), SEEK_SET) < 0)
        return errno;
    while (used < size) {
        const auto count = readSome(file, bytes.data() + used, size - used);
        if (count < 0)
            return errno;
        if (count == 0)
            break;
        used += static_cast<std::size_t>(count);
    }
    bytes.resize(used);
    return 0;
}

/// Gives a new file the owner and the rights of the old one; 0, or the value of errno.
int keepProperties(int from, int to) {
    struct stat old;
    struct stat made;
    if (::fstat(from, &old) != 0 || ::fstat(to, &made) != 0)
        return errno;
    copyExtendedAttributes(from, to);
    const bool sameOwner = old.st_uid == made.st_uid && old.st_gid == made.st_gid;
    if (!sameOwner && ::fchown(to, old.st_uid, old.st_gid) != 0)
        return errno;
    return ::fchmod(to, old.st_mode & 07777) == 0 ? 0 : errno;
}

std::string wholeText(RegistryHive hive, const RegistryKeyNode& root) {
    return registryFileOf(registryTextOf(hive, root));
}

} // namespace

RegistryFile::RegistryFile(std::string path, RegistryHive hive)
    : path_(std::move(path)), hive_(hive), root_(registryHiveName(hive)) {}

RegistryFile::~RegistryFile() {
    try {
        if (changed_)
            tidy();
    } catch (...) {
        // The file is whole, if not tidy.
    }
}

bool RegistryFile::isWritable() const noexcept {
    return !seen_ || (!isReadOnly(seenStatus_) && ::access(path_.c_str(), W_OK) == 0);
}

RegistryStatus RegistryFile::refresh() {
    struct stat now;
    if (::stat(path_.c_str(), &now) == 0) {
        if (seen_ && isSameVersion(now, seenStatus_)) {
            seenStatus_.st_mode = now.st_mode;
            return status_;
        }
        if (isUnfinished(now))
            finishRewriting();
        const ReaderLock file(path_);
        if (file)
            return file.locked() ? read(file.get()) : readUnlocked(file.get());
        errno = file.error();
    }
    const int error = errno;
    forget();
    return error == ENOENT || error == ENOTDIR ? RegistryStatus::Success : statusOf(error);
}

/// Finishes what a process that is gone has begun to write over the file.
void RegistryFile::finishRewriting() const {
    if (const WriterLock file(path_); file.error() == 0)
        finishOverwritingClaimed(file.get(), path_);
}

/// Reads while somebody may write; what was written meanwhile has changed the file's state.
RegistryStatus RegistryFile::readUnlocked(int file) {
    for (int i = 0; i < unlockedReads; ++i) {
        const auto status = read(file);
        struct stat now;
        if (::fstat(file, &now) != 0 || isSameVersion(now, seenStatus_))
            return status;
        forget();
        waitBriefly();
    }
    return busy;
}

RegistryStatus RegistryFile::read(int file) {
    struct stat status;
    if (::fstat(file, &status) != 0)
        return statusOf(errno);
    if (seen_ && isSameVersion(status, seenStatus_))
        return status_;
    try {
        return readOn(file, status) ? RegistryStatus::Success : readWhole(file, status);
    } catch (...) {
        forget();
        throw;
    }
}

/// Reads what was added since the last time; false when something else has happened to the file.
bool RegistryFile::readOn(int file, const struct stat& status) {
    if (!seen_ || !takesAdditions_ || !isSameFile(status, seenStatus_) || sizeOf(status) <= end_)
        return false;
    const auto from = end_ - lastBytes_.size();
    std::string bytes;
    if (readFrom(file, from, sizeOf(status) - from, bytes) != 0 || !bytes.starts_with(lastBytes_))
        return false;
    const String text = registryText(std::string_view(bytes).substr(lastBytes_.size()));
    if (!isRegistryAddition(text))
        return false;
    const auto places = readRegistryTree(text, false, hive_, root_);
    end_ += places.end * 2;
    see(file, status, std::string_view(bytes).substr(0, end_ - from));
    return true;
}

RegistryStatus RegistryFile::readWhole(int file, const struct stat& status) {
    forget();
    if (!S_ISREG(status.st_mode))
        return RegistryStatus::BadDatabase;
    std::string bytes;
    if (const int error = readFrom(file, 0, sizeOf(status), bytes))
        return statusOf(error);
    if (!bytes.empty()) {
        const auto content = decodeRegistryFile(bytes);
        if (content) {
            const auto text = content->text.view();
            const auto places = readRegistryTree(text, content->isOldForm, hive_, root_);
            end_ = registryFileMark.size() + places.end * 2;
            additions_ = registryFileMark.size() + places.additions * 2;
            takesAdditions_ =
                content->isUtf16 && !content->isOldForm && text.substr(0, places.end).ends_with(u'\n');
        }
        status_ = content ? RegistryStatus::Success : RegistryStatus::BadDatabase;
    }
    see(file, status, takesAdditions_ ? std::string_view(bytes).substr(0, end_) : std::string_view());
    return status_;
}

/// Remembers what was read; `bytes` end where the tree does.
void RegistryFile::see(int file, const struct stat& status, std::string_view bytes) {
    if (!seen_ || !isSameFile(status, seenStatus_))
        seen_ = Descriptor(::fcntl(file, F_DUPFD_CLOEXEC, 0));
    seenStatus_ = status;
    lastBytes_ = bytes.substr(bytes.size() - std::min(bytes.size(), rememberedBytes));
}

void RegistryFile::forget() {
    if (!seen_)
        return;
    root_ = RegistryKeyNode(registryHiveName(hive_));
    seen_ = Descriptor();
    seenStatus_ = {};
    status_ = RegistryStatus::Success;
    end_ = additions_ = 0;
    lastBytes_.clear();
    takesAdditions_ = false;
}

RegistryStatus RegistryFile::change(const Describe& describe) {
    RegistryTextWriter preview(hive_);
    auto status = refresh();
    if (status == RegistryStatus::Success)
        status = describe(root_, preview);
    if (status != RegistryStatus::Success || preview.lines().empty())
        return status;
    if (!seen_)
        if (const int error = create())
            return statusOf(error);
    const SizeLimitShield shield;
    const WriterLock file(path_);
    if (file.error() != 0)
        return statusOf(file.error());
    struct stat now;
    if (::fstat(file.get(), &now) == 0 && !isSameVersion(now, seenStatus_))
        finishOverwritingClaimed(file.get(), path_);
    status = read(file.get());
    RegistryTextWriter writer(hive_);
    if (status == RegistryStatus::Success)
        status = describe(root_, writer);
    if (status != RegistryStatus::Success || writer.lines().empty())
        return status;
    return write(file.get(), writer.lines());
}

/// Makes the file and its folder; 0, or the value of errno. No failure when somebody else was faster.
int RegistryFile::create() {
    const auto folder = parentFolder(path_);
    if (const int error = makeFolders(folder))
        return error;
    auto file = NewFile::create(folder, 0600);
    if (!file)
        return errno;
    int error = file->write(wholeText(hive_, RegistryKeyNode(registryHiveName(hive_))));
    if (error == 0)
        error = file->publish(path_);
    file.reset();
    flushFolder(folder);
    return error == EEXIST ? 0 : error;
}

RegistryStatus RegistryFile::write(int file, const std::u16string& lines) {
    int error = 0;
    try {
        changed_ = true;
        if (takesAdditions_) {
            error = add(file, lines);
        } else {
            readRegistryTree(lines, false, hive_, root_);
            error = replace(file);
            if (statusOf(error) == RegistryStatus::AccessDenied)
                error = rewrite(file);
        }
    } catch (...) {
        forget();
        throw;
    }
    if (error != 0)
        forget();
    return statusOf(error);
}

int RegistryFile::add(int file, const std::u16string& lines) {
    const auto text = registryAddition(lines);
    const auto bytes = registryBytes(text);
    const auto end = static_cast<off_t>(end_);
    // What a killed process has left goes first.
    if (seenStatus_.st_size > end && ::ftruncate(file, end) != 0)
        return errno;
    if (::lseek(file, end, SEEK_SET) < 0)
        return errno;
    int error = writeAll(file, bytes.data(), bytes.size());
    if (error == 0)
        error = putOnDisk(file);
    struct stat status;
    if (error == 0 && ::fstat(file, &status) != 0)
        error = errno;
    if (error != 0)
        return ::ftruncate(file, end) == 0 ? error : errno;
    readRegistryTree(text, false, hive_, root_);
    end_ += bytes.size();
    see(file, status, bytes);
    if (end_ - additions_ > std::max(shortAdditions, additions_))
        replace(file); // or later
    return 0;
}

/// Puts a text without additions in the file's place; 0, or the value of errno.
int RegistryFile::replace(int file) {
    if (seenStatus_.st_nlink > 1)
        return EPERM; // all its names are to see the same
    const auto target = withoutLinks(path_);
    auto made = NewFile::create(parentFolder(target), 0600);
    if (!made)
        return errno;
    const auto bytes = wholeText(hive_, root_);
    int error = keepProperties(file, made->descriptor());
    if (error == 0 && (error = made->write(bytes)) == 0 && (error = made->flush()) == 0)
        error = made->publishOver(target);
    if (error != 0)
        return error;
    flushFolder(parentFolder(target));
    take(made->descriptor(), bytes);
    // What is remembered of it shares the claim of a new file.
    disclaim(made->descriptor());
    return 0;
}

/// Writes a text without additions over the file's own; 0, or the value of errno.
int RegistryFile::rewrite(int file) {
    const auto bytes = wholeText(hive_, root_);
    if (const int error = overwriteInPlace(file, bytes))
        return error;
    take(file, bytes);
    return 0;
}

/// Remembers a file that has just got these bytes and no additions.
void RegistryFile::take(int file, const std::string& bytes) {
    onDisk_ = std::chrono::steady_clock::now();
    end_ = additions_ = bytes.size();
    takesAdditions_ = true;
    struct stat status;
    if (::fstat(file, &status) == 0)
        see(file, status, bytes);
    else
        forget();
}

int RegistryFile::putOnDisk(int file) {
    if (std::chrono::steady_clock::now() - onDisk_ < diskInterval)
        return 0;
    const int error = ::fsync(file) == 0 ? 0 : errno;
    onDisk_ = std::chrono::steady_clock::now();
    return error;
}

void RegistryFile::tidy() {
    const SizeLimitShield shield;
    const WriterLock file(path_);
    if (file.error() != 0 || read(file.get()) != RegistryStatus::Success)
        return;
    if (end_ > additions_ && end_ <= largestTidied)
        replace(file.get());
    else
        ::fsync(file.get());
}

} // namespace vlgs::posix
