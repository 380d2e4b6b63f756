// SPDX-License-Identifier: MIT
#include "platform/ComponentRegistration.h"

#include "base/Text.h"
#include "platform/Registry.h"

namespace vlgs {

namespace {

/// The text that is the default value of a key of the registered components.
std::optional<String> registeredText(std::u16string_view path) {
    constexpr auto access = registryAccess::readControl | registryAccess::queryValue;
    RegistryKey key;
    RegistryData data;
    if (RegistryKey(RegistryHive::ClassesRoot).open(path, access, key) != RegistryStatus::Success ||
        key.query(u"", data) != RegistryStatus::Success || data.type != registryType::text)
        return std::nullopt;
    return String(cutAtNul(registryText(data.bytes)));
}

/// A programmatic identifier is one key name.
bool canBeProgId(std::u16string_view text) {
    return !text.empty() && text.find_first_of(std::u16string_view(u"\\\0", 2)) == text.npos;
}

} // namespace

std::optional<GuidValue> registeredClassId(std::u16string_view progId) {
    if (!canBeProgId(progId))
        return std::nullopt;
    auto id = registeredText(concat(progId, u"\\CLSID"));
    if (!id)
        // A name without a version may have its class by that of the current version alone.
        if (const auto current = registeredText(concat(progId, u"\\CurVer"));
            current && canBeProgId(*current))
            id = registeredText(concat(*current, u"\\CLSID"));
    return id ? parseGuid(*id) : std::nullopt;
}

std::optional<String> registeredProgId(const GuidValue& classId) {
    const auto path = concat(u"CLSID\\", guidText(classId));
    auto progId = registeredText(concat(path, u"\\ProgID"));
    if (!progId)
        progId = registeredText(concat(path, u"\\VersionIndependentProgID"));
    return progId && !progId->empty() ? progId : std::nullopt;
}

} // namespace vlgs
