// SPDX-License-Identifier: MIT
#include "platform/Volumes.h"

#include "base/Ascii.h"
#include "platform/windows/Host.h"

#include <winnetwk.h>

namespace vlgs {

using namespace windows;

namespace {

bool isBlank(std::u16string_view text) {
    return text.find_first_not_of(u' ') == text.npos;
}

bool isSeparator(char16_t c) {
    return c == u'\\' || c == u'/';
}

/// The root of an absolute folder: "C:" or "\\server\share".
std::u16string_view rootOf(std::u16string_view folder) {
    if (folder.size() >= 2 && folder[1] == u':')
        return folder.substr(0, 2);
    const std::size_t server = folder.find(u'\\', 2);
    return server == folder.npos ? folder : folder.substr(0, folder.find(u'\\', server + 1));
}

String withoutFinalSeparator(const String& path) {
    const auto view = path.view();
    return view.size() > 3 && view.ends_with(u'\\') ? String(view.substr(0, view.size() - 1)) : path;
}

} // namespace

DriveType driveType(std::u16string_view root) {
    return static_cast<DriveType>(GetDriveTypeW(WideText(root).get()));
}

String mappedShare(std::u16string_view drive) {
    const WideText name(drive);
    std::vector<wchar_t> buffer(MAX_PATH);
    auto size = static_cast<DWORD>(buffer.size());
    DWORD status = WNetGetConnectionW(name.get(), buffer.data(), &size);
    if (status == ERROR_MORE_DATA) {
        buffer.resize(size);
        status = WNetGetConnectionW(name.get(), buffer.data(), &size);
    }
    return status == NO_ERROR ? String(reinterpret_cast<const char16_t*>(buffer.data())) : String();
}

String currentFolder() {
    return withoutFinalSeparator(
        textOf([](wchar_t* to, DWORD size) { return GetCurrentDirectoryW(size, to); }));
}

bool setCurrentFolder(std::u16string_view folder) {
    return SetCurrentDirectoryW(WideText(folder).get()) != 0;
}

String fullPath(std::u16string_view path) {
    const WideText text(path);
    if (text.empty() || isBlank(path))
        return {};
    return textOf([&](wchar_t* to, DWORD size) { return GetFullPathNameW(text.get(), size, to, nullptr); });
}

String fullPath(std::u16string_view path, std::u16string_view folder) {
    if (path.empty() || isBlank(path))
        return {};
    const bool hasDrive = path.size() >= 2 && path[1] == u':';
    const bool isRooted = isSeparator(path[0]);
    if ((hasDrive && path.size() > 2 && isSeparator(path[2])) ||
        (isRooted && path.size() > 1 && isSeparator(path[1])))
        return fullPath(path);
    const String base = fullPath(folder);
    if (base.empty())
        return {};
    if (isRooted)
        return fullPath(concat(rootOf(base), path));
    if (!hasDrive)
        return fullPath(concat(base, u"\\", path));
    if (ascii::toLower(path[0]) == ascii::toLower(base[0]) && base[1] == u':')
        return fullPath(concat(base, u"\\", path.substr(2)));
    return fullPath(concat(path.substr(0, 2), u"\\", path.substr(2)));
}

String libraryPath(std::u16string_view path) {
    return path;
}

String temporaryFolder() {
    return textOf([](wchar_t* to, DWORD size) { return GetTempPathW(size, to); });
}

String systemFolder() {
    return withoutFinalSeparator(
        textOf([](wchar_t* to, DWORD size) { return GetSystemDirectoryW(to, size); }));
}

String windowsFolder() {
    return withoutFinalSeparator(
        textOf([](wchar_t* to, DWORD size) { return GetWindowsDirectoryW(to, size); }));
}

} // namespace vlgs
