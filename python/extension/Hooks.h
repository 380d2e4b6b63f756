// SPDX-License-Identifier: MIT
// What the Python side of the package does for the module: rarely used conversions, classes, errors. Names
// and meanings are those of `configure` in vlgs/_objects.py.
#pragma once

#include "Reference.h"

#include <cstdint>

namespace vlgs::python {

struct Hooks {
    PyObject* classFor;
    PyObject* find;
    PyObject* readUnknown;
    PyObject* writeAttribute;
    PyObject* errorOf;
    PyObject* runTimeError;
    PyObject* errorParts;
    PyObject* byRef;
    PyObject* empty;
    PyObject* null;
    PyObject* missing;
    PyObject* formOf;
    PyObject* arrayOf;
    PyObject* noArray;
    PyObject* recordOf;
    PyObject* momentOf;
    PyObject* currencyOf;
    PyObject* decimalOf;
    PyObject* errorValueOf;
};
extern Hooks hooks;

/// Fills `hooks` from a dictionary, and keeps its members for the life of the process.
bool configure(PyObject* dictionary);

/// Sets Python's error from the library's last one of this thread.
void raiseLast();
/// Sets an error of the run time that the module raises itself.
void raiseRunTime(std::int32_t number);

/// Whether a call of the library succeeded; sets Python's error when it did not.
inline bool succeeded(int status) {
    if (status == 0) [[likely]]
        return true;
    raiseLast();
    return false;
}

/// A text in UTF-8 of the library's kind, with lone surrogates.
PyObject* fromUtf8(const char* text, std::size_t length);
/// A zero-terminated text of a description; None for null.
PyObject* fromName(const char* text);
/// UTF-8 as a `bytes` object. `name`: as the C interface takes names, U+FFFD in place of NUL.
Reference toUtf8(PyObject* text);
Reference toName(PyObject* text);

} // namespace vlgs::python
