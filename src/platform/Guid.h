// Making GUIDs, and their text form "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}".
#pragma once

#include "base/Guid.h"
#include "base/String.h"

#include <optional>

namespace vlgs {

/// A new GUID that no other call gives, in whatever process: not after a fork either.
GuidValue createGuid();

/// The text form, 38 characters, digits in upper case.
String guidText(const GuidValue& guid);

/// Reads the text form, digits of either case; nothing for any other text, however close.
std::optional<GuidValue> parseGuid(std::u16string_view text) noexcept;

} // namespace vlgs
