// SPDX-License-Identifier: MIT
// The forms of paths, their volumes and levels, as text alone.
//
// A path, leading blanks aside, is in UNC form when it begins with "\\", in standard form when it begins with
// a letter and ":", else relative. The backslash alone separates levels. A level is a piece between
// backslashes that is not blank, without its outer blanks.
#pragma once

#include "automation/Array.h"
#include "base/String.h"

#include <string_view>

namespace vlgs {

bool g_IsUNCPathFormat(std::u16string_view sValue) noexcept;
bool g_IsStandardPathFormat(std::u16string_view sValue) noexcept;
/// The empty path is relative.
bool g_IsRelativePathFormat(std::u16string_view sValue) noexcept;

/// The volume, "X:\" or "\\server\share\", and in `remainder` what follows it. A relative path has the volume
/// "" and is all remainder, but for one leading backslash; a UNC path without a share has neither.
String g_PathVolume(std::u16string_view path, String* remainder = nullptr);

/// The levels of the path from index 0; a path without levels has one, the empty text.
ArrayOf<String> g_ExtractPathAllLevels(std::u16string_view sPath);
/// The levels of what follows the volume.
ArrayOf<String> g_ExtractPathDirLevels(std::u16string_view sPath);

/// "..\" that many times; "" for a number below 1.
String g_BuildDirBackupPrefix(std::int32_t lNumber);

/// Joins the elements from `lStart` to `lStop`, -1 for the array's own bounds, each that is not empty
/// followed by a backslash, but for the one at the array's upper bound: a range that stops before it ends in
/// a backslash. "" for a value that is no array. Raises, under modFiles.g_BuildPath, 9 for an index out of
/// bounds and for an array without or with several dimensions, and what turning an element into text raises.
String g_BuildPath(const Variant& vArray, std::int32_t lStart = -1, std::int32_t lStop = -1);

} // namespace vlgs
