// SPDX-License-Identifier: MIT
// The text form in which registry editors import and export keys and values (".reg").
//
// A text is a heading and a sequence of changes: a line "[key]" makes a key, which the lines behind it change
// ("name"=value sets a value, "name"=- deletes it, @ is the default value), and a line "[-key]" deletes one.
// What is added to a text later stands between a comment line ";+" and the first empty line, so that an
// addition which was not written to its end is known, and counts as not there.
#pragma once

#include "platform/posix/RegistryTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace vlgs::posix {

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

struct RegistryTextPlaces {
    /// The end of what was read: all, or what stands before an addition that was not written to its end.
    std::size_t end;
    /// Where the first addition begins, `end` when there is none.
    std::size_t additions;
};

/// Makes the changes of a text in the tree of the hive with that name. Lines that make no sense, and keys of
/// other hives, are passed over. Linear however the text looks.
RegistryTextPlaces readRegistryText(std::u16string_view text, bool isOldForm, std::u16string_view hive,
                                    RegistryKeyNode& root);

/// Writes changes of a hive, a line for each, none of them empty.
class RegistryTextWriter {
  public:
    explicit RegistryTextWriter(std::u16string_view hive) : hive_(hive) {}

    void key(std::u16string_view path);
    void deletedKey(std::u16string_view path);
    void value(std::u16string_view name, const RegistryData& data);
    void deletedValue(std::u16string_view name);

    const std::u16string& lines() const noexcept { return lines_; }

  private:
    void path(std::u16string_view path);
    void name(std::u16string_view name);
    void quoted(std::u16string_view text);
    void hex(std::string_view bytes, std::size_t lineStart);

    std::u16string_view hive_;
    std::u16string lines_;
};

/// Lines of changes as an addition to a text.
std::u16string registryAddition(std::u16string_view lines);
/// Whether a text begins as an addition does.
bool isRegistryAddition(std::u16string_view text);

/// A whole text without additions for a tree.
std::u16string registryTextOf(std::u16string_view hive, const RegistryKeyNode& root);

} // namespace vlgs::posix
