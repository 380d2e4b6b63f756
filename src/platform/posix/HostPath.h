// SPDX-License-Identifier: MIT
// The way from library paths to host paths and back.
#pragma once

#include "base/String.h"
#include "platform/posix/FullName.h"

#include <string>
#include <string_view>
#include <vector>

namespace vlgs::posix {

/// One line of the volume table.
struct Volume {
    /// The drive letter in upper case.
    char16_t letter;
    /// The host folder without a final "/", hence empty for the host's root.
    std::string folder;
    /// The same with every symbolic link followed.
    std::string realFolder;
    /// "\\server\share" of a remote drive, empty for a fixed one.
    String share;
};

/// The table in force: VLGS_VOLUMES, else "C:" for the host's root. Valid until the next call on this thread.
const std::vector<Volume>& volumes();

/// The volume of a letter in either case, null when there is none.
const Volume* findVolume(char16_t letter);
/// The volume whose share is "\\server\share", without regard to case, null when there is none.
const Volume* findShare(std::u16string_view share);

/// The library's form of one host name; every host name has one, and no two the same. A byte that is no
/// UTF-8, and a backslash, become U+DC00 + the byte.
String libraryName(std::string_view name);

/// The host's form of a library name; 52 for a text that no host name has.
std::string hostName(std::u16string_view name);

/// The library's name of an absolute host path, on the volume with the longest matching folder.
FullName volumeName(std::string_view hostPath);

/// The names behind a full name's root as host names: "/a/b" for "\a\b", "" for "" and "\".
std::string hostParts(std::u16string_view names);

/// Whether the host has what a full name names, in any case of letters.
bool isThere(const FullName& name);

/// The host path of a library path, each part spelled as it is found; what is not found stays as given. Ends
/// in "/" when the path ends in a separator. Raises 53 for an empty path, 76 for a volume that is not mapped.
std::string hostPath(std::u16string_view path);

/// The folder in which the file of an absolute host path lies: "/a" for "/a/b" and "/a/b/", "/" for "/".
std::string parentFolder(std::string_view hostPath);

} // namespace vlgs::posix
