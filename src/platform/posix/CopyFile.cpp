// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "base/Error.h"
#include "platform/posix/Attributes.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostError.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/InPlace.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/SignalShield.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace vlgs {

using namespace posix;

namespace {

constexpr std::size_t bufferSize = 1 << 18;

struct SourceFile {
    Descriptor file;
    struct stat status {};
};

SourceFile openSource(const std::string& path) {
    SourceFile source{openFile(path, O_RDONLY)};
    if (!source.file || ::fstat(source.file.get(), &source.status) != 0)
        raiseHostError(errno, path);
    if (!S_ISREG(source.status.st_mode))
        raise(RunTimeError::PermissionDenied);
    finishOverwriting(source.file.get(), path);
    return source;
}

/// Copies what is left of a file inside the host, as far as the host can.
void copyInside([[maybe_unused]] int from, [[maybe_unused]] int to) {
#ifdef __linux__
    while (::copy_file_range(from, nullptr, to, nullptr, std::size_t{1} << 30, 0) > 0)
        ;
#endif
}

/// Copies what is left of a file; 0, or the value of errno.
int copyRest(int from, int to) {
    copyInside(from, to);
    std::vector<char> buffer(bufferSize);
    for (;;) {
        const auto count = readSome(from, buffer.data(), buffer.size());
        if (count <= 0)
            return count == 0 ? 0 : errno;
        if (const int error = writeAll(to, buffer.data(), static_cast<std::size_t>(count)))
            return error;
    }
}

} // namespace

void copyFile(std::u16string_view from, std::u16string_view to, Readable readable) {
    const SizeLimitShield shield;
    const auto sourcePath = hostPath(from);
    const auto source = openSource(sourcePath);
    const auto target = hostPath(to);
    struct stat status;
    if (::lstat(target.c_str(), &status) == 0)
        raise(RunTimeError::FileAlreadyExists);
    const auto mode =
        readable == Readable::ByUserOnly ? mode_t(0600) : (source.status.st_mode & 0777) | S_IWUSR;
    auto copy = NewFile::create(parentFolder(target), mode);
    if (!copy)
        raiseHostError(errno, target);
    int error = copyRest(source.file.get(), copy->descriptor());
    if (error == 0)
        error = writeAttributes(copy->descriptor(), readAttributes(sourcePath, source.status));
    if (error == 0)
        error = copy->publish(target);
    if (error != 0)
        raiseHostError(error, target);
}

} // namespace vlgs
