// SPDX-License-Identifier: MIT
#include "platform/posix/InPlace.h"

#include "base/Ascii.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/HostPath.h"
#include "platform/posix/NewFile.h"
#include "platform/posix/Sharing.h"
#include "platform/posix/UserFolders.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace vlgs::posix {

namespace {

/// The head of a recovery copy; the old content and the new one follow.
struct Head {
    std::array<char, 16> kind{'v', 'l', 'g', 's', ' ', 'r', 'e', 'c',
                              'o', 'v', 'e', 'r', 'y', ' ', '1', '\n'};
    std::uint64_t oldSize = 0;
    std::uint64_t newSize = 0;
};

struct Contents {
    std::string_view before;
    std::string_view after;
};

void appendHex(std::string& name, std::uint64_t number) {
    for (int shift = 60; shift >= 0; shift -= 4)
        name += static_cast<char>(ascii::lowerHexDigits[number >> shift & 15]);
}

/// The path of a file's recovery copy.
std::string recoveryPath(const struct stat& status) {
    auto path = stateFolder() + "/recovery/";
    appendHex(path, status.st_dev);
    path += '-';
    appendHex(path, status.st_ino);
    return path;
}

/// The same; "" when the file tells nothing about itself.
std::string recoveryPath(int file) {
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) ? recoveryPath(status) : std::string();
}

/// Opens a recovery copy; none that somebody else has put where this user's are looked for, as in the home
/// folder of the one who called in the administrator.
Descriptor openCopy(const std::string& path) {
    auto copy = path.empty() ? Descriptor() : openFile(path, O_RDONLY | O_NOFOLLOW);
    struct stat status;
    const bool own =
        copy && ::fstat(copy.get(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
    return own ? std::move(copy) : Descriptor();
}

/// Puts a recovery copy on the disk; false where the user has no place for it.
bool keepCopy(const std::string& path, const Contents& contents) {
    const auto folder = parentFolder(path);
    if (path.empty() || makeFolders(folder) != 0)
        return false;
    auto copy = NewFile::create(folder, 0600);
    Head head;
    head.oldSize = contents.before.size();
    head.newSize = contents.after.size();
    const auto start = std::bit_cast<std::array<char, sizeof head>>(head);
    const bool kept = copy && copy->write({start.data(), start.size()}) == 0 &&
                      copy->write(contents.before) == 0 && copy->write(contents.after) == 0 &&
                      copy->flush() == 0 && copy->publishOver(path) == 0;
    copy.reset();
    flushFolder(folder);
    return kept;
}

/// The contents in a recovery copy's bytes; both empty for bytes that are none.
Contents contentsOf(std::string_view bytes) {
    Head head;
    if (bytes.size() < sizeof head)
        return {};
    std::memcpy(&head, bytes.data(), sizeof head);
    bytes.remove_prefix(sizeof head);
    if (head.kind != Head().kind || head.oldSize > bytes.size() ||
        head.newSize != bytes.size() - head.oldSize)
        return {};
    return {bytes.substr(0, head.oldSize), bytes.substr(head.oldSize)};
}

/// Whether a content lies on the way from one to another, whatever part of it has reached the disk. Any other
/// was written by somebody since, and stays.
bool isBetween(std::string_view content, const Contents& contents) {
    const auto& [before, after] = contents;
    if (content.size() < std::min(before.size(), after.size()) ||
        content.size() > std::max(before.size(), after.size()))
        return false;
    for (std::size_t i = 0; i < content.size(); ++i) {
        const bool isNew = i < after.size() && content[i] == after[i];
        const char old = i < before.size() ? before[i] : '\0';
        if (!isNew && content[i] != old)
            return false;
    }
    return true;
}

/// What the whole file holds; raises when it cannot be read.
std::string readWhole(int file) {
    return ::lseek(file, 0, SEEK_SET) == 0 ? readRest(file) : std::string();
}

int overwrite(int file, std::string_view bytes) {
    if (::lseek(file, 0, SEEK_SET) < 0)
        return errno;
    if (const int error = writeAll(file, bytes.data(), bytes.size()))
        return error;
    return ::ftruncate(file, static_cast<off_t>(bytes.size())) == 0 && ::fsync(file) == 0 ? 0 : errno;
}

/// Makes sure of the room for a longer content, where the file system can; 0, or the value of errno.
int reserve([[maybe_unused]] int file, [[maybe_unused]] const Contents& contents) {
#ifdef __linux__
    const auto size = static_cast<off_t>(contents.after.size());
    if (contents.after.size() > contents.before.size() &&
        ::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) != 0 && (errno == ENOSPC || errno == EDQUOT))
        return errno;
#endif
    return 0;
}

} // namespace

int overwriteInPlace(int file, std::string_view bytes) {
    const auto before = readWhole(file);
    const Contents contents{before, bytes};
    if (const int error = reserve(file, contents))
        return error;
    const auto copy = recoveryPath(file);
    const bool kept = keepCopy(copy, contents);
    const int error = overwrite(file, bytes);
    const bool settled = error == 0 || overwrite(file, before) == 0;
    if (kept && settled)
        ::unlink(copy.c_str());
    return error;
}

bool isUnfinished(const struct stat& file) {
    return S_ISREG(file.st_mode) && openCopy(recoveryPath(file));
}

void finishOverwritingClaimed(int file, const std::string& path) {
    const auto copy = recoveryPath(file);
    const auto kept = openCopy(copy);
    if (!kept)
        return;
    const auto bytes = readRest(kept.get());
    const auto contents = contentsOf(bytes);
    const auto writing = openFile(path, O_RDWR);
    if (!writing || !isStillAt(file, path) || !isStillAt(writing.get(), path))
        return;
    if (!isBetween(readWhole(writing.get()), contents) || overwrite(writing.get(), contents.after) == 0 ||
        overwrite(writing.get(), contents.before) == 0)
        ::unlink(copy.c_str());
}

void finishOverwriting(int file, const std::string& path) {
    struct stat status;
    if (::fstat(file, &status) != 0 || !isUnfinished(status) ||
        claim(file, Claim::Sole, Waiting::ForSavers) != ClaimResult::Taken)
        return;
    finishOverwritingClaimed(file, path);
    disclaim(file);
}

} // namespace vlgs::posix
