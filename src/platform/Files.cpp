// SPDX-License-Identifier: MIT
// What follows from the hosts' own routines on every host alike.
#include "platform/Files.h"

namespace vlgs {

bool folderExists(std::u16string_view path) noexcept {
    const auto found = findAttributes(path);
    return found && has(*found, FileAttributes::Directory);
}

bool pathExists(std::u16string_view path) noexcept {
    return fileExists(path) || folderExists(path);
}

bool isListed(std::u16string_view path, FileAttributes include) noexcept {
    constexpr auto restricted = FileAttributes::Hidden | FileAttributes::System | FileAttributes::Directory;
    const auto found = findAttributes(path);
    return found && !has(*found, restricted & ~include);
}

std::vector<FolderEntry> listFolder(std::u16string_view folder, std::u16string_view extension) {
    std::vector<FolderEntry> entries;
    visitFolder(folder, extension, [&](FolderEntry entry) {
        entries.push_back(std::move(entry));
        return true;
    });
    return entries;
}

} // namespace vlgs
