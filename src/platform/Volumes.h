// SPDX-License-Identifier: MIT
// Volumes, and the names of files on them.
//
// A library path has the Windows form on every host: "C:\folder\name", "\\server\share\name", or a form
// relative to the current folder. On Windows the operating system answers. Other hosts map drive letters and
// shares to host folders: "C:" to "/" unless VLGS_VOLUMES holds another table, entries separated by ";", each
// "LETTER:=HOSTFOLDER" for a fixed drive or "LETTER:=HOSTFOLDER|\\server\share" for a mapped remote one. A
// malformed table makes every function that needs it raise 5 with a description that names the entry.
//
// A host file that lies on no volume of the table is named "\\?\unix\folder\name", so every file has a name.
// A path that begins with one "/" is the host's own name of a file and is accepted wherever a path is.
// Files are found exactly as spelled, else without regard to case, folder by folder; of several such names
// the first in binary order is taken. Bytes of host names that are no UTF-8 appear as U+DC80 to U+DCFF.
#pragma once

#include "base/String.h"

#include <cstdint>

namespace vlgs {

/// Numbers of the Windows function GetDriveType.
enum class DriveType : std::int32_t {
    Unknown = 0,
    NoRootFolder = 1,
    Removable = 2,
    Fixed = 3,
    Remote = 4,
    CdRom = 5,
    RamDisk = 6,
};

/// The type of the volume with a root such as "C:\" or "\\server\share\"; NoRootFolder for an unmapped letter
/// and for a text that is no root.
DriveType driveType(std::u16string_view root);

/// The share that a drive ("M:") is mapped to, "\\server\share"; "" when it is mapped to none.
String mappedShare(std::u16string_view drive);

/// The process's current folder in library form, without a final backslash except at a volume's root.
String currentFolder();

/// Makes a folder the current one of the process; false when that cannot be done, and nothing changed.
bool setCurrentFolder(std::u16string_view folder);

/// The absolute form of a path against the current folder, by text alone as the Windows function
/// GetFullPathName makes it: "/" becomes "\", repeated separators one, "." and ".." are taken out without
/// rising above the root, "\x" is taken from the current volume's root, "C:x" from that drive's current
/// folder (its root when the drive is not the current one). A single dot at the end of any part is dropped,
/// and so are all dots and blanks at the end of the path; a final backslash stays. "" for an empty or blank
/// path, for one with a NUL character and for a host's own name that it cannot have. Nothing need exist, and
/// no letter is changed.
String fullPath(std::u16string_view path);

/// The same as if `folder` were the current folder, which is not touched.
String fullPath(std::u16string_view path, std::u16string_view folder);

/// The host's folder for temporary files, with a final backslash. On Windows GetTempPath; else TMPDIR or
/// /tmp.
String temporaryFolder();
/// The Windows function GetSystemDirectory; on other hosts "C:\usr\lib". No final backslash.
String systemFolder();
/// The Windows function GetWindowsDirectory; on other hosts "C:\usr". No final backslash.
String windowsFolder();

/// The library's form of a path that may be in the host's own: where the host's paths begin with one "/",
/// such a path as `fullPath` gives it, any other as it is.
String libraryPath(std::u16string_view path);

} // namespace vlgs
