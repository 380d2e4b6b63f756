// SPDX-License-Identifier: MIT
#include "platform/posix/HostPath.h"

#include "base/CaseFold.h"
#include "base/Error.h"
#include "base/Utf8.h"
#include "platform/posix/FolderStream.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>

namespace vlgs::posix {

namespace {

constexpr char16_t escape = 0xDC00;

bool isEscape(char16_t character) {
    return character == (escape | u'\\') || (character >= (escape | 0x80) && character <= (escape | 0xFF));
}

bool exists(const std::string& path) {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0;
}

/// Whether two names can be equal without regard to case, judged by their first bytes alone.
bool mayBeEqual(char a, char b) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (!isAscii(a) || !isAscii(b))
        return true;
    return foldCase(static_cast<char16_t>(a)) == foldCase(static_cast<char16_t>(b));
}

/// The name in a folder that equals `name` without regard to case, the first in binary order; "" for none.
std::string findName(const std::string& folder, const std::string& name) {
    std::string found;
    FolderStream entries(folder);
    const auto wanted = libraryName(name);
    while (const auto entry = entries.next()) {
        const std::string_view candidate = entry->d_name;
        if (mayBeEqual(candidate[0], name[0]) && (found.empty() || candidate < found) &&
            equalIgnoringCase(libraryName(candidate), wanted))
            found = candidate;
    }
    return found;
}

/// Appends the parts of `rest` ("/a/b") to a folder, each as it is found there.
std::string locate(const std::string& folder, const std::string& rest) {
    if (auto exact = folder + rest; exists(exact) || (errno != ENOENT && errno != ENOTDIR))
        return exact;
    std::string path = folder;
    for (std::size_t from = 0; from < rest.size();) {
        const auto to = std::min(rest.find('/', from + 1), rest.size());
        const auto found = path.size();
        path.append(rest, from, to - from);
        if (const auto part = rest.substr(from + 1, to - from - 1); !part.empty() && !exists(path)) {
            path.resize(found);
            const auto name = findName(path.empty() ? "/" : path, part);
            if (name.empty())
                return path.append(rest, from);
            path.append("/").append(name);
        }
        from = to;
    }
    return path;
}

/// The host folder that is the root of a full name.
std::string rootFolder(const FullName& name) {
    const auto root = std::u16string_view(name.text).substr(0, name.root);
    if (root.empty() || equalIgnoringCase(root, unmappedRoot))
        return {};
    const auto* volume = root[0] == u'\\' ? findShare(root) : findVolume(root[0]);
    if (!volume)
        raise(RunTimeError::PathNotFound);
    return volume->folder;
}

bool liesIn(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

String libraryName(std::string_view name) {
    std::u16string out;
    out.reserve(name.size());
    while (!name.empty()) {
        const auto length = utf8SequenceLength(name);
        if (length == 1 && name[0] != '\\')
            out += static_cast<char16_t>(name[0]);
        else if (length > 1)
            out += String::fromUtf8(name.substr(0, length)).view();
        else
            out += static_cast<char16_t>(escape | static_cast<unsigned char>(name[0]));
        name.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return out;
}

std::string hostName(std::u16string_view name) {
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto character = name[i];
        const bool leads = character >= 0xD800 && character < 0xDC00;
        if (leads && i + 1 < name.size() && name[i + 1] >= 0xDC00 && name[i + 1] < 0xE000) {
            out += String(name.substr(i, 2)).toUtf8();
            ++i;
        } else if (isEscape(character)) {
            out += static_cast<char>(character & 0xFF);
        } else if (character == 0 || character == u'/' || (character >= 0xD800 && character < 0xE000)) {
            raise(RunTimeError::BadFileNumber);
        } else if (character < 0x80) {
            out += static_cast<char>(character);
        } else {
            out += String(name.substr(i, 1)).toUtf8();
        }
    }
    return out;
}

FullName volumeName(std::string_view path) {
    const Volume* best = nullptr;
    std::size_t matched = 0;
    for (const auto& volume : volumes())
        for (const auto* folder : {&volume.folder, &volume.realFolder})
            if (liesIn(path, *folder) && (!best || folder->size() > matched)) {
                best = &volume;
                matched = folder->size();
            }
    FullName name{best ? std::u16string{best->letter, u':'} : std::u16string(unmappedRoot), 0};
    name.root = name.text.size();
    path.remove_prefix(matched);
    while (path.size() > 1) {
        const auto to = std::min(path.find('/', 1), path.size());
        name.text += u'\\';
        name.text += libraryName(path.substr(1, to - 1)).view();
        path.remove_prefix(to);
    }
    if (path == "/" || (best && name.text.size() == name.root))
        name.text += u'\\';
    return name;
}

std::string hostParts(std::u16string_view names) {
    std::string parts;
    while (names.size() > 1) {
        const auto to = std::min(names.find(u'\\', 1), names.size());
        parts.append(1, '/').append(hostName(names.substr(1, to - 1)));
        names.remove_prefix(to);
    }
    return names.empty() || parts.empty() ? parts : parts + "/";
}

namespace {

std::string located(const FullName& name) {
    const auto path = locate(rootFolder(name), hostParts(std::u16string_view(name.text).substr(name.root)));
    return path.empty() ? "/" : path;
}

} // namespace

bool isThere(const FullName& name) {
    try {
        return exists(located(name));
    } catch (const Error&) {
        return false; // no name that the host can have, or no volume
    }
}

std::string hostPath(std::u16string_view path) {
    const auto name = fullName(path);
    if (!name)
        raise(RunTimeError::FileNotFound);
    return located(*name);
}

std::string parentFolder(std::string_view path) {
    while (path.ends_with('/'))
        path.remove_suffix(1);
    const auto last = path.rfind('/');
    return last == 0 || last == path.npos ? "/" : std::string(path.substr(0, last));
}

} // namespace vlgs::posix
