// SPDX-License-Identifier: MIT
// The type library inside this file, and the records that need it.
#pragma once

#include "com/Ole.h"

#include "automation/Record.h"
#include "automation/Variant.h"
#include "base/Guid.h"

namespace vlgs::com {

/// The path of the file that this code was loaded from.
String modulePath();

/// The description of an interface, class or record by its identifier. Raises the status of the failing call.
ComPtr<ITypeInfo> typeInfoOf(const GuidValue& id);

/// A record of the library's own type library in a VARIANT, both ways; 13 for other records.
Variant fromRecord(const VARIANT& value);
void toRecord(const Ref<Record>& record, VARIANT& to);

} // namespace vlgs::com
