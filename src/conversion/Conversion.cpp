// SPDX-License-Identifier: MIT
#include "conversion/Conversion.h"

#include "automation/Convert.h"
#include "automation/DateFormat.h"
#include "base/Dates.h"
#include "conversion/AttributeValues.h"
#include "conversion/LocaleSettings.h"
#include "conversion/RevisionNumbers.h"
#include "conversion/Timestamps.h"
#include "platform/Clock.h"

namespace vlgs {

namespace {

String nowAs(std::u16string_view pattern) {
    return formatDate(dateOf(localNow()), pattern);
}

// Runs a conversion with somewhere to put the typed result, also for a caller who does not want it.
template <class Action>
String typed(Date* dtTypedReturn, Action&& action) {
    Date date;
    String text = action(date);
    if (dtTypedReturn)
        *dtTypedReturn = date;
    return text;
}

String datePart(const Variant& value, Date* dtTypedReturn, std::u16string_view pattern) {
    return typed(dtTypedReturn, [&](Date& date) { return partAs(value, {.date = true}, pattern, date); });
}
String timePart(const Variant& value, Date* dtTypedReturn, std::u16string_view pattern) {
    return typed(dtTypedReturn, [&](Date& date) { return partAs(value, {.time = true}, pattern, date); });
}

bool isValid(const Variant& value, TimestampParts parts, bool truncate, String* sReturn) {
    try {
        Date ignored;
        const bool timestamp = parts.date && parts.time;
        String text = g_CTimestamp(value, parts, ignored, truncate, !timestamp);
        if (sReturn)
            *sReturn = std::move(text);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace

const ClassInfo& Conversion::description() {
    return classInfoOf<Conversion>();
}

String Conversion::GetLocaleSetting(std::int32_t lInfoType) const {
    return g_GetLocaleSetting(lInfoType);
}
udtLocaleSettings Conversion::GetLocaleSettings() const {
    return g_GetLocaleSettings();
}

String Conversion::LongDateFormat() const {
    return g_GetLocaleSetting(localeLongDate);
}
String Conversion::LongDate() const {
    return nowAs(formattingPattern(localeLongDate));
}
String Conversion::ShortDateFormat() const {
    return g_GetLocaleSetting(localeShortDate);
}
String Conversion::ShortDate() const {
    return nowAs(formattingPattern(localeShortDate));
}
String Conversion::UniversalDateFormat() const {
    return universalDateFormat;
}
String Conversion::UniversalDate() const {
    return nowAs(universalDateFormat);
}
String Conversion::LocaleTimeFormat() const {
    return g_GetLocaleSetting(localeTimeFormat);
}
String Conversion::LocaleTime() const {
    return nowAs(formattingPattern(localeTimeFormat));
}
String Conversion::UniversalTimeFormat() const {
    return universalTimeFormat;
}
String Conversion::UniversalTime() const {
    return nowAs(universalTimeFormat);
}
String Conversion::UniversalTimestampFormat() const {
    return universalTimestampFormat;
}
String Conversion::UniversalTimestamp() const {
    return nowAs(universalTimestampFormat);
}
String Conversion::TimestampFormat() const {
    return UniversalTimestampFormat();
}
String Conversion::Timestamp() const {
    return UniversalTimestamp();
}
String Conversion::LocaleTimestampFormat() const {
    return localeTimestampFormat;
}
String Conversion::LocaleTimestamp() const {
    return nowAs(localeTimestampFormat);
}

String Conversion::RemoveWeekdayName(const String& sDate) const {
    return removeWeekdayNames(sDate, WeekdayOrder::DayByDay);
}

Variant Conversion::FormatAttrValueData(const Variant& vData, enumAttrValueDataTypes eDataType,
                                        enumAttrValueConvTypes eConvType) const {
    return g_FormatAttrValueData(vData, eDataType, eConvType);
}

String Conversion::CBln(const Variant& vData, bool* bTypedReturn) const {
    const bool value = toBoolean(vData);
    if (bTypedReturn)
        *bTypedReturn = value;
    return value ? u"1" : u"0";
}

String Conversion::GenerateRevisionNumber() const {
    return g_IncrementRevisionNumber({});
}
String Conversion::IncrementRevisionNumber(const String& sRevisionNumber) const {
    return g_IncrementRevisionNumber(sRevisionNumber);
}
bool Conversion::IsValidCorvaRevisionNumber(String& sRevisionNumber) const {
    return g_IsValidRevisionNumber(sRevisionNumber);
}
Variant Conversion::RevNumComp(const String& sRevNum1, String& sRevNum2) const {
    String first = sRevNum1;
    return g_CompareRevisionNumber(first, sRevNum2);
}
String Conversion::PostFixCharacter() const {
    return g_PostFixCharacter();
}

String Conversion::CTimestamp(const Variant& vLegalLocaleTimestamp, bool bUseDatePart, bool bUseTimePart,
                              Date* dtTypedReturn) const {
    return CTimestamp3(vLegalLocaleTimestamp, bUseDatePart, bUseTimePart, dtTypedReturn, true, false);
}
String Conversion::CTimestamp2(const Variant& vLegalLocaleTimestamp, bool bUseDatePart, bool bUseTimePart,
                               Date* dtTypedReturn, bool bTruncGarbage) const {
    return CTimestamp3(vLegalLocaleTimestamp, bUseDatePart, bUseTimePart, dtTypedReturn, bTruncGarbage,
                       false);
}
String Conversion::CTimestamp3(const Variant& vLegalLocaleTimestamp, bool bUseDatePart, bool bUseTimePart,
                               Date* dtTypedReturn, bool bTruncGarbage, bool bUseLocaleFormat) const {
    return typed(dtTypedReturn, [&](Date& date) {
        return g_CTimestamp(vLegalLocaleTimestamp, {bUseDatePart, bUseTimePart}, date, bTruncGarbage,
                            bUseLocaleFormat);
    });
}

String Conversion::CLongDate(const Variant& vLegalLocaleDate, Date* dtTypedReturn) const {
    return datePart(vLegalLocaleDate, dtTypedReturn, formattingPattern(localeLongDate));
}
String Conversion::CShortDate(const Variant& vLegalLocaleDate, Date* dtTypedReturn) const {
    return datePart(vLegalLocaleDate, dtTypedReturn, formattingPattern(localeShortDate));
}
String Conversion::CUniversalDate(const Variant& vLegalLocaleDate, Date* dtTypedReturn) const {
    return datePart(vLegalLocaleDate, dtTypedReturn, universalDateFormat);
}
String Conversion::CLocaleTime(const Variant& vLegalLocaleTime, Date* dtTypedReturn) const {
    return timePart(vLegalLocaleTime, dtTypedReturn, formattingPattern(localeTimeFormat));
}
String Conversion::CUniversalTime(const Variant& vLegalLocaleTime, Date* dtTypedReturn) const {
    return timePart(vLegalLocaleTime, dtTypedReturn, universalTimeFormat);
}
String Conversion::CUniversalTimestampToLocale(const Variant& vTimestamp) const {
    return g_CUniversalTimestampToLocale(vTimestamp);
}

bool Conversion::IsValidDate(const Variant& vDate, String* sReturn) const {
    return isValid(vDate, {.date = true}, true, sReturn);
}
bool Conversion::IsValidTime(const Variant& vTime, String* sReturn) const {
    return isValid(vTime, {.time = true}, true, sReturn);
}
bool Conversion::IsValidTimestamp(const Variant& vTimestamp, String* sReturn) const {
    return isValid(vTimestamp, {.date = true, .time = true}, true, sReturn);
}
bool Conversion::IsValidCorvaDate(const Variant& vDate, bool bTruncGarbage, String* sReturn) const {
    return isValid(vDate, {.date = true}, bTruncGarbage, sReturn);
}
bool Conversion::IsValidCorvaTime(const Variant& vTime, bool bTruncGarbage, String* sReturn) const {
    return isValid(vTime, {.time = true}, bTruncGarbage, sReturn);
}
bool Conversion::IsValidCorvaTimestamp(const Variant& vTimestamp, bool bTruncGarbage, String* sReturn) const {
    return isValid(vTimestamp, {.date = true, .time = true}, bTruncGarbage, sReturn);
}

} // namespace vlgs
