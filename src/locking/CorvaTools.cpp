// SPDX-License-Identifier: MIT
#include "locking/CorvaTools.h"

#include "base/CaseFold.h"
#include "frame/Errors.h"
#include "locking/InitiateLock.h"
#include "locking/LockFiles.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "viewprops/PropertyString.h"

#include <algorithm>

namespace vlgs {

namespace {

Ref<INIFile> initiate(LockRequest request, String* ownFile, enumUserLockTypes* granted) {
    if (ownFile)
        request.ownFile = *ownFile;
    auto grant = g_InitiateLock(request);
    if (ownFile && grant.document)
        *ownFile = grant.document->Filename();
    if (granted)
        *granted = grant.granted;
    return grant.document;
}

} // namespace

const ClassInfo& CorvaTools::description() {
    return classInfoOf<CorvaTools>();
}

bool CorvaTools::IsDocLocked(const String& sPath, const String& sGUID) const {
    return underSource(u"VlGeneralServices.CorvaTools.IsDocLocked", [&] {
        const String folder = folderOf(sPath);
        if (!folderExists(folder))
            return false;
        const auto live = liveLockFiles(folder, documentLockExtension, [](auto) { return true; });
        return std::ranges::any_of(
            live, [&](const String& name) { return equalIgnoringCase(documentOf(name), sGUID); });
    });
}

Ref<INIFile> CorvaTools::InitiateLock(const String& sPath, enumUserLockTypes eLockType,
                                      String* sMyLockFilename) const {
    return InitiateLock3(sPath, eLockType, sMyLockFilename, nullptr, {});
}

Ref<INIFile> CorvaTools::InitiateLock2(const String& sPath, enumUserLockTypes eLockType,
                                       String* sMyLockFilename, enumUserLockTypes* eGranted) const {
    return InitiateLock3(sPath, eLockType, sMyLockFilename, eGranted, {});
}

Ref<INIFile> CorvaTools::InitiateLock3(const String& sPath, enumUserLockTypes eLockType,
                                       String* sMyLockFilename, enumUserLockTypes* eGranted,
                                       const String& sSessionID) const {
    return initiate({sPath, std::nullopt, eLockType, {}, sSessionID}, sMyLockFilename, eGranted);
}

Ref<INIFile> CorvaTools::InitiateDocLock(const String& sPath, const String& sGUID,
                                         enumUserLockTypes eLockType, String* sMyLockFilename,
                                         enumUserLockTypes* eGranted, const String& sSessionID) const {
    return initiate({sPath, sGUID, eLockType, {}, sSessionID}, sMyLockFilename, eGranted);
}

Ref<INIFile> CorvaTools::FindExclusiveLock(const String& sPath, const String& sMyLockFilename) const {
    return g_FindExclusiveLock(sPath, sMyLockFilename);
}

std::int32_t CorvaTools::Hash(String& sValue) const noexcept {
    std::int32_t hash = 0;
    try {
        const auto page = CodePage::system();
        for (auto at = sValue.length(); at > 0; --at)
            hash = (hash * 61 + page.codeOf(sValue[at - 1])) & 0x3FFF;
    } catch (...) {
        // A code page that cannot be had leaves what there is.
    }
    return hash;
}

Ref<ViewProperties> CorvaTools::RetrieveViewProperties(const Variant& sProperties) const {
    const String text = underSource(u"VlGeneralServices.CorvaTools.RetrieveViewProperties",
                                    [&] { return toText(sProperties); });
    return make<ViewProperties>(g_BuildPropertyObject(text));
}

} // namespace vlgs
