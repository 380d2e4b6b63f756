// SPDX-License-Identifier: MIT
#include "Events.h"

#include "Hooks.h"
#include "Library.h"
#include "Objects.h"
#include "Values.h"

namespace vlgs::python {

namespace {

class WithLock {
  public:
    WithLock() : state_(orRest([] { return PyGILState_Ensure(); })) {}
    ~WithLock() { PyGILState_Release(state_); }
    WithLock(const WithLock&) = delete;
    WithLock& operator=(const WithLock&) = delete;

  private:
    PyGILState_STATE state_;
};

int idOf(void*, const char*, std::int32_t* member) {
    *member = VLGS_UNKNOWN_MEMBER; // events arrive by number
    return VLGS_DONE;
}

/// The arguments as a tuple; objects among them stay the caller's as well.
Reference tupleOf(const vlgs_value* arguments, std::size_t count) {
    Reference tuple(PyTuple_New(static_cast<Py_ssize_t>(count)));
    for (std::size_t i = 0; tuple && i < count; ++i) {
        vlgs_value argument = arguments[i];
        if (argument.type == VLGS_OBJECT)
            library.retain(argument.as.object);
        PyObject* const value = take(argument);
        if (!value || PyTuple_SetItem(tuple.get(), static_cast<Py_ssize_t>(i), value) < 0)
            return {};
    }
    return tuple;
}

Reference called(PyObject* methods, std::int32_t member, const vlgs_value* arguments, std::size_t count) {
    const Reference number(PyLong_FromLong(member));
    PyObject* const method = number ? PyDict_GetItemWithError(methods, number.get()) : nullptr;
    if (!method) {
        constexpr std::int32_t noSuchMember = 438;
        if (!PyErr_Occurred())
            raiseRunTime(noSuchMember);
        return {};
    }
    const Reference held = Reference::borrowed(method);
    const Reference given = tupleOf(arguments, count);
    return given ? Reference(PyObject_CallObject(method, given.get())) : Reference();
}

/// Hands Python's error to the library.
void passOn() {
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* trace = nullptr;
    PyErr_Fetch(&type, &value, &trace);
    PyErr_NormalizeException(&type, &value, &trace);
    const Reference held[] = {Reference(type), Reference(value), Reference(trace)};
    if (value && trace)
        PyException_SetTraceback(value, trace);
    Apartment::ofThisThread()->keep(value);
    const Reference parts(PyObject_CallFunctionObjArgs(hooks.errorParts, value, nullptr));
    int number = 0;
    PyObject* texts[2] = {};
    if (parts && PyArg_ParseTuple(parts.get(), "iUU", &number, &texts[0], &texts[1])) {
        const Reference source = toUtf8(texts[0]);
        const Reference description = toUtf8(texts[1]);
        if (source && description) {
            library.setError(number, PyBytes_AsString(source.get()),
                             static_cast<std::size_t>(PyBytes_Size(source.get())),
                             PyBytes_AsString(description.get()),
                             static_cast<std::size_t>(PyBytes_Size(description.get())));
            return;
        }
    }
    PyErr_Clear();
    constexpr std::int32_t automationError = 440;
    library.setError(automationError, "Python", 6, "", 0);
}

int invokeHandler(void* methods, std::int32_t member, std::uint32_t, vlgs_value* arguments, std::size_t count,
                  vlgs_value*) {
    const WithLock lock;
    if (guarded([&] {
            return static_cast<bool>(called(static_cast<PyObject*>(methods), member, arguments, count));
        }))
        return VLGS_DONE;
    passOn();
    return VLGS_RAISED;
}

void release(void* methods) {
    if (!Py_IsInitialized())
        return;
    const WithLock lock;
    Py_DECREF(static_cast<PyObject*>(methods));
}

constexpr vlgs_client client{idOf, invokeHandler, release};

} // namespace

PyObject* connect(PyObject* source, PyObject* methods) {
    vlgs_object* const object = used(source);
    if (!object)
        return nullptr;
    vlgs_object* sink = nullptr;
    Py_INCREF(methods);
    if (!succeeded(library.objectNew(&client, methods, &sink))) {
        Py_DECREF(methods);
        return nullptr;
    }
    std::int32_t connection = 0;
    const Inside inside(apartmentOf(source));
    const bool connected = succeeded(library.connect(object, sink, &connection));
    library.release(sink);
    return connected ? PyLong_FromLong(connection) : nullptr;
}

} // namespace vlgs::python
