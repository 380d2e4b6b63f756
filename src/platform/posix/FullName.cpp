// SPDX-License-Identifier: MIT
#include "platform/posix/FullName.h"

#include "base/Ascii.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "base/Text.h"
#include "platform/posix/HostPath.h"

#include <algorithm>
#include <climits>

namespace vlgs::posix {

namespace {

constexpr std::u16string_view separators = u"\\/";

bool isSeparator(char16_t character) {
    return character == u'\\' || character == u'/';
}

bool startsWithDrive(std::u16string_view path) {
    return path.size() >= 2 && ascii::isLetter(path[0]) && path[1] == u':';
}

std::u16string_view skipSeparators(std::u16string_view path) {
    return path.substr(std::min(path.find_first_not_of(separators), path.size()));
}

/// Cuts the part before the first separator off `path`, which keeps the separator.
std::u16string_view takePart(std::u16string_view& path) {
    const auto part = path.substr(0, path.find_first_of(separators));
    path.remove_prefix(part.size());
    return part;
}

/// The root of "\\server\share\rest", whose rest is left in `path`.
FullName takeShareRoot(std::u16string_view& path) {
    std::u16string root = u"\\\\";
    path = skipSeparators(path);
    root += takePart(path);
    if (const auto rest = skipSeparators(path); !rest.empty()) {
        path = rest;
        root += u'\\';
        root += takePart(path);
    }
    const auto length = root.size();
    return {std::move(root), length};
}

/// Appends one part; "." changes nothing and ".." takes the last part off.
void appendPart(FullName& name, std::u16string_view part) {
    if (part == u".")
        return;
    if (part == u"..") {
        if (name.text.size() > name.root)
            name.text.resize(name.text.rfind(u'\\'));
        return;
    }
    name.text += u'\\';
    name.text += part;
}

/// Whether a name loses the dots and blanks at its end, as on Windows: not where the host has a file of just
/// that name.
bool losesItsEnd(const FullName& name) {
    const bool endsSo =
        name.text.size() > name.root && (name.text.ends_with(u'.') || name.text.ends_with(u' '));
    return endsSo && (name.text.size() >= PATH_MAX || !isThere(name));
}

/// A part that another follows loses a single dot at its end.
std::u16string_view withoutFinalDot(std::u16string_view part) {
    if (part.size() > 1 && part.ends_with(u'.') && !part.ends_with(u".."))
        part.remove_suffix(1);
    return part;
}

/// Appends the parts of `rest` to a name that has no final separator. As on Windows, a part loses a dot at
/// its end and the last one all its dots and blanks, but not where the host has a file of just that name.
void appendParts(FullName& name, std::u16string_view rest) {
    bool endsInSeparator = false;
    for (;;) {
        endsInSeparator = !rest.empty() && isSeparator(rest[0]);
        rest = skipSeparators(rest);
        if (rest.empty())
            break;
        const auto part = takePart(rest);
        const auto folder = name.text.size();
        appendPart(name, part);
        const auto shorter = withoutFinalDot(part);
        if (!rest.empty() && shorter.size() < part.size() && losesItsEnd(name)) {
            name.text.resize(folder);
            appendPart(name, shorter);
        }
    }
    if (!endsInSeparator && losesItsEnd(name))
        name.text.resize(std::max(name.root, name.text.find_last_not_of(u". ") + 1));
    const bool driveRoot = name.text.size() == 2 && name.text[1] == u':';
    if ((endsInSeparator && !name.text.ends_with(u'\\')) || driveRoot)
        name.text += u'\\';
}

FullName withoutFinalSeparator(FullName name) {
    if (name.text.size() > name.root && name.text.back() == u'\\')
        name.text.pop_back();
    return name;
}

FullName rootOf(const FullName& name) {
    return {name.text.substr(0, name.root), name.root};
}

bool isNameless(std::u16string_view path) {
    return trim(path).empty() || path.find(u'\0') != path.npos;
}

/// "/a/b", the host's own name of a file; nothing when the host cannot have such a name.
std::optional<FullName> fromHostPath(std::u16string_view path) {
    FullName plain{std::u16string(), 0};
    appendParts(plain, path);
    try {
        return volumeName(hostParts(plain.text));
    } catch (const Error& error) {
        if (error.is(RunTimeError::BadFileNumber))
            return std::nullopt;
        throw;
    }
}

/// "C:rest", whose drive is taken off `path`; `folder` answers the current folder.
template <class Folder>
FullName driveBase(std::u16string_view& path, const Folder& folder) {
    FullName root{std::u16string(path.substr(0, 2)), 2};
    path.remove_prefix(2);
    if (!path.empty() && isSeparator(path[0]))
        return root;
    auto current = withoutFinalSeparator(folder());
    if (current.root != 2 || foldCase(current.text[0]) != foldCase(root.text[0]))
        return root;
    current.text[0] = root.text[0];
    return current;
}

template <class Folder>
std::optional<FullName> resolve(std::u16string_view path, const Folder& folder) {
    if (isNameless(path))
        return std::nullopt;
    const bool rooted = isSeparator(path[0]);
    if (path[0] == u'/' && (path.size() == 1 || !isSeparator(path[1])))
        return fromHostPath(path);
    FullName name = rooted && path.size() > 1 && isSeparator(path[1]) ? takeShareRoot(path)
                    : rooted                                          ? rootOf(folder())
                    : startsWithDrive(path)                           ? driveBase(path, folder)
                                                                      : withoutFinalSeparator(folder());
    appendParts(name, path);
    return name;
}

} // namespace

std::optional<FullName> fullName(std::u16string_view path) {
    return resolve(path, currentFolderName);
}

std::optional<FullName> fullName(std::u16string_view path, const FullName& folder) {
    return resolve(path, [&]() -> const FullName& { return folder; });
}

} // namespace vlgs::posix
