// SPDX-License-Identifier: MIT
#include "com/Values.h"

#include "automation/Convert.h"
#include "base/Error.h"
#include "base/Owned.h"
#include "com/Failure.h"
#include "com/References.h"
#include "com/TypeLibrary.h"

#include <algorithm>

namespace vlgs::com {

namespace {

static_assert(sizeof(Date) == sizeof(DATE) && sizeof(Currency) == sizeof(CY) && sizeof(ErrorValue) == 4);

void check(HRESULT status) {
    if (FAILED(status))
        raiseStatus(status);
}

constexpr VARIANT_BOOL toBool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

Decimal fromDecimal(const DECIMAL& value) {
    return {value.scale, value.sign, static_cast<std::uint32_t>(value.Hi32), value.Lo64};
}

void toDecimal(const Decimal& value, VARIANT& to) {
    to.decVal.scale = value.scale;
    to.decVal.sign = value.sign;
    to.decVal.Hi32 = value.high;
    to.decVal.Lo64 = value.low;
    to.vt = VT_DECIMAL;
}

/// Whole numbers of types that the library lacks.
Variant fromWhole(std::uint64_t magnitude, bool negative) {
    if (magnitude <= 0x7FFFFFFF || (negative && magnitude == 0x80000000u))
        return static_cast<std::int32_t>(negative ? 0 - magnitude : magnitude);
    return Decimal{0, static_cast<std::uint8_t>(negative ? 0x80 : 0), 0, magnitude};
}
Variant fromSigned(std::int64_t value) {
    const auto bits = static_cast<std::uint64_t>(value);
    return fromWhole(value < 0 ? 0 - bits : bits, value < 0);
}

/// The value of type `type` that stands at `at`: inside a VARIANT, in an array, or where a reference points.
Variant read(VARTYPE type, const void* at) {
    const auto as = [at]<class T>(T) { return *static_cast<const T*>(at); };
    switch (type) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return null;
    case VT_I2:
        return as(std::int16_t{});
    case VT_I4:
    case VT_INT:
        return as(std::int32_t{});
    case VT_UI1:
        return as(std::uint8_t{});
    case VT_I1:
        return static_cast<std::int16_t>(as(std::int8_t{}));
    case VT_UI2:
        return static_cast<std::int32_t>(as(std::uint16_t{}));
    case VT_UI4:
    case VT_UINT:
        return fromWhole(as(std::uint32_t{}), false);
    case VT_I8:
        return fromSigned(as(std::int64_t{}));
    case VT_UI8:
        return fromWhole(as(std::uint64_t{}), false);
    case VT_R4:
        return as(float{});
    case VT_R8:
        return as(double{});
    case VT_CY:
        return as(Currency{});
    case VT_DATE:
        return as(Date{});
    case VT_BSTR:
        return toString(as(BSTR{}));
    case VT_BOOL:
        return as(VARIANT_BOOL{}) != VARIANT_FALSE;
    case VT_ERROR:
        return as(ErrorValue{});
    case VT_DECIMAL:
        return fromDecimal(*static_cast<const DECIMAL*>(at));
    case VT_DISPATCH:
        return fromInterface(as(static_cast<IDispatch*>(nullptr)));
    case VT_UNKNOWN:
        return fromInterface(as(static_cast<IUnknown*>(nullptr)));
    case VT_VARIANT:
        return fromVariant(*static_cast<const VARIANT*>(at));
    default:
        if (type & VT_ARRAY)
            return fromSafeArray(as(static_cast<SAFEARRAY*>(nullptr)));
        raise(RunTimeError::TypeMismatch);
    }
}

/// Destroys what a variable of that type owns.
void clear(VARTYPE type, void* at) {
    if (type == VT_BSTR)
        SysFreeString(*static_cast<BSTR*>(at));
    else if (type == VT_DISPATCH || type == VT_UNKNOWN) {
        if (auto* object = *static_cast<IUnknown**>(at))
            object->Release();
    }
}

/// The bytes of a fresh VARIANT's value, which now belong to a variable of `size` bytes.
void move(void* to, VARIANT& from, std::size_t size) {
    std::memcpy(to, &from.llVal, size);
    from.vt = VT_EMPTY;
}

std::size_t sizeOf(VARTYPE type) {
    switch (type) {
    case VT_UI1:
    case VT_I1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    default:
        return 8;
    }
}

/// `value` as the type of the caller's variable, in a VARIANT of that type.
void convert(const Variant& value, VARTYPE type, VARIANT& to) {
    switch (type) {
    case VT_I1:
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_INT:
    case VT_I8:
    case VT_UI8:
        toVariant(value, to);
        check(VariantChangeType(&to, &to, 0, type));
        return;
    case VT_UNKNOWN:
    case VT_DISPATCH:
        toVariant(toObject(value), to);
        if (type == VT_DISPATCH && to.vt == VT_UNKNOWN)
            raise(RunTimeError::TypeMismatch);
        return;
    default:
        toVariant(changeType(value, static_cast<VarType>(type)), to);
    }
}

/// Whether an array has to stay where it is.
bool isFixed(const SAFEARRAY* array) {
    return array && (array->fFeatures & (FADF_FIXEDSIZE | FADF_STATIC | FADF_AUTO));
}

void assignReference(VARIANT& to, const Variant& value) {
    const auto type = static_cast<VARTYPE>(to.vt & ~VT_BYREF);
    if (type == VT_VARIANT)
        return assign(*to.pvarVal, value);
    if (type & VT_ARRAY) {
        if (!value.isArray())
            raise(RunTimeError::TypeMismatch);
        return assign(*to.pparray, value.array());
    }
    OleVariant converted;
    convert(value, type, converted.get());
    if (type == VT_DECIMAL) {
        *to.pdecVal = converted.get().decVal;
        to.pdecVal->wReserved = 0;
        return;
    }
    clear(type, to.byref);
    move(to.byref, converted.get(), sizeOf(type));
}

/// One dimension after the other; the operating system counts them from the last.
std::vector<Dimension> dimensionsOf(SAFEARRAY* array) {
    std::vector<Dimension> result(SafeArrayGetDim(array));
    for (std::size_t i = 0; i < result.size(); ++i) {
        LONG lower = 0;
        LONG upper = -1;
        SafeArrayGetLBound(array, static_cast<UINT>(i + 1), &lower);
        SafeArrayGetUBound(array, static_cast<UINT>(i + 1), &upper);
        result[i] = {lower, upper - lower + 1};
    }
    return result;
}

/// Keeps an array's memory in place while it is read or written.
class ArrayAccess {
  public:
    explicit ArrayAccess(SAFEARRAY* array) : array_(array) { check(SafeArrayAccessData(array, &data_)); }
    ArrayAccess(const ArrayAccess&) = delete;
    ArrayAccess& operator=(const ArrayAccess&) = delete;
    ~ArrayAccess() { SafeArrayUnaccessData(array_); }
    template <class T>
    T* as() const noexcept {
        return static_cast<T*>(data_);
    }
    std::byte* at(std::size_t offset) const noexcept { return static_cast<std::byte*>(data_) + offset; }

  private:
    SAFEARRAY* array_;
    void* data_ = nullptr;
};

void destroyArray(SAFEARRAY* array) noexcept {
    SafeArrayDestroy(array);
}
using OwnedArray = Owned<SAFEARRAY*, &destroyArray>;

VARTYPE elementTypeOf(SAFEARRAY* array) {
    VARTYPE type = VT_EMPTY;
    if (FAILED(SafeArrayGetVartype(array, &type))) {
        const UINT size = SafeArrayGetElemsize(array); // an array made without a type
        type = array->fFeatures & FADF_VARIANT ? VT_VARIANT : size == 1 ? VT_UI1 : VT_EMPTY;
    }
    return type;
}

/// The library's element type for arrays of a type; Variant for those that it lacks.
VarType elementFor(VARTYPE type) {
    switch (type) {
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_ERROR:
    case VT_BOOL:
    case VT_UI1:
        return static_cast<VarType>(type);
    case VT_INT:
        return VarType::Long;
    case VT_UNKNOWN:
        return VarType::Object;
    default:
        return VarType::Variant;
    }
}

template <class T>
void copyIn(const void* from, std::span<T> to) {
    std::memcpy(to.data(), from, to.size_bytes());
}

template <class T>
bool copyPlain(const ArrayAccess& data, Array& result) {
    if (!result.holds<T>())
        return false;
    copyIn(data.as<void>(), result.mutate<T>());
    return true;
}

template <class T>
bool copyPlain(const Array& value, const ArrayAccess& data) {
    if (!value.holds<T>())
        return false;
    const auto from = value.as<T>();
    std::memcpy(data.as<void>(), from.data(), from.size_bytes());
    return true;
}

template <class Source, class Target>
bool copyAnyPlain(const Source& from, Target& to) {
    return copyPlain<std::uint8_t>(from, to) || copyPlain<std::int16_t>(from, to) ||
           copyPlain<std::int32_t>(from, to) || copyPlain<float>(from, to) || copyPlain<double>(from, to) ||
           copyPlain<Currency>(from, to) || copyPlain<Date>(from, to) || copyPlain<ErrorValue>(from, to);
}

} // namespace

Variant fromVariant(const VARIANT& value) {
    if (value.vt == VT_DECIMAL)
        return fromDecimal(value.decVal);
    if ((value.vt & ~VT_BYREF) == VT_RECORD)
        return fromRecord(value);
    if (!(value.vt & VT_BYREF))
        return read(value.vt, &value.llVal);
    if (!value.byref)
        raise(RunTimeError::InvalidProcedureCall);
    return read(static_cast<VARTYPE>(value.vt & ~VT_BYREF), value.byref);
}

void toVariant(const Variant& value, VARIANT& to) {
    to.vt = VT_EMPTY;
    switch (value.type()) {
    case VarType::Empty:
        return;
    case VarType::Null:
        break;
    case VarType::Byte:
        to.bVal = value.byte();
        break;
    case VarType::Integer:
        to.iVal = value.integer();
        break;
    case VarType::Long:
    case VarType::Error:
        to.lVal = value.number();
        break;
    case VarType::Single:
        to.fltVal = value.single();
        break;
    case VarType::Double:
    case VarType::Date:
        to.dblVal = value.real();
        break;
    case VarType::Currency:
        to.cyVal.int64 = value.currency().units;
        break;
    case VarType::Boolean:
        to.boolVal = toBool(value.boolean());
        break;
    case VarType::String:
        to.bstrVal = toBstr(value.text());
        break;
    case VarType::Decimal:
        return toDecimal(value.decimal(), to);
    case VarType::Object:
        to.vt = toInterface(value.object(), to.punkVal);
        return;
    case VarType::Record:
        return toRecord(value.record(), to);
    default:
        to.parray = toSafeArray(value.array());
    }
    to.vt = static_cast<VARTYPE>(value.type());
}

void assign(VARIANT& to, const Variant& value) {
    if ((to.vt & VT_BYREF) && to.vt != (VT_BYREF | VT_RECORD)) {
        if (to.byref)
            assignReference(to, value);
        return;
    }
    if (to.vt & VT_ARRAY && isFixed(to.parray)) {
        if (value.isArray())
            assign(to.parray, value.array());
        return;
    }
    VARIANT fresh;
    toVariant(value, fresh);
    VariantClear(&to);
    to = fresh;
}

Array fromSafeArray(SAFEARRAY* array) {
    if (!array || SafeArrayGetDim(array) == 0)
        return {};
    const VARTYPE type = elementTypeOf(array);
    if (type == VT_EMPTY || type == VT_RECORD)
        raise(RunTimeError::TypeMismatch);
    Array result(elementFor(type), dimensionsOf(array));
    if (result.size() == 0)
        return result;
    const ArrayAccess data(array);
    if (copyAnyPlain(data, result))
        return result;
    const std::size_t size = SafeArrayGetElemsize(array);
    for (std::size_t i = 0; i < result.size(); ++i)
        result.put(i, read(type, data.at(i * size)));
    return result;
}

SAFEARRAY* toSafeArray(const Array& array) {
    if (array.rank() == 0)
        return nullptr;
    std::vector<SAFEARRAYBOUND> bounds;
    for (const auto& dimension : array.dimensions())
        bounds.push_back({static_cast<ULONG>(dimension.count), dimension.lower});
    OwnedArray result(SafeArrayCreate(static_cast<VARTYPE>(array.element()), static_cast<UINT>(bounds.size()),
                                      bounds.data()));
    if (!result)
        throw std::bad_alloc();
    if (array.size() == 0)
        return result.detach();
    {
        const ArrayAccess data(result.get());
        if (copyAnyPlain(array, data)) {
        } else if (array.holds<String>()) {
            const auto texts = array.as<String>();
            for (std::size_t i = 0; i < texts.size(); ++i)
                data.as<BSTR>()[i] = texts[i].empty() ? nullptr : toBstr(texts[i]);
        } else if (array.holds<Ref<Object>>()) {
            const auto objects = array.as<Ref<Object>>();
            for (std::size_t i = 0; i < objects.size(); ++i)
                data.as<IDispatch*>()[i] = toDispatch(objects[i].get());
        } else {
            const auto values = array.as<Variant>();
            for (std::size_t i = 0; i < values.size(); ++i)
                toVariant(values[i], data.as<VARIANT>()[i]);
        }
    }
    return result.detach();
}

void assign(SAFEARRAY*& to, const Array& value) {
    OwnedArray fresh(toSafeArray(value));
    // An array of fixed size stays where it is. It takes over what has its shape, and nothing else.
    if (isFixed(to)) {
        if (!fresh || elementTypeOf(to) != elementTypeOf(fresh.get()) ||
            dimensionsOf(to) != dimensionsOf(fresh.get()))
            return;
        const USHORT features = to->fFeatures;
        check(SafeArrayCopyData(fresh.get(), to));
        to->fFeatures = features; // some versions of the system take over the other array's
        return;
    }
    if (to)
        check(SafeArrayDestroy(to));
    to = fresh.detach();
}

} // namespace vlgs::com
