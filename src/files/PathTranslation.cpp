// SPDX-License-Identifier: MIT
#include "files/PathTranslation.h"

#include "base/CaseFold.h"
#include "base/Text.h"
#include "files/PathForms.h"
#include "frame/Errors.h"
#include "ini/PathParts.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

namespace vlgs {

namespace {

String messageText(std::int32_t message) {
    return GetMessageCatalogue()->ResourceString(message);
}

// The share of a mapped drive ("M:").
String g_GetUNCPath(std::u16string_view drive) {
    auto share = String(cutAtNul(mappedShare(drive)));
    if (share.empty())
        throw Error(objectErrorBase + eMsg_ErrorTranslatingPathToUNC,
                    u"VlGeneralServices.modFiles.g_GetUNCPath", messageText(eMsg_InvalidDriveMapping));
    return share;
}

String onShare(const String& share, std::u16string_view path) {
    const auto rest = path.substr(share.view().ends_with(u'\\') ? 3 : 2);
    const bool joins = rest.empty() || rest.starts_with(u'\\');
    return concat(share, joins ? u"" : u"\\", rest);
}

[[noreturn]] void raiseNotRelative(const String& path) {
    const auto form = g_IsUNCPathFormat(path) ? eMsg_PathFormatTypeUNC : eMsg_PathFormatTypeStandard;
    raiseMessage(u"VlGeneralServices.modFiles.g_TranslateFromRelativePath", eMsg_InvalidRelativePathFormat,
                 replaceAll(messageText(eMsg_PathFormatIsIn), u"%1", messageText(form)));
}

// The absolute form of `path` as seen from `base`; "" when it does not lead where it must.
String resolve(const String& path, const String& base, bool checksFile) {
    const String folder = fullPath(base);
    const String full = folderExists(folder) ? fullPath(path, folder) : fullPath(path);
    const bool leads =
        checksFile ? isListed(full, FileAttributes::Directory) : folderExists(directoryPart(full));
    return leads ? full : String();
}

} // namespace

String g_Path(const String& sValue) {
    try {
        String full = fullPath(sValue);
        return isListed(full, FileAttributes::Directory) ? full : String();
    } catch (const Error&) {
        return {};
    }
}

String g_TranslatePathToUNC(String& sPath) {
    const String source = u"VlGeneralServices.modFiles.g_TranslatePathToUNC";
    if (sPath.empty())
        raiseMessage(source, eMsg_InvalidPathFormat);
    if (sPath.view().starts_with(u"\\\\"))
        return sPath;
    if (sPath.length() == 1)
        sPath += u":";
    if (sPath.length() == 2 && sPath[1] == u':')
        sPath += u"\\";
    if (sPath.view().substr(1, 2) != u":\\")
        raiseMessage(source, eMsg_InvalidPathFormat);
    switch (driveType(sPath.view().substr(0, 3))) {
    case DriveType::Remote:
        return onShare(g_GetUNCPath(sPath.view().substr(0, 2)), sPath);
    case DriveType::NoRootFolder:
        raiseMessage(source, eMsg_InvalidDriveMapping);
    default:
        return sPath;
    }
}

String g_TranslateFromRelativePath(const String& sRelativePath, const String& sBasePath, bool bUseUNCFormat,
                                   bool checksFile) {
    const String source = u"VlGeneralServices.modFiles.g_TranslateFromRelativePath";
    if (!g_IsRelativePathFormat(sRelativePath))
        raiseNotRelative(sRelativePath);
    if (!g_IsValidPath(sBasePath))
        raiseMessage(source, eMsg_ErrorBasePathIsNotValid);
    String result = sRelativePath.empty() ? sBasePath : resolve(sRelativePath, sBasePath, checksFile);
    if (result.empty())
        raiseMessage(source, eMsg_ErrorCannotBuildValidPath);
    return bUseUNCFormat ? g_TranslatePathToUNC(result) : result;
}

String g_TranslateToRelativePath(const String& sInputPath, const String& sBasePath) {
    const String source = u"VlGeneralServices.modFiles.g_TranslateToRelativePath";
    String input = sInputPath;
    input = g_TranslatePathToUNC(input);
    String base = sBasePath;
    base = g_TranslatePathToUNC(base);
    if (!g_IsValidPath(base))
        raiseMessage(source, eMsg_ErrorBasePathIsNotValid);
    if (equalIgnoringCase(input, base))
        return {};
    if (!equalIgnoringCase(g_PathVolume(input), g_PathVolume(base)))
        raiseMessage(source, eMsg_ErrorPathsOnDiffVols);

    const Array to = g_ExtractPathDirLevels(input);
    const Array from = g_ExtractPathDirLevels(base);
    std::int32_t same = 0;
    while (same <= to.upper() && same <= from.upper() &&
           equalIgnoringCase(to.as<String>()[static_cast<std::size_t>(same)],
                             from.as<String>()[static_cast<std::size_t>(same)]))
        ++same;
    return concat(g_BuildDirBackupPrefix(from.upper() + 1 - same),
                  same > to.upper() ? String() : g_BuildPath(to, same));
}

String g_ExtractPathVolume(const String& sPath, String* sRemainder, bool bSkipPathValidation) {
    if (!bSkipPathValidation && !g_IsValidPath(sPath))
        raiseMessage(u"VlGeneralServices.modFiles.g_ExtractPathVolume", eMsg_ErrorPathIsBad);
    return g_PathVolume(sPath, sRemainder);
}

bool g_IsSamePathVolume(const String& sPath1, const String& sPath2) {
    const String volume = g_ExtractPathVolume(sPath1, nullptr, false);
    return equalIgnoringCase(volume, g_ExtractPathVolume(sPath2, nullptr, false));
}

} // namespace vlgs
