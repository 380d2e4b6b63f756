// SPDX-License-Identifier: MIT
#include "frame/Resource.h"

#include "base/Text.h"
#include "frame/ComponentFacts.h"
#include "frame/MessageTexts.h"
#include "platform/Locale.h"

#include <algorithm>

namespace vlgs {

namespace {

/// Not among the items that every part of the library knows: the English name of the language.
constexpr std::int32_t englishLanguageName = 0x1001;
/// Room for the native name, its final NUL included.
constexpr std::size_t nativeNameBuffer = 50;

} // namespace

const ClassInfo& Resource::description() {
    return classInfoOf<Resource>();
}

Resource::Resource()
    : texts_(std::make_unique<MessageTexts>(messageResourceFile())),
      languageEnglish_(Locale::system().item(englishLanguageName).value_or(String())) {}

Resource::~Resource() = default;

String Resource::LanguageNative() const {
    const Locale locale = Locale::system();
    return cutAtNul(locale.text(LocaleItem::NativeLanguageName).substr(0, nativeNameBuffer - 1));
}

void Resource::SetLanguageOverride(String& sLanguageCode) {
    if (!sLanguageCode.empty())
        languageOverride_ = sLanguageCode;
}

String Resource::ResourceString(std::int32_t& lIndex, const String& sLanguageCode) {
    return texts_->text(lIndex, sLanguageCode, languageOverride_);
}

String Resource::ResourceReplaceableString(std::int32_t Index, const String& sLanguageCode,
                                           Array& vReplaceableParams) {
    return ResourceReplaceableString2(Index, sLanguageCode, vReplaceableParams);
}

String Resource::ResourceReplaceableString2(std::int32_t lIndex, const String& sLanguageCode,
                                            const Variant& vReplaceableParams) {
    return replaceParameters(ResourceString(lIndex, sLanguageCode), vReplaceableParams);
}

Variant Resource::ResourceOfFormat(std::int32_t lIndex, m_enumResourceFormat lFormat,
                                   const String& sLanguageCode) {
    if (lFormat != eStringResource && IsValidIndex(lIndex))
        raise(RunTimeError::ResourceNotFound);
    return ResourceString(lIndex, sLanguageCode);
}

String Resource::ResourceFilename() const {
    return texts_->name();
}

String Resource::ApplicationFilename() const {
    return texts_->applicationName();
}

String Resource::ResourceFileVersion() const {
    return texts_->version();
}

String Resource::Languages() const {
    return texts_->languages();
}

std::int32_t Resource::MessageMin() const {
    return texts_->minimum();
}

String Resource::MessageMax() const {
    return texts_->maximum();
}

bool Resource::IsValidIndex(std::int32_t& lIndex) const {
    return texts_->isValidIndex(lIndex);
}

} // namespace vlgs
