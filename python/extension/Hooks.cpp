// SPDX-License-Identifier: MIT
#include "Hooks.h"

#include "Library.h"

#include <cstring>

namespace vlgs::python {

Hooks hooks{};

bool configure(PyObject* dictionary) {
    struct Place {
        PyObject* Hooks::*hook;
        const char* name;
    };
    static constexpr Place places[] = {{&Hooks::classFor, "class_for"},
                                       {&Hooks::find, "find"},
                                       {&Hooks::readUnknown, "read_unknown"},
                                       {&Hooks::writeAttribute, "write_attribute"},
                                       {&Hooks::errorOf, "error_of"},
                                       {&Hooks::runTimeError, "run_time_error"},
                                       {&Hooks::errorParts, "error_parts"},
                                       {&Hooks::byRef, "ByRef"},
                                       {&Hooks::empty, "Empty"},
                                       {&Hooks::null, "Null"},
                                       {&Hooks::missing, "Missing"},
                                       {&Hooks::formOf, "form_of"},
                                       {&Hooks::arrayOf, "array_of"},
                                       {&Hooks::noArray, "no_array"},
                                       {&Hooks::recordOf, "record_of"},
                                       {&Hooks::momentOf, "moment_of"},
                                       {&Hooks::currencyOf, "currency_of"},
                                       {&Hooks::decimalOf, "decimal_of"},
                                       {&Hooks::errorValueOf, "error_value_of"}};
    for (const auto& [hook, name] : places) {
        PyObject* const found = PyDict_GetItemString(dictionary, name);
        if (!found) {
            PyErr_SetString(PyExc_KeyError, name);
            return false;
        }
        Py_INCREF(found);
        hooks.*hook = found;
    }
    return true;
}

namespace {

void raiseFrom(Reference error) {
    if (error)
        PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(error.get())), error.get());
}

} // namespace

void raiseLast() {
    const vlgs_error& error = *library.lastError();
    Reference source(fromUtf8(error.source, error.source_length));
    Reference description(fromUtf8(error.description, error.description_length));
    if (source && description)
        raiseFrom(Reference(PyObject_CallFunction(hooks.errorOf, "iOO", static_cast<int>(error.number),
                                                  source.get(), description.get())));
}

void raiseRunTime(std::int32_t number) {
    raiseFrom(Reference(PyObject_CallFunction(hooks.runTimeError, "i", static_cast<int>(number))));
}

PyObject* fromUtf8(const char* text, std::size_t length) {
    return PyUnicode_DecodeUTF8(text ? text : "", static_cast<Py_ssize_t>(length), "surrogatepass");
}

PyObject* fromName(const char* text) {
    return text ? PyUnicode_FromString(text) : newNone();
}

Reference toUtf8(PyObject* text) {
    return Reference(PyUnicode_AsEncodedString(text, "utf-8", "surrogatepass"));
}

Reference toName(PyObject* text) {
    Reference bytes = toUtf8(text);
    if (!bytes ||
        std::strlen(PyBytes_AsString(bytes.get())) == static_cast<std::size_t>(PyBytes_Size(bytes.get())))
        return bytes;
    const Reference nul(PyUnicode_FromStringAndSize("\0", 1));
    const Reference replacement(PyUnicode_FromOrdinal(0xFFFD));
    const Reference clean(nul && replacement ? PyUnicode_Replace(text, nul.get(), replacement.get(), -1)
                                             : nullptr);
    return clean ? toUtf8(clean.get()) : Reference();
}

} // namespace vlgs::python
