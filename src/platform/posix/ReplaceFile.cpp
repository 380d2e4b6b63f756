// SPDX-License-Identifier: MIT
// Changing the content of a file so that it is old or new at every moment.
//
// Invariant: while a file is replaced it is claimed, so no other document holds it, and whoever claims it
// next finds that his file lies there no longer and opens the new one.
#include "platform/Files.h"

#include "base/Error.h"
#include "platform/posix/Attributes.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostError.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/InPlace.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/Sharing.h"
#include "platform/posix/SignalShield.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace vlgs {

using namespace posix;

namespace {

constexpr int mostLinks = 40;
/// Each one more means that somebody else has replaced the file meanwhile.
constexpr int attempts = 1000;
constexpr mode_t anybody = 0666;
constexpr mode_t userOnly = 0600;

/// Whether a link that leads nowhere yet may decide where a file is made: in a folder where everybody puts
/// what he likes only when it is this user's or the folder owner's.
bool isTrusted(const std::string& link) {
    struct stat own;
    struct stat folder;
    if (::lstat(link.c_str(), &own) != 0 || ::stat(parentFolder(link).c_str(), &folder) != 0)
        return false;
    const bool shared = (folder.st_mode & S_ISVTX) != 0 && (folder.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    return !shared || own.st_uid == ::geteuid() || own.st_uid == folder.st_uid;
}

enum class Target { Found, Missing };

/// The path at the end of a chain of symbolic links. The host has followed it already when it has found
/// something there; else each link is looked at.
std::string followLinks(std::string path, Target target) {
    for (int i = 0; i < mostLinks; ++i) {
        char text[PATH_MAX];
        const auto length = ::readlink(path.c_str(), text, sizeof text);
        if (length < 0 && (errno == EINVAL || errno == ENOENT))
            return path;
        if (length < 0)
            raiseHostError(errno, path);
        if (target == Target::Missing && !isTrusted(path))
            raise(RunTimeError::PermissionDenied);
        const std::string_view next(text, static_cast<std::size_t>(length));
        path = next.starts_with('/') ? "" : parentFolder(path).append("/");
        path += next;
    }
    raiseHostError(ELOOP, path);
}

mode_t newFileMode(Readable readable) {
    return readable == Readable::ByUserOnly ? userOnly : anybody;
}

/// The file that is to be replaced.
struct OldFile {
    std::string path;
    Descriptor file;
    struct stat status {};
};

Descriptor openToClaim(const std::string& path) {
    auto file = openFile(path, O_RDONLY);
    return file || errno != EACCES ? std::move(file) : openFile(path, O_WRONLY);
}

void checkReplaceable(const OldFile& old, const ReplaceOptions& options) {
    if (S_ISDIR(old.status.st_mode) || (isReadOnly(old.status) && !options.evenReadOnly))
        raise(RunTimeError::PermissionDenied);
}

/// Opens what a path leads to, as far as the host lets this user go; a refusal is final.
Descriptor openGiven(const std::string& path) {
    auto file = openToClaim(path);
    if (!file && (errno != ENOENT || path.ends_with('/')))
        raiseHostError(errno, path);
    return file;
}

/// Claims the file that a path has led to; nothing when it was replaced meanwhile.
std::optional<OldFile> claimOld(Descriptor file, std::string path, const ReplaceOptions& options) {
    OldFile old{std::move(path), std::move(file)};
    if (::fstat(old.file.get(), &old.status) != 0)
        raiseHostError(errno, old.path);
    checkReplaceable(old, options);
    if (claim(old.file.get(), Claim::Sole, Waiting::ForSavers) == ClaimResult::Refused)
        raise(RunTimeError::PermissionDenied);
    if (!isStillAt(old.file.get(), old.path, false))
        return std::nullopt;
    finishOverwritingClaimed(old.file.get(), old.path);
    return old;
}

/// Gives a new file what the old one has besides its content; false when the host does not let it.
bool keepProperties(int file, const OldFile& old, const ReplaceOptions& options) {
    struct stat status;
    if (::fstat(file, &status) != 0)
        return false;
    copyExtendedAttributes(old.file.get(), file);
    const bool sameOwner = status.st_uid == old.status.st_uid && status.st_gid == old.status.st_gid;
    if (!sameOwner && ::fchown(file, old.status.st_uid, old.status.st_gid) != 0)
        return false;
    if (::fchmod(file, old.status.st_mode & 07777) != 0)
        return false;
    return !options.attributes || writeAttributes(file, *options.attributes) == 0;
}

void writeDevice(const std::string& path, std::string_view bytes) {
    const PipeShield shield;
    const auto file = openFile(path, O_WRONLY);
    if (!file)
        raiseHostError(errno, path);
    waitForData(file.get());
    if (const int error = writeAll(file.get(), bytes.data(), bytes.size()))
        raiseHostError(error, path);
}

/// Makes a read-only file writable for the time being.
class Writable {
  public:
    explicit Writable(const OldFile& old) : old_(old), changed_(isReadOnly(old.status)) {
        if (changed_ && ::chmod(old.path.c_str(), mode() | S_IWUSR) != 0)
            raiseHostError(errno, old.path);
    }
    ~Writable() {
        if (changed_)
            ::chmod(old_.path.c_str(), mode());
    }
    void keep() noexcept { changed_ = false; }

  private:
    mode_t mode() const noexcept { return old_.status.st_mode & 07777; }
    const OldFile& old_;
    bool changed_;
};

void writeInPlace(const OldFile& old, std::string_view bytes, const ReplaceOptions& options) {
    Writable writable(old);
    const auto file = openFile(old.path, O_RDWR);
    int error = file ? overwriteInPlace(file.get(), bytes) : errno;
    if (error == 0 && options.attributes) {
        writable.keep();
        error = writeAttributes(file.get(), *options.attributes);
    }
    if (error != 0)
        raiseHostError(error, old.path);
}

bool refusesNewFile(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY || error == EXDEV;
}

void replaceOld(const OldFile& old, std::string_view bytes, const ReplaceOptions& options) {
    if (old.status.st_nlink > 1) // all its names are to see the new content
        return writeInPlace(old, bytes, options);
    auto file = NewFile::create(parentFolder(old.path), userOnly);
    int error = file ? 0 : errno;
    if (file && !keepProperties(file->descriptor(), old, options))
        return writeInPlace(old, bytes, options);
    if (file && (error = file->write(bytes)) == 0 && (error = file->flush()) == 0)
        error = file->publishOver(old.path);
    if (refusesNewFile(error))
        return writeInPlace(old, bytes, options);
    if (error != 0)
        raiseHostError(error, old.path);
    file.reset();
    flushFolder(parentFolder(old.path));
}

/// Writes a file that was not there; false when it is there now.
bool createNew(const std::string& path, std::string_view bytes, mode_t mode, const ReplaceOptions& options) {
    const auto folder = parentFolder(path);
    auto file = NewFile::create(folder, mode);
    int error = file ? file->write(bytes) : errno;
    if (error == 0 && options.attributes)
        error = writeAttributes(file->descriptor(), *options.attributes);
    if (error == 0 && (error = file->flush()) == 0)
        error = file->publish(path);
    if (error == EEXIST)
        return false;
    if (error != 0)
        raiseHostError(error, path);
    file.reset();
    flushFolder(folder);
    return true;
}

} // namespace

void replaceFile(std::u16string_view path, std::string_view bytes, const ReplaceOptions& options) {
    const SizeLimitShield shield;
    const auto given = hostPath(path);
    struct stat status;
    if (::stat(given.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))
        return writeDevice(given, bytes);
    for (int i = 0; i < attempts; ++i) {
        auto file = openGiven(given);
        const auto host = followLinks(given, file ? Target::Found : Target::Missing);
        if (!file && createNew(host, bytes, newFileMode(options.readable), options))
            return;
        if (!file)
            continue;
        if (const auto old = claimOld(std::move(file), host, options))
            return replaceOld(*old, bytes, options);
    }
    raise(RunTimeError::PermissionDenied);
}

void createFile(std::u16string_view path, std::string_view bytes, Readable readable) {
    const SizeLimitShield shield;
    const auto host = hostPath(path);
    struct stat status;
    if (::lstat(host.c_str(), &status) == 0 || !createNew(host, bytes, newFileMode(readable), {}))
        raise(RunTimeError::FileAlreadyExists);
}

} // namespace vlgs
