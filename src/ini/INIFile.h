// SPDX-License-Identifier: MIT
// An INI document: an ordered collection of named sections, each an ordered collection of named keys with
// text values, bound to the path of a file.
//
// `Sections` holds a Property for each section, under its name; the value of that Property is a Collection
// that holds a Property for each key, under its name; the value of that one is the key's text. Names keep the
// case in which they were first created and are found without regard to case.
#pragma once

#include "frame/Component.h"
#include "ini/Collection.h"
#include "ini/Property.h"
#include "ini/StreamTypes.h"

#include <memory>

namespace vlgs {

class FileHold;
class FreshKeys;
class StoredText;
class TextArena;

#define VLGS_INI_FILE_TYPES(value)                                                                           \
    value(eINI_Empty, 0) value(eINI_VLS, 1) value(eINI_INI, 2) value(eINI_VLL, 3)
VLGS_ENUMERATION(enumINIFileTypes, "3F21F615-3A23-4CAB-86DA-CFD91CA0187B", "Kinds of INI files",
                 VLGS_INI_FILE_TYPES)

class VLGS_API INIFile final : public Component {
  public:
    INIFile();
    /// Unlocks the file and, with `DelayedDelete`, deletes it.
    ~INIFile() override;

    enumINIFileTypes FileType() const { return fileType_; }
    /// The kind of the file in words, "Unknown" for a kind without a name.
    String FileTypeName() const;
    /// The path's parts: what stands behind the last backslash and what stands before it.
    const String& Filename() const { return filename_; }
    const String& FileDirectory() const { return directory_; }
    /// The folder, made to end in a backslash, and the file name.
    String FullPath() const;

    /// The sections. A document that has none yet gets an empty collection.
    Ref<Collection> Sections();

    // Looking up never raises. A section or key is named by its name or its position from 1.

    /// The section, or no object.
    Ref<Property> Section(const Variant& vSection) const;
    /// The key, or no object.
    Ref<Property> Key(const Variant& vSection, const Variant& vKey) const;
    /// The key's text, "" when there is no such section or key.
    String KeyValue(const String& sSection, const String& sKey) const;

    /// The section of that name, created when there is none: before or after the section that one of the two
    /// references names, else at the end. What the collection of sections refuses is raised without a source.
    Ref<Property> CreateSection(const String& sSectionName, const Variant& Before = missing,
                                const Variant& After = missing);

    /// The key of that name with that text. A missing section is created under the text of `vSection`; a key
    /// that is there gets the new text and keeps its position. An empty name is refused before anything is
    /// created. A new key whose `Before` or `After` names no key is returned but belongs to no section.
    Ref<Property> CreateKey(const Variant& vSection, const String& sKeyName, const String& sKeyValue,
                            const Variant& Before = missing, const Variant& After = missing);

    /// Writes the document to `sSaveAs`, to which it is then bound, or else to its own path; always True. A
    /// locked document is unlocked for the time. Raises 11512, and the document then stays unlocked: also for
    /// a character that the code page does not hold, which the description names with its section and key,
    /// and over the file that the document was read from when that has bytes that are no text.
    bool Save(const String& sSaveAs = {});

    /// A document with the same content, bound to another path. The content is shared: each document sees
    /// what is changed through the other. The lock is not copied.
    Ref<INIFile> Clone(const String& sNewFilename) const;

    /// Lets go of the sections; `Count` fails until there are new ones.
    void Clear();

    /// The document's text in one piece, each line followed by CR LF or, as the default, by nothing at all.
    Variant GetStream(bool bUseCRLF = false) const;
    /// The document's lines in one of the forms of `Buffer`.
    Variant GetStream2(enumStreamTypes eStreamType = {}, const String& sDelimiter = {}) const;
    /// Reads a text with the line delimiter CR LF into the document. In a text with LF alone there is one
    /// line: give such a text to `PutStream2`, with LF as the delimiter.
    void PutStream(const Variant& vData);
    /// Reads a text, or an array of texts, into the document, which keeps what it has. The stream type is not
    /// used. When that fails, what was read until then stays.
    void PutStream2(const Variant& vData, enumStreamTypes eStreamType = {}, const String& sDelimiter = {},
                    bool bCompact = false);

    /// Whether the file is deleted as the document ends.
    bool DelayedDelete() const { return delayedDelete_; }
    void SetDelayedDelete(bool bDelete) { delayedDelete_ = bDelete; }

    /// Unlocks and deletes the file; False when that failed.
    bool Delete();
    /// False when there is no such section or key.
    bool DeleteSection(const Variant& vSection);
    bool DeleteKey(const String& vSection, const Variant& vKey);

    /// Number of keys of a section; 0 when there is no such section.
    std::int32_t KeyCount(const Variant& vSection) const;
    /// Number of sections. Raises 91 when the document has no collection of sections: before anything was
    /// created, read or asked of `Sections`, and after `Clear`.
    std::int32_t Count() const;
    std::int32_t SectionCount() const { return Count(); }
    /// Number of keys of all sections together; gives the document a collection of sections if it has none.
    std::int32_t TotalKeyCount();

    /// Whether the document holds its file open against writers and deleters. A file that cannot be held is
    /// no error: the property then stays False. Writing True again takes a second hold and leaves the first
    /// one to the end of the process.
    bool Locked() const noexcept;
    void SetLocked(bool bLocked);

    static constexpr auto describe();
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

    // ---- Within the library ----

    void SetFileType(enumINIFileTypes eType) { fileType_ = eType; }
    /// Binds the document to a path; one in the host's own form is taken through the table of volumes.
    void SetFullPath(const String& sPath);
    void SetSections(Ref<Collection> oSections) { sections_ = std::move(oSections); }
    /// The keys of a section, or no object.
    Ref<Collection> SectionKeys(const Variant& vSection) const;
    void Unlock() noexcept;
    /// Makes the document's file with its text; the document is locked from the first moment that anybody can
    /// find the file. Raises as FileHold::create, 58 when anything of that name is there.
    void CreateLocked();

    /// The file that the document was read from, when its text has bytes that are no characters and stand as
    /// substitutes in the document, and which bytes those are; else empty. `Clear` forgets it with the
    /// content.
    struct LossyOrigin {
        String path;
        String reason;
    };
    const LossyOrigin& lossyOrigin() const noexcept { return lossyOrigin_; }
    void SetLossyOrigin(LossyOrigin origin) { lossyOrigin_ = std::move(origin); }

    /// The sections as they are, null when there are none.
    Collection* sections() const noexcept { return sections_.get(); }

    /// Where the keys of one section are looked up and added. The two differ only when a caller has put a
    /// section under a name that is not its own.
    struct KeyPlace {
        Ref<Collection> lookUp;
        Ref<Collection> add;
    };
    /// REQUIRES, for the place's use: no section is added or removed meanwhile.
    KeyPlace keyPlaceOf(const Property& section) const;
    /// The keys of the section of that name, which is made when there is none, as long as nobody has asked
    /// for an object of it; null when the sections stand in a general store, or that section is an object.
    FreshKeys* freshSection(StoredText name, const Ref<TextArena>& arena);
    /// What `CreateKey` does once the section is there.
    static Ref<Property> createKeyIn(const KeyPlace& place, String name, String value,
                                     const Variant& before = missing, const Variant& after = missing);

  private:
    Ref<Collection> sections_;
    LossyOrigin lossyOrigin_;
    String directory_;
    String filename_;
    std::unique_ptr<FileHold> hold_;
    enumINIFileTypes fileType_ = eINI_Empty;
    bool delayedDelete_ = false;
};

constexpr auto INIFile::describe() {
    return describeClass<INIFile>(
        {.name = "INIFile",
         .help = "An INI document of sections and keys, bound to a file",
         .number = eInterfaceID_INIFile,
         .classId = guid("9CED8456-4A4B-43AE-9C17-CAF7F7C8C381"),
         .interfaceId = guid("7D038E74-0E77-4922-B264-E4C776CAE9E8")},
        get<&INIFile::FileType>(1, "FileType", "The kind of the file"),
        get<&INIFile::FileTypeName>(2, "FileTypeName", "The kind of the file in words"),
        get<&INIFile::Filename>(3, "Filename", "The file's name without its folder"),
        get<&INIFile::FileDirectory>(4, "FileDirectory", "The file's folder"),
        get<&INIFile::FullPath>(5, "FullPath", "The file's folder and name"),
        get<&INIFile::Sections>(defaultMember, "Sections", "The sections in order"),
        get<&INIFile::Section>(
            6, "Section", "A section by name or position",
            parameter("vSection", "a section, by its name in any case or its position from 1")),
        get<&INIFile::Key>(7, "key", "A key of a section by name or position",
                           parameter("vSection", "a section, by its name in any case or its position from 1"),
                           parameter("vKey", "a key, by its name in any case or its position from 1")),
        get<&INIFile::KeyValue>(8, "KeyValue", "The text of a key",
                                parameter("sSection", "the section's name"),
                                parameter("sKey", "the key's name"))
            .neverRaises(),
        method<&INIFile::CreateSection>(
            9, "CreateSection", "Finds or creates a section",
            parameter("sSectionName", "the name; a section that is there is returned"),
            optional("Before", "the member before which the new one goes: its position from 1 or its key"),
            optional("After", "the member behind which the new one goes; not together with Before"))
            .raises(eMsg_SectionNameCannotBeBlank, "the name is empty")
            .raises(RunTimeError::InvalidProcedureCall, "Before or After names no section, or both are given")
            .raises(RunTimeError::TypeMismatch, "Before or After is neither a number nor a text"),
        method<&INIFile::CreateKey>(
            10, "CreateKey", "Creates a key or changes its text",
            parameter("vSection", "the section, which is created when there is none of that name"),
            parameter("sKeyName", "the name; the text of a key that is there changes"),
            parameter("sKeyValue", "the key's text"),
            optional("Before", "the member before which the new one goes: its position from 1 or its key"),
            optional("After", "the member behind which the new one goes; not together with Before"))
            .raises(eMsg_KeyNameCannotBeBlank, "the name is empty"),
        method<&INIFile::Save>(
            11, "Save",
            "Writes the document to its file or to another one. What a line cannot tell is not read back: "
            "line "
            "ends in names and values, blanks around names, = in a key's name, ] in a section's",
            optional("sSaveAs", u"",
                     "the path to write to and to be bound to; the document's own when empty"))
            .raises(eMsg_ErrorSavingINIFileX,
                    "the file cannot be written, the code page lacks a character (the description names it), "
                    "or the document was read from this very file, which has bytes that are no text"),
        method<&INIFile::Clone>(12, "Clone", "A document with the same content and another path",
                                parameter("sNewFilename", "the path to which the new document is bound")),
        method<&INIFile::Clear>(13, "Clear", "Lets go of all sections"),
        method<&INIFile::GetStream>(14, "GetStream", "The document as one text",
                                    optional("bUseCRLF", 0, "whether each line ends in CR LF")),
        method<&INIFile::GetStream2>(15, "GetStream2", "The document in a form of streams",
                                     optional("eStreamType", "1 bytes, 2 an array of texts, 3 one text"),
                                     optional("sDelimiter", "what stands between lines; CR LF when empty"))
            .raises(eMsg_StreamingErrorX, "the text cannot be made"),
        method<&INIFile::PutStream>(
            16, "PutStream", "Reads lines that end in CR LF into the document",
            parameter("vData",
                      "a text, or an array of texts, whose lines end in CR LF; a text with LF alone is "
                      "one line here: PutStream2 takes it with LF as the delimiter"))
            .raises(eMsg_ErrorReadingINIFileX, "the file cannot be read"),
        method<&INIFile::PutStream2>(17, "PutStream2", "Reads lines into the document",
                                     parameter("vData", "a text or an array of texts"),
                                     optional("eStreamType", "without effect"),
                                     optional("sDelimiter", "what stands between lines; CR LF when empty"),
                                     optional("bCompact", 0, "whether the text is in the system's code page"))
            .raises(eMsg_ErrorReadingINIFileX, "the file cannot be read"),
        get<&INIFile::DelayedDelete>(18, "DelayedDelete", "Whether the file is deleted as the document ends"),
        put<&INIFile::SetDelayedDelete>(
            18, "DelayedDelete", "Whether the file is deleted as the document ends",
            parameter("bDelete", "whether the document deletes its file as it ends")),
        method<&INIFile::Delete>(19, "Delete", "Deletes the file"),
        method<&INIFile::DeleteSection>(
            20, "DeleteSection", "Removes a section",
            parameter("vSection", "a section, by its name in any case or its position from 1")),
        method<&INIFile::DeleteKey>(
            21, "DeleteKey", "Removes a key of a section", parameter("vSection", "the section's name"),
            parameter("vKey", "a key, by its name in any case or its position from 1"))
            .neverRaises(),
        get<&INIFile::KeyCount>(
            22, "KeyCount", "Number of keys of a section",
            parameter("vSection", "a section, by its name in any case or its position from 1")),
        get<&INIFile::Count>(23, "Count", "Number of sections")
            .raises(RunTimeError::ObjectVariableNotSet,
                    "the document has no collection of sections, as after Clear"),
        get<&INIFile::SectionCount>(24, "SectionCount", "Number of sections")
            .raises(RunTimeError::ObjectVariableNotSet,
                    "the document has no collection of sections, as after Clear"),
        get<&INIFile::TotalKeyCount>(25, "TotalKeyCount", "Number of keys of all sections"),
        get<&INIFile::Locked>(26, "Locked", "Whether the file is held open against writers"),
        put<&INIFile::SetLocked>(26, "Locked", "Whether the file is held open against writers",
                                 parameter("bLocked", "True holds the file, False lets it go")),
        identity(ordinaryClassName));
}

} // namespace vlgs
