// SPDX-License-Identifier: MIT
// The class `Conversion`: how numbers, dates and times look on the user's machine and in the product's own
// form that is the same everywhere.
#pragma once

#include "conversion/AttributeTypes.h"
#include "conversion/LocaleRecord.h"
#include "frame/Component.h"

namespace vlgs {

class VLGS_API Conversion final : public CountedComponent {
  public:
    /// A locale item by its platform number, see `g_GetLocaleSetting`. Never raises.
    String GetLocaleSetting(std::int32_t lInfoType) const;
    /// The nine settings that the product needs. Never raises.
    udtLocaleSettings GetLocaleSettings() const;

    // Patterns of the date formatter, and the present local moment by each of them.
    String LongDateFormat() const;
    String LongDate() const;
    String ShortDateFormat() const;
    String ShortDate() const;
    String UniversalDateFormat() const;
    String UniversalDate() const;
    String LocaleTimeFormat() const;
    String LocaleTime() const;
    String UniversalTimeFormat() const;
    String UniversalTime() const;
    String UniversalTimestampFormat() const;
    String UniversalTimestamp() const;
    /// The same pattern as `UniversalTimestampFormat`.
    String TimestampFormat() const;
    String Timestamp() const;
    String LocaleTimestampFormat() const;
    String LocaleTimestamp() const;

    /// The text without weekday names of the user's language; punctuation that followed one stays.
    String RemoveWeekdayName(const String& sDate) const;

    /// See `g_FormatAttrValueData`.
    Variant FormatAttrValueData(const Variant& vData, enumAttrValueDataTypes eDataType,
                                enumAttrValueConvTypes eConvType) const;
    /// "1" for a value that converts to True, else "0"; `bTypedReturn` receives the Boolean.
    String CBln(const Variant& vData, bool* bTypedReturn = nullptr) const;

    /// "1.0000".
    String GenerateRevisionNumber() const;
    /// See `g_IncrementRevisionNumber`.
    String IncrementRevisionNumber(const String& sRevisionNumber = {}) const;
    /// See `g_IsValidRevisionNumber`.
    bool IsValidCorvaRevisionNumber(String& sRevisionNumber) const;
    /// See `g_CompareRevisionNumber`.
    Variant RevNumComp(const String& sRevNum1, String& sRevNum2) const;
    /// See `g_PostFixCharacter`.
    String PostFixCharacter() const;

    // Timestamps in the universal pattern; see `g_CTimestamp` for what is accepted and raised. `CTimestamp`
    // drops what stands before and behind the moment, the other two when they are asked to.
    String CTimestamp(const Variant& vLegalLocaleTimestamp, bool bUseDatePart = false,
                      bool bUseTimePart = false, Date* dtTypedReturn = nullptr) const;
    String CTimestamp2(const Variant& vLegalLocaleTimestamp, bool bUseDatePart = false,
                       bool bUseTimePart = false, Date* dtTypedReturn = nullptr,
                       bool bTruncGarbage = false) const;
    String CTimestamp3(const Variant& vLegalLocaleTimestamp, bool bUseDatePart = false,
                       bool bUseTimePart = false, Date* dtTypedReturn = nullptr, bool bTruncGarbage = false,
                       bool bUseLocaleFormat = false) const;

    // The date or the time of a value in one of the forms above. Raise what `g_CTimestamp` raises.
    String CLongDate(const Variant& vLegalLocaleDate, Date* dtTypedReturn = nullptr) const;
    String CShortDate(const Variant& vLegalLocaleDate, Date* dtTypedReturn = nullptr) const;
    String CUniversalDate(const Variant& vLegalLocaleDate, Date* dtTypedReturn = nullptr) const;
    String CLocaleTime(const Variant& vLegalLocaleTime, Date* dtTypedReturn = nullptr) const;
    String CUniversalTime(const Variant& vLegalLocaleTime, Date* dtTypedReturn = nullptr) const;
    /// See `g_CUniversalTimestampToLocale`.
    String CUniversalTimestampToLocale(const Variant& vTimestamp) const;

    // Whether `g_CTimestamp` accepts a value. `sReturn` receives the converted text, with the user's
    // separators for dates and times and in the universal pattern for timestamps; it stays as it is when the
    // answer is False. Never raise.
    bool IsValidDate(const Variant& vDate, String* sReturn = nullptr) const;
    bool IsValidTime(const Variant& vTime, String* sReturn = nullptr) const;
    bool IsValidTimestamp(const Variant& vTimestamp, String* sReturn = nullptr) const;
    bool IsValidCorvaDate(const Variant& vDate, bool bTruncGarbage = false, String* sReturn = nullptr) const;
    bool IsValidCorvaTime(const Variant& vTime, bool bTruncGarbage = false, String* sReturn = nullptr) const;
    bool IsValidCorvaTimestamp(const Variant& vTimestamp, bool bTruncGarbage = false,
                               String* sReturn = nullptr) const;

    static constexpr auto describe() {
        using C = Conversion;
        constexpr ErrorCondition noMoment[] = {
            {eMsg_InvalidDateTimeFormat, "the value is no moment and both parts are wanted"},
            {eMsg_InvalidDateFormat, "the value is no date and the date is wanted"},
            {eMsg_InvalidTimeFormat, "the value is no time and the time is wanted"}};
        // Parameters of more than one row.
        constexpr auto moment =
            parameter("vLegalLocaleTimestamp",
                      "a moment as text in the user's form, or a value that converts to a date");
        constexpr auto date = parameter("vLegalLocaleDate",
                                        "a date as text in the user's form, or a value that converts to one");
        constexpr auto time = parameter("vLegalLocaleTime",
                                        "a time as text in the user's form, or a value that converts to one");
        constexpr auto wantsDate =
            optional("bUseDatePart", "whether the date is wanted; neither part means both");
        constexpr auto wantsTime =
            optional("bUseTimePart", "whether the time is wanted; neither part means both");
        constexpr auto typed = optional("dtTypedReturn", "receives the moment as a date");
        constexpr auto truncates =
            optional("bTruncGarbage", 0, "whether what stands around the moment is dropped");
        constexpr auto converted =
            optional("sReturn", "receives the converted text; stays as it is when the answer is False");
        return describeClass<C>(
            {.name = "Conversion",
             .help = "Conversion and validation of attribute values, dates, times and revision numbers",
             .number = eInterfaceID_Conversion,
             .classId = guid("0E9B6C8D-2A64-4F0B-8E4E-3D7C5F1A9B20"),
             .interfaceId = guid("5D3F2A17-91C4-4C5E-B7D8-1E6A0F9C4B21"),
             .creatable = true},
            identity(), //
            method<&C::GetLocaleSetting>(
                1, "GetLocaleSetting", "A setting of the user's locale",
                parameter("lInfoType", "the platform's number of the locale item (14 is the decimal sign)"))
                .neverRaises(),
            method<&C::GetLocaleSettings>(2, "GetLocaleSettings", "The settings of the user's locale"),
            get<&C::LongDateFormat>(3, "LongDateFormat", "The user's long date pattern"),
            get<&C::LongDate>(4, "LongDate", "Today as a long date"),
            get<&C::ShortDateFormat>(5, "ShortDateFormat", "The user's short date pattern"),
            method<&C::ShortDate>(6, "ShortDate", "Today as a short date"),
            get<&C::UniversalDateFormat>(7, "UniversalDateFormat", "The universal date pattern"),
            method<&C::UniversalDate>(8, "UniversalDate", "Today as a universal date"),
            get<&C::LocaleTimeFormat>(9, "LocaleTimeFormat", "The user's time pattern"),
            method<&C::LocaleTime>(10, "LocaleTime", "The present time in the user's form"),
            get<&C::UniversalTimeFormat>(11, "UniversalTimeFormat", "The universal time pattern"),
            method<&C::UniversalTime>(12, "UniversalTime", "The present time in the universal form"),
            get<&C::UniversalTimestampFormat>(13, "UniversalTimestampFormat",
                                              "The universal timestamp pattern"),
            method<&C::UniversalTimestamp>(14, "UniversalTimestamp",
                                           "The present moment in the universal form"),
            get<&C::TimestampFormat>(15, "TimestampFormat", "The same as UniversalTimestampFormat"),
            method<&C::Timestamp>(16, "Timestamp", "The same as UniversalTimestamp"),
            get<&C::LocaleTimestampFormat>(17, "LocaleTimestampFormat",
                                           "The timestamp pattern with the user's separators"),
            method<&C::LocaleTimestamp>(18, "LocaleTimestamp",
                                        "The present moment with the user's separators"),
            method<&C::RemoveWeekdayName>(19, "RemoveWeekdayName", "A date without weekday names",
                                          parameter("sDate", "a date as text")),
            method<&C::FormatAttrValueData>(
                20, "FormatAttrValueData", "An attribute value in its native or the user's form",
                parameter("vData", "the value"), parameter("eDataType", "the attribute's data type"),
                parameter("eConvType", "the form that is wanted"))
                .raises(eMsg_AttrValueIntegerValueNotNumeric, "an integer's value is no number")
                .raises(eMsg_AttrValueIntegerValueFractionalPartNotZero, "an integer's value has a fraction")
                .raises(eMsg_InvalidDateFormat, "a date's value is no date")
                .raises(eMsg_InvalidTimeFormat, "a time's value is no time")
                .raises(RunTimeError::TypeMismatch, "the value does not convert to the data type")
                .raises(RunTimeError::Overflow, "the value is beyond the data type's range")
                .example("Conversion.FormatAttrValueData 09:15 5 1", "33300"),
            method<&C::CBln>(21, "CBln", "A Boolean value as \"1\" or \"0\"", parameter("vData", "the value"),
                             optional("bTypedReturn", "receives the Boolean"))
                .raises(RunTimeError::TypeMismatch, "the value does not convert to a Boolean")
                .example("Conversion.CBln True", "1"),
            method<&C::GenerateRevisionNumber>(22, "GenerateRevisionNumber", "The first revision number")
                .example("Conversion.GenerateRevisionNumber", "1.0000"),
            method<&C::IncrementRevisionNumber>(
                23, "IncrementRevisionNumber", "The next revision number",
                optional("sRevisionNumber", "the present number; an empty text begins"))
                .raises(RunTimeError::Overflow, "the major part would pass 32 bits")
                .example("Conversion.IncrementRevisionNumber 1.9999", "2.0000"),
            method<&C::IsValidCorvaRevisionNumber>(
                24, "IsValidCorvaRevisionNumber", "Whether a text is a revision number; normalises it",
                parameter("sRevisionNumber", "the text, which becomes its normalised form"))
                .neverRaises()
                .raises(RunTimeError::Overflow, "a part is beyond 32 bits"),
            method<&C::RevNumComp>(25, "RevNumComp", "Compares two revision numbers: -1, 0, 1, or \"\"",
                                   parameter("sRevNum1", "a revision number"),
                                   parameter("sRevNum2", "the number to compare it with"))
                .neverRaises(u"")
                .raises(RunTimeError::Overflow, "a part is beyond 32 bits")
                .example("Conversion.RevNumComp 1.2 1.10", "-1"),
            method<&C::PostFixCharacter>(26, "PostFixCharacter", "The character that the catalogue names")
                .raises(RunTimeError::TypeMismatch, "the catalogue's text is no number")
                .raises(RunTimeError::InvalidProcedureCall, "it is no character code"),
            method<&C::CTimestamp>(27, "CTimestamp", "A value as a universal timestamp, garbage dropped",
                                   moment, wantsDate, wantsTime, typed)
                .raises(noMoment),
            method<&C::CTimestamp2>(28, "CTimestamp2", "A value as a universal timestamp", moment, wantsDate,
                                    wantsTime, typed, truncates)
                .raises(noMoment),
            method<&C::CTimestamp3>(
                29, "CTimestamp3", "A value as a timestamp of either form", moment, wantsDate, wantsTime,
                typed, truncates,
                optional("bUseLocaleFormat", 0, "whether the result has the user's separators"))
                .raises(noMoment),
            method<&C::CLongDate>(30, "CLongDate", "A date in the user's long form", date, typed)
                .raises(eMsg_InvalidDateFormat, "the value is no date"),
            method<&C::CShortDate>(31, "CShortDate", "A date in the user's short form", date, typed)
                .raises(eMsg_InvalidDateFormat, "the value is no date"),
            method<&C::CUniversalDate>(32, "CUniversalDate", "A date in the universal form", date, typed)
                .raises(eMsg_InvalidDateFormat, "the value is no date")
                .example("Conversion.CUniversalDate 12/31/2009", "2009-12-31"),
            method<&C::CLocaleTime>(33, "CLocaleTime", "A time in the user's form", time, typed)
                .raises(eMsg_InvalidTimeFormat, "the value is no time"),
            method<&C::CUniversalTime>(34, "CUniversalTime", "A time in the universal form", time, typed)
                .raises(eMsg_InvalidTimeFormat, "the value is no time")
                .example("Conversion.CUniversalTime '1:02 PM'", "13:02:00"),
            method<&C::CUniversalTimestampToLocale>(
                35, "CUniversalTimestampToLocale", "A universal timestamp with the user's separators",
                parameter("vTimestamp", "a timestamp in the universal form")),
            method<&C::IsValidDate>(36, "IsValidDate", "Whether a value is a date",
                                    parameter("vDate", "the value"), converted),
            method<&C::IsValidTime>(37, "IsValidTime", "Whether a value is a time",
                                    parameter("vTime", "the value"), converted),
            method<&C::IsValidTimestamp>(38, "IsValidTimestamp", "Whether a value is a timestamp",
                                         parameter("vTimestamp", "the value"), converted),
            method<&C::IsValidCorvaDate>(39, "IsValidCorvaDate", "Whether a value is a date",
                                         parameter("vDate", "the value"), truncates, converted),
            method<&C::IsValidCorvaTime>(40, "IsValidCorvaTime", "Whether a value is a time",
                                         parameter("vTime", "the value"), truncates, converted),
            method<&C::IsValidCorvaTimestamp>(41, "IsValidCorvaTimestamp", "Whether a value is a timestamp",
                                              parameter("vTimestamp", "the value"), truncates, converted));
    }
    static const ClassInfo& description();
    const ClassInfo* classInfo() const noexcept override { return &description(); }
};

} // namespace vlgs
