// SPDX-License-Identifier: MIT
// Paths on the volumes of this host: whether they lead anywhere, their UNC form, and the way from one to the
// other.
#pragma once

#include "base/String.h"

namespace vlgs {

/// The absolute form of a path if a listing shows a file or folder of that name, else "". Never raises.
String g_Path(const String& sValue);
inline bool g_IsValidPath(const String& sValue) {
    return !g_Path(sValue).empty();
}

/// The UNC form of a path on a mapped network drive; any other path as it is. "C" and "C:" are completed to
/// "C:\", in the caller's variable too. Raises, under modFiles.g_TranslatePathToUNC, 11529 for an empty path
/// and one that begins neither with "\\" nor with a character and ":\", and 11526 for a drive that is not
/// there; under modFiles.g_GetUNCPath 11525 when the share of the drive cannot be told.
String g_TranslatePathToUNC(String& sPath);

/// The absolute path to which a relative one leads from a base folder, in UNC form if wanted; the empty one
/// leads to the base as given. With `checksFile` a listing must show the target, else only its folder must be
/// there. Raises, under modFiles.g_TranslateFromRelativePath, 11545 for a path that is not relative, 11532
/// for a base that does not exist, 11544 for a target that does not, besides what g_TranslatePathToUNC
/// raises. The process's current folder does not change, but a base that is no folder has the current one in
/// its place.
String g_TranslateFromRelativePath(const String& sRelativePath, const String& sBasePath, bool bUseUNCFormat,
                                   bool checksFile);

/// The relative path that leads from a base folder to a path, which need not exist; "" when they are equal.
/// Raises, under modFiles.g_TranslateToRelativePath, 11532 for a base that does not exist and 11550 for paths
/// on different volumes, besides what g_TranslatePathToUNC raises.
String g_TranslateToRelativePath(const String& sInputPath, const String& sBasePath);

/// `g_PathVolume` of PathForms.h, which raises 11549 under modFiles.g_ExtractPathVolume for a path that does
/// not exist, unless that is skipped.
String g_ExtractPathVolume(const String& sPath, String* sRemainder, bool bSkipPathValidation);

/// Whether two existing paths are on the same volume.
bool g_IsSamePathVolume(const String& sPath1, const String& sPath2);

} // namespace vlgs
