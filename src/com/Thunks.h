// SPDX-License-Identifier: MIT
// The dual vtables, generated from the class descriptions: one entry for each row of a class's table, which
// takes the wire types of automation, calls the member and turns an exception into a status.
//
// The wire type of a value is what the type library says of it (library/Idl.cpp): text BSTR, bool
// VARIANT_BOOL, an enumeration LONG, an object an interface pointer, an array SAFEARRAY*, a record its fields
// one after the other. What goes in and out, or may be left out, travels by pointer; the result goes to a
// last pointer.
#pragma once

#include "com/Face.h"
#include "com/Failure.h"
#include "com/Ole.h"
#include "com/References.h"
#include "com/Values.h"

#include "automation/ClassDescription.h"

#include <array>
#include <tuple>
#include <utility>

namespace vlgs::com {

/// How a C++ type travels in a vtable call: `from` reads, `to` makes a value that the receiver owns, `drop`
/// frees one.
template <class T>
struct Wire {
    using Type = T;
    static T from(T value) { return value; }
    static T to(T value) { return value; }
    static void drop(T) {}
};
template <class E>
requires std::is_enum_v<E>
struct Wire<E> {
    using Type = LONG;
    static E from(LONG value) { return static_cast<E>(value); }
    static LONG to(E value) { return static_cast<LONG>(value); }
    static void drop(LONG) {}
};
template <>
struct Wire<std::int32_t> {
    using Type = LONG;
    static std::int32_t from(LONG value) { return value; }
    static LONG to(std::int32_t value) { return value; }
    static void drop(LONG) {}
};
template <>
struct Wire<bool> {
    using Type = VARIANT_BOOL;
    static bool from(VARIANT_BOOL value) { return value != VARIANT_FALSE; }
    static VARIANT_BOOL to(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }
    static void drop(VARIANT_BOOL) {}
};
template <>
struct Wire<Date> {
    using Type = DATE;
    static Date from(DATE value) { return {value}; }
    static DATE to(Date value) { return value.days; }
    static void drop(DATE) {}
};
template <>
struct Wire<Currency> {
    using Type = CY;
    static Currency from(CY value) { return {value.int64}; }
    static CY to(Currency value) {
        CY result;
        result.int64 = value.units;
        return result;
    }
    static void drop(CY) {}
};
template <>
struct Wire<String> {
    using Type = BSTR;
    static String from(BSTR value) { return toString(value); }
    static BSTR to(const String& value) { return toBstr(value); }
    static void drop(BSTR value) { SysFreeString(value); }
};
template <>
struct Wire<Variant> {
    using Type = VARIANT;
    static Variant from(const VARIANT& value) { return fromVariant(value); }
    static VARIANT to(const Variant& value) {
        VARIANT result;
        toVariant(value, result);
        return result;
    }
    static void drop(VARIANT& value) { VariantClear(&value); }
};
template <>
struct Wire<Array> {
    using Type = SAFEARRAY*;
    static Array from(SAFEARRAY* value) { return fromSafeArray(value); }
    static SAFEARRAY* to(const Array& value) { return toSafeArray(value); }
    static void drop(SAFEARRAY* value) { SafeArrayDestroy(value); }
};
template <class T>
struct Wire<ArrayOf<T>> : Wire<Array> {};
template <class T>
struct Wire<Ref<T>> {
    using Type = IUnknown*;
    static Ref<T> from(IUnknown* value) { return TypeTraits<Ref<T>>::from(Variant(fromInterface(value))); }
    static IUnknown* to(const Ref<T>& value) {
        if constexpr (std::is_same_v<T, Enumerator>)
            return toUnknown(value.get());
        else
            return toDispatch(value.get());
    }
    static void drop(IUnknown* value) {
        if (value)
            value->Release();
    }
};
template <RecordType T>
struct Wire<T> {
    static constexpr std::size_t count = TypeTraits<T>::table.fields.size();
    using Type = std::array<BSTR, count>;
    static T from(const Type& value) {
        T result;
        for (std::size_t i = 0; i < count; ++i)
            result.*TypeTraits<T>::table.fields[i].second = toString(value[i]);
        return result;
    }
    static Type to(const T& value) {
        Type result{};
        try {
            for (std::size_t i = 0; i < count; ++i)
                result[i] = toBstr(value.*TypeTraits<T>::table.fields[i].second);
        } catch (...) {
            drop(result);
            throw;
        }
        return result;
    }
    static void drop(Type& value) {
        for (BSTR text : value)
            SysFreeString(text);
    }
};

/// Gives a caller's variable its new value.
template <class T>
void replace(typename Wire<T>::Type& variable, const T& value) {
    if constexpr (std::is_same_v<T, Variant> || std::is_same_v<T, Array>) {
        assign(variable, value);
    } else {
        auto fresh = Wire<T>::to(value);
        Wire<T>::drop(variable);
        variable = fresh;
    }
}

/// A pointer that the interface does not allow to be null.
struct NullPointer {};

/// Holds one argument while a member runs; `P` is the parameter as the member declares it.
template <class P>
class WireArgument { // goes in
  public:
    using T = std::remove_cvref_t<P>;
    // Records are too large for automation to pass by value.
    using Type =
        std::conditional_t<RecordType<T>, const typename Wire<T>::Type*, const typename Wire<T>::Type>;
    WireArgument(const Type& value, const ParameterInfo&) : value_(Wire<T>::from(pointedAt(value))) {}
    const T& get() const { return value_; }
    void writeBack() {}

  private:
    static const typename Wire<T>::Type& pointedAt(const Type& value) {
        if constexpr (RecordType<T>) {
            if (!value)
                throw NullPointer();
            return *value;
        } else {
            return value;
        }
    }
    T value_;
};
template <class T>
requires(!std::is_const_v<T>) class WireArgument<T&> { // goes in and out
  public:
    using Type = typename Wire<T>::Type*;
    WireArgument(Type variable, const ParameterInfo& parameter) : variable_(variable) {
        if (!variable && !parameter.optional)
            throw NullPointer();
        before_ = variable ? T(Wire<T>::from(*variable)) : defaultOf<T>(parameter.defaultValue);
        value_ = before_;
    }
    T& get() { return value_; }
    void writeBack() {
        if (variable_ && !isUnchanged())
            replace<T>(*variable_, value_);
    }

  private:
    bool isUnchanged() const {
        if constexpr (RecordType<T>)
            return false;
        else
            return value_ == before_;
    }
    Type variable_;
    T before_{};
    T value_{};
};
template <class Given>
class WireArgument<Given*> { // goes in and out, or only in, and may be left out
  public:
    using T = std::remove_const_t<Given>;
    using Type = typename Wire<T>::Type*;
    WireArgument(Type variable, const ParameterInfo& parameter)
        : given_(variable && !isMissing(*variable)), holder_(given_ ? variable : nullptr, parameter) {}
    T* get() { return given_ ? &holder_.get() : nullptr; }
    void writeBack() {
        if constexpr (!std::is_const_v<Given>)
            holder_.writeBack();
    }

  private:
    static bool isMissing(const typename Wire<T>::Type& variable) {
        if constexpr (std::is_same_v<T, Variant>)
            return variable.vt == VT_ERROR && variable.scode == DISP_E_PARAMNOTFOUND;
        else
            return false;
    }
    bool given_;
    WireArgument<T&> holder_;
};

template <class T>
inline const ::GUID interfaceOf = toGuid(ClassDescriptionOf<T>::table.header.interfaceId);

/// One entry of a class's table.
template <class T, std::size_t I, class Parameters, class Result>
struct Thunk;

template <class T, std::size_t I, class... P, class R>
struct Thunk<T, I, std::tuple<P...>, R> {
    using Row = typename ClassDescriptionOf<T>::template Row<false, I>;
    using Value = std::remove_cvref_t<R>;
    using WireResult = typename Wire<Value>::Type;

    static HRESULT STDMETHODCALLTYPE call(Face* self, typename WireArgument<P>::Type... given,
                                          WireResult* result) noexcept {
        if (!result)
            return E_POINTER;
        *result = WireResult{};
        try {
            auto arguments = Row::template hold<WireArgument>(std::index_sequence_for<P...>(), given...);
            *result = Wire<Value>::to(Row::run(*static_cast<T*>(self->object), arguments));
            return S_OK;
        } catch (const NullPointer&) {
            return E_POINTER;
        } catch (...) {
            return reportFailure(interfaceOf<T>);
        }
    }
};

template <class T, std::size_t I, class... P>
struct Thunk<T, I, std::tuple<P...>, void> {
    using Row = typename ClassDescriptionOf<T>::template Row<false, I>;

    static HRESULT STDMETHODCALLTYPE call(Face* self, typename WireArgument<P>::Type... given) noexcept {
        try {
            auto arguments = Row::template hold<WireArgument>(std::index_sequence_for<P...>(), given...);
            Row::run(*static_cast<T*>(self->object), arguments);
            return S_OK;
        } catch (const NullPointer&) {
            return E_POINTER;
        } catch (...) {
            return reportFailure(interfaceOf<T>);
        }
    }
};

/// The table of a class: IUnknown, IDispatch, then its rows in interface order.
template <class T>
struct VtableOf {
    static constexpr std::size_t rows = std::tuple_size_v<typename ClassDescriptionOf<T>::Rows>;

    template <std::size_t I>
    static const void* entry() {
        using Traits = typename ClassDescriptionOf<T>::template Row<false, I>::Traits;
        return reinterpret_cast<const void*>(
            &Thunk<T, I, typename Traits::Parameters, typename Traits::Result>::call);
    }
    template <std::size_t... D, std::size_t... I>
    static std::array<const void*, dispatchEntries + rows> make(std::index_sequence<D...>,
                                                                std::index_sequence<I...>) {
        return {dispatchTable[D]..., entry<I>()...};
    }
    inline static const std::array<const void*, dispatchEntries + rows> entries =
        make(std::make_index_sequence<dispatchEntries>(), std::make_index_sequence<rows>());
};

} // namespace vlgs::com
