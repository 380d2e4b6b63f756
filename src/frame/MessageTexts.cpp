// SPDX-License-Identifier: MIT
#include "frame/MessageTexts.h"

#include "automation/Array.h"
#include "automation/Convert.h"
#include "base/CaseFold.h"
#include "base/Error.h"
#include "base/Text.h"
#include "platform/Locale.h"

#include <optional>

namespace vlgs {

namespace {

constexpr std::int32_t headerNumber = 0;
constexpr std::int32_t languageBlock = 12000;
constexpr std::u16string_view fixedInvalidIndexText =
    u"Error - Invalid resource message code.  Index is out of range. ";

/// Three-letter codes of the languages: those of ISO 639-2 and the platform's own, which tell the region too.
struct LanguageAlias {
    std::u16string_view code;
    std::u16string_view language;
};
constexpr LanguageAlias languageAliases[] = {
    {u"eng", u"en"}, {u"enu", u"en"}, {u"ena", u"en"}, {u"enc", u"en"}, {u"enz", u"en"}, {u"eni", u"en"},
    {u"ens", u"en"}, {u"enj", u"en"}, {u"enb", u"en"}, {u"enl", u"en"}, {u"ent", u"en"}, {u"enw", u"en"},
    {u"enp", u"en"}, {u"enn", u"en"}, {u"ene", u"en"}, {u"enm", u"en"}, {u"deu", u"de"}, {u"ger", u"de"},
    {u"des", u"de"}, {u"dea", u"de"}, {u"del", u"de"}, {u"dec", u"de"}, {u"fra", u"fr"}, {u"fre", u"fr"},
    {u"frb", u"fr"}, {u"frc", u"fr"}, {u"frs", u"fr"}, {u"frl", u"fr"}, {u"frm", u"fr"},
};

/// The language of a code: without region, and in two letters where it has such a form.
std::u16string_view languageOf(std::u16string_view code) {
    code = code.substr(0, code.find_first_of(u"-_.@"));
    for (const auto& [alias, language] : languageAliases)
        if (equalIgnoringCase(alias, code))
            return language;
    return code;
}

/// The header's values by key.
class Header {
  public:
    explicit Header(StringResources& strings) : strings_(strings) {
        if (const auto text = strings.load(headerNumber))
            text_ = *text;
    }
    /// "" when the header does not have the key or the file not the string.
    String value(std::u16string_view key) const {
        for (const auto entry : split(text_, u";")) {
            const std::size_t equals = entry.find(u'=');
            if (equals != std::u16string_view::npos && equalIgnoringCase(trim(entry.substr(0, equals)), key))
                return strings_.load(toLong(Variant(trim(entry.substr(equals + 1))))).value_or(String());
        }
        return {};
    }

  private:
    StringResources& strings_;
    String text_;
};

} // namespace

namespace {

/// What insertions may make of a text: inserted texts are looked through for places again, so a few short
/// ones could fill the memory.
constexpr std::size_t longestResult = 1 << 20;
constexpr std::size_t largestGrowth = 64;

/// `given` is the length of all that was put in so far and of the text at first.
String insert(std::u16string_view text, std::u16string_view place, std::u16string_view element,
              std::size_t given) {
    std::size_t result = text.size();
    for (auto at = text.find(place); at != text.npos; at = text.find(place, at + place.size()))
        result += element.size();
    if (result > longestResult && result / largestGrowth > given)
        raise(RunTimeError::OutOfMemory);
    return replaceAll(text, place, element);
}

} // namespace

String replaceParameters(const String& text, const Variant& params) {
    if (text.empty())
        return text;
    String result = replaceAll(text, u"%%", u"~~");
    if (params.isArray()) {
        const Array& elements = params.array();
        const std::int64_t upper = elements.upper();
        std::int64_t number = 0;
        std::size_t given = text.length();
        for (std::int64_t index = elements.lower(); index <= upper; ++index) {
            const String element = toText(elements.get(static_cast<std::int32_t>(index)));
            given += element.length();
            result = insert(result, concat(u"%", decimal(++number)), element, given);
        }
    } else if (!params.isMissing() && !params.isEmpty() && !params.isNull()) {
        raise(RunTimeError::TypeMismatch);
    }
    return replaceAll(result, u"~~", u"%");
}

MessageTexts::MessageTexts(std::u16string_view resourceFile) : strings_(StringResources::open(resourceFile)) {
    const Header header(*strings_);
    minimum_ = toLong(header.value(u"Min"));
    maximum_ = header.value(u"Max");
    highest_ = toLong(maximum_);
    languages_ = header.value(u"Languages");
    languageCodes_ = split(languages_, u";");
    name_ = header.value(u"Name");
    version_ = header.value(u"Version");
    applicationName_ = header.value(u"AppName");
    invalidIndexText_ = header.value(u"InvalidIndexDefault");
    if (invalidIndexText_.empty())
        invalidIndexText_ = fixedInvalidIndexText;
}

std::int32_t MessageTexts::offsetOf(std::u16string_view languageCode,
                                    std::u16string_view languageOverride) const {
    const auto offset = [&](std::u16string_view code) -> std::optional<std::int32_t> {
        const std::u16string_view language = languageOf(code);
        if (language.empty())
            return std::nullopt;
        std::int32_t base = 0;
        for (const auto known : languageCodes_) {
            if (equalIgnoringCase(known, language))
                return base;
            base += languageBlock;
        }
        return std::nullopt;
    };
    if (const auto given = offset(languageCode))
        return *given;
    if (const auto standing = offset(languageOverride))
        return *standing;
    for (const auto& wanted : messageLanguages())
        if (const auto known = offset(wanted))
            return *known;
    return 0;
}

String MessageTexts::text(std::int32_t index, std::u16string_view languageCode,
                          std::u16string_view languageOverride) {
    if (!isValidIndex(index))
        return concat(invalidIndexText_, u"(", decimal(index), u")");
    const std::int32_t offset = offsetOf(languageCode, languageOverride);
    std::optional<String> text = strings_->load(index + offset);
    if (!text && offset != 0)
        text = strings_->load(index);
    if (!text)
        raise(RunTimeError::ResourceNotFound);
    return *text;
}

} // namespace vlgs
