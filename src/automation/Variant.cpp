// SPDX-License-Identifier: MIT
#include "automation/Variant.h"

#include "automation/Array.h"
#include "automation/Record.h"

#include <cstring>
#include <utility>

namespace vlgs {

Variant::Variant(const Decimal& value) noexcept
    : type_(VarType::Decimal), scale_(value.scale), sign_(value.sign), high_(value.high) {
    value_.bits = value.low;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): its block is taken
Variant::Variant(Array value) noexcept : type_(arrayOf(value.element())) {
    value_.array = std::exchange(value.data_, nullptr);
}

Variant Variant::ofRecord(Ref<Record> value) noexcept {
    Variant result(VarType::Record);
    result.value_.record = value.detach();
    return result;
}

Variant::Variant(const Variant& other)
    : type_(other.type_), scale_(other.scale_), sign_(other.sign_), high_(other.high_) {
    if (type_ == VarType::String)
        new (&value_.text) String(other.value_.text);
    else
        value_.bits = other.value_.bits;
    if (isArray()) {
        if (value_.array)
            ++value_.array->references;
    } else if (type_ == VarType::Object) {
        if (value_.object)
            value_.object->retain();
    } else if (type_ == VarType::Record) {
        if (value_.record)
            value_.record->retain();
    }
}

void Variant::clear() noexcept {
    if (isArray()) {
        array().~Array();
    } else if (type_ == VarType::String) {
        value_.text.~String();
    } else if (type_ == VarType::Object) {
        if (value_.object)
            value_.object->release();
    } else if (type_ == VarType::Record) {
        if (value_.record)
            value_.record->release();
    }
    type_ = VarType::Empty;
}

Decimal Variant::decimal() const noexcept {
    return {scale_, sign_, high_, value_.bits};
}

// An Array is one pointer to its block, the pointer that the value holds.
static_assert(sizeof(Array) == sizeof(ArrayData*)); // NOLINT(bugprone-sizeof-expression)
const Array& Variant::array() const noexcept {
    return reinterpret_cast<const Array&>(value_.array);
}
Array& Variant::array() noexcept {
    return reinterpret_cast<Array&>(value_.array);
}

Ref<Record> Variant::record() const noexcept {
    return Ref<Record>(value_.record);
}

bool operator==(const Variant& a, const Variant& b) noexcept {
    if (a.type_ != b.type_)
        return false;
    if (a.isArray())
        return a.array() == b.array();
    switch (a.type_) {
    case VarType::Empty:
    case VarType::Null:
        return true;
    case VarType::String:
        return a.text() == b.text();
    case VarType::Integer:
        return a.integer() == b.integer();
    case VarType::Long:
    case VarType::Error:
        return a.number() == b.number();
    case VarType::Byte:
        return a.byte() == b.byte();
    case VarType::Boolean:
        return a.boolean() == b.boolean();
    case VarType::Single:
        return a.single() == b.single();
    case VarType::Double:
    case VarType::Date:
        return a.real() == b.real();
    case VarType::Decimal:
        return a.decimal() == b.decimal();
    default:
        return a.value_.bits == b.value_.bits;
    }
}

} // namespace vlgs
