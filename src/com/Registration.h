// SPDX-License-Identifier: MIT
// Registering the component: programmatic and class identifiers and the type library.
#pragma once

#include "com/Ole.h"

namespace vlgs::com {

enum class Scope {
    Machine,
    User,
};

/// Writes everything that a client needs to create the classes by name. A failure takes back what was
/// written.
HRESULT registerServer(Scope scope) noexcept;
/// Takes away exactly what `registerServer` writes; what is not there is no failure, and what has come to
/// point to another copy of the file stays.
HRESULT unregisterServer(Scope scope) noexcept;
/// The machine's part of the registry where it is open to this user, else the user's.
HRESULT registerServer() noexcept;
/// Both parts, as far as they are open.
HRESULT unregisterServer() noexcept;

} // namespace vlgs::com
