// SPDX-License-Identifier: MIT
// Where the library itself lies: the loaded library file, or the program that contains the library.
#pragma once

#include "base/String.h"

namespace vlgs {

/// The folder of the library's file as a library path, without a final backslash except at a volume's root.
String moduleFolder();

/// The name of the library's file as the host knows it, with its extension.
String moduleFileName();

/// The path of a file of the library's `resources`, "" when there is none: `resourcePath(u"messages.en")`.
/// Looked for in "resources" and in "share\VlGeneralServices\resources", beside the library and then in each
/// folder above it up to the third; so the build tree and the installed tree need no setting.
String resourcePath(std::u16string_view name);

} // namespace vlgs
