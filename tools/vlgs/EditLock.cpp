// SPDX-License-Identifier: MIT
#include "EditLock.h"

#include "base/CaseFold.h"
#include "base/Error.h"

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/posix/HostPath.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <thread>
#include <unistd.h>
#endif

namespace vlgs::cli {

#ifdef _WIN32

EditLock::EditLock(const String& path) {
    constexpr DWORD patience = 10'000; // milliseconds
    const auto name = "Local\\VlGeneralServices.edit." + std::to_string(hashIgnoringCase(path));
    mutex_ = CreateMutexA(nullptr, FALSE, name.c_str());
    if (mutex_ && WaitForSingleObject(mutex_, patience) == WAIT_TIMEOUT) {
        CloseHandle(mutex_);
        raise(RunTimeError::PermissionDenied);
    }
}

EditLock::~EditLock() {
    if (mutex_) {
        ReleaseMutex(mutex_);
        CloseHandle(mutex_);
    }
}

#else

EditLock::EditLock(const String& path) {
    constexpr auto pause = std::chrono::milliseconds(5);
    constexpr int attempts = 2000;
    std::error_code failure;
    const auto file = std::filesystem::weakly_canonical(posix::hostPath(path), failure);
    folder_ = ::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder_ < 0)
        return; // what there is to say about that, reading or saving says
    for (int i = 0; ::flock(folder_, LOCK_EX | LOCK_NB) != 0; ++i) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return;
        if (i == attempts) {
            ::close(folder_);
            raise(RunTimeError::PermissionDenied);
        }
        std::this_thread::sleep_for(pause);
    }
}

EditLock::~EditLock() {
    if (folder_ >= 0)
        ::close(folder_);
}

#endif

} // namespace vlgs::cli
