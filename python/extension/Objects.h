// SPDX-License-Identifier: MIT
// Objects of the library as Python objects: finding members, calling them, going over members.
#pragma once

#include "Apartment.h"
#include "Reference.h"

#include "capi/vlgs.h"

#include <cstdint>
#include <new>

namespace vlgs::python {

/// Adds the types Object, Bound and Iterator to the module.
bool addTypes(PyObject* module);

/// Whether a value is an object of the library.
bool isObject(PyObject* value);
/// The native object behind one; null, with an error set, on another thread than that which made it.
vlgs_object* used(PyObject* object);
/// Forgets what attribute names mean: a class was changed.
void forget();
/// The apartment of an object that is used on its thread.
Apartment& apartmentOf(PyObject* object);
/// The Python object for a counted reference, which it takes over also when it fails.
PyObject* wrap(vlgs_object* object);

/// The arguments of a call as vectorcall passes them: `count` positional ones, then those that `names`, a
/// tuple or null, names.
struct Arguments {
    PyObject* const* values = nullptr;
    std::size_t count = 0;
    PyObject* names = nullptr;
};
/// Calls a member; null, with an error set, when it fails.
PyObject* invoke(PyObject* target, std::int32_t member, std::uint32_t kind, const Arguments& arguments);
/// Calls a member to write it, with the value behind the other arguments.
bool write(PyObject* target, std::int32_t member, const Arguments& arguments);
/// `invoke` with the arguments as a tuple and a dictionary or null, `write` with those as a tuple.
PyObject* invokeWith(PyObject* target, std::int32_t member, std::uint32_t kind, PyObject* arguments,
                     PyObject* named);
bool writeWith(PyObject* target, std::int32_t member, PyObject* arguments);

/// An iterator over the members, which raises RuntimeError when the member of number `counting` tells another
/// count.
PyObject* iterate(PyObject* target, std::int32_t counting);

/// A list of what a property of each member is, read without making objects of Python of the members.
PyObject* readEach(PyObject* target, const char* name);

/// Runs what may allocate where Python calls C++: exhausted memory becomes a MemoryError.
template <class Function>
auto guarded(Function&& function, decltype(function()) failure = {}) noexcept -> decltype(function()) {
    try {
        return orRest(function);
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (...) {
        PyErr_SetString(PyExc_SystemError, "a failure inside the module");
    }
    return failure;
}

} // namespace vlgs::python
