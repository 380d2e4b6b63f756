// SPDX-License-Identifier: MIT
#include "platform/Registry.h"

#include "base/CaseFold.h"

#include <algorithm>

namespace vlgs {

namespace {

struct HiveNames {
    std::u16string_view name, shortName;
};
/// In the order of `RegistryHive`.
constexpr HiveNames hiveNames[] = {
    {u"HKEY_CLASSES_ROOT", u"HKCR"}, {u"HKEY_CURRENT_USER", u"HKCU"},   {u"HKEY_LOCAL_MACHINE", u"HKLM"},
    {u"HKEY_USERS", u"HKU"},         {u"HKEY_CURRENT_CONFIG", u"HKCC"}, {u"HKEY_DYN_DATA", u"HKDD"},
};

} // namespace

std::u16string_view registryHiveName(RegistryHive hive) noexcept {
    return hiveNames[static_cast<std::size_t>(hive)].name;
}

std::optional<RegistryHive> registryHiveNamed(std::u16string_view name) noexcept {
    const auto found = std::ranges::find_if(hiveNames, [&](const HiveNames& each) {
        return equalIgnoringCase(name, each.name) || equalIgnoringCase(name, each.shortName);
    });
    return found == std::end(hiveNames) ? std::nullopt
                                        : std::optional(static_cast<RegistryHive>(found - hiveNames));
}

String registryText(std::string_view bytes) {
    return String::build(bytes.size() / 2, [&](char16_t* to) {
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            *to++ = static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          static_cast<unsigned char>(bytes[i + 1]) << 8);
    });
}

std::string registryBytes(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2 + 2);
    for (char16_t character : text) {
        bytes += static_cast<char>(character & 0xFF);
        bytes += static_cast<char>(character >> 8);
    }
    return bytes;
}

} // namespace vlgs
