// SPDX-License-Identifier: MIT
// A path as text: its folder, its name, its extension. Nothing here looks at a disk. The backslash alone
// separates folders, so a host's own path with slashes is all name.
#pragma once

#include "base/String.h"

#include <string_view>

namespace vlgs {

/// What stands before the last backslash, "" when there is none. Of a path whose only backslash is its first
/// character, that backslash: the folder and the name always make the path again.
constexpr std::u16string_view directoryPart(std::u16string_view path) {
    const auto at = path.rfind(u'\\');
    return at == path.npos ? path.substr(0, 0) : path.substr(0, at == 0 ? 1 : at);
}

/// What stands behind the last backslash, the whole path when there is none.
constexpr std::u16string_view filePart(std::u16string_view path) {
    return path.substr(path.rfind(u'\\') + 1);
}

/// "\" when something must stand between this folder and a name, else "".
constexpr std::u16string_view separatorAfter(std::u16string_view directory) {
    return directory.empty() || directory.back() == u'\\' ? u"" : u"\\";
}

/// Where the dot of the extension stands, `npos` without one. A dot before the last "\" or "/" is none.
constexpr std::size_t extensionDot(std::u16string_view path) {
    const auto at = path.find_last_of(u".\\/");
    return at != path.npos && path[at] == u'.' ? at : path.npos;
}

/// What stands behind that dot, "" without one.
constexpr std::u16string_view extensionPart(std::u16string_view path) {
    const auto dot = extensionDot(path);
    return dot == path.npos ? path.substr(path.size()) : path.substr(dot + 1);
}

/// The path without that dot and its extension, the folder included.
constexpr std::u16string_view withoutExtension(std::u16string_view path) {
    return path.substr(0, extensionDot(path));
}

} // namespace vlgs
