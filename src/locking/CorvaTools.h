// SPDX-License-Identifier: MIT
// Locks of projects and documents, a small hash of texts, and the way to view properties.
#pragma once

#include "frame/Component.h"
#include "ini/INIFile.h"
#include "locking/UserLockTypes.h"
#include "viewprops/ViewProperties.h"

namespace vlgs {

class VLGS_API CorvaTools final : public CountedComponent {
  public:
    // ---- Taking locks: see locking/InitiateLock.h ----
    //
    // A lock is a document whose file lies in the folder of `sPath`, held open; releasing the last reference
    // ends the lock and deletes the file, and so does the end of the process. Its section "User" tells
    // "Access", "RequestedAccess", "SessionID", "Path" and "Machine".
    //
    // Read-only locks exclude nothing. On a project an exclusive lock excludes read-write and exclusive ones,
    // on a document read-write and exclusive locks exclude each other and themselves. With the flag
    // eUserLock_FallbackToReadOnly a conflict gives a read-only lock; the result has no document then for a
    // document's lock, and for a project's whose folder is closed to writing. `eGranted` receives the type
    // that was granted.
    //
    // `sMyLockFilename` names the lock file that the caller has already, as far as it has one, which then
    // excludes nothing: so a lock is changed by taking the other one before the first is released. It
    // receives the name of the new file, and stays as it is when none is made. REQUIRES: it does not name a
    // lock that was released, since another may have a file of that name by now.
    //
    // All raise under modCorvaTools.g_InitiateLock: 11524 for another type, 11523 when there is no such
    // folder or the file cannot be written or held, and for a conflict, with a line for each holder, 11515
    // (exclusive), 11516 (read-write) or 11556 (of a document).

    /// Takes a lock of a project.
    Ref<INIFile> InitiateLock(const String& sPath, enumUserLockTypes eLockType = eUserLock_ReadWrite,
                              String* sMyLockFilename = nullptr) const;
    Ref<INIFile> InitiateLock2(const String& sPath, enumUserLockTypes eLockType = eUserLock_ReadWrite,
                               String* sMyLockFilename = nullptr,
                               enumUserLockTypes* eGranted = nullptr) const;
    /// The same in a session of the caller's, "" for a new one.
    Ref<INIFile> InitiateLock3(const String& sPath, enumUserLockTypes eLockType = eUserLock_ReadWrite,
                               String* sMyLockFilename = nullptr, enumUserLockTypes* eGranted = nullptr,
                               const String& sSessionID = {}) const;
    /// Takes a lock of a document of the project.
    Ref<INIFile> InitiateDocLock(const String& sPath, const String& sGUID,
                                 enumUserLockTypes eLockType = eUserLock_ReadWrite,
                                 String* sMyLockFilename = nullptr, enumUserLockTypes* eGranted = nullptr,
                                 const String& sSessionID = {}) const;

    /// The exclusive lock that somebody else holds on a project, as it can be read but not held; no object
    /// when there is none. Raises 11523 when there is no such folder.
    Ref<INIFile> FindExclusiveLock(const String& sPath, const String& sMyLockFilename = {}) const;

    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    /// Whether somebody holds a lock on a document: whether a lock file for its GUID, in any case, is left
    /// in the folder that `sPath` lies in once all stale lock files there have been deleted. Lock files have
    /// the extension "~sd" and, in front of the GUID, two characters for the kind of lock; one is stale when
    /// no living process has it open, one of this library or any other.
    ///
    /// Only plain files are lock files; links and folders of such a name are passed over and stay. False
    /// when there is no such folder. A file that cannot be deleted raises nothing; a folder that cannot be
    /// read does (70).
    bool IsDocLocked(const String& sPath, const String& sGUID) const;

    /// A number from 0 to 16383 that depends on the codes of the characters in the system's 8-bit code page.
    /// Stored by callers, so it never changes: "" is 0, "A" is 65, "AB" is 4091. `sValue` stays as it is.
    /// Never raises, and allocates nothing.
    std::int32_t Hash(String& sValue) const noexcept;

    /// The objects that a view property string describes. Raises 11519 or 11520 as the reader does
    /// (PropertyString.h).
    Ref<ViewProperties> RetrieveViewProperties(const Variant& sProperties) const;
};

constexpr auto CorvaTools::describe() {
    constexpr ErrorCondition projectLockErrors[] = {
        {eMsg_CannotGetExclusiveLockX,
         "an exclusive lock is wanted and somebody has a read-write or exclusive one"},
        {eMsg_CannotGetReadWriteLockX, "a read-write lock is wanted and somebody has an exclusive one"},
        {eMsg_ErrorWritingUserLockFileX,
         "there is no such folder, or the lock file cannot be written or held"},
        {eMsg_InvalidLockFlag, "the kind is none of the three"},
    };
    constexpr ErrorCondition documentLockErrors[] = {
        {eMsg_CannotGetDocReadWriteLockX, "somebody else has a read-write or exclusive lock of the document"},
        {eMsg_ErrorWritingUserLockFileX,
         "there is no such folder, or the lock file cannot be written or held"},
        {eMsg_InvalidLockFlag, "the kind is none of the three"},
    };
    constexpr auto path = parameter("sPath", "a path inside the project's folder, normally the project file");
    constexpr auto type = optional(
        "eLockType", eUserLock_ReadWrite,
        "the kind of lock, with eUserLock_FallbackToReadOnly for a read-only one in place of a conflict");
    constexpr auto own =
        optional("sMyLockFilename",
                 "the name of the lock file that the caller has already; receives that of the new one");
    constexpr auto granted = optional("eGranted", "receives the kind that was granted");
    constexpr auto session = optional("sSessionID", "the caller's session, without it a new one");
    return describeClass<CorvaTools>(
        {.name = "CorvaTools",
         .help = "Locks of projects and documents, a hash of texts, and view properties",
         .number = eInterfaceID_CorvaTools,
         .classId = guid("9b95101f-541b-4a91-807c-0a54d7b82df8"),
         .interfaceId = guid("59df96f7-f18f-447e-84b7-2959098a6e0b"),
         .creatable = true},
        identity(),
        method<&CorvaTools::IsDocLocked>(1, "IsDocLocked", "Whether a document of a project is locked", path,
                                         parameter("sGUID", "the document's identifier, in any case"))
            .raises(RunTimeError::PermissionDenied, "the folder cannot be read")
            .example("CorvaTools.IsDocLocked /tmp/project.VLS '{11111111-5B0B-4B52-9E0B-2C1F0C5A7EAF}'",
                     "False"),
        method<&CorvaTools::Hash>(2, "Hash", "A hash of a text, 0 to 16383",
                                  parameter("sValue", "the text, which stays as it is"))
            .example("CorvaTools.Hash AB", "4091")
            .neverRaises(),
        method<&CorvaTools::RetrieveViewProperties>(3, "RetrieveViewProperties",
                                                    "The objects of a view property string",
                                                    parameter("sProperties", "a view property string"))
            .raises(eMsg_ErrorReadingViewPropertiesStringX, "the text is no view property string")
            .raises(eMsg_QuotesNotEvenX, "a quote is not closed"),
        method<&CorvaTools::InitiateLock>(
            4, "InitiateLock", "Takes a lock of a project, which lasts until the result is released", path,
            type, own)
            .raises(projectLockErrors)
            .example("CorvaTools.InitiateLock /tmp/project.VLS .KeyValue User Access", "ReadWrite"),
        method<&CorvaTools::InitiateLock2>(5, "InitiateLock2",
                                           "Takes a lock of a project and tells which kind was granted", path,
                                           type, own, granted)
            .raises(projectLockErrors),
        method<&CorvaTools::InitiateLock3>(6, "InitiateLock3",
                                           "Takes a lock of a project for a session of the caller's", path,
                                           type, own, granted, session)
            .raises(projectLockErrors)
            .example("CorvaTools.InitiateLock3 /tmp/project.VLS eUserLock_ReadOnly sSessionID=night "
                     ".KeyValue User SessionID",
                     "night"),
        method<&CorvaTools::InitiateDocLock>(7, "InitiateDocLock", "Takes a lock of a document of a project",
                                             path, parameter("sGUID", "the document's identifier"), type, own,
                                             granted, session)
            .raises(documentLockErrors),
        method<&CorvaTools::FindExclusiveLock>(
            8, "FindExclusiveLock", "The exclusive lock that another holds on a project, or no object", path,
            optional("sMyLockFilename", "the name of the caller's own lock file, which does not count"))
            .raises(eMsg_ErrorWritingUserLockFileX, "there is no such folder"));
}

} // namespace vlgs
