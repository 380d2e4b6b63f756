// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "base/CaseFold.h"
#include "base/Error.h"
#include "platform/windows/FileSecurity.h"
#include "platform/windows/Host.h"

#include <algorithm>

namespace vlgs {

using namespace windows;

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr auto settable =
    FileAttributes::ReadOnly | FileAttributes::Hidden | FileAttributes::System | FileAttributes::Archive;
constexpr auto known = settable | FileAttributes::Directory;

FileAttributes told(DWORD attributes) {
    return FileAttributes(attributes) & known;
}

/// The attributes of a path, of a link those of its target; INVALID_FILE_ATTRIBUTES with the reason in the
/// last error when there is nothing.
/// The root of a drive has no entry that could be hidden; the marks it bears mean nothing.
bool isDriveRoot(std::u16string_view path) noexcept {
    return path.size() == 3 && path[1] == u':' && (path[2] == u'\\' || path[2] == u'/');
}

DWORD hostAttributes(const WideText& path) noexcept {
    DWORD attributes = GetFileAttributesW(path.get());
    if (attributes != INVALID_FILE_ATTRIBUTES && isDriveRoot(reinterpret_cast<const char16_t*>(path.get())))
        attributes &= ~static_cast<DWORD>(FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return attributes;
    const Handle target(CreateFileW(path.get(), FILE_READ_ATTRIBUTES, shareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION info;
    if (!target || !GetFileInformationByHandle(target.get(), &info))
        return INVALID_FILE_ATTRIBUTES;
    return info.dwFileAttributes;
}

Handle open(std::u16string_view path, DWORD access, DWORD share, DWORD disposition,
            SECURITY_ATTRIBUTES* security = nullptr, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    const WideText name(path);
    Handle file(CreateFileW(name.get(), access, share, security, disposition, flags, nullptr));
    if (!file) {
        const DWORD error = GetLastError();
        if (disposition == CREATE_NEW && GetFileAttributesW(name.get()) != INVALID_FILE_ATTRIBUTES)
            raise(RunTimeError::FileAlreadyExists);
        raiseHostError(error);
    }
    return file;
}

void writeAll(const Handle& file, std::string_view bytes) {
    constexpr std::size_t piece = 1u << 28;
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), piece)), &written,
                       nullptr))
            raiseLastError();
        bytes.remove_prefix(written);
    }
}

/// Devices may have no end; the user's own console has, and what holds nothing at all.
bool isEndless(const Handle& file, std::u16string_view path) {
    constexpr std::u16string_view null = u"NUL";
    DWORD mode = 0;
    return GetFileType(file.get()) == FILE_TYPE_CHAR && !GetConsoleMode(file.get(), &mode) &&
           (path.size() < null.size() || !equalIgnoringCase(path.substr(path.size() - null.size()), null));
}

Handle openForReading(std::u16string_view path, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
    Handle file = open(path, GENERIC_READ, shareAll, OPEN_EXISTING, nullptr, flags);
    if (isEndless(file, path))
        raise(RunTimeError::PermissionDenied);
    return file;
}

/// The longest content that is read, in bytes; pipes may go on for ever.
constexpr std::size_t mostRead = 1u << 31;

std::string readAll(const Handle& file) {
    LARGE_INTEGER size{};
    if (GetFileType(file.get()) == FILE_TYPE_DISK && !GetFileSizeEx(file.get(), &size))
        raiseLastError();
    if (static_cast<std::uint64_t>(size.QuadPart) > mostRead)
        raise(RunTimeError::OutOfMemory);
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t done = 0;
    for (;;) {
        if (done > mostRead)
            raise(RunTimeError::OutOfMemory);
        if (done == bytes.size())
            bytes.resize(done + 4096); // it may have grown meanwhile
        DWORD count = 0;
        const auto room = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1u << 28));
        if (!ReadFile(file.get(), bytes.data() + done, room, &count, nullptr))
            raiseLastError();
        if (count == 0)
            break;
        done += count;
    }
    bytes.resize(done);
    return bytes;
}

} // namespace

std::optional<FileAttributes> findAttributes(std::u16string_view path) noexcept {
    try {
        const DWORD attributes = hostAttributes(WideText(path));
        return attributes == INVALID_FILE_ATTRIBUTES ? std::nullopt : std::optional(told(attributes));
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool fileExists(std::u16string_view path) noexcept {
    const auto found = findAttributes(path);
    return found && !has(*found, FileAttributes::Directory) && !path.ends_with(u'\\') &&
           !path.ends_with(u'/');
}

FileAttributes attributes(std::u16string_view path) {
    const DWORD found = hostAttributes(WideText(path));
    if (found == INVALID_FILE_ATTRIBUTES)
        raiseLastError();
    return told(found);
}

void setAttributes(std::u16string_view path, FileAttributes attributes) {
    const auto bits = static_cast<DWORD>(attributes & settable);
    if (!SetFileAttributesW(WideText(path).get(), bits ? bits : FILE_ATTRIBUTE_NORMAL))
        raiseLastError();
}

bool isSameFile(std::u16string_view path, std::u16string_view other) noexcept {
    try {
        constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
        const auto identity = [](std::u16string_view name, BY_HANDLE_FILE_INFORMATION& found) {
            const Handle file(CreateFileW(WideText(name).get(), 0, shareAll, nullptr, OPEN_EXISTING,
                                          FILE_FLAG_BACKUP_SEMANTICS, nullptr));
            return file && GetFileInformationByHandle(file.get(), &found);
        };
        BY_HANDLE_FILE_INFORMATION one{}, two{};
        return identity(path, one) && identity(other, two) &&
               one.dwVolumeSerialNumber == two.dwVolumeSerialNumber &&
               one.nFileIndexHigh == two.nFileIndexHigh && one.nFileIndexLow == two.nFileIndexLow;
    } catch (const std::exception&) {
        return false;
    }
}

std::uint64_t fileLength(std::u16string_view path) {
    if (has(attributes(path), FileAttributes::Directory))
        raise(RunTimeError::FileNotFound);
    const Handle file = open(path, FILE_READ_ATTRIBUTES, shareAll, OPEN_EXISTING);
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size))
        raiseLastError();
    return static_cast<std::uint64_t>(size.QuadPart);
}

std::string readFile(std::u16string_view path) {
    return readAll(openForReading(path));
}

FileReader::FileReader(std::u16string_view path)
    : handle_(reinterpret_cast<std::intptr_t>(openForReading(path, FILE_FLAG_SEQUENTIAL_SCAN).detach())) {}
FileReader::FileReader(FileReader&& other) noexcept
    : handle_(std::exchange(other.handle_, reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE))) {}
FileReader& FileReader::operator=(FileReader&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
}
FileReader::~FileReader() {
    const Handle closing(reinterpret_cast<HANDLE>(handle_));
}

std::size_t FileReader::read(char* to, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        DWORD count = 0;
        const auto room = static_cast<DWORD>(std::min<std::size_t>(size - done, 1u << 28));
        if (!ReadFile(reinterpret_cast<HANDLE>(handle_), to + done, room, &count, nullptr))
            raiseLastError();
        if (count == 0)
            break;
        done += count;
    }
    return done;
}

namespace {

/// Creates a file and fills it: `fill(file)`. No part of it stays after a failure.
template <class Fill>
void createFilled(std::u16string_view path, Readable readable, const Fill& fill) {
    std::optional<UserOnly> security;
    if (readable == Readable::ByUserOnly)
        security.emplace();
    Handle file = open(path, GENERIC_WRITE, 0, CREATE_NEW, security ? security->get() : nullptr);
    try {
        fill(file);
        if (!FlushFileBuffers(file.get()))
            raiseLastError();
    } catch (const Error&) {
        file = Handle();
        DeleteFileW(WideText(path).get());
        throw;
    }
}

} // namespace

void createFile(std::u16string_view path, std::string_view bytes, Readable readable) {
    createFilled(path, readable, [&](const Handle& file) { writeAll(file, bytes); });
}

void copyFile(std::u16string_view from, std::u16string_view to, Readable readable) {
    if (has(attributes(from), FileAttributes::Directory))
        raise(RunTimeError::PermissionDenied);
    if (readable == Readable::ByUserOnly) {
        FileReader source(from);
        std::string piece(1u << 20, '\0');
        createFilled(to, readable, [&](const Handle& file) {
            while (const auto count = source.read(piece.data(), piece.size()))
                writeAll(file, std::string_view(piece).substr(0, count));
        });
        setAttributes(to, attributes(from));
    } else if (!CopyFileW(WideText(from).get(), WideText(to).get(), TRUE)) {
        raiseLastError();
    }
}

void deleteFile(std::u16string_view path) {
    const WideText name(path);
    const DWORD found = GetFileAttributesW(name.get());
    if (found == INVALID_FILE_ATTRIBUTES)
        raiseLastError();
    const bool isLink = (found & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if ((found & FILE_ATTRIBUTE_DIRECTORY) || (found & FILE_ATTRIBUTE_READONLY))
        raise(RunTimeError::PermissionDenied);
    // Opened so that nobody else may have it open at the same time.
    const Handle closing =
        open(path, DELETE, isLink ? shareAll : 0, OPEN_EXISTING, nullptr,
             FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS);
}

void visitFolder(std::u16string_view folder, std::u16string_view extension,
                 const std::function<bool(FolderEntry)>& visit) {
    if (!folderExists(folder))
        raise(RunTimeError::PathNotFound);
    const String suffix = extension.empty() ? String() : concat(u".", extension);
    WIN32_FIND_DATAW found;
    const Search search(FindFirstFileExW(WideText(concat(folder, u"\\*")).get(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, 0));
    if (!search) {
        if (GetLastError() == ERROR_FILE_NOT_FOUND)
            return;
        raiseLastError();
    }
    do {
        const std::u16string_view name = reinterpret_cast<const char16_t*>(found.cFileName);
        if (name == u"." || name == u".." || name.size() < suffix.length() ||
            !equalIgnoringCase(name.substr(name.size() - suffix.length()), suffix))
            continue;
        auto kind = FileAttributes(found.dwFileAttributes) & FileAttributes::Directory;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT)
            kind = FileAttributes::Link;
        if (!visit({name, kind}))
            return;
    } while (FindNextFileW(search.get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES)
        raiseLastError();
}

} // namespace vlgs
