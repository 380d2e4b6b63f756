// SPDX-License-Identifier: MIT
#include "files/ProjectFiles.h"

#include "base/CaseFold.h"
#include "base/Text.h"
#include "frame/Errors.h"
#include "general/GUID.h"
#include "ini/INIText.h"
#include "ini/PathParts.h"
#include "platform/Environment.h"
#include "platform/FileHold.h"
#include "platform/Files.h"
#include "platform/Volumes.h"

namespace vlgs {

namespace {

constexpr std::u16string_view projectExtension = u"VLS";
constexpr std::u16string_view linkExtension = u"VLL";

// Longer folder names are beyond some database engines.
constexpr std::size_t longestSystemFolder = 65;

String withExtension(std::u16string_view path, std::u16string_view extension) {
    return concat(withoutExtension(path), u".", extension);
}

String joined(std::u16string_view folder, std::u16string_view name) {
    return concat(folder, separatorAfter(folder), name);
}

// "Vl", a new GUID and an extension.
String newName(std::u16string_view extension) {
    return concat(u"Vl", make<GUID>()->GenerateGUID(), u".", extension);
}

bool isAlreadyThere(const Error& error) {
    return error.is(RunTimeError::FileAlreadyExists);
}

// Creates a file by `create(path)` in a folder under a name, or under a new one when that name is taken, and
// gives its path.
template <class Create>
String createIn(std::u16string_view folder, std::u16string_view name, Create&& create) {
    String path = joined(folder, name);
    try {
        create(path);
    } catch (const Error& error) {
        if (!isAlreadyThere(error))
            throw;
        path = joined(folder, newName(extensionPart(name)));
        create(path);
    }
    return path;
}

// Copies a file into a folder, where it can be written.
String copyInto(std::u16string_view folder, const String& path) {
    String copy =
        createIn(folder, filePart(path), [&](const String& to) { copyFile(path, to, Readable::ByUserOnly); });
    setAttributes(copy, attributes(copy) & ~FileAttributes::ReadOnly);
    return copy;
}

// The length of a file's folder without its last separator; a host's own path has no drive letter to count.
std::size_t folderLength(std::u16string_view path) {
    return path.starts_with(u'/') ? path.find_last_of(u"\\/") : directoryPart(fullPath(path)).length();
}

String systemCopyFolder() {
    const auto named = environmentVariable(u"TEMP");
    return named && !named->empty() ? fullPath(*named) : temporaryFolder();
}

String firstFolder() {
    for (auto* folder : {&temporaryFolder, &systemFolder, &windowsFolder})
        if (String path = folder(); !path.empty())
            return path;
    return {};
}

} // namespace

String g_CheckVLSFilePath(const String& sPath, bool bNoErrorRaise) {
    String path = trim(sPath);
    const auto extension = extensionPart(path);
    const bool isProject = equalIgnoringCase(extension, projectExtension);
    if (!path.empty()) {
        String project = isProject ? path : withExtension(path, projectExtension);
        if (isListed(project))
            return project;
    }
    const bool mayBeAnother = !extension.empty() && !isProject;
    if (!bNoErrorRaise && !mayBeAnother)
        throw Error(objectErrorBase + eMsg_InvalidFilepathSpecified,
                    u"VlGeneralServices.modFiles.g_CheckVLSFilePath",
                    u"Unable to locate file for Corva project.  Login failed.");
    return path;
}

Ref<INIFile> g_CreateINIFile(const String& sPath, enumINIFileTypes eINIFileType) {
    const auto extension = eINIFileType == eINI_VLS   ? projectExtension
                           : eINIFileType == eINI_VLL ? linkExtension
                                                      : extensionPart(sPath);
    const bool fits = equalIgnoringCase(extensionPart(sPath), extension);
    auto document = make<INIFile>();
    document->SetFullPath(fits ? sPath : withExtension(sPath, extension));
    document->SetFileType(eINIFileType);
    return document;
}

Ref<INIFile> g_RetrieveINIFile(const String& sPath, enumINIFileTypes eINIFileType) {
    const bool isProject = eINIFileType == eINI_VLS;
    const String path = isProject ? g_CheckVLSFilePath(sPath, false) : String(trim(sPath));
    if (isProject && !g_Is40VLSFile(path))
        raiseMessage(u"VlGeneralServices.modFiles.g_RetrieveINIFile", eMsg_InvalidVLSFileFormat, path);
    auto document = make<INIFile>();
    document->SetFullPath(path);
    document->SetFileType(eINIFileType);
    readFileInto(*document, path);
    return document;
}

String g_GetVLLFileFullNameForVLS(const String& sPath) {
    return withExtension(sPath, linkExtension);
}

bool g_Is40VLSFile(const String& sPath) noexcept {
    try {
        fileLength(sPath);
        return true;
    } catch (...) {
        return false;
    }
}

bool g_TestDirectoryWrite(const String& folder, String& temporary) noexcept {
    try {
        temporary = createIn(folder, u"VLTEMP.TXT", [](const String& path) { createFile(path, "test"); });
        deleteFile(temporary);
        temporary = String();
        return true;
    } catch (...) {
        return false;
    }
}

String g_AdjustSystemDBPath(const String& sFullPath, String& temporary) {
    return underSource(u"VlGeneralServices.modFiles.g_AdjustSystemDBPath", [&] {
        const String path = fullPath(sFullPath);
        const String folder = directoryPart(path);
        const bool isReadOnly = has(attributes(path), FileAttributes::ReadOnly);
        const bool isShort = folderLength(sFullPath) <= longestSystemFolder;
        if (isShort && !isReadOnly && g_TestDirectoryWrite(folder, temporary))
            return sFullPath;
        try {
            return copyInto(systemCopyFolder(), path);
        } catch (const Error&) {
            return copyInto(windowsFolder(), path);
        }
    });
}

String g_GetReadWriteFile(const String& sPath, bool& bUsedTempFile) {
    bUsedTempFile = false;
    try {
        FileHold::exclusive(sPath);
        return sPath;
    } catch (...) {
    }
    String copy;
    try {
        const String folder = firstFolder();
        if (folder.empty())
            return {};
        // The system and the Windows folder are named without a final backslash, and none is added.
        copy = concat(folder, newName(extensionPart(sPath)));
        copyFile(sPath, copy, Readable::ByUserOnly);
        setAttributes(copy, FileAttributes::Normal);
        bUsedTempFile = true;
        return copy;
    } catch (...) {
        return {};
    }
}

} // namespace vlgs
