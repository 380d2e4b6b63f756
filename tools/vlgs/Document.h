// SPDX-License-Identifier: MIT
// INI documents as the shell reads, changes and saves them.
#pragma once

#include "Json.h"
#include "ini/INIFile.h"

#include <string>
#include <string_view>
#include <vector>

namespace vlgs::cli {

enum class Absent { Fails, IsEmpty };

/// The document in the file of a name on the command line. Raises what reading raises, 53 for no file.
Ref<INIFile> readDocument(std::string_view file, Absent absent = Absent::Fails);

/// Writes the document to its file. Raises 70 when the file has lines that are neither sections nor keys,
/// which would be lost, unless they are to be dropped; and what `Save` raises.
void saveDocument(INIFile& document, bool dropLines);

/// A section's name and keys as one walks through them.
struct SectionView {
    const String& name;
    Ref<Collection> keys;

    std::int32_t count() const noexcept { return keys ? keys->Count() : 0; }
    /// REQUIRES: `position` is from 1 to `count()`.
    const Property& key(std::int32_t position) const { return *keys->property(Variant(position)); }
};

bool hasSection(const INIFile& document, std::u16string_view name);

/// The sections in order.
std::vector<SectionView> sectionsOf(const INIFile& document);

/// {"KEY": "VALUE", …} and {"SECTION": {…}, …}, in their order.
void writeKeys(Json& json, const SectionView& section);
void writeDocument(Json& json, const INIFile& document);

/// Raise 9 with the name, and the nearest one there is, for a section or a key that is not there.
SectionView sectionNamed(const INIFile& document, const String& name);
String keyNamed(const SectionView& section, const String& name);

/// A line of a file that a document does not hold as it stands.
struct Finding {
    std::size_t line; // from 1
    std::string what;
    bool isLost; // as the document is saved
};

/// What is wrong with the lines of a file.
std::vector<Finding> checkLines(const String& path);

} // namespace vlgs::cli
