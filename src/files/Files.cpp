// SPDX-License-Identifier: MIT
#include "files/Files.h"

#include "files/ConnectionString.h"
#include "files/PathForms.h"
#include "files/PathTranslation.h"
#include "files/ProjectFiles.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

namespace vlgs {

const ClassInfo& Files::description() {
    return classInfoOf<Files>();
}

Files::~Files() {
    if (temporary_.empty())
        return;
    try {
        deleteFile(temporary_);
    } catch (...) { // nobody is left to be told
    }
}

String Files::TranslatePathToUNC(String& sPath) const {
    return g_TranslatePathToUNC(sPath);
}

String Files::CurPath() const {
    return currentFolder();
}

void Files::SetCurPath(const String& sPath) {
    setCurrentFolder(sPath);
}

String Files::Path(const String& sValue) const {
    return g_Path(sValue);
}

String Files::TranslateFromRelativePath(const String& sRelativePath, const String& sBasePath,
                                        bool bUseUNCFormat) const {
    return g_TranslateFromRelativePath(sRelativePath, sBasePath, bUseUNCFormat, true);
}

String Files::TranslateFromRelativePathNoFileCheck(const String& sRelativePath, const String& sBasePath,
                                                   bool bUseUNCFormat) const {
    return g_TranslateFromRelativePath(sRelativePath, sBasePath, bUseUNCFormat, false);
}

bool Files::IsValidRelativePath(const String& sRelativePath, const String& sBasePath) const {
    return !g_TranslateFromRelativePath(sRelativePath, sBasePath, true, true).empty();
}

bool Files::IsValidPath(const String& sValue) const {
    return g_IsValidPath(sValue);
}

bool Files::IsUNCPathFormat(const String& sValue) const {
    return g_IsUNCPathFormat(sValue);
}

bool Files::IsStandardPathFormat(const String& sValue, bool* bIsUNCFormat) const {
    if (bIsUNCFormat)
        *bIsUNCFormat = g_IsUNCPathFormat(sValue);
    return g_IsStandardPathFormat(sValue);
}

bool Files::IsRelativePathFormat(const String& sValue) const {
    return g_IsRelativePathFormat(sValue);
}

String Files::TranslateToRelativePath(const String& sInputPath, const String& sBasePath) const {
    return g_TranslateToRelativePath(sInputPath, sBasePath);
}

String Files::ExtractPathVolume(const String& sPath, String* sRemainder, bool bSkipPathValidation) const {
    return g_ExtractPathVolume(sPath, sRemainder, bSkipPathValidation);
}

bool Files::IsSamePathVolume(const String& sPath1, const String& sPath2) const {
    return g_IsSamePathVolume(sPath1, sPath2);
}

ArrayOf<String> Files::ExtractPathAllLevels(const String& sPath) const {
    return g_ExtractPathAllLevels(sPath);
}

ArrayOf<String> Files::ExtractPathDirLevels(const String& sPath) const {
    return g_ExtractPathDirLevels(sPath);
}

String Files::BuildDirBackupPrefix(std::int32_t lNumber) const {
    return g_BuildDirBackupPrefix(lNumber);
}

String Files::BuildPath(const Variant& vArray, std::int32_t lStart, std::int32_t lStop) const {
    return g_BuildPath(vArray, lStart, lStop);
}

String Files::CheckVLSFilePath(const String& sPath, bool bNoErrorRaise) const {
    return g_CheckVLSFilePath(sPath, bNoErrorRaise);
}

Ref<INIFile> Files::CreateINIFile(const String& sPath, enumINIFileTypes eINIFileType) const {
    return g_CreateINIFile(sPath, eINIFileType);
}

Ref<INIFile> Files::RetrieveINIFile(const String& sPath) const {
    return g_RetrieveINIFile(sPath, eINI_INI);
}

Ref<INIFile> Files::RetrieveVLLFile(const String& sPath) const {
    return g_RetrieveINIFile(sPath, eINI_VLL);
}

Ref<INIFile> Files::RetrieveVLSFile(const String& sPath) const {
    return g_RetrieveINIFile(sPath, eINI_VLS);
}

String Files::GetVLLFileFullNameForVLS(const String& sPath) const {
    return g_GetVLLFileFullNameForVLS(sPath);
}

Ref<INIFile> Files::RetrieveVLLFileForVLS(const String& sPath) const {
    try {
        return g_RetrieveINIFile(g_GetVLLFileFullNameForVLS(sPath), eINI_VLL);
    } catch (...) {
        return nullptr;
    }
}

bool Files::Is40VLSFile(const String& sPath) const {
    return g_Is40VLSFile(sPath);
}

String Files::AdjustSystemDBPath(const String& sFullPath) {
    return g_AdjustSystemDBPath(sFullPath, temporary_);
}

String Files::GetReadWriteFile(const String& sPath, bool& bUsedTempFile) {
    String path = g_GetReadWriteFile(sPath, bUsedTempFile);
    isDirectoryReadOnly_ = bUsedTempFile || path.empty();
    return path;
}

String Files::BuildConnectionString(const Ref<INIFile>& oINIFile, const String& sSchemaToken,
                                    const String& sUID, const String& sPwd, bool bEncrypted,
                                    std::int32_t lSequenceKey) const {
    return g_BuildConnectionString(oINIFile.get(), {sSchemaToken, sUID, sPwd, bEncrypted, lSequenceKey});
}

String Files::BuildConnectionStringFromPath(const String& sPath, const String& sSchemaToken,
                                            const String& sUID, const String& sPwd, bool bEncrypted,
                                            std::int32_t lSequenceKey) const {
    return g_BuildConnectionStringFromPath(sPath, {sSchemaToken, sUID, sPwd, bEncrypted, lSequenceKey});
}

} // namespace vlgs
