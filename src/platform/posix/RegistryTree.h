// SPDX-License-Identifier: MIT
// A hive's keys and values in memory.
//
// Invariant: names are unique without regard to case among the subkeys and among the values of a key; both
// stand in the order in which they were made. No key lies deeper than `deepestRegistryKey`.
#pragma once

#include "base/KeyedSequence.h"
#include "platform/Registry.h"

#include <memory>
#include <string_view>

namespace vlgs::posix {

// The platform's limits.
inline constexpr std::size_t longestRegistryKeyName = 255;
inline constexpr std::size_t longestRegistryValueName = 16383;
inline constexpr std::size_t deepestRegistryKey = 512;

/// Calls `visit(name)` for each name of a key path until one answers false; separators that name nothing are
/// passed over. False when `visit` was.
template <class Visit>
bool forEachKeyName(std::u16string_view path, Visit&& visit) {
    while (!path.empty()) {
        const auto end = path.find(u'\\');
        const auto name = path.substr(0, end);
        if (!name.empty() && !visit(name))
            return false;
        path.remove_prefix(end == path.npos ? path.size() : end + 1);
    }
    return true;
}

/// Whether a path from the root of a hive keeps the platform's limits.
bool isRegistryPath(std::u16string_view path);

struct RegistryValueNode {
    String name;
    RegistryData data;
};

class RegistryKeyNode {
  public:
    explicit RegistryKeyNode(String name) : name_(std::move(name)) {}

    const String& name() const noexcept { return name_; }

    /// The key at a path below this one, null when there is none.
    RegistryKeyNode* find(std::u16string_view path) noexcept;
    /// The same, made with all missing levels when it is not there. REQUIRES: the platform's limits are kept.
    RegistryKeyNode& make(std::u16string_view path);
    /// Removes the key at a path with all that is below it; nothing happens when there is none, or for "".
    void remove(std::u16string_view path);

    std::uint32_t keyCount() const noexcept { return keys_.size(); }
    std::uint32_t valueCount() const noexcept { return values_.size(); }
    // REQUIRES: index < the count.
    const RegistryKeyNode& key(std::uint32_t index) const noexcept;
    const RegistryValueNode& value(std::uint32_t index) const noexcept;

    /// Null when there is none; valid until the key changes.
    const RegistryValueNode* findValue(std::u16string_view name) const noexcept;
    /// A value that is there keeps its place and the spelling of its name.
    void setValue(String name, RegistryData data);
    void removeValue(std::u16string_view name);

  private:
    RegistryKeyNode* child(std::u16string_view name) const noexcept;

    String name_;
    KeyedSequence<std::unique_ptr<RegistryKeyNode>> keys_;
    KeyedSequence<RegistryValueNode> values_;
};

} // namespace vlgs::posix
