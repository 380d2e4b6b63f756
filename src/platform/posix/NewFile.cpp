#include "platform/posix/NewFile.h"

#include "platform/posix/RandomBytes.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace vlgs::posix {

namespace {

std::string temporaryName(const std::string& folder) {
    std::array<std::uint8_t, 8> random;
    fillRandom(random);
    std::string name = folder + "/.vlgs-";
    for (const auto byte : random) {
        constexpr const char* digits = "0123456789abcdef";
        name += {digits[byte >> 4], digits[byte & 15]};
    }
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

NewFile::NewFile(Descriptor file, std::string folder, std::string name) noexcept
    : file_(std::move(file)), folder_(std::move(folder)), name_(std::move(name)) {}

NewFile::~NewFile() {
    if (file_ && !name_.empty())
        ::unlink(name_.c_str());
}

std::optional<NewFile> NewFile::create(const std::string& folder, mode_t mode) {
    if (auto nameless = openNameless(folder, mode))
        return NewFile(std::move(nameless), folder, {});
    auto name = temporaryName(folder);
    auto file = openFile(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!file)
        return std::nullopt;
    return NewFile(std::move(file), folder, std::move(name));
}

int NewFile::flush() noexcept {
    return ::fsync(file_.get()) == 0 ? 0 : errno;
}

int NewFile::linkTo(const std::string& path) const noexcept {
    const auto self = openFileName(file_.get());
    return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

int NewFile::publish(const std::string& path) {
    if (name_.empty())
        return linkTo(path);
    // An empty file takes the name first: that alone fails, on every file system, when the name is in use.
    if (!openFile(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600))
        return errno;
    const int error = publishOver(path);
    if (error != 0)
        ::unlink(path.c_str());
    return error;
}

int NewFile::giveTemporaryName() {
    if (!name_.empty())
        return 0;
    auto name = temporaryName(folder_);
    if (const int error = linkTo(name))
        return error;
    name_ = std::move(name);
    return 0;
}

int NewFile::publishOver(const std::string& path) {
    if (const int error = giveTemporaryName())
        return error;
    if (::rename(name_.c_str(), path.c_str()) != 0)
        return errno;
    name_.clear();
    return 0;
}

void flushFolder(const std::string& folder) noexcept {
    if (const auto opened = openFile(folder, O_RDONLY | O_DIRECTORY))
        ::fsync(opened.get());
}

} // namespace vlgs::posix
