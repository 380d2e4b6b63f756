// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "base/CaseFold.h"
#include "base/Error.h"
#include "platform/posix/Attributes.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/FolderStream.h"
#include "platform/posix/HostError.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/Sharing.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vlgs {

using namespace posix;

namespace {

struct stat statusOf(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0)
        raiseHostError(errno, path);
    return status;
}

FileAttributes kindOf(const FolderStream& folder, const dirent& entry, bool& known) {
    auto type = entry.d_type;
    struct stat status;
    if (type == DT_UNKNOWN && ::fstatat(folder.descriptor(), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
        type = static_cast<unsigned char>(IFTODT(status.st_mode));
    known = type == DT_REG || type == DT_DIR || type == DT_LNK;
    return type == DT_DIR   ? FileAttributes::Directory
           : type == DT_LNK ? FileAttributes::Link
                            : FileAttributes::Normal;
}

bool hasExtension(std::u16string_view name, std::u16string_view extension) {
    const auto dot = name.rfind(u'.');
    return dot != name.npos && equalIgnoringCase(name.substr(dot + 1), extension);
}

/// Opens the very file of this name, for a claim and for nothing else: for writing too where that is
/// allowed, because over a network a sole claim takes it.
Descriptor openUnfollowed(const std::string& path) {
    Descriptor file;
    for (const int access : {O_RDWR, O_RDONLY, O_WRONLY})
        if (!file && (access == O_RDWR || errno == EACCES || errno == EROFS || errno == ETXTBSY))
            file = openFile(path, access | O_NOFOLLOW);
    if (!file)
        raiseHostError(errno, path);
    return file;
}

void unlinkFile(const std::string& path) {
    if (::unlink(path.c_str()) != 0)
        raiseHostError(errno, path);
}

/// Deletes a plain file while it is claimed, so that nobody can take hold of it between test and deletion.
void deletePlainFile(const std::string& path) {
    const auto file = openUnfollowed(path);
    const auto result = claim(file.get(), Claim::Sole, Waiting::None);
    const bool cannotTell = result == ClaimResult::Unsupported && errno == EBADF;
    if (result == ClaimResult::Refused || cannotTell)
        raise(RunTimeError::PermissionDenied);
    const Lease lease(file.get(), Claim::Sole);
    if (lease.refused() || !isStillAt(file.get(), path, false))
        raise(RunTimeError::PermissionDenied);
    unlinkFile(path);
}

} // namespace

std::optional<FileAttributes> findAttributes(std::u16string_view path) noexcept {
    try {
        const auto host = hostPath(path);
        struct stat status;
        if (::stat(host.c_str(), &status) == 0)
            return readAttributes(host, status);
    } catch (...) {
        // What cannot be looked for is not there.
    }
    return std::nullopt;
}

bool fileExists(std::u16string_view path) noexcept {
    const auto found = findAttributes(path);
    return found && !has(*found, FileAttributes::Directory);
}

FileAttributes attributes(std::u16string_view path) {
    const auto host = hostPath(path);
    return readAttributes(host, statusOf(host));
}

void setAttributes(std::u16string_view path, FileAttributes attributes) {
    const auto host = hostPath(path);
    if (const int error = writeAttributes(host, attributes))
        raiseHostError(error, host);
}

bool isSameFile(std::u16string_view path, std::u16string_view other) noexcept {
    try {
        const auto one = statusOf(hostPath(path));
        const auto two = statusOf(hostPath(other));
        return one.st_dev == two.st_dev && one.st_ino == two.st_ino;
    } catch (...) {
        return false;
    }
}

std::uint64_t fileLength(std::u16string_view path) {
    const auto host = hostPath(path);
    const auto status = statusOf(host);
    if (S_ISDIR(status.st_mode))
        raise(RunTimeError::FileNotFound);
    return static_cast<std::uint64_t>(status.st_size);
}

void deleteFile(std::u16string_view path) {
    const auto host = hostPath(path);
    struct stat status;
    if (::lstat(host.c_str(), &status) != 0)
        raiseHostError(errno, host);
    if (S_ISLNK(status.st_mode))
        unlinkFile(host);
    else if (S_ISREG(status.st_mode) && !isReadOnly(status))
        deletePlainFile(host);
    else
        raise(RunTimeError::PermissionDenied);
}

void visitFolder(std::u16string_view folder, std::u16string_view extension,
                 const std::function<bool(FolderEntry)>& visit) {
    const auto host = hostPath(folder);
    FolderStream entries(host);
    if (!entries.opened())
        errno == ENOENT ? raise(RunTimeError::PathNotFound) : raiseHostError(errno, host);
    while (const auto* entry = entries.next()) {
        auto name = libraryName(entry->d_name);
        if (!extension.empty() && !hasExtension(name, extension))
            continue;
        bool known = false;
        const auto kind = kindOf(entries, *entry, known);
        if (known && !visit({std::move(name), kind}))
            return;
    }
}

} // namespace vlgs
