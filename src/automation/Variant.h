// SPDX-License-Identifier: MIT
// The dynamically typed value that crosses every boundary of the library.
//
// Invariant: 16 bytes. Bytes 0 and 1 hold the type code of automation; the value stands from byte 8, but for
// a decimal, which fills bytes 2 to 15 as the platform's decimal does (scale, sign, high 32 bits, low 64
// bits).
#pragma once

#include "automation/Object.h"
#include "base/Dates.h"
#include "base/String.h"

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

namespace vlgs {

class Array;
class ArrayData;
class Record;

/// The automation type codes. An array's code is `Array` plus the code of its elements.
enum class VarType : std::uint16_t {
    Empty = 0,
    Null = 1,
    Integer = 2,
    Long = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Object = 9,
    Error = 10,
    Boolean = 11,
    Variant = 12,
    Decimal = 14,
    Byte = 17,
    Record = 36,
    Array = 0x2000,
};
constexpr std::uint16_t code(VarType type) {
    return static_cast<std::uint16_t>(type);
}
constexpr VarType arrayOf(VarType element) {
    return static_cast<VarType>(0x2000 | code(element));
}

/// A fixed-point number in units of 1/10000.
struct Currency {
    std::int64_t units = 0;
    friend bool operator==(Currency, Currency) = default;
};

/// A 96-bit whole number, divided by 10 to the power of `scale` (0 to 28); `sign` is 0x80 for negative ones.
struct Decimal {
    std::uint8_t scale = 0;
    std::uint8_t sign = 0;
    std::uint32_t high = 0;
    std::uint64_t low = 0;
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// An automation error value; a left-out optional argument is the one named `missing`.
struct ErrorValue {
    std::int32_t status = 0;
    friend bool operator==(ErrorValue, ErrorValue) = default;
};
struct NullValue {};
struct MissingValue {};
inline constexpr NullValue null;
inline constexpr MissingValue missing;
inline constexpr std::int32_t parameterNotFound = -2147352572; // 0x80020004, the automation status

class VLGS_API Variant {
  public:
    Variant() noexcept = default;
    Variant(NullValue) noexcept { type_ = VarType::Null; }
    Variant(MissingValue) noexcept : Variant(ErrorValue{parameterNotFound}) {}
    Variant(std::int16_t value) noexcept : Variant(VarType::Integer) { value_.integer = value; }
    Variant(std::int32_t value) noexcept : Variant(VarType::Long) { value_.number = value; }
    Variant(std::uint8_t value) noexcept : Variant(VarType::Byte) { value_.byte = value; }
    Variant(float value) noexcept : Variant(VarType::Single) { value_.single = value; }
    Variant(double value) noexcept : Variant(VarType::Double) { value_.real = value; }
    template <class Bool>
    requires std::is_same_v<Bool, bool> Variant(Bool value)
    noexcept : Variant(VarType::Boolean) { value_.boolean = value; }
    template <class Enumeration>
    requires std::is_enum_v<Enumeration> Variant(Enumeration value)
    noexcept : Variant(static_cast<std::int32_t>(value)) {}
    Variant(Currency value) noexcept : Variant(VarType::Currency) { value_.currency = value.units; }
    Variant(Date value) noexcept : Variant(VarType::Date) { value_.real = value.days; }
    Variant(ErrorValue value) noexcept : Variant(VarType::Error) { value_.number = value.status; }
    Variant(const Decimal& value) noexcept;
    Variant(String value) noexcept : Variant(VarType::String) { new (&value_.text) String(std::move(value)); }
    Variant(const char16_t* value) : Variant(String(value)) {}
    Variant(std::u16string_view value) : Variant(String(value)) {}
    template <class T>
    requires(std::is_convertible_v<T*, Object*> && !std::is_same_v<T, Record>) Variant(Ref<T> value)
    noexcept : Variant(VarType::Object) { value_.object = value.detach(); }
    Variant(std::nullptr_t) noexcept : Variant(VarType::Object) {}
    Variant(Array value) noexcept;

    static Variant ofRecord(Ref<Record> value) noexcept;

    Variant(const Variant& other);
    Variant(Variant&& other) noexcept
        : type_(std::exchange(other.type_, VarType::Empty)), scale_(other.scale_), sign_(other.sign_),
          high_(other.high_) {
        value_.bits = other.value_.bits; // every kind of value is moved by moving its bits
    }
    ~Variant() {
        if (owns())
            clear();
    }
    Variant& operator=(const Variant& other) {
        Variant(other).swap(*this);
        return *this;
    }
    Variant& operator=(Variant&& other) noexcept {
        Variant(std::move(other)).swap(*this);
        return *this;
    }
    /// Every kind of value is moved by moving its bytes.
    void swap(Variant& other) noexcept {
        unsigned char bytes[sizeof(Variant)];
        std::memcpy(bytes, static_cast<void*>(this), sizeof(Variant));
        std::memcpy(static_cast<void*>(this), static_cast<void*>(&other), sizeof(Variant));
        std::memcpy(static_cast<void*>(&other), bytes, sizeof(Variant));
    }

    VarType type() const noexcept { return type_; }
    bool is(VarType type) const noexcept { return type_ == type; }
    bool isEmpty() const noexcept { return type_ == VarType::Empty; }
    bool isNull() const noexcept { return type_ == VarType::Null; }
    bool isObject() const noexcept { return type_ == VarType::Object; }
    bool isString() const noexcept { return type_ == VarType::String; }
    bool isArray() const noexcept { return (code(type_) & 0x2000) != 0; }
    bool isMissing() const noexcept { return type_ == VarType::Error && value_.number == parameterNotFound; }

    // REQUIRES, for each of these: the value is of that type. For conversions see Convert.h.
    std::int16_t integer() const noexcept { return value_.integer; }
    std::int32_t number() const noexcept { return value_.number; }
    std::uint8_t byte() const noexcept { return value_.byte; }
    float single() const noexcept { return value_.single; }
    double real() const noexcept { return value_.real; }
    bool boolean() const noexcept { return value_.boolean; }
    Currency currency() const noexcept { return {value_.currency}; }
    Date date() const noexcept { return {value_.real}; }
    std::int32_t status() const noexcept { return value_.number; }
    Decimal decimal() const noexcept;
    const String& text() const noexcept { return value_.text; }
    String& text() noexcept { return value_.text; }
    Object* object() const noexcept { return value_.object; }
    Ref<Object> reference() const noexcept { return Ref<Object>(value_.object); }
    const Array& array() const noexcept;
    Array& array() noexcept;
    Ref<Record> record() const noexcept;

    /// Same type and same value; objects by identity, arrays element by element.
    friend bool operator==(const Variant& a, const Variant& b) noexcept;

  private:
    explicit Variant(VarType type) noexcept : type_(type) {}
    bool owns() const noexcept {
        return type_ == VarType::String || type_ == VarType::Object || type_ == VarType::Record || isArray();
    }
    void clear() noexcept;

    union Value {
        Value() noexcept : bits(0) {}
        ~Value() {}
        std::uint64_t bits;
        std::int16_t integer;
        std::int32_t number;
        std::uint8_t byte;
        float single;
        double real;
        bool boolean;
        std::int64_t currency;
        String text;
        Object* object;
        ArrayData* array;
        Record* record;
    };
    VarType type_ = VarType::Empty;
    std::uint8_t scale_ = 0;
    std::uint8_t sign_ = 0;
    std::uint32_t high_ = 0;
    Value value_;
};
static_assert(sizeof(Variant) == 16);

} // namespace vlgs
