// SPDX-License-Identifier: MIT
// What the boundary keeps for each thread: the two tables of identity and the loaded type library.
//
// Invariant: the state exists exactly while a table has an entry, so that nothing is left to a thread's end.
#pragma once

#include "com/Ole.h"

#include "automation/Object.h"

#include <unordered_map>

namespace vlgs::com {

class DualObject;
class ForeignObject;

struct ThreadState {
    std::unordered_map<const Object*, DualObject*> outgoing;
    std::unordered_map<IUnknown*, ForeignObject*> incoming;
    ComPtr<ITypeLib> typeLibrary;

    /// This thread's state; `make` creates it.
    static ThreadState& make();
    /// Null when the thread has none.
    static ThreadState* find() noexcept;
    /// What callers of this thread hold of an object; null when nobody holds it.
    static DualObject* outgoingOf(const Object& object) noexcept;
    /// Ends the state when nothing is in its tables.
    static void dropUnused() noexcept;
};

} // namespace vlgs::com
