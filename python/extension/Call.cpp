// SPDX-License-Identifier: MIT
// Calls of members.
#include "Hooks.h"
#include "Library.h"
#include "Objects.h"
#include "Values.h"

#include <vector>

namespace vlgs::python {

namespace {

/// Raises what a handler of events ended with: itself where nobody may swallow it (KeyboardInterrupt,
/// SystemExit), else as the cause of the error that the library made of it, if that came through.
bool succeededWith(Reference exception, int status) {
    if (!PyErr_GivenExceptionMatches(exception.get(), PyExc_Exception)) {
        PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(exception.get())), exception.get());
        return false;
    }
    if (succeeded(status))
        return true;
    PyObject* parts[3] = {};
    PyErr_Fetch(&parts[0], &parts[1], &parts[2]);
    PyErr_NormalizeException(&parts[0], &parts[1], &parts[2]);
    PyException_SetCause(parts[1], exception.release());
    PyErr_Restore(parts[0], parts[1], parts[2]);
    return false;
}

PyObject* result(Apartment& apartment, int status, vlgs_value& value) {
    const bool done = apartment.hasKept() ? succeededWith(apartment.takeKept(), status) : succeeded(status);
    if (!done) {
        if (status == 0)
            library.clear(&value, 1);
        return nullptr;
    }
    PyObject* const taken = take(value);
    if (value.type >= VLGS_TEXT)
        library.clear(&value, 1);
    return taken;
}

bool isReference(PyObject* value) {
    return reinterpret_cast<PyObject*>(Py_TYPE(value)) == hooks.byRef;
}

bool putArgument(PyObject* value, vlgs_value& slot) {
    if (!isReference(value))
        return put(value, slot);
    const Reference content(PyObject_GetAttrString(value, "value"));
    return content && put(content.get(), slot);
}

bool writeBack(const Arguments& arguments, Values& natives) {
    for (std::size_t i = 0; i < natives.size(); ++i) {
        if (!isReference(arguments.values[i]))
            continue;
        const Reference content(take(natives[i]));
        if (!content || PyObject_SetAttrString(arguments.values[i], "value", content.get()) < 0)
            return false;
    }
    return true;
}

/// The names of arguments as the C interface takes them.
class Names {
  public:
    bool take(PyObject* names) {
        for (Py_ssize_t i = 0; names && i < PyTuple_Size(names); ++i) {
            held_.push_back(toName(PyTuple_GetItem(names, i)));
            if (!held_.back())
                return false;
            texts_.push_back(PyBytes_AsString(held_.back().get()));
        }
        return true;
    }
    const char* const* data() const { return texts_.data(); }
    std::size_t size() const { return texts_.size(); }

  private:
    std::vector<Reference> held_;
    std::vector<const char*> texts_;
};

PyObject* invokeWithArguments(PyObject* target, vlgs_object* object, std::int32_t member, std::uint32_t kind,
                              const Arguments& arguments) {
    Names names;
    if (!names.take(arguments.names))
        return nullptr;
    Values natives(arguments.count + names.size());
    bool references = false;
    for (std::size_t i = 0; i < natives.size(); ++i) {
        references = references || isReference(arguments.values[i]);
        if (!putArgument(arguments.values[i], natives[i]))
            return nullptr;
    }
    vlgs_value value{};
    int status = 0;
    Apartment& apartment = apartmentOf(target);
    const Inside inside(apartment);
    {
        const WithoutLock others;
        status = library.invoke(object, member, kind, natives.data(), natives.size(), names.data(),
                                names.size(), &value);
    }
    if (references && !writeBack(arguments, natives)) {
        if (status == 0)
            library.clear(&value, 1);
        return nullptr;
    }
    return result(apartment, status, value);
}

} // namespace

PyObject* invoke(PyObject* target, std::int32_t member, std::uint32_t kind, const Arguments& arguments) {
    return guarded([&]() -> PyObject* {
        vlgs_object* const object = used(target);
        if (!object)
            return nullptr;
        if (arguments.count || arguments.names)
            return invokeWithArguments(target, object, member, kind, arguments);
        vlgs_value value{};
        int status = 0;
        Apartment& apartment = apartmentOf(target);
        const Inside inside(apartment);
        {
            const WithoutLock others;
            status = library.invoke(object, member, kind, nullptr, 0, nullptr, 0, &value);
        }
        return result(apartment, status, value);
    });
}

bool write(PyObject* target, std::int32_t member, const Arguments& arguments) {
    PyObject* const value = arguments.values[arguments.count - 1];
    const std::uint32_t kind = value == Py_None || isObject(value) ? VLGS_PUTREF : VLGS_PUT;
    return static_cast<bool>(Reference(invoke(target, member, kind, arguments)));
}

namespace {

void append(PyObject* tuple, std::vector<PyObject*>& values) {
    for (Py_ssize_t i = 0; i < PyTuple_Size(tuple); ++i)
        values.push_back(PyTuple_GetItem(tuple, i));
}

} // namespace

PyObject* invokeWith(PyObject* target, std::int32_t member, std::uint32_t kind, PyObject* arguments,
                     PyObject* named) {
    return guarded([&]() -> PyObject* {
        std::vector<PyObject*> values;
        append(arguments, values);
        const std::size_t positional = values.size();
        Reference names;
        if (named && named != Py_None && PyDict_Size(named) > 0) {
            names = Reference(PyTuple_New(PyDict_Size(named)));
            PyObject* key = nullptr;
            PyObject* value = nullptr;
            Py_ssize_t place = 0;
            for (Py_ssize_t i = 0; names && PyDict_Next(named, &place, &key, &value); ++i) {
                Py_INCREF(key);
                PyTuple_SetItem(names.get(), i, key);
                values.push_back(value);
            }
            if (!names)
                return nullptr;
        }
        return invoke(target, member, kind, {values.data(), positional, names.get()});
    });
}

bool writeWith(PyObject* target, std::int32_t member, PyObject* arguments) {
    return guarded([&] {
        std::vector<PyObject*> values;
        append(arguments, values);
        return write(target, member, {values.data(), values.size(), nullptr});
    });
}

} // namespace vlgs::python
