// SPDX-License-Identifier: MIT
#include "conversion/AttributeValues.h"

#include "automation/Convert.h"
#include "automation/DateText.h"
#include "automation/NumberFormat.h"
#include "base/Dates.h"
#include "base/Text.h"
#include "conversion/LocaleSettings.h"
#include "conversion/MaskedReplace.h"
#include "conversion/RevisionNumbers.h"
#include "conversion/Timestamps.h"
#include "frame/Errors.h"

#include <limits>

namespace vlgs {

namespace {

constexpr Date firstNativeDay{367}; // 1 January 1901

// A number that is not numeric counts as 0.
std::int32_t wholeNumber(const Variant& value) {
    return isNumeric(value) ? toLong(value) : 0;
}

std::int32_t checkedLong(std::int64_t value) {
    if (value != static_cast<std::int32_t>(value))
        raise(RunTimeError::Overflow);
    return static_cast<std::int32_t>(value);
}

Date stripSeconds(Date date) {
    return addSeconds(date, -partsOf(date).second);
}

// ---- Integer ----

Variant AttrValueIntegerFromLocaleToNative_(const Variant& vData) {
    constexpr auto* source = u"VlGeneralServices.modConversion.AttrValueIntegerFromLocaleToNative_";
    return underInnermostSource(source, [&]() -> Variant {
        if (!isNumeric(vData))
            raiseMessage(source, eMsg_AttrValueIntegerValueNotNumeric);
        const std::int32_t value = toLong(vData);
        if (toDouble(vData) != value)
            raiseMessage(source, eMsg_AttrValueIntegerValueFractionalPartNotZero);
        return value;
    });
}

Variant AttrValueIntegerFromNativeToLocale_(const Variant& vData) {
    if (!isNumeric(vData))
        return 0;
    try {
        return toLong(vData);
    } catch (const Error&) {
        return -1;
    }
}

// ---- Real ----

// Swaps signs and separators one after the other without touching what an earlier swap produced.
class SeparatorSwap {
  public:
    explicit SeparatorSwap(String text) : text_(std::move(text)) {}
    SeparatorSwap& swap(std::u16string_view find, std::u16string_view replacement) {
        MaskedReplacement step{
            .find = find, .replacement = replacement, .invertMask = true, .keepMask = true};
        text_ = MaskedReplace_(text_, step, mask_);
        return *this;
    }
    const String& text() const { return text_; }

  private:
    String text_;
    std::u16string mask_;
};

Variant AttrValueRealFromLocaleToNative_(double dValue) {
    return underInnermostSource(u"VlGeneralServices.modConversion.AttrValueRealFromLocaleToNative_",
                                [&]() -> Variant {
                                    const String text = toText(dValue);
                                    if (text.empty())
                                        return {};
                                    const auto settings = g_GetLocaleSettings();
                                    return SeparatorSwap(text)
                                        .swap(settings.sThousands, u",")
                                        .swap(settings.sNegative, u"-")
                                        .swap(settings.sPositive, u"+")
                                        .swap(settings.sDecimal, u".")
                                        .text();
                                });
}

Variant AttrValueRealFromNativeToLocale_(const Variant& vData) {
    return underInnermostSource(u"VlGeneralServices.modConversion.AttrValueRealFromNativeToLocale_",
                                [&]() -> Variant {
                                    const String text = trim(cutAtNul(toText(vData)));
                                    if (text.empty())
                                        return 0.0;
                                    const auto settings = g_GetLocaleSettings();
                                    const double value = toDouble(SeparatorSwap(text)
                                                                      .swap(u",", settings.sThousands)
                                                                      .swap(u"-", settings.sNegative)
                                                                      .swap(u"+", settings.sPositive)
                                                                      .swap(u".", settings.sDecimal)
                                                                      .text());
                                    return toDouble(formatNumber(value, u"##############0.00##############"));
                                });
}

// ---- Date and time ----

// A moment goes through the user's own form, as the values that users see do.
Date shortDate(const Variant& value) {
    Date date;
    return textToDate(partAs(value, {.date = true}, formattingPattern(localeShortDate), date),
                      WantedPart::Date);
}
Date localeTimeOf(const Variant& value) {
    Date time;
    return textToDate(partAs(value, {.time = true}, formattingPattern(localeTimeFormat), time),
                      WantedPart::Time);
}

Variant AttrValueDateFromLocaleToNative_(Date dt) {
    return underInnermostSource(u"VlGeneralServices.modConversion.AttrValueDateFromLocaleToNative_",
                                [&]() -> Variant { return checkedLong(daysBetween(firstNativeDay, dt)); });
}

Variant AttrValueDateFromNativeToLocale_(std::int32_t lDays) {
    return underInnermostSource(u"VlGeneralServices.modConversion.AttrValueDateFromNativeToLocale_",
                                [&]() -> Variant { return shortDate(addDays(firstNativeDay, lDays)); });
}

Variant AttrValueTimeFromLocaleToNative_(Date dt) {
    return underInnermostSource(
        u"VlGeneralServices.modConversion.AttrValueTimeFromLocaleToNative_",
        [&]() -> Variant { return checkedLong(secondsBetween({0}, stripSeconds(dt))); });
}

Variant AttrValueTimeFromNativeToLocale_(std::int32_t lSeconds) {
    return underInnermostSource(
        u"VlGeneralServices.modConversion.AttrValueTimeFromNativeToLocale_",
        [&]() -> Variant { return localeTimeOf(stripSeconds(addSeconds({0}, lSeconds))); });
}

Variant dateToNative(const Variant& vData) {
    Date ignored;
    return AttrValueDateFromLocaleToNative_(
        textToDate(g_CTimestamp(vData, {.date = true}, ignored, true, true), WantedPart::Date));
}

Variant timeToNative(const Variant& vData) {
    return AttrValueTimeFromLocaleToNative_(localeTimeOf(vData));
}

// ---- Dispatch ----

Variant versionNumber(const Variant& vData) {
    const String old = toText(vData);
    String normalised = old;
    g_ValidateNewRevisionNumber(old, normalised);
    return normalised;
}

Variant converted(const Variant& vData, enumAttrValueDataTypes eDataType, bool toNative) {
    switch (eDataType) {
    case eAttrValDataType_Integer:
        return toNative ? AttrValueIntegerFromLocaleToNative_(vData)
                        : AttrValueIntegerFromNativeToLocale_(vData);
    case eAttrValDataType_Real:
        return toNative ? AttrValueRealFromLocaleToNative_(toDouble(vData))
                        : AttrValueRealFromNativeToLocale_(vData);
    case eAttrValDataType_Date:
        return toNative ? dateToNative(vData) : AttrValueDateFromNativeToLocale_(wholeNumber(vData));
    case eAttrValDataType_Time:
        return toNative ? timeToNative(vData) : AttrValueTimeFromNativeToLocale_(wholeNumber(vData));
    default:
        return {};
    }
}

} // namespace

Variant g_FormatAttrValueData(const Variant& vData, enumAttrValueDataTypes eDataType,
                              enumAttrValueConvTypes eConvType) {
    if (vData.isArray() || vData.isEmpty() || vData.isNull() || vData.isObject() || vData.is(VarType::Record))
        return {};
    return underInnermostSource(u"VlGeneralServices.modConversion.g_FormatAttrValueData", [&]() -> Variant {
        switch (eDataType) {
        case eAttrValDataType_Text:
        case eAttrValDataType_Currency:
        case eAttrValDataType_Percent:
        case eAttrValDataType_URL:
            return toText(vData);
        case eAttrValDataType_Boolean:
            return toBoolean(vData) ? 1 : 0;
        case eAttrValDataType_VersionNumber:
            return versionNumber(vData);
        default:
            if (eConvType != eAttrValConvType_Native && eConvType != eAttrValConvType_Locale)
                return {};
            return converted(vData, eDataType, eConvType == eAttrValConvType_Native);
        }
    });
}

} // namespace vlgs
