// SPDX-License-Identifier: MIT
// Names of types, as descriptions and JSON have them.
#pragma once

#include "automation/ClassInfo.h"

#include <string>

namespace vlgs::cli {

/// "Long", "String()" for an array of texts.
std::string typeName(VarType type);
/// With the names of classes, enumerations and records: "INIFile", "enumINIFileTypes".
std::string typeName(const TypeInfo& type);

} // namespace vlgs::cli
