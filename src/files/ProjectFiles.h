// SPDX-License-Identifier: MIT
// Finding and reading project information files ("VLS"), database link files ("VLL") and settings files, and
// getting at files in a place where they can be written.
#pragma once

#include "ini/INIFile.h"

namespace vlgs {

/// The path of the project file that a user meant: the trimmed path, or with ".VLS" in place of a missing or
/// another extension if there is such a file. Raises 11502 with the login's own description when there is
/// none: for an empty path, one without extension and one with the extension "VLS". A path with another
/// extension, and every path with `bNoErrorRaise`, is then returned trimmed.
String g_CheckVLSFilePath(const String& sPath, bool bNoErrorRaise);

/// A document bound to a path; nothing is written. For the types VLS and VLL another extension is replaced by
/// the type's own.
Ref<INIFile> g_CreateINIFile(const String& sPath, enumINIFileTypes eINIFileType);

/// Reads a file into a new document of that path and type. A project file is found by g_CheckVLSFilePath; for
/// other types the path is trimmed. Raises, besides 11502, under modFiles.g_RetrieveINIFile: 11503 with the
/// path for a project file that is not accessible, and 11513 when reading fails.
Ref<INIFile> g_RetrieveINIFile(const String& sPath, enumINIFileTypes eINIFileType);

/// The link file's path beside a project file.
String g_GetVLLFileFullNameForVLS(const String& sPath);

/// Whether the length of the file can be told. Never raises.
bool g_Is40VLSFile(const String& sPath) noexcept;

/// Writes and deletes a small file to see whether a folder takes one. The file is remembered in `temporary`
/// for as long as it is there. Never raises.
bool g_TestDirectoryWrite(const String& folder, String& temporary) noexcept;

/// The path itself, when its folder has at most 65 characters, takes new files, and the file is not
/// read-only; else that of a copy in the folder that the environment variable TEMP names (the host's own
/// temporary folder when there is none) or, failing that, in the Windows folder. The copy has the file's
/// name, unless that is taken, and can be written. It belongs to the caller. Raises under
/// modFiles.g_AdjustSystemDBPath what reading the attributes and copying raise. For `temporary` see
/// g_TestDirectoryWrite.
String g_AdjustSystemDBPath(const String& sFullPath, String& temporary);

/// The path itself when the file can be opened for reading and writing with nobody else using it; else that
/// of a new copy in the temporary folder, which belongs to the caller and only the present user can read, and
/// `bUsedTempFile` is True; "" when that fails. Never raises.
String g_GetReadWriteFile(const String& sPath, bool& bUsedTempFile);

} // namespace vlgs
