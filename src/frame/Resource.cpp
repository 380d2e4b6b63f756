#include "frame/Resource.h"

#include "base/Text.h"
#include "platform/Locale.h"

#include <algorithm>

namespace vlgs {

namespace {

/// Not among the items that every part of the library knows: the English name of the language.
constexpr std::int32_t englishLanguageName = 0x1001;
/// Room for the native name, its final NUL included.
constexpr std::size_t nativeNameBuffer = 50;

} // namespace

String replaceParameters(const String& text, const Variant& params) {
    if (text.empty())
        return text;
    String result = replaceAll(text, u"%%", u"~~");
    if (params.isArray()) {
        const Array& elements = params.array();
        const std::int64_t upper = elements.upper();
        std::int64_t number = 0;
        for (std::int64_t index = elements.lower(); index <= upper; ++index)
            result = replaceAll(result, concat(u"%", decimal(++number)),
                                toText(elements.get(static_cast<std::int32_t>(index))));
    } else if (!params.isMissing() && !params.isEmpty() && !params.isNull()) {
        raise(RunTimeError::TypeMismatch);
    }
    return replaceAll(result, u"~~", u"%");
}

const ClassInfo& Resource::description() {
    return classInfoOf<Resource>();
}

Resource::Resource()
    : texts_(messageResourceFile()),
      languageEnglish_(Locale::system().item(englishLanguageName).value_or(String())) {}

String Resource::LanguageNative() const {
    const Locale locale = Locale::system();
    return cutAtNul(locale.text(LocaleItem::NativeLanguageName).substr(0, nativeNameBuffer - 1));
}

void Resource::SetLanguageOverride(String& sLanguageCode) {
    if (!sLanguageCode.empty())
        languageOverride_ = sLanguageCode;
}

String Resource::ResourceString(std::int32_t& lIndex, const String& sLanguageCode) {
    return texts_.text(lIndex, sLanguageCode, languageOverride_);
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

} // namespace vlgs
