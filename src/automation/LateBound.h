// SPDX-License-Identifier: MIT
// Late-bound access to objects of any origin, the library's own and a caller's alike.
#pragma once

#include "automation/Object.h"
#include "automation/Variant.h"

namespace vlgs {

/// Calls a member by name: `call(object, u"Item", position)`. Raise what `invoke` raises, and 91 for no
/// object.
Variant callMember(const Ref<Object>& object, std::u16string_view name, InvokeKind kind,
                   const Arguments& arguments);
template <class... Values>
Variant call(const Ref<Object>& object, std::u16string_view name, Values&&... values) {
    Variant arguments[sizeof...(Values) + 1] = {Variant(std::forward<Values>(values))...};
    return callMember(object, name, InvokeKind::MethodOrGet, {{arguments, sizeof...(Values)}});
}

/// The enumerator of any object that has an enumeration member; raises 451 for one that has none.
Ref<Enumerator> enumerate(const Ref<Object>& object);

} // namespace vlgs
