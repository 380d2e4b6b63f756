// SPDX-License-Identifier: MIT
// Taking locks.
//
// Invariant: whoever is granted a lock has looked for others after his own file was there, and keeps it while
// the lock lasts; and no file is ever there without being held. So of two who come at once at least one sees
// the other, and two locks that exclude each other are never both granted, in whatever order the steps of
// their takers mix. tests/locking/LockProtocolTest.cpp searches all the orders.
#pragma once

#include "ini/INIFile.h"
#include "locking/UserLockTypes.h"

#include <optional>

namespace vlgs {

struct LockRequest {
    /// A path inside the project's folder.
    String path;
    /// The document's GUID text; none for a lock of the project.
    std::optional<String> document;
    enumUserLockTypes type = eUserLock_ReadWrite;
    /// The name of the lock file that the caller has already, which is in nobody's way.
    String ownFile;
    /// The caller's session; "" for a new GUID.
    String session;
};

struct LockGrant {
    /// The lock; releasing it ends the lock. No object for a read-only lock without a file.
    Ref<INIFile> document;
    enumUserLockTypes granted = eUserLock_ReadOnly;
};

/// Takes a lock, or raises under modCorvaTools.g_InitiateLock: 11524 for a type that is none, 11523 with the
/// path when its folder does not exist, 11523 with the lock file and the cause when that cannot be made or
/// held, and for a conflict 11515 (exclusive), 11516 (read-write) or 11556 (either, of a document) with a
/// line for each holder. What passes at once, as others do who just try, is waited for a few hundredths of a
/// second.
LockGrant g_InitiateLock(const LockRequest& request);

/// The live exclusive lock file of the project in a path's folder, read and bound to its file but not locked,
/// unless it has the caller's own name; no object when there is none. Raises 11523 as g_InitiateLock.
Ref<INIFile> g_FindExclusiveLock(const String& path, const String& ownFile);

} // namespace vlgs
