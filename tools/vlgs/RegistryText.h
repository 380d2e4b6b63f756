// SPDX-License-Identifier: MIT
// Keys and values of the registry as texts: names of hives and types, data, and the changes of ".reg" files.
#pragma once

#include "Json.h"
#include "platform/Registry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

/// A key by its full name, "HKCU\Software" or "HKEY_CURRENT_USER\Software". Misuse for another hive.
struct RegistryPath {
    RegistryHive hive;
    String path; // below the hive, "" for the hive itself

    explicit RegistryPath(std::u16string_view name);
    /// With the long name of the hive.
    String name() const;
    RegistryPath below(std::u16string_view key) const;
    /// Raises what opening fails with; for a key that is not there with the nearest one that is.
    RegistryKey open(std::uint32_t access) const;
};

/// Raises the status as an error about that key or value; `near` tells the nearest name of what is not there.
void requireSuccess(RegistryStatus status, std::u16string_view subject, std::string_view near = {});
/// "; did you mean NAME?", or "" when no name is near.
std::string nearestOf(std::u16string_view wanted, const std::vector<String>& names);

/// "REG_SZ"; "REG_TYPE_9" for a type without a name.
std::string typeName(std::uint32_t type);
std::vector<String> knownTypes();
std::optional<std::uint32_t> typeNamed(std::string_view name);

/// The data for people, texts of a list with `\0` between them.
String dataText(const RegistryData& data);
/// For programs: a number, a list of texts, a text (also for what is neither, its bytes in hexadecimal
/// digits).
void writeData(Json& json, const RegistryData& data);
/// The data that a text means for a type; the texts of a list stand between `separator`. Raises Misuse for a
/// text that is none of the type.
RegistryData dataOf(std::uint32_t type, std::u16string_view text, std::u16string_view separator);

/// A change that a ".reg" text asks for.
struct RegistryChange {
    RegistryPath key;
    bool deletesKey = false;
    std::optional<String> valueName = {};  // none: the key itself
    std::optional<RegistryData> data = {}; // none: the value is deleted
};

/// The changes of a file's content, in order. Raises 321 with the number of a line that makes no
/// sense.
std::vector<RegistryChange> registryChangesIn(std::string_view file);

} // namespace vlgs::cli
