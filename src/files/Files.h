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
    /// "C:\", in the caller's variable too. Raises 11529, 11526 and 11525.
    String TranslatePathToUNC(String& sPath) const;
    /// The process's current folder. Setting it to what is no folder changes nothing and raises nothing.
    String CurPath() const;
    void SetCurPath(const String& sPath);
    /// The absolute form of the name of an existing file or folder, else "". Never raises.
    String Path(const String& sValue) const;
    /// The absolute path to which a relative one leads from a base folder; it must exist. Raises 11545,
    /// 11532, 11544 and what `TranslatePathToUNC` raises.
    String TranslateFromRelativePath(const String& sRelativePath, const String& sBasePath,
                                     bool bUseUNCFormat = true) const;
    /// The same, but only the folder of the target must exist.
    String TranslateFromRelativePathNoFileCheck(const String& sRelativePath, const String& sBasePath,
                                                bool bUseUNCFormat = true) const;
    /// Whether `TranslateFromRelativePath` gives a path; raises what it raises.
    bool IsValidRelativePath(const String& sRelativePath, const String& sBasePath) const;
    bool IsValidPath(const String& sValue) const;
    /// Leading blanks aside: begins with "\\"; begins with a letter and ":"; neither of the two.
    bool IsUNCPathFormat(const String& sValue) const;
    bool IsStandardPathFormat(const String& sValue, bool* bIsUNCFormat = nullptr) const;
    bool IsRelativePathFormat(const String& sValue) const;
    /// The relative path from an existing base folder to a path; "" when they are equal. Raises 11532, 11550
    /// for different volumes and what `TranslatePathToUNC` raises.
    String TranslateToRelativePath(const String& sInputPath, const String& sBasePath) const;
    /// "X:\" or "\\server\share\"; the rest goes to `sRemainder`. Raises 11549 for a path that does not
    /// exist, unless that is skipped.
    String ExtractPathVolume(const String& sPath, String* sRemainder = nullptr,
                             bool bSkipPathValidation = false) const;
    /// Raises 11549 for a path that does not exist.
    bool IsSamePathVolume(const String& sPath1, const String& sPath2) const;
    /// Arrays of texts from index 0, never without an element.
    Array ExtractPathAllLevels(const String& sPath) const;
    Array ExtractPathDirLevels(const String& sPath) const;
    String BuildDirBackupPrefix(std::int32_t lNumber) const;
    /// Joins elements with backslashes: see files/PathForms.h. Raises 9 for bounds outside the array.
    String BuildPath(const Variant& vArray, std::int32_t lStart = -1, std::int32_t lStop = -1) const;
    /// Whether the last `GetReadWriteFile` could not open its file for writing.
    bool IsDirectoryReadOnly() const { return isDirectoryReadOnly_; }

    // ---- Files: see files/ProjectFiles.h ----

    /// The project file that a path means. Raises 11502.
    String CheckVLSFilePath(const String& sPath, bool bNoErrorRaise = false) const;
    /// A document in memory, bound to a path that gets the type's extension.
    Ref<INIFile> CreateINIFile(const String& sPath, enumINIFileTypes eINIFileType = eINI_INI) const;
    /// The document that a file holds. Raise 11513, for a project file also 11502 and 11503.
    Ref<INIFile> RetrieveINIFile(const String& sPath) const;
    Ref<INIFile> RetrieveVLLFile(const String& sPath) const;
    Ref<INIFile> RetrieveVLSFile(const String& sPath) const;
    String GetVLLFileFullNameForVLS(const String& sPath) const;
    /// The link file beside a project file, or no object when it cannot be read.
    Ref<INIFile> RetrieveVLLFileForVLS(const String& sPath) const;
    /// Whether the length of the file can be told.
    bool Is40VLSFile(const String& sPath) const;
    /// A path of the same file, or of a copy of it, in a short and writable place. Raises the run time's
    /// errors of reading attributes and copying. A copy belongs to the caller.
    String AdjustSystemDBPath(const String& sFullPath);
    /// The path, or that of a copy in the temporary folder, which then belongs to the caller, when the file
    /// cannot be opened for reading and writing; "" when it cannot be copied either.
    String GetReadWriteFile(const String& sPath, bool& bUsedTempFile);

    // ---- Connection strings: see files/ConnectionString.h ----

    /// Raises 11504 for a document that is neither project nor link file, 11558 without a section "ODBC".
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
    return describeClass<Files>(
        {.name = "Files",
         .help = "Paths, project files, link files and connection strings",
         .number = eInterfaceID_Files,
         .classId = guid("4A603093-7650-4169-B9E0-C2BFB2946409"),
         .interfaceId = guid("DF29F7D3-218C-4B45-ABDA-96B624DEB1EA"),
         .creatable = true},
        identity(),
        method<&Files::TranslatePathToUNC>(1, "TranslatePathToUNC",
                                           "The UNC form of a path on a mapped network drive", "sPath"),
        get<&Files::CurPath>(2, "CurPath", "The current folder of the process"),
        put<&Files::SetCurPath>(2, "CurPath", "The current folder of the process", "sPath"),
        get<&Files::Path>(3, "Path", "The absolute form of an existing path, else an empty text", "sValue"),
        method<&Files::TranslateFromRelativePath>(
            4, "TranslateFromRelativePath", "The existing path to which a relative one leads",
            "sRelativePath", "sBasePath", optional("bUseUNCFormat", -1)),
        method<&Files::TranslateFromRelativePathNoFileCheck>(
            5, "TranslateFromRelativePathNoFileCheck",
            "The path to which a relative one leads, in an existing folder", "sRelativePath", "sBasePath",
            optional("bUseUNCFormat", -1)),
        get<&Files::IsValidRelativePath>(6, "IsValidRelativePath",
                                         "Whether a relative path leads to a file or folder", "sRelativePath",
                                         "sBasePath"),
        get<&Files::IsValidPath>(7, "IsValidPath", "Whether a file or folder exists", "sValue"),
        get<&Files::IsUNCPathFormat>(8, "IsUNCPathFormat", "Whether a path begins with two backslashes",
                                     "sValue"),
        get<&Files::IsStandardPathFormat>(9, "IsStandardPathFormat",
                                          "Whether a path begins with a drive letter", "sValue",
                                          optional("bIsUNCFormat")),
        get<&Files::IsRelativePathFormat>(10, "IsRelativePathFormat",
                                          "Whether a path begins with neither drive nor server", "sValue"),
        method<&Files::TranslateToRelativePath>(11, "TranslateToRelativePath",
                                                "The relative path from a base folder to a path",
                                                "sInputPath", "sBasePath"),
        method<&Files::ExtractPathVolume>(12, "ExtractPathVolume", "The volume of a path", "sPath",
                                          optional("sRemainder"), optional("bSkipPathValidation", 0)),
        get<&Files::IsSamePathVolume>(13, "IsSamePathVolume", "Whether two paths are on one volume", "sPath1",
                                      "sPath2"),
        method<&Files::ExtractPathAllLevels>(14, "ExtractPathAllLevels", "All levels of a path", "sPath"),
        method<&Files::ExtractPathDirLevels>(15, "ExtractPathDirLevels", "The levels behind the volume",
                                             "sPath"),
        method<&Files::BuildDirBackupPrefix>(16, "BuildDirBackupPrefix", "\"..\\\" a number of times",
                                             "lNumber"),
        method<&Files::BuildPath>(17, "BuildPath", "Joins the elements of an array with backslashes",
                                  "vArray", optional("lStart", -1), optional("lStop", -1)),
        get<&Files::IsDirectoryReadOnly>(18, "IsDirectoryReadOnly",
                                         "Whether the last GetReadWriteFile met a file that it cannot write"),
        method<&Files::CheckVLSFilePath>(19, "CheckVLSFilePath", "The project file that a path means",
                                         "sPath", optional("bNoErrorRaise", 0)),
        method<&Files::CreateINIFile>(20, "CreateINIFile", "A new document in memory", "sPath",
                                      optional("eINIFileType", eINI_INI)),
        method<&Files::RetrieveINIFile>(21, "RetrieveINIFile", "Reads a settings file", "sPath"),
        method<&Files::RetrieveVLLFile>(22, "RetrieveVLLFile", "Reads a database link file", "sPath"),
        method<&Files::RetrieveVLSFile>(23, "RetrieveVLSFile", "Reads a project information file", "sPath"),
        method<&Files::GetVLLFileFullNameForVLS>(24, "GetVLLFileFullNameForVLS",
                                                 "The path of the link file beside a project file", "sPath"),
        method<&Files::RetrieveVLLFileForVLS>(25, "RetrieveVLLFileForVLS",
                                              "Reads the link file beside a project file", "sPath"),
        get<&Files::Is40VLSFile>(26, "Is40VLSFile", "Whether a file is there and accessible", "sPath"),
        method<&Files::AdjustSystemDBPath>(27, "AdjustSystemDBPath",
                                           "A path of a system database that the database engine can use",
                                           "sFullPath"),
        method<&Files::GetReadWriteFile>(28, "GetReadWriteFile",
                                         "A path of a file, or of a copy, that can be written", "sPath",
                                         "bUsedTempFile"),
        method<&Files::BuildConnectionString>(29, "BuildConnectionString",
                                              "The connection string of a document's database", "oINIFile",
                                              optional("sSchemaToken"), optional("sUID"), optional("sPwd"),
                                              optional("bEncrypted"), optional("lSequenceKey")),
        method<&Files::BuildConnectionStringFromPath>(
            30, "BuildConnectionStringFromPath", "The connection string of a project's database", "sPath",
            optional("sSchemaToken"), optional("sUID"), optional("sPwd"), optional("bEncrypted"),
            optional("lSequenceKey")));
}

} // namespace vlgs
