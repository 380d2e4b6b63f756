// SPDX-License-Identifier: MIT
// The registry: trees of keys, one for each hive, with named and typed values.
//
// On Windows the operating system's own. Other hosts keep each hive in a text file (docs/hosts.md). Nothing
// here raises; each operation answers with the platform's status code, and whatever does not answer `Success`
// has changed nothing.
//
// Paths are key names separated by "\"; the empty path is the key itself. Names are found without regard to
// case and kept as written, and end before their first NUL. A key name has 1 to 255 characters, a value name
// up to 16383; the empty value name is the key's default value.
#pragma once

#include "base/String.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlgs {

/// The platform's status codes; others than the named ones occur, too.
enum class RegistryStatus : std::int32_t {
    Success = 0,
    NotFound = 2,
    AccessDenied = 5,
    InvalidHandle = 6,
    InvalidParameter = 87,
    DiskFull = 112,
    BadPathName = 161,
    MoreData = 234,
    /// What is kept there is no registry.
    BadDatabase = 1009,
    InputOutputFailed = 1016,
    /// The key was deleted while it was open.
    KeyDeleted = 1018,
};

enum class RegistryHive : std::uint8_t {
    ClassesRoot,
    CurrentUser,
    LocalMachine,
    Users,
    CurrentConfig,
    DynData,
};

/// "HKEY_CURRENT_USER".
std::u16string_view registryHiveName(RegistryHive hive) noexcept;
/// The hive with that name, long or short ("HKCU"), in any case.
std::optional<RegistryHive> registryHiveNamed(std::u16string_view name) noexcept;

/// What a key is opened for; any combination, and generic rights as on the platform. None at all is refused.
namespace registryAccess {
constexpr std::uint32_t queryValue = 0x1;
constexpr std::uint32_t setValue = 0x2;
constexpr std::uint32_t createSubKey = 0x4;
constexpr std::uint32_t enumerateSubKeys = 0x8;
constexpr std::uint32_t notify = 0x10;
constexpr std::uint32_t createLink = 0x20;
constexpr std::uint32_t readControl = 0x20000;
} // namespace registryAccess

/// The registry's own value types.
namespace registryType {
constexpr std::uint32_t none = 0;
constexpr std::uint32_t text = 1;
constexpr std::uint32_t expandableText = 2;
constexpr std::uint32_t binary = 3;
constexpr std::uint32_t number = 4;
constexpr std::uint32_t bigEndianNumber = 5;
constexpr std::uint32_t multiText = 7;
} // namespace registryType

/// A value as it is stored. Texts are UTF-16, low byte first, and normally end in a NUL (lists of texts in
/// two).
struct RegistryData {
    std::uint32_t type = registryType::none;
    std::string bytes;
    friend bool operator==(const RegistryData&, const RegistryData&) = default;
};

struct RegistryValue {
    String name;
    RegistryData data;
};

/// The characters of stored text, all of them; a last odd byte is left out.
String registryText(std::string_view bytes);
/// The bytes of a text, without a NUL behind it.
std::string registryBytes(std::u16string_view text);

/// An open key, closed when it ends.
///
///     RegistryKey key;
///     const auto status = RegistryKey(RegistryHive::CurrentUser).open(path, access, key);
class RegistryKey {
  public:
    /// No key; every operation answers InvalidHandle.
    RegistryKey() noexcept;
    /// The root of a hive. It is always there and allows everything that the host allows.
    explicit RegistryKey(RegistryHive hive);
    RegistryKey(RegistryKey&& other) noexcept;
    RegistryKey& operator=(RegistryKey&& other) noexcept;
    ~RegistryKey();

    void close() noexcept;

    /// Opens a key below this one. NotFound, AccessDenied for access that is not granted, BadPathName for a
    /// path that begins with "\". `key` changes on success only.
    RegistryStatus open(std::u16string_view path, std::uint32_t access, RegistryKey& key) const;

    /// Makes a key below this one, and the missing levels above it, or opens the one that is there.
    RegistryStatus create(std::u16string_view path, std::uint32_t access, RegistryKey& key) const;

    /// Deletes a key below this one with its values. AccessDenied when it has subkeys.
    RegistryStatus deleteKey(std::u16string_view path) const;

    RegistryStatus query(std::u16string_view name, RegistryData& data) const;
    RegistryStatus set(std::u16string_view name, const RegistryData& data) const;
    RegistryStatus deleteValue(std::u16string_view name) const;

    /// Gives a value another name, in place of the value that has it already. At every moment, also when the
    /// process dies, the value is there.
    RegistryStatus renameValue(std::u16string_view from, std::u16string_view to) const;

    /// All values, or the names of all subkeys, in the host's order, as they were at one moment. (A key on
    /// Windows that somebody changes without end is read as far as that allows; no name comes twice.)
    RegistryStatus values(std::vector<RegistryValue>& all) const;
    RegistryStatus keyNames(std::vector<String>& all) const;

  private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

} // namespace vlgs
