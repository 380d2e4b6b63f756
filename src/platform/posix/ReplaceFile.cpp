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

/// The path at the end of a chain of symbolic links, which need not exist.
std::string followLinks(std::string path) {
    for (int i = 0; i < mostLinks; ++i) {
        char text[PATH_MAX];
        const auto length = ::readlink(path.c_str(), text, sizeof text);
        if (length < 0)
            return path;
        const std::string_view target(text, static_cast<std::size_t>(length));
        path = target.starts_with('/') ? "" : parentFolder(path).append("/");
        path += target;
    }
    raiseHostError(ELOOP, path);
}

/// The file that is to be replaced. No descriptor: there is none yet.
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

/// Opens and claims what is there; nothing when it was replaced meanwhile.
std::optional<OldFile> openOld(const std::string& path, const ReplaceOptions& options) {
    OldFile old{path, openToClaim(path)};
    if (!old.file) {
        if (errno != ENOENT || path.ends_with('/'))
            raiseHostError(errno, path);
        return old;
    }
    if (::fstat(old.file.get(), &old.status) != 0)
        raiseHostError(errno, path);
    checkReplaceable(old, options);
    if (claim(old.file.get(), Claim::Sole, Waiting::ForSavers) == ClaimResult::Refused)
        raise(RunTimeError::PermissionDenied);
    if (!isStillAt(old.file.get(), path))
        return std::nullopt;
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
    const auto file = openFile(path, O_WRONLY);
    if (!file)
        raiseHostError(errno, path);
    waitForData(file.get());
    if (const int error = writeAll(file.get(), bytes.data(), bytes.size()))
        raiseHostError(error, path);
}

int overwrite(int file, std::string_view bytes) {
    if (::lseek(file, 0, SEEK_SET) < 0)
        return errno;
    if (const int error = writeAll(file, bytes.data(), bytes.size()))
        return error;
    return ::ftruncate(file, static_cast<off_t>(bytes.size())) == 0 && ::fsync(file) == 0 ? 0 : errno;
}

bool isForWantOfRoom(int error) {
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

/// Makes sure of the room for a longer content, where the file system can; 0, or the value of errno.
int reserve([[maybe_unused]] int file, [[maybe_unused]] std::size_t before,
            [[maybe_unused]] std::size_t after) {
#ifdef __linux__
    if (after <= before || ::fallocate(file, 0, 0, static_cast<off_t>(after)) == 0 || !isForWantOfRoom(errno))
        return 0;
    const int error = errno;
    return ::ftruncate(file, static_cast<off_t>(before)) == 0 ? error : errno;
#else
    return 0;
#endif
}

int overwriteOrRestore(int file, std::string_view bytes) {
    const auto before = readRest(file);
    if (const int error = reserve(file, before.size(), bytes.size()))
        return error;
    const int error = overwrite(file, bytes);
    if (error != 0)
        overwrite(file, before);
    return error;
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

/// For a folder that takes no new file, and for an owner that a new file cannot have.
void writeInPlace(const OldFile& old, std::string_view bytes, const ReplaceOptions& options) {
    Writable writable(old);
    const auto file = openFile(old.path, O_RDWR);
    int error = file ? overwriteOrRestore(file.get(), bytes) : errno;
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
    auto file = NewFile::createFor(old.path, userOnly);
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
    const auto host = followLinks(given);
    for (int i = 0; i < attempts; ++i) {
        const auto old = openOld(host, options);
        if (!old)
            continue;
        if (old->file)
            return replaceOld(*old, bytes, options);
        if (createNew(host, bytes, anybody, options))
            return;
    }
    raise(RunTimeError::PermissionDenied);
}

void createFile(std::u16string_view path, std::string_view bytes, Readable readable) {
    const SizeLimitShield shield;
    const auto host = hostPath(path);
    struct stat status;
    if (::lstat(host.c_str(), &status) == 0 ||
        !createNew(host, bytes, readable == Readable::ByUserOnly ? userOnly : anybody, {}))
        raise(RunTimeError::FileAlreadyExists);
}

} // namespace vlgs
