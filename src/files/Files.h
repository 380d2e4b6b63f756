// SPDX-License-Identifier: MIT
// What callers do with paths, with project, link and settings files, and to get the connection string of a
// project's database.
#pragma once

#include "frame/Component.h"
#include "ini/INIFile.h"

namespace vlgs {

class VLGS_API Files final : public CountedComponent {
  public:
    ~Files() override;

    // ---- Paths: see files/PathForms.h and files/PathTranslation.h ----

    /// The UNC form of a path on a mapped network drive, another path as it is; "C" and "C:" are completed to
    /// "C:\", in the caller's variable too.
    String TranslatePathToUNC(String& sPath) const;
    /// The process's current folder. Setting it to what is no folder changes nothing and raises nothing.
    String CurPath() const;
    void SetCurPath(const String& sPath);
    /// The absolute form of the name of an existing file or folder, else "". Never raises.
    String Path(const String& sValue) const;
    /// The absolute path to which a relative one leads from a base folder; it must exist.
    String TranslateFromRelativePath(const String& sRelativePath, const String& sBasePath,
                                     bool bUseUNCFormat = true) const;
    /// The same, but only the folder of the target must exist.
    String TranslateFromRelativePathNoFileCheck(const String& sRelativePath, const String& sBasePath,
                                                bool bUseUNCFormat = true) const;
    /// Whether `TranslateFromRelativePath` gives a path.
    bool IsValidRelativePath(const String& sRelativePath, const String& sBasePath) const;
    bool IsValidPath(const String& sValue) const;
    /// Leading blanks aside: begins with "\\"; begins with a letter and ":"; neither of the two.
    bool IsUNCPathFormat(const String& sValue) const;
    bool IsStandardPathFormat(const String& sValue, bool* bIsUNCFormat = nullptr) const;
    bool IsRelativePathFormat(const String& sValue) const;
    /// The relative path from an existing base folder to a path; "" when they are equal.
    String TranslateToRelativePath(const String& sInputPath, const String& sBasePath) const;
    /// "X:\" or "\\server\share\"; the rest goes to `sRemainder`.
    String ExtractPathVolume(const String& sPath, String* sRemainder = nullptr,
                             bool bSkipPathValidation = false) const;
    bool IsSamePathVolume(const String& sPath1, const String& sPath2) const;
    /// Arrays of texts from index 0, never without an element.
    ArrayOf<String> ExtractPathAllLevels(const String& sPath) const;
    ArrayOf<String> ExtractPathDirLevels(const String& sPath) const;
    String BuildDirBackupPrefix(std::int32_t lNumber) const;
    /// Joins elements with backslashes: see files/PathForms.h.
    String BuildPath(const Variant& vArray, std::int32_t lStart = -1, std::int32_t lStop = -1) const;
    /// Whether the last `GetReadWriteFile` could not open its file for writing.
    bool IsDirectoryReadOnly() const { return isDirectoryReadOnly_; }

    // ---- Files: see files/ProjectFiles.h ----

    /// The project file that a path means.
    String CheckVLSFilePath(const String& sPath, bool bNoErrorRaise = false) const;
    /// A document in memory, bound to a path that gets the type's extension.
    Ref<INIFile> CreateINIFile(const String& sPath, enumINIFileTypes eINIFileType = eINI_INI) const;
    /// The document that a file holds.
    Ref<INIFile> RetrieveINIFile(const String& sPath) const;
    Ref<INIFile> RetrieveVLLFile(const String& sPath) const;
    Ref<INIFile> RetrieveVLSFile(const String& sPath) const;
    String GetVLLFileFullNameForVLS(const String& sPath) const;
    /// The link file beside a project file, or no object when it cannot be read.
    Ref<INIFile> RetrieveVLLFileForVLS(const String& sPath) const;
    /// Whether the length of the file can be told.
    bool Is40VLSFile(const String& sPath) const;
    /// A path of the same file, or of a copy of it, in a short and writable place. A copy belongs to the
    /// caller.
    String AdjustSystemDBPath(const String& sFullPath);
    /// The path, or that of a copy in the temporary folder, which then belongs to the caller, when the file
    /// cannot be opened for reading and writing; "" when it cannot be copied either.
    String GetReadWriteFile(const String& sPath, bool& bUsedTempFile);

    // ---- Connection strings: see files/ConnectionString.h ----

    String BuildConnectionString(const Ref<INIFile>& oINIFile, const String& sSchemaToken = {},
                                 const String& sUID = {}, const String& sPwd = {}, bool bEncrypted = false,
                                 std::int32_t lSequenceKey = 0) const;
    /// "" when there is no such file.
    String BuildConnectionStringFromPath(const String& sPath, const String& sSchemaToken = {},
                                         const String& sUID = {}, const String& sPwd = {},
                                         bool bEncrypted = false, std::int32_t lSequenceKey = 0) const;

    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

  private:
    // The file of a test whether a folder can be written, as long as it is there.
    String temporary_;
    bool isDirectoryReadOnly_ = false;
};

constexpr auto Files::describe() {
    constexpr ErrorCondition noUNCForm[] = {
        {eMsg_InvalidPathFormat, "a path is empty or begins neither with \"\\\\\" nor with a drive"},
        {eMsg_InvalidDriveMapping, "a drive is not there"},
        {eMsg_ErrorTranslatingPathToUNC, "the share of a drive cannot be told"}};
    constexpr ErrorCondition unreadableProject[] = {
        {eMsg_InvalidFilepathSpecified, "no project file is found"},
        {eMsg_InvalidVLSFileFormat, "the file is not accessible"},
        {eMsg_ErrorReadingINIFileX, "the file cannot be read"}};
    return describeClass<Files>(
        {.name = "Files",
         .help = "Paths, project files, link files and connection strings",
         .number = eInterfaceID_Files,
         .classId = guid("4A603093-7650-4169-B9E0-C2BFB2946409"),
         .interfaceId = guid("DF29F7D3-218C-4B45-ABDA-96B624DEB1EA"),
         .creatable = true},
        identity(),
        method<&Files::TranslatePathToUNC>(
            1, "TranslatePathToUNC", "The UNC form of a path on a mapped network drive",
            parameter("sPath", "a path; \"C\" and \"C:\" are completed in the caller's variable"))
            .raises(noUNCForm)
            .example("Files.TranslatePathToUNC '\\\\server\\share\\a.txt'", "\\\\server\\share\\a.txt"),
        get<&Files::CurPath>(2, "CurPath", "The current folder of the process"),
        put<&Files::SetCurPath>(
            2, "CurPath", "The current folder of the process",
            parameter("sPath", "the folder to make the current one; one that is not there changes nothing")),
        get<&Files::Path>(3, "Path", "The absolute form of an existing path, else an empty text",
                          parameter("sValue", "the path"))
            .neverRaises(),
        method<&Files::TranslateFromRelativePath>(
            4, "TranslateFromRelativePath", "The existing path to which a relative one leads",
            parameter("sRelativePath", "a path without drive or share"),
            parameter("sBasePath", "an existing folder"),
            optional("bUseUNCFormat", -1, "whether a mapped network drive becomes its share"))
            .raises(eMsg_InvalidRelativePathFormat, "the path is not relative")
            .raises(eMsg_ErrorBasePathIsNotValid, "the base folder does not exist")
            .raises(eMsg_ErrorCannotBuildValidPath, "there is no such file or folder")
            .raises(noUNCForm),
        method<&Files::TranslateFromRelativePathNoFileCheck>(
            5, "TranslateFromRelativePathNoFileCheck",
            "The path to which a relative one leads, in an existing folder",
            parameter("sRelativePath", "a path without drive or share"),
            parameter("sBasePath", "an existing folder"),
            optional("bUseUNCFormat", -1, "whether a mapped network drive becomes its share"))
            .raises(eMsg_InvalidRelativePathFormat, "the path is not relative")
            .raises(eMsg_ErrorBasePathIsNotValid, "the base folder does not exist")
            .raises(eMsg_ErrorCannotBuildValidPath, "the folder of the target does not exist")
            .raises(noUNCForm),
        get<&Files::IsValidRelativePath>(6, "IsValidRelativePath",
                                         "Whether a relative path leads to a file or folder",
                                         parameter("sRelativePath", "a path without drive or share"),
                                         parameter("sBasePath", "an existing folder"))
            .raises(eMsg_InvalidRelativePathFormat, "the path is not relative")
            .raises(eMsg_ErrorBasePathIsNotValid, "the base folder does not exist")
            .raises(eMsg_ErrorCannotBuildValidPath, "there is no such file or folder")
            .raises(noUNCForm),
        get<&Files::IsValidPath>(7, "IsValidPath", "Whether a file or folder exists",
                                 parameter("sValue", "the path"))
            .neverRaises(),
        get<&Files::IsUNCPathFormat>(8, "IsUNCPathFormat", "Whether a path begins with two backslashes",
                                     parameter("sValue", "the path")),
        get<&Files::IsStandardPathFormat>(
            9, "IsStandardPathFormat", "Whether a path begins with a drive letter",
            parameter("sValue", "the path"),
            optional("bIsUNCFormat", "receives whether the path is in UNC form")),
        get<&Files::IsRelativePathFormat>(10, "IsRelativePathFormat",
                                          "Whether a path begins with neither drive nor server",
                                          parameter("sValue", "the path")),
        method<&Files::TranslateToRelativePath>(
            11, "TranslateToRelativePath", "The relative path from a base folder to a path",
            parameter("sInputPath", "the path to reach, which need not exist"),
            parameter("sBasePath", "the existing folder from which the way begins"))
            .raises(eMsg_ErrorBasePathIsNotValid, "the base folder does not exist")
            .raises(eMsg_ErrorPathsOnDiffVols, "the paths are on different volumes")
            .raises(noUNCForm)
            .example("Files.TranslateToRelativePath 'C:\\tmp\\a.txt' 'C:\\usr'", "..\\tmp\\a.txt"),
        method<&Files::ExtractPathVolume>(
            12, "ExtractPathVolume", "The volume of a path", parameter("sPath", "the file's path"),
            optional("sRemainder", "receives what follows the volume"),
            optional("bSkipPathValidation", 0, "whether the path need not exist"))
            .raises(eMsg_ErrorPathIsBad, "the path does not exist")
            .example("Files.ExtractPathVolume '\\\\server\\share\\a\\b.txt' bSkipPathValidation=True",
                     "\\\\server\\share\\"),
        get<&Files::IsSamePathVolume>(13, "IsSamePathVolume", "Whether two paths are on one volume",
                                      parameter("sPath1", "an existing path"),
                                      parameter("sPath2", "another existing path"))
            .raises(eMsg_ErrorPathIsBad, "a path does not exist"),
        method<&Files::ExtractPathAllLevels>(14, "ExtractPathAllLevels", "All levels of a path",
                                             parameter("sPath", "a path of any form"))
            .example("Files.ExtractPathAllLevels 'C:\\Projects\\demo.VLS'", "C:\nProjects\ndemo.VLS"),
        method<&Files::ExtractPathDirLevels>(15, "ExtractPathDirLevels", "The levels behind the volume",
                                             parameter("sPath", "a path of any form"))
            .example("Files.ExtractPathDirLevels 'C:\\Projects\\demo.VLS'", "Projects\ndemo.VLS"),
        method<&Files::BuildDirBackupPrefix>(
            16, "BuildDirBackupPrefix", "\"..\\\" a number of times",
            parameter("lNumber", "how many levels up; below 1 gives an empty text"))
            .example("Files.BuildDirBackupPrefix 2", "..\\..\\"),
        method<&Files::BuildPath>(17, "BuildPath", "Joins the elements of an array with backslashes",
                                  parameter("vArray", "an array of levels with one dimension"),
                                  optional("lStart", -1, "the first index; -1 for the array's own"),
                                  optional("lStop", -1, "the last index; -1 for the array's own"))
            .raises(RunTimeError::SubscriptOutOfRange,
                    "an index lies outside the array, or the array has not one dimension"),
        get<&Files::IsDirectoryReadOnly>(18, "IsDirectoryReadOnly",
                                         "Whether the last GetReadWriteFile met a file that it cannot write"),
        method<&Files::CheckVLSFilePath>(
            19, "CheckVLSFilePath", "The project file that a path means",
            parameter("sPath", "what the user typed, with or without extension"),
            optional("bNoErrorRaise", 0, "whether a path without a file is returned trimmed"))
            .raises(eMsg_InvalidFilepathSpecified, "no project file is found"),
        method<&Files::CreateINIFile>(
            20, "CreateINIFile", "A new document in memory",
            parameter("sPath", "the path to which the document is bound; nothing is written"),
            optional("eINIFileType", eINI_INI, "the kind; VLS and VLL set the path's extension")),
        method<&Files::RetrieveINIFile>(21, "RetrieveINIFile", "Reads a settings file",
                                        parameter("sPath", "the file's path"))
            .raises(eMsg_ErrorReadingINIFileX, "the file cannot be read"),
        method<&Files::RetrieveVLLFile>(22, "RetrieveVLLFile", "Reads a database link file",
                                        parameter("sPath", "the file's path"))
            .raises(eMsg_ErrorReadingINIFileX, "the file cannot be read"),
        method<&Files::RetrieveVLSFile>(
            23, "RetrieveVLSFile", "Reads a project information file",
            parameter("sPath", "the project file's path, with or without extension"))
            .raises(unreadableProject),
        method<&Files::GetVLLFileFullNameForVLS>(24, "GetVLLFileFullNameForVLS",
                                                 "The path of the link file beside a project file",
                                                 parameter("sPath", "the project file's path")),
        method<&Files::RetrieveVLLFileForVLS>(25, "RetrieveVLLFileForVLS",
                                              "Reads the link file beside a project file",
                                              parameter("sPath", "the project file's path"))
            .neverRaises(),
        get<&Files::Is40VLSFile>(26, "Is40VLSFile", "Whether a file is there and accessible",
                                 parameter("sPath", "the file's path"))
            .neverRaises(),
        method<&Files::AdjustSystemDBPath>(27, "AdjustSystemDBPath",
                                           "A path of a system database that the database engine can use",
                                           parameter("sFullPath", "the path of the system database"))
            .raises(RunTimeError::FileNotFound, "the file is not there")
            .raises(RunTimeError::PermissionDenied,
                    "its attributes cannot be read or the copy cannot be made"),
        method<&Files::GetReadWriteFile>(
            28, "GetReadWriteFile", "A path of a file, or of a copy, that can be written",
            parameter("sPath", "the file's path"),
            parameter("bUsedTempFile",
                      "receives whether the path is that of a copy, which then belongs to the caller"))
            .neverRaises(),
        method<&Files::BuildConnectionString>(
            29, "BuildConnectionString", "The connection string of a document's database",
            parameter("oINIFile", "a project or link document; an empty text for none"),
            optional("sSchemaToken", "the schema to name in the string; left out when empty"),
            optional("sUID", "the account; the built-in one when empty"),
            optional("sPwd", "the account's password"),
            optional("bEncrypted", "whether the password is scrambled"),
            optional("lSequenceKey", "a sequence key to add; none when 0"))
            .raises(eMsg_NotAvailableOnNonVLSFileType, "the document is neither a project nor a link file")
            .raises(eMsg_ODBCSectionMissing, "it has no section ODBC"),
        method<&Files::BuildConnectionStringFromPath>(
            30, "BuildConnectionStringFromPath", "The connection string of a project's database",
            parameter("sPath", "the path of a project or link file; without a file the result is empty"),
            optional("sSchemaToken", "the schema to name in the string; left out when empty"),
            optional("sUID", "the account; the built-in one when empty"),
            optional("sPwd", "the account's password"),
            optional("bEncrypted", "whether the password is scrambled"),
            optional("lSequenceKey", "a sequence key to add; none when 0"))
            .raises(eMsg_ODBCSectionMissing, "the file has no section ODBC")
            .raises(unreadableProject));
}

} // namespace vlgs
