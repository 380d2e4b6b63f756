// SPDX-License-Identifier: MIT
#include "platform/posix/HostError.h"

#include "base/Error.h"
#include "platform/posix/HostPath.h"

#include <cerrno>
#include <sys/stat.h>

namespace vlgs::posix {

namespace {

RunTimeError notFound(const std::string& path) {
    struct stat status;
    const bool folderThere = ::stat(parentFolder(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    return folderThere ? RunTimeError::FileNotFound : RunTimeError::PathNotFound;
}

} // namespace

void raiseHostError(int error, const std::string& path) {
    switch (error) {
    case ENOENT:
        raise(notFound(path));
    case ENOTDIR:
        raise(RunTimeError::PathNotFound);
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
    case EISDIR:
    case EAGAIN:
        raise(RunTimeError::PermissionDenied);
    case EEXIST:
        raise(RunTimeError::FileAlreadyExists);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        raise(RunTimeError::DiskFull);
    case EIO:
    case EPIPE:
    case ENXIO:
    case ENODEV:
        raise(RunTimeError::DeviceIoError);
    case ENAMETOOLONG:
    case EILSEQ:
        raise(RunTimeError::BadFileNumber);
    case EMFILE:
    case ENFILE:
        throw Error(67, String(), u"Too many files");
    case ENOMEM:
        raise(RunTimeError::OutOfMemory);
    default:
        raise(RunTimeError::PathFileAccessError);
    }
}

} // namespace vlgs::posix
