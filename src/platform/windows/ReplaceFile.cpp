// SPDX-License-Identifier: MIT
// Replacing a file's content: a new file beside it takes its name, so that there is never half a file.
#include "platform/Files.h"

#include "base/Error.h"
#include "platform/Guid.h"
#include "platform/windows/FileSecurity.h"
#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD settable =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;

/// The path of the file itself where `path` names a link to it.
String resolved(std::u16string_view path) {
    const WideText name(path);
    const DWORD attributes = GetFileAttributesW(name.get());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return path;
    const Handle file(
        CreateFileW(name.get(), 0, shareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        raiseLastError();
    return textOf(
        [&](wchar_t* to, DWORD size) { return GetFinalPathNameByHandleW(file.get(), to, size, 0); });
}

/// Raises 70 when somebody has the file open in a way that keeps writers out.
void refuseHeld(const WideText& path) {
    const Handle probe(CreateFileW(path.get(), FILE_WRITE_DATA, shareAll, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!probe)
        raiseLastError();
}

/// Whether a file has further names, which are to see its new content too.
bool hasSeveralNames(const WideText& path) {
    const Handle file(
        CreateFileW(path.get(), 0, shareAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION info;
    return file && GetFileInformationByHandle(file.get(), &info) && info.nNumberOfLinks > 1;
}

void write(const Handle& file, std::string_view bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1u << 28));
        if (!WriteFile(file.get(), bytes.data() + done, size, &count, nullptr))
            raiseLastError();
        done += count;
    }
    if (!FlushFileBuffers(file.get()))
        raiseLastError();
}

/// A file of this user alone that is deleted unless it was given another name.
class NewFile {
  public:
    NewFile(const String& beside, std::string_view bytes) : path_(nameBeside(beside)) {
        createFile(path_, bytes, Readable::ByUserOnly);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (path_.empty())
            return;
        SetFileAttributesW(wide(path_.data()), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(wide(path_.data()));
    }
    const wchar_t* name() const noexcept { return wide(path_.data()); }
    bool moveTo(const wchar_t* target) {
        if (!MoveFileExW(name(), target, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            return false;
        path_ = String();
        return true;
    }

  private:
    static String nameBeside(const String& file) {
        const std::size_t slash = file.view().find_last_of(u"\\/:");
        const auto folder = file.view().substr(0, slash == file.view().npos ? 0 : slash + 1);
        return concat(folder, u"~", guidText(createGuid()).view().substr(1, 8), u".tmp");
    }
    String path_;
};

/// Where no new file can take the name, the content is written into the file itself.
void writeInPlace(const WideText& path, std::string_view bytes) {
    const String name = reinterpret_cast<const char16_t*>(path.get());
    const std::string before = readFile(name);
    const Handle file(CreateFileW(path.get(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, TRUNCATE_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        raiseLastError();
    try {
        write(file, bytes);
    } catch (const Error&) {
        SetFilePointer(file.get(), 0, nullptr, FILE_BEGIN);
        SetEndOfFile(file.get());
        write(file, before);
        throw;
    }
}

/// Gives a new file the name of the old one; false where the folder does not let it.
bool moveOver(const WideText& name, const String& target, std::string_view bytes, DWORD attributes) {
    try {
        NewFile fresh(target, bytes);
        copyAccess(name.get(), fresh.name());
        SetFileAttributesW(fresh.name(), attributes ? attributes : FILE_ATTRIBUTE_NORMAL);
        return fresh.moveTo(name.get());
    } catch (const Error& error) {
        if (!error.is(RunTimeError::PermissionDenied))
            throw;
        return false;
    }
}

} // namespace

void replaceFile(std::u16string_view path, std::string_view bytes, const ReplaceOptions& options) {
    const String target = resolved(path);
    const WideText name(target);
    const DWORD before = GetFileAttributesW(name.get());
    if (before == INVALID_FILE_ATTRIBUTES) {
        createFile(target, bytes, options.readable);
        if (options.attributes)
            setAttributes(target, *options.attributes);
        return;
    }
    const bool isReadOnly = (before & FILE_ATTRIBUTE_READONLY) != 0;
    if ((before & FILE_ATTRIBUTE_DIRECTORY) || (isReadOnly && !options.evenReadOnly))
        raise(RunTimeError::PermissionDenied);
    const DWORD after = (options.attributes ? static_cast<DWORD>(*options.attributes) : before) & settable;
    if (isReadOnly)
        SetFileAttributesW(name.get(), before & settable & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    try {
        refuseHeld(name);
        if (hasSeveralNames(name) || !moveOver(name, target, bytes, after)) {
            // Hidden files can only be truncated by who names that attribute, so it goes first.
            SetFileAttributesW(name.get(), FILE_ATTRIBUTE_NORMAL);
            writeInPlace(name, bytes);
            SetFileAttributesW(name.get(), after ? after : FILE_ATTRIBUTE_NORMAL);
        }
    } catch (const Error&) {
        SetFileAttributesW(name.get(), before & settable);
        throw;
    }
}

} // namespace vlgs
