// SPDX-License-Identifier: MIT
// The message catalogue as callers use it: texts by number, language and replaceable parts.
#pragma once

#include "frame/Component.h"

#include <memory>

namespace vlgs {

class MessageTexts;

// clang-format off
#define VLGS_RESOURCE_FORMATS(value) \
    value(eCursorResource, 1) \
    value(eBitmapResource, 2) \
    value(eIconResource, 3) \
    value(eMenuResource, 4) \
    value(eDialogBoxResource, 5) \
    value(eStringResource, 6) \
    value(eFontDirectoryResource, 7) \
    value(eFontResource, 8) \
    value(eAcceleratorTableResource, 9) \
    value(eUserDefinedResource, 10) \
    value(eGroupCursorResource, 12) \
    value(eGroupIconResource, 14)
// clang-format on
VLGS_ENUMERATION(m_enumResourceFormat, "2d7f56ed-bf1a-4818-9ce9-3a3c035bbe3c", "Kinds of resources",
                 VLGS_RESOURCE_FORMATS)

/// Takes no part in the count of live objects. Creating one raises 53 when the resource file is not there.
class VLGS_API Resource final : public Component {
  public:
    Resource();
    ~Resource() override;

    /// The native name of the user's language, at most 49 characters.
    String LanguageNative() const;
    /// The English name of the user's language.
    String LanguageEnglish() const { return languageEnglish_; }
    String ResourceFilename() const;
    String ApplicationFilename() const;
    String ResourceFileVersion() const;
    /// The codes of the languages that there are texts in, "en;de;fr".
    String Languages() const;

    /// The language of texts that are asked for without one, in place of the user's; "" when none was set.
    String LanguageOverride() const { return languageOverride_; }
    /// Writing "" leaves it unchanged.
    void SetLanguageOverride(String& sLanguageCode);

    std::int32_t MessageMin() const;
    /// A text, unlike the minimum.
    String MessageMax() const;
    bool IsValidIndex(std::int32_t& lIndex) const;

    /// A message's text, see MessageTexts::text.
    String ResourceString(std::int32_t& lIndex, const String& sLanguageCode = {});
    /// The same with `replaceParameters`.
    String ResourceReplaceableString(std::int32_t Index, const String& sLanguageCode,
                                     Array& vReplaceableParams);
    String ResourceReplaceableString2(std::int32_t lIndex, const String& sLanguageCode,
                                      const Variant& vReplaceableParams = missing);

    /// A resource of a kind; the file holds strings alone, so for a valid index all other kinds raise 326.
    Variant ResourceOfFormat(std::int32_t lIndex, m_enumResourceFormat lFormat,
                             const String& sLanguageCode = {});

    static constexpr auto describe() {
        constexpr auto identityRows = identity();
        return describeClass<Resource>(
            {.name = "Resource",
             .help = "Texts of messages by number and language",
             .number = 47, // outside the range of the other classes' numbers
             .classId = guid("a2a0300e-3fa6-4da2-9df5-e35f5646c2fc"),
             .interfaceId = guid("e8a17bb8-e95a-452f-a96d-b9221137a895"),
             .creatable = true},
            std::get<0>(identityRows), std::get<1>(identityRows), std::get<2>(identityRows),
            std::get<3>(identityRows),
            get<&Resource::LanguageNative>(1, "LanguageNative", "The native name of the user's language"),
            get<&Resource::LanguageEnglish>(2, "LanguageEnglish", "The English name of the user's language"),
            get<&Resource::ResourceFilename>(3, "ResourceFilename", "The name of the resource file"),
            get<&Resource::ApplicationFilename>(4, "ApplicationFilename",
                                                "The application that the resource file belongs to"),
            get<&Resource::ResourceFileVersion>(5, "ResourceFileVersion", "The version of the resource file"),
            get<&Resource::Languages>(6, "Languages", "The codes of the languages that there are texts in"),
            get<&Resource::LanguageOverride>(7, "LanguageOverride",
                                             "The language of texts, in place of the user's"),
            put<&Resource::SetLanguageOverride>(
                7, "LanguageOverride", "The language of texts, in place of the user's",
                parameter("sLanguageCode", "a language code; an empty one changes nothing")),
            get<&Resource::MessageMin>(8, "MessageMin", "The lowest message number"),
            get<&Resource::MessageMax>(9, "MessageMax", "The highest message number, as text"),
            get<&Resource::ResourceString>(
                10, "ResourceString", "The text of a message", parameter("lIndex", "the message's number"),
                optional("sLanguageCode", "a language code as \"de\"; the user's language when empty"))
                .raises(RunTimeError::ResourceNotFound, "a number in range has no text"),
            get<&Resource::ResourceReplaceableString>(
                11, "ResourceReplaceableString", "The text of a message with its insertions",
                parameter("Index", "the message's number"),
                parameter("sLanguageCode", "a language code as \"de\"; the user's language when empty"),
                parameter("vReplaceableParams", "an array of the texts for %1, %2 and so on"))
                .raises(RunTimeError::ResourceNotFound, "a number in range has no text"),
            get<&Resource::ResourceReplaceableString2>(
                12, "ResourceReplaceableString2", "The text of a message with its insertions",
                parameter("lIndex", "the message's number"),
                parameter("sLanguageCode", "a language code as \"de\"; the user's language when empty"),
                optional("vReplaceableParams", "an array of the texts for %1, %2 and so on"))
                .raises(RunTimeError::ResourceNotFound, "a number in range has no text")
                .raises(RunTimeError::TypeMismatch, "the parameters are neither an array nor left out"),
            method<&Resource::IsValidIndex>(13, "IsValidIndex",
                                            "Whether a number is in the range of messages",
                                            parameter("lIndex", "the message's number")),
            get<&Resource::ResourceOfFormat>(
                14, "Resource", "A resource of a kind by its number",
                parameter("lIndex", "the message's number"),
                parameter("lFormat", "the kind of the resource; the file holds texts alone"),
                optional("sLanguageCode", "a language code as \"de\"; the user's language when empty"))
                .raises(RunTimeError::ResourceNotFound, "there is no such resource"),
            std::get<4>(identityRows), std::get<5>(identityRows));
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }

  private:
    std::unique_ptr<MessageTexts> texts_;
    String languageEnglish_;
    String languageOverride_;
};

} // namespace vlgs
