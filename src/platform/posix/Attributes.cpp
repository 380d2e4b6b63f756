// SPDX-License-Identifier: MIT
// Samba and Wine keep the attributes of a file in the extended attribute user.DOSATTRIB, in one of two forms:
//   the number as text, "0x22", and possibly a NUL with more behind it;
//   a record in which a NUL stands for that text: at byte 2 a 16-bit version (3 to 5), at byte 8 a 32-bit set
//   of valid fields (1: the attributes), at byte 12 the 32-bit attributes, then times and sizes.
// Numbers are little-endian. The text is written where nothing stood; a record keeps its other fields.
#include "platform/posix/Attributes.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <optional>
#include <vector>

#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace vlgs::posix {

namespace {

constexpr auto stored = FileAttributes::Hidden | FileAttributes::System | FileAttributes::Archive;
constexpr auto settable = stored | FileAttributes::ReadOnly;

#ifdef __linux__

constexpr const char* attributeName = "user.DOSATTRIB";
constexpr std::size_t longestValue = 512;

struct Record {
    static constexpr std::size_t version = 2, validFields = 8, attributes = 12, size = 16;
    static constexpr std::uint32_t attributesValid = 1;
};

ssize_t get(const std::string& path, const char* name, char* to, std::size_t size) {
    return ::getxattr(path.c_str(), name, to, size);
}
ssize_t get(int file, const char* name, char* to, std::size_t size) {
    return ::fgetxattr(file, name, to, size);
}
int set(const std::string& path, const std::string& value) {
    return ::setxattr(path.c_str(), attributeName, value.data(), value.size(), 0);
}
int set(int file, const std::string& value) {
    return ::fsetxattr(file, attributeName, value.data(), value.size(), 0);
}
int remove(const std::string& path) {
    return ::removexattr(path.c_str(), attributeName);
}
int remove(int file) {
    return ::fremovexattr(file, attributeName);
}

/// The value as it is kept, "" for a file without one, nothing where it cannot be kept; errno tells why.
template <class File>
std::optional<std::string> keptValue(const File& file) {
    std::string value(longestValue, '\0');
    const auto size = get(file, attributeName, value.data(), value.size());
    if (size < 0)
        return errno == ENODATA ? std::optional(std::string()) : std::nullopt;
    value.resize(static_cast<std::size_t>(size));
    return value;
}

std::uint32_t number(const std::string& value, std::size_t at, std::size_t bytes) {
    std::uint32_t result = 0;
    for (std::size_t i = bytes; i-- > 0;)
        result = result << 8 | static_cast<unsigned char>(value[at + i]);
    return result;
}

void setNumber(std::string& value, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i)
        value[at + i] = static_cast<char>(number >> 8 * i & 0xFF);
}

bool isRecord(const std::string& value) {
    if (value.size() < Record::size || value[0] != '\0')
        return false;
    const auto version = number(value, Record::version, 2);
    return version >= 3 && version <= 5;
}

std::uint32_t parseValue(const std::string& value) {
    if (isRecord(value))
        return number(value, Record::validFields, 4) & Record::attributesValid
                   ? number(value, Record::attributes, 4)
                   : 0;
    std::uint32_t result = 0;
    if (value.starts_with("0x") || value.starts_with("0X"))
        std::from_chars(value.data() + 2, value.data() + value.size(), result, 16);
    return result;
}

std::string changedValue(std::string value, std::uint32_t attributes) {
    if (isRecord(value)) {
        setNumber(value, Record::validFields,
                  number(value, Record::validFields, 4) | Record::attributesValid);
        setNumber(value, Record::attributes, attributes);
        return value;
    }
    if (attributes == 0)
        return {};
    char text[16];
    return {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "0x%x", attributes))};
}

template <class File>
int writeKept(const File& file, FileAttributes attributes) {
    const auto before = keptValue(file);
    if (!before)
        return errno == ENOTSUP ? 0 : errno;
    const auto after = changedValue(*before, static_cast<std::uint32_t>(attributes));
    if (after == *before)
        return 0;
    const int result = after.empty() ? remove(file) : set(file, after);
    return result == 0 || errno == ENOTSUP ? 0 : errno;
}

std::optional<FileAttributes> readKept(const std::string& path) {
    if (const auto value = keptValue(path))
        return FileAttributes(parseValue(*value));
    return errno == ENOTSUP ? std::nullopt : std::optional(FileAttributes::Normal);
}

#else

template <class File>
int writeKept(const File&, FileAttributes) {
    return 0;
}
std::optional<FileAttributes> readKept(const std::string&) {
    return std::nullopt;
}

#endif

bool beginsWithDot(const std::string& path) {
    const auto end = path.find_last_not_of('/');
    const auto slash = end == path.npos ? path.npos : path.rfind('/', end);
    return slash != path.npos && path[slash + 1] == '.';
}

/// The mode of a file that is to be read-only or not, changed as little as can be.
mode_t changedMode(mode_t mode, bool readOnly) {
    if (readOnly)
        return mode & ~mode_t(0222);
    return (mode & 0222) != 0 ? mode : mode | S_IWUSR;
}

int changeMode(const std::string& path, mode_t mode) {
    return ::chmod(path.c_str(), mode);
}
int changeMode(int file, mode_t mode) {
    return ::fchmod(file, mode);
}
int status(const std::string& path, struct stat& to) {
    return ::stat(path.c_str(), &to);
}
int status(int file, struct stat& to) {
    return ::fstat(file, &to);
}

template <class File>
int writeTo(const File& file, FileAttributes attributes) {
    struct stat before;
    if (status(file, before) != 0)
        return errno;
    const bool folder = S_ISDIR(before.st_mode);
    const auto wanted = attributes & (folder ? stored : settable);
    const auto mode = before.st_mode & 07777;
    const auto after = folder ? mode : changedMode(mode, has(wanted, FileAttributes::ReadOnly));
    // Only a file that may be written takes extended attributes, so it is made writable first and read-only
    // last.
    const auto meanwhile = folder ? mode : changedMode(mode, false);
    if (meanwhile != mode && changeMode(file, meanwhile) != 0)
        return errno;
    int error = writeKept(file, wanted);
    const auto last = error == 0 ? after : mode;
    if (last != meanwhile && changeMode(file, last) != 0 && error == 0)
        error = errno;
    return error;
}

} // namespace

FileAttributes readAttributes(const std::string& path, const struct stat& status) {
    auto result = S_ISDIR(status.st_mode) ? FileAttributes::Directory : FileAttributes::Normal;
    if (!S_ISDIR(status.st_mode) && isReadOnly(status))
        result = result | FileAttributes::ReadOnly;
    if (const auto kept = readKept(path))
        return result | (*kept & stored);
    return beginsWithDot(path) ? result | FileAttributes::Hidden : result;
}

int writeAttributes(const std::string& path, FileAttributes attributes) {
    return writeTo(path, attributes);
}

int writeAttributes(int file, FileAttributes attributes) {
    return writeTo(file, attributes);
}

void copyExtendedAttributes([[maybe_unused]] int from, [[maybe_unused]] int to) {
#ifdef __linux__
    // A new file may have got a list from its folder.
    ::fremovexattr(to, "system.posix_acl_access");
    const auto size = ::flistxattr(from, nullptr, 0);
    if (size <= 0)
        return;
    std::vector<char> names(static_cast<std::size_t>(size) + 1);
    const auto listed = ::flistxattr(from, names.data(), names.size() - 1);
    std::string value;
    for (const char* name = names.data(); name < names.data() + std::max<ssize_t>(listed, 0);
         name += std::char_traits<char>::length(name) + 1) {
        const auto length = ::fgetxattr(from, name, nullptr, 0);
        value.resize(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
        if (length >= 0 && get(from, name, value.data(), value.size()) == length)
            ::fsetxattr(to, name, value.data(), value.size(), 0);
    }
#endif
}

} // namespace vlgs::posix
