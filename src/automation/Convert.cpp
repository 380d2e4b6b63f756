// SPDX-License-Identifier: MIT
#include "automation/Convert.h"

#include "automation/Array.h"
#include "automation/DateFormat.h"
#include "automation/DateText.h"
#include "automation/NumberText.h"
#include "base/CaseFold.h"
#include "base/Dates.h"
#include "base/Error.h"
#include "base/Text.h"

#include <cfenv>
#include <cmath>
#include <limits>

namespace vlgs {

namespace {

// The value that an object stands for in a conversion: that of its default member, followed to its end.
// Objects that lead to one another without an end stand for none.
Variant valueOf(const Ref<Object>& object) {
    constexpr int longestChain = 100;
    Variant value = object;
    for (int i = 0; value.isObject(); ++i) {
        if (!value.object())
            raise(RunTimeError::ObjectVariableNotSet);
        if (i == longestChain)
            raise(RunTimeError::TypeMismatch);
        value = value.reference()->invoke(defaultMember, InvokeKind::MethodOrGet, {});
    }
    return value;
}

template <class Number>
Number checkedWhole(double value) {
    const double rounded = roundHalfToEven(value);
    if (!(rounded >= static_cast<double>(std::numeric_limits<Number>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Number>::max())))
        raise(RunTimeError::Overflow);
    return static_cast<Number>(rounded);
}

double decimalToDouble(const Decimal& value) {
    const double magnitude = (static_cast<double>(value.high) * 0x1p64 + static_cast<double>(value.low)) /
                             std::pow(10.0, value.scale);
    return value.sign ? -magnitude : magnitude;
}

Currency currencyOf(double value) {
    const double units = roundHalfToEven(value * 10000);
    if (!(std::abs(units) < 0x1p63))
        raise(RunTimeError::Overflow);
    return {static_cast<std::int64_t>(units)};
}

Currency currencyOf(const Decimal& value) {
    if (value.high == 0 && value.scale <= 4) { // exactly, where a Double could not hold every digit
        std::uint64_t units = value.low;
        bool overflow = false;
        for (int scale = value.scale; scale < 4; ++scale)
            overflow |= __builtin_mul_overflow(units, std::uint64_t{10}, &units);
        if (overflow || units > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
            raise(RunTimeError::Overflow);
        return {value.sign ? -static_cast<std::int64_t>(units) : static_cast<std::int64_t>(units)};
    }
    return currencyOf(decimalToDouble(value));
}

} // namespace

double roundHalfToEven(double value) noexcept {
    const double floor = std::floor(value);
    const double rest = value - floor;
    if (rest != 0.5)
        return rest < 0.5 ? floor : floor + 1;
    return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

double toDouble(const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
        return 0;
    case VarType::Integer:
        return value.integer();
    case VarType::Long:
        return value.number();
    case VarType::Byte:
        return value.byte();
    case VarType::Boolean:
        return value.boolean() ? -1 : 0;
    case VarType::Single:
        return value.single();
    case VarType::Double:
    case VarType::Date:
        return value.real();
    case VarType::Currency:
        return static_cast<double>(value.currency().units) / 10000;
    case VarType::Decimal:
        return decimalToDouble(value.decimal());
    case VarType::String:
        return textToNumber(value.text());
    case VarType::Object:
        return toDouble(valueOf(value.reference()));
    case VarType::Null:
        raise(RunTimeError::InvalidUseOfNull);
    default:
        raise(RunTimeError::TypeMismatch);
    }
}

std::int32_t toLong(const Variant& value) {
    if (value.is(VarType::Long))
        return value.number();
    if (value.isString())
        if (const auto bits = bitsOfText(value.text()))
            return *bits;
    return checkedWhole<std::int32_t>(toDouble(value));
}
std::int16_t toInteger(const Variant& value) {
    return value.is(VarType::Integer) ? value.integer() : checkedWhole<std::int16_t>(toDouble(value));
}
std::uint8_t toByte(const Variant& value) {
    return value.is(VarType::Byte) ? value.byte() : checkedWhole<std::uint8_t>(toDouble(value));
}

float toSingle(const Variant& value) {
    const double number = toDouble(value);
    if (std::abs(number) > static_cast<double>(std::numeric_limits<float>::max()))
        raise(RunTimeError::Overflow);
    return static_cast<float>(number);
}

bool toBoolean(const Variant& value) {
    if (value.is(VarType::Boolean))
        return value.boolean();
    if (value.isObject())
        return toBoolean(valueOf(value.reference()));
    if (value.isString()) {
        if (equalIgnoringCase(value.text(), u"True") || value.text() == u"#TRUE#")
            return true;
        if (equalIgnoringCase(value.text(), u"False") || value.text() == u"#FALSE#")
            return false;
    }
    return toDouble(value) != 0;
}

String toText(const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
        return {};
    case VarType::String:
        return value.text();
    case VarType::Boolean:
        return value.boolean() ? u"True" : u"False";
    case VarType::Integer:
        return decimal(value.integer());
    case VarType::Long:
        return decimal(value.number());
    case VarType::Byte:
        return decimal(value.byte());
    case VarType::Single:
    case VarType::Double:
    case VarType::Currency:
    case VarType::Decimal:
        return numberToText(value);
    case VarType::Date:
        return dateToText(value.date());
    case VarType::Object:
        return toText(valueOf(value.reference()));
    case VarType::Null:
        raise(RunTimeError::InvalidUseOfNull);
    default:
        raise(RunTimeError::TypeMismatch);
    }
}

Date toDate(const Variant& value) {
    if (value.is(VarType::Date))
        return value.date();
    if (value.isString())
        return textToDate(value.text());
    if (value.isObject())
        return toDate(valueOf(value.reference()));
    const Date date{toDouble(value)};
    partsOf(date); // raises for one that is no date
    return date;
}

Currency toCurrency(const Variant& value) {
    if (value.is(VarType::Currency))
        return value.currency();
    if (value.isString() || value.is(VarType::Decimal))
        return currencyOf(toDecimal(value));
    return currencyOf(toDouble(value));
}

Decimal toDecimal(const Variant& value) {
    if (value.is(VarType::Decimal))
        return value.decimal();
    if (value.isString())
        return textToDecimal(value.text());
    if (value.is(VarType::Currency)) {
        const auto units = value.currency().units;
        return {4, static_cast<std::uint8_t>(units < 0 ? 0x80 : 0), 0,
                units < 0 ? 0 - static_cast<std::uint64_t>(units) : static_cast<std::uint64_t>(units)};
    }
    return textToDecimal(numberToText(toDouble(value)));
}

Ref<Object> toObject(const Variant& value) {
    if (!value.isObject())
        raise(RunTimeError::TypeMismatch);
    return value.reference();
}

Variant changeType(const Variant& value, VarType type) {
    if (value.is(type))
        return value;
    switch (type) {
    case VarType::Empty:
        return {};
    case VarType::Integer:
        return toInteger(value);
    case VarType::Long:
        return toLong(value);
    case VarType::Byte:
        return toByte(value);
    case VarType::Boolean:
        return toBoolean(value);
    case VarType::Single:
        return toSingle(value);
    case VarType::Double:
        return toDouble(value);
    case VarType::Currency:
        return toCurrency(value);
    case VarType::Date:
        return toDate(value);
    case VarType::String:
        return toText(value);
    case VarType::Decimal:
        return toDecimal(value);
    case VarType::Variant:
        return value;
    default:
        raise(RunTimeError::TypeMismatch);
    }
}

bool isNumeric(const Variant& value) {
    switch (value.type()) {
    case VarType::Empty:
    case VarType::Integer:
    case VarType::Long:
    case VarType::Byte:
    case VarType::Boolean:
    case VarType::Single:
    case VarType::Double:
    case VarType::Currency:
    case VarType::Decimal:
        return true;
    case VarType::String:
        return isNumericText(value.text());
    default:
        return false;
    }
}

} // namespace vlgs
