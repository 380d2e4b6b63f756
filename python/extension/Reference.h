// SPDX-License-Identifier: MIT
// Python objects owned by a scope, and the one inclusion of Python's header: the stable interface of
// Python 3.9.
#pragma once

#define Py_LIMITED_API 0x03090000
#define PY_SSIZE_T_CLEAN
#include <Python.h>
#include <structmember.h>

#include <cxxabi.h>
#include <unistd.h>
#include <utility>

namespace vlgs::python {

/// Calls what may wait for the interpreter's lock. Once the interpreter ends, other threads that ask for the
/// lock are ended by an unwinding that no destructor survives: such a thread rests here until the process is
/// gone.
template <class Function>
decltype(auto) orRest(Function&& function) {
    try {
        return function();
    } catch (abi::__forced_unwind&) {
        for (;;)
            pause();
    }
}

/// A counted reference, null for none. The interpreter's lock is held wherever one changes.
class Reference {
  public:
    Reference() noexcept = default;
    /// Takes over a new reference.
    explicit Reference(PyObject* owned) noexcept : object_(owned) {}
    static Reference borrowed(PyObject* object) noexcept {
        Py_XINCREF(object);
        return Reference(object);
    }
    Reference(Reference&& other) noexcept : object_(other.release()) {}
    Reference& operator=(Reference&& other) noexcept {
        PyObject* const old = std::exchange(object_, other.release());
        Py_XDECREF(old);
        return *this;
    }
    ~Reference() { Py_XDECREF(object_); }

    PyObject* get() const noexcept { return object_; }
    PyObject* release() noexcept { return std::exchange(object_, nullptr); }
    explicit operator bool() const noexcept { return object_ != nullptr; }

  private:
    PyObject* object_ = nullptr;
};

inline PyObject* newNone() {
    Py_INCREF(Py_None);
    return Py_None;
}

/// A C++ function as the untyped pointer that slots of types hold.
template <class Function>
void* slot(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace vlgs::python
