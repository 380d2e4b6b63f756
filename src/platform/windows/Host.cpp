// SPDX-License-Identifier: MIT
#include "platform/windows/Host.h"

#include "base/Error.h"

namespace vlgs::windows {

namespace {
constexpr DWORD diskQuotaExceeded = 1295; // ERROR_DISK_QUOTA_EXCEEDED, which not every set of headers has
} // namespace

void raiseHostError(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
        raise(RunTimeError::FileNotFound);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DIRECTORY:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        raise(RunTimeError::PathNotFound);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_USER_MAPPED_FILE:
    case ERROR_DELETE_PENDING:
        raise(RunTimeError::PermissionDenied);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        raise(RunTimeError::FileAlreadyExists);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case diskQuotaExceeded:
        raise(RunTimeError::DiskFull);
    case ERROR_GEN_FAILURE:
    case ERROR_CRC:
    case ERROR_NOT_READY:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_IO_DEVICE:
        raise(RunTimeError::DeviceIoError);
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
        raise(RunTimeError::BadFileNumber);
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
        raise(RunTimeError::OutOfMemory);
    default:
        raise(RunTimeError::PathFileAccessError);
    }
}

void raiseLastError() {
    raiseHostError(GetLastError());
}

} // namespace vlgs::windows
