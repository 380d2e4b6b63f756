#include "platform/posix/NewFile.h"

#include "base/Ascii.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/RandomBytes.h"
#include "platform/posix/Sharing.h"

#include <array>
#include <bit>
#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <unistd.h>

namespace vlgs::posix {

namespace {

std::string temporaryName(const std::string& folder, std::uint64_t number) {
    auto name = folder + "/.vlgs-";
    for (int shift = 60; shift >= 0; shift -= 4)
        name += static_cast<char>(ascii::lowerHexDigits[number >> shift & 15]);
    return name;
}

/// The name by which the host links to an open file.
std::string openFileName(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

Descriptor openNameless([[maybe_unused]] const std::string& folder, [[maybe_unused]] mode_t mode) {
#ifdef O_TMPFILE
    if (auto file = openFile(folder, O_TMPFILE | O_RDWR, mode);
        file && ::access(openFileName(file.get()).c_str(), F_OK) == 0)
        return file;
#endif
    return {};
}

} // namespace

NewFile::NewFile(Descriptor file, std::string name, bool named) noexcept
    : file_(std::move(file)), name_(std::move(name)), named_(named) {
    claim(file_.get(), Claim::Sole, Waiting::None);
}

NewFile::~NewFile() {
    if (file_ && named_)
        ::unlink(name_.c_str());
}

std::optional<NewFile> NewFile::open(std::string name, mode_t mode) {
    if (auto nameless = openNameless(parentFolder(name), mode))
        return NewFile(std::move(nameless), std::move(name), false);
    if (auto named = openFile(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode))
        return NewFile(std::move(named), std::move(name), true);
    return std::nullopt;
}

std::optional<NewFile> NewFile::create(const std::string& folder, mode_t mode) {
    std::array<std::uint8_t, sizeof(std::uint64_t)> random;
    fillRandom(random);
    return open(temporaryName(folder, std::bit_cast<std::uint64_t>(random)), mode);
}

std::optional<NewFile> NewFile::createFor(const std::string& target, mode_t mode) {
    auto name = temporaryName(parentFolder(target), std::hash<std::string>()(target));
    ::unlink(name.c_str());
    return open(std::move(name), mode);
}

Descriptor NewFile::openShared() noexcept {
    if (named_)
        return {};
    auto file = openFile(openFileName(file_.get()), O_RDONLY);
    disclaim(file_.get());
    if (file && claim(file.get(), Claim::Shared, Waiting::None) == ClaimResult::Taken)
        return file;
    return {};
}

int NewFile::flush() noexcept {
    return ::fsync(file_.get()) == 0 ? 0 : errno;
}

int NewFile::linkTo(const std::string& path) const noexcept {
    const auto self = openFileName(file_.get());
    return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

int NewFile::publish(const std::string& path) {
    if (!named_)
        return linkTo(path);
    // An empty file takes the name first: that alone fails, on every file system, when the name is in use.
    if (!openFile(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600))
        return errno;
    const int error = publishOver(path);
    if (error != 0)
        ::unlink(path.c_str());
    return error;
}

int NewFile::publishOver(const std::string& path) {
    if (!named_)
        if (const int error = linkTo(name_))
            return error;
    named_ = ::rename(name_.c_str(), path.c_str()) != 0;
    return named_ ? errno : 0;
}

void flushFolder(const std::string& folder) noexcept {
    if (const auto opened = openFile(folder, O_RDONLY | O_DIRECTORY))
        ::fsync(opened.get());
}

} // namespace vlgs::posix
