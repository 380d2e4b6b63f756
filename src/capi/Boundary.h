// SPDX-License-Identifier: MIT
// The boundary between C callers and the library: how values and objects look from either side, and the one
// place where exceptions end.
#pragma once

#include "automation/Array.h"
#include "automation/Variant.h"
#include "base/Error.h"
#include "capi/vlgs.h"

#include <new>
#include <span>
#include <utility>

namespace vlgs::capi {

// A vlgs_value is a Variant under another name.
static_assert(sizeof(vlgs_value) == sizeof(Variant));
static_assert(alignof(vlgs_value) == alignof(Variant));
static_assert(sizeof(vlgs_dimension) == sizeof(Dimension));

inline Variant& from(vlgs_value* value) {
    return *reinterpret_cast<Variant*>(value);
}
inline const Variant& from(const vlgs_value* value) {
    return *reinterpret_cast<const Variant*>(value);
}
inline std::span<Variant> from(vlgs_value* values, std::size_t count) {
    return {reinterpret_cast<Variant*>(values), count};
}
inline std::span<const Variant> from(const vlgs_value* values, std::size_t count) {
    return {reinterpret_cast<const Variant*>(values), count};
}
/// Makes a value of raw memory that a caller handed in as output.
inline void place(Variant value, vlgs_value* out) {
    new (static_cast<void*>(out)) Variant(std::move(value));
}

inline Object* from(vlgs_object* object) {
    return reinterpret_cast<Object*>(object);
}
inline const Object* from(const vlgs_object* object) {
    return reinterpret_cast<const Object*>(object);
}
inline vlgs_object* give(Ref<Object> object) {
    return reinterpret_cast<vlgs_object*>(object.detach());
}
/// Raises -2147417842 for an object that another thread made.
void checkThread(const Object& object);
/// The object of a caller's handle; raises 91 for none and -2147417842 for another thread's.
Ref<Object> held(vlgs_object* object);

inline String textOf(const char* text, std::size_t length) {
    return String::fromUtf8({text, length}, LoneSurrogates::Kept);
}
inline String textOf(const char* name) {
    return String::fromUtf8(name ? name : "");
}

/// Keeps the exception in flight as the thread's last error.
void keepCurrentException() noexcept;
/// Raises the thread's last error.
[[noreturn]] void raiseKeptError();

/// Runs a function of the interface: `return guarded([&] { … });`
template <class Function>
int guarded(Function&& function) noexcept {
    try {
        std::forward<Function>(function)();
        return VLGS_DONE;
    } catch (...) {
        keepCurrentException();
        return VLGS_RAISED;
    }
}

} // namespace vlgs::capi
