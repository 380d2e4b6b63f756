// SPDX-License-Identifier: MIT
// The texts of the messages by number and language, as a resource file holds them.
//
// String 0 of the file is its header, "Min=1;Max=2;…": it maps keys to the numbers of the strings that hold
// their values. "Languages" lists the language codes, "en;de;fr"; the block of the n-th language (from 0)
// begins at n * 12000, and a message has its own number plus that.
#pragma once

#include "base/String.h"
#include "platform/StringResources.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace vlgs {

class Variant;

/// Makes "%" a per cent sign and puts the elements of `params`, a one-dimensional array, in the places of
/// "%1", "%2" … Missing, Empty and Null stand for no elements; anything else that is no array raises 13.
///
/// The elements go in one after the other, so that "%1" is also replaced inside "%10" and inside what an
/// earlier element brought in, and a "~~" of the text comes back as "%": "Copy %1 to %2 (100%%)".
String replaceParameters(const String& text, const Variant& params);

class MessageTexts {
  public:
    /// Raises 53 when there is no such resource file, 13 or 6 when its "Min" or "Max" is no number.
    explicit MessageTexts(std::u16string_view resourceFile);

    bool isValidIndex(std::int32_t index) const noexcept { return index <= highest_ && minimum_ <= index; }

    /// The text of a message, that of the first language (English) when the language has none; for an index
    /// out of range the invalid-index text, "(", the index and ")". Raises 326 for a valid index without any
    /// text.
    ///
    /// The language is the first of these that the file has: `languageCode`, `languageOverride`, the user's,
    /// English. A code is one of the file's ("de"), with or without region ("de-DE", "de_AT"), or its
    /// three-letter form ("DEU", "ger"), in any case.
    String text(std::int32_t index, std::u16string_view languageCode = {},
                std::u16string_view languageOverride = {});

    std::int32_t minimum() const noexcept { return minimum_; }
    const String& maximum() const noexcept { return maximum_; }
    const String& languages() const noexcept { return languages_; }
    const String& name() const noexcept { return name_; }
    const String& version() const noexcept { return version_; }
    const String& applicationName() const noexcept { return applicationName_; }
    const String& invalidIndexText() const noexcept { return invalidIndexText_; }

  private:
    std::int32_t offsetOf(std::u16string_view languageCode, std::u16string_view languageOverride) const;

    std::unique_ptr<StringResources> strings_;
    std::int32_t minimum_ = 0;
    String maximum_;
    std::int32_t highest_ = 0;
    String languages_;
    std::vector<std::u16string_view> languageCodes_; // point into languages_
    String name_;
    String version_;
    String applicationName_;
    String invalidIndexText_;
};

} // namespace vlgs
