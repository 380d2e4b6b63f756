// SPDX-License-Identifier: MIT
#include "platform/posix/NewFile.h"

#include "base/Ascii.h"
#include "platform/posix/FolderStream.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/RandomBytes.h"
#include "platform/posix/Sharing.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace vlgs::posix {

namespace {

constexpr std::string_view prefix = ".vlgs-";
constexpr std::size_t digits = 16;
/// Each one more means that somebody else uses the same random name.
constexpr int attempts = 100;
/// A file whose maker lives is claimed, but for the instant in which it is made.
constexpr std::chrono::seconds sweepable{60};

std::string temporaryName(const std::string& folder) {
    std::array<std::uint8_t, digits / 2> random;
    fillRandom(random);
    auto name = (folder + "/").append(prefix);
    for (const int byte : random)
        for (const int digit : {byte >> 4, byte & 15})
            name += static_cast<char>(ascii::lowerHexDigits[digit]);
    return name;
}

bool isTemporaryName(std::string_view name) {
    return name.size() == prefix.size() + digits && name.starts_with(prefix) &&
           name.find_first_not_of("0123456789abcdef", prefix.size()) == name.npos;
}

/// Removes a temporary file of this user whose maker is gone.
void sweepFile(const std::string& path) {
    struct stat status;
    if (::lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        (status.st_uid != ::geteuid() && ::geteuid() != 0) ||
        std::chrono::seconds(::time(nullptr) - status.st_mtime) < sweepable)
        return;
    const auto file = openFile(path, O_RDONLY | O_NOFOLLOW);
    if (file && claim(file.get(), Claim::Sole, Waiting::None) == ClaimResult::Taken &&
        isStillAt(file.get(), path, false))
        ::unlink(path.c_str());
}

/// Removes what killed processes have left in a folder. A thread that writes there again and again looks once
/// in the time that a file takes to be old.
void sweep(const std::string& folder) {
    // Nothing that ends with the thread: other objects that do write files as they end.
    struct Swept {
        std::size_t folder; // its hash: folders that share one wait for one another
        std::chrono::steady_clock::time_point when;
    };
    constinit thread_local Swept last{};
    const Swept now{std::hash<std::string>()(folder), std::chrono::steady_clock::now()};
    if (last.folder == now.folder && now.when - last.when < sweepable)
        return;
    last = now;
    FolderStream entries(folder);
    while (const auto* entry = entries.next())
        if (isTemporaryName(entry->d_name))
            sweepFile(folder + "/" + entry->d_name);
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

std::optional<NewFile> NewFile::create(const std::string& folder, mode_t mode) {
    sweep(folder);
    auto name = temporaryName(folder);
    if (auto nameless = openNameless(folder, mode))
        return NewFile(std::move(nameless), std::move(name), false);
    for (int i = 0; i < attempts; ++i, name = temporaryName(folder)) {
        if (auto named = openFile(name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode))
            return NewFile(std::move(named), std::move(name), true);
        if (errno != EEXIST)
            break;
    }
    return std::nullopt;
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
    for (int i = 0; !named_ && i < attempts; ++i, name_ = temporaryName(parentFolder(name_))) {
        const int error = linkTo(name_);
        if (error != 0 && error != EEXIST)
            return error;
        if ((named_ = error == 0))
            break;
    }
    if (!named_)
        return EEXIST;
    named_ = ::rename(name_.c_str(), path.c_str()) != 0;
    return named_ ? errno : 0;
}

void flushFolder(const std::string& folder) noexcept {
    if (const auto opened = openFile(folder, O_RDONLY | O_DIRECTORY))
        ::fsync(opened.get());
}

} // namespace vlgs::posix
