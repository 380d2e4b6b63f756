// SPDX-License-Identifier: MIT
// Objects across the boundary, in both directions, with their identity.
//
// Invariant: as long as somebody outside holds an object of the library, it has one interface pointer, and
// as long as the library holds somebody else's object, it has one `Object`. What went in comes out as the
// same pointer.
#pragma once

#include "com/Ole.h"

#include "automation/Object.h"

namespace vlgs::com {

/// Stores a counted interface pointer of the object (null for none) and returns how it travels: VT_DISPATCH,
/// or VT_UNKNOWN for an enumerator and for a foreign object without a dispatch interface.
VARTYPE toInterface(Object* object, IUnknown*& to);
/// A counted dispatch interface, null for no object. Raises 13 for an object that has none.
IDispatch* toDispatch(Object* object);
/// The enumerator's or any other object's counted interface.
IUnknown* toUnknown(Object* object);

/// The object behind an interface pointer: the library's own, or one that stands for the caller's. None for
/// a null pointer.
Ref<Object> fromInterface(IUnknown* pointer);

} // namespace vlgs::com
