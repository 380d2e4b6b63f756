// SPDX-License-Identifier: MIT
// The automation types of the operating system and the owners of what its functions allocate.
//
// Include it after the headers of components: the operating system's headers define macros with names of
// functions.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

#include "base/Guid.h"
#include "base/String.h"

#include <cstring>
#include <new>
#include <utility>

namespace vlgs::com {

/// A counted interface pointer: `ComPtr<IDispatch> object;
/// source->QueryInterface(IID_PPV_ARGS(object.put()))`
template <class T>
class ComPtr {
  public:
    ComPtr() noexcept = default;
    explicit ComPtr(T* pointer) noexcept : pointer_(pointer) {
        if (pointer_)
            pointer_->AddRef();
    }
    ComPtr(const ComPtr& other) noexcept : ComPtr(other.pointer_) {}
    ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ~ComPtr() { reset(); }
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    static ComPtr attach(T* pointer) noexcept {
        ComPtr result;
        result.pointer_ = pointer;
        return result;
    }
    T* get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }
    /// Where a function stores a new counted pointer.
    T** put() noexcept {
        reset();
        return &pointer_;
    }
    T* detach() noexcept { return std::exchange(pointer_, nullptr); }
    void reset() noexcept {
        if (T* old = std::exchange(pointer_, nullptr))
            old->Release();
    }

  private:
    T* pointer_ = nullptr;
};

/// The interface of an object by its type, null when it has none: `queryFor<IEnumVARIANT>(unknown)`.
template <class T>
ComPtr<T> queryFor(IUnknown* object) {
    ComPtr<T> result;
    if (object)
        object->QueryInterface(__uuidof(T), reinterpret_cast<void**>(result.put()));
    return result;
}

inline const wchar_t* wide(const char16_t* text) noexcept {
    return reinterpret_cast<const wchar_t*>(text);
}
inline const char16_t* narrow(const wchar_t* text) noexcept {
    return reinterpret_cast<const char16_t*>(text);
}
inline String toString(BSTR text) {
    return std::u16string_view(narrow(text), text ? SysStringLen(text) : 0);
}
/// A new BSTR that the receiver frees.
inline BSTR toBstr(std::u16string_view text) {
    BSTR result = SysAllocStringLen(wide(text.data()), static_cast<UINT>(text.size()));
    if (!result)
        throw std::bad_alloc();
    return result;
}

/// A VARIANT that clears itself.
class OleVariant {
  public:
    OleVariant() noexcept { VariantInit(&value_); }
    OleVariant(const OleVariant&) = delete;
    OleVariant& operator=(const OleVariant&) = delete;
    ~OleVariant() { VariantClear(&value_); }
    VARIANT& get() noexcept { return value_; }
    VARIANT* put() noexcept {
        VariantClear(&value_);
        return &value_;
    }

  private:
    VARIANT value_;
};

inline ::GUID toGuid(const GuidValue& value) noexcept {
    const auto& b = value.bytes;
    const auto word = [&](std::size_t at) { return static_cast<unsigned short>(b[at] << 8 | b[at + 1]); };
    ::GUID result{static_cast<unsigned long>(word(0)) << 16 | word(2), word(4), word(6), {}};
    std::memcpy(result.Data4, b.data() + 8, sizeof result.Data4);
    return result;
}

} // namespace vlgs::com
