// SPDX-License-Identifier: MIT
// The text form in which registry editors import and export keys and values (".reg").
//
// A text is a heading and a sequence of changes: a line "[key]" makes a key, which the lines behind it change
// ("name"=value sets a value, "name"=- deletes it, @ is the default value), and a line "[-key]" deletes one.
// What is added to a text later stands between a comment line ";+" and the first empty line, so that an
// addition which was not written to its end is known, and counts as not there.
#pragma once

#include "platform/Registry.h"

#include <optional>
#include <string>
#include <string_view>

namespace vlgs {

/// The content of a file.
struct RegistryFileText {
    String text;
    /// In UTF-16, low byte first, behind a byte order mark: the form that this library writes.
    bool isUtf16 = false;
    /// The form before version 5, whose stored texts are bytes of the system's code page.
    bool isOldForm = false;
};

/// Reads UTF-16, UTF-8 and the system's code page; nothing when the text has no heading of the form.
std::optional<RegistryFileText> decodeRegistryFile(std::string_view bytes);

/// Who is told what a text changes, in order. Key paths begin with the name of a hive, as it is written
/// there.
class RegistryChanges {
  public:
    RegistryChanges() = default;
    RegistryChanges(const RegistryChanges&) = delete;
    RegistryChanges& operator=(const RegistryChanges&) = delete;
    virtual ~RegistryChanges() = default;

    virtual void key(std::u16string_view path) = 0;
    virtual void deletedKey(std::u16string_view path) = 0;
    /// Of the last key that was told.
    virtual void value(std::u16string_view name, RegistryData data) = 0;
    virtual void deletedValue(std::u16string_view name) = 0;
    /// The line at that place makes no sense, or is a value without a key, and is passed over.
    virtual void misfit(std::size_t /*place*/) {}
};

struct RegistryTextPlaces {
    /// The end of what was read: all, or what stands before an addition that was not written to its end.
    std::size_t end;
    /// Where the first addition begins, `end` when there is none.
    std::size_t additions;
};

/// Linear however the text looks.
RegistryTextPlaces readRegistryText(std::u16string_view text, bool isOldForm, RegistryChanges& changes);

/// Writes changes of a hive, a line for each, none of them empty.
class RegistryTextWriter {
  public:
    explicit RegistryTextWriter(RegistryHive hive) : hive_(hive) {}

    // Paths are those below the hive.
    void key(std::u16string_view path);
    void deletedKey(std::u16string_view path);
    void value(std::u16string_view name, const RegistryData& data);
    void deletedValue(std::u16string_view name);

    const std::u16string& lines() const noexcept { return lines_; }

    /// A whole text begins with the heading, and an empty line ends each key's lines.
    void heading();
    void emptyLine();

  private:
    void path(std::u16string_view path);
    void name(std::u16string_view name);
    void quoted(std::u16string_view text);
    void hex(std::string_view bytes, std::size_t lineStart);

    RegistryHive hive_;
    std::u16string lines_;
};

/// The bytes of a file with a text: UTF-16, low byte first, behind this mark.
inline constexpr std::string_view registryFileMark = "\xFF\xFE";
std::string registryFileOf(std::u16string_view text);

/// Lines of changes as an addition to a text.
std::u16string registryAddition(std::u16string_view lines);
/// Whether a text begins as an addition does.
bool isRegistryAddition(std::u16string_view text);

} // namespace vlgs
