// SPDX-License-Identifier: MIT
// The module vlgs._native: what vlgs/_core.py tells, on Python's stable interface over the library's C
// interface.
#include "Apartment.h"
#include "Events.h"
#include "Hooks.h"
#include "Library.h"
#include "Objects.h"
#include "Values.h"

#include <bit>

namespace vlgs::python {

namespace {

PyObject* none(bool done) {
    return done ? newNone() : nullptr;
}

// Types and functions are the process's, so one interpreter alone can have them.
bool belongsHere() {
    static std::int64_t owner = -1;
    const std::int64_t asking = PyInterpreterState_GetID(PyInterpreterState_Get());
    if (owner < 0)
        owner = asking;
    else if (owner != asking)
        PyErr_SetString(PyExc_ImportError, "the module belongs to another interpreter");
    return owner == asking;
}

PyObject* doLoad(PyObject*, PyObject* path) {
    if (!belongsHere())
        return nullptr;
    const Reference name(PyUnicode_EncodeFSDefault(path));
    if (!name)
        return nullptr;
    if (const char* failure = load(PyBytes_AsString(name.get()))) {
        PyErr_SetString(PyExc_OSError, failure);
        return nullptr;
    }
    return newNone();
}

PyObject* doConfigure(PyObject*, PyObject* dictionary) {
    return none(configure(dictionary));
}

PyObject* doForget(PyObject*, PyObject*) {
    forget();
    return newNone();
}

PyObject* doVersion(PyObject*, PyObject*) {
    return fromName(library.version());
}

PyObject* doUnknownSettings(PyObject*, PyObject*) {
    return fromName(library.unknownSettings());
}

PyObject* doCreate(PyObject*, PyObject* name) {
    if (!PyUnicode_Check(name))
        return PyErr_Format(PyExc_TypeError, "the name of a class is a text");
    const Reference text = toName(name);
    vlgs_object* object = nullptr;
    if (!text || !succeeded(library.create(PyBytes_AsString(text.get()), &object)))
        return nullptr;
    return guarded([&] { return wrap(object); });
}

PyObject* doWrap(PyObject*, PyObject* pointer) {
    void* const object = PyLong_AsVoidPtr(pointer);
    return PyErr_Occurred() ? nullptr : guarded([&] { return wrap(static_cast<vlgs_object*>(object)); });
}

bool checkObject(PyObject* value) {
    if (!isObject(value))
        PyErr_SetString(PyExc_TypeError, "an object of the library is needed");
    return isObject(value);
}

PyObject* doInvoke(PyObject*, PyObject* arguments) {
    PyObject* target = nullptr;
    int member = 0;
    unsigned kind = 0;
    PyObject* values = nullptr;
    PyObject* named = nullptr;
    if (!PyArg_ParseTuple(arguments, "OiIO!O", &target, &member, &kind, &PyTuple_Type, &values, &named) ||
        !checkObject(target))
        return nullptr;
    return invokeWith(target, member, kind, values, named);
}

PyObject* doWrite(PyObject*, PyObject* arguments) {
    PyObject* target = nullptr;
    int member = 0;
    PyObject* values = nullptr;
    if (!PyArg_ParseTuple(arguments, "OiO!", &target, &member, &PyTuple_Type, &values) ||
        !checkObject(target))
        return nullptr;
    return none(writeWith(target, member, values));
}

PyObject* doIdOf(PyObject*, PyObject* arguments) {
    PyObject* target = nullptr;
    PyObject* name = nullptr;
    if (!PyArg_ParseTuple(arguments, "OU", &target, &name) || !checkObject(target))
        return nullptr;
    vlgs_object* const object = used(target);
    const Reference text = object ? toName(name) : Reference();
    std::int32_t member = 0;
    if (!text || !succeeded(library.idOf(object, PyBytes_AsString(text.get()), &member)))
        return nullptr;
    return PyLong_FromLong(member);
}

PyObject* doIterate(PyObject*, PyObject* arguments) {
    PyObject* target = nullptr;
    int counting = 0;
    if (!PyArg_ParseTuple(arguments, "Oi", &target, &counting) || !checkObject(target))
        return nullptr;
    return iterate(target, counting);
}

PyObject* doReadEach(PyObject*, PyObject* arguments) {
    PyObject* target = nullptr;
    PyObject* name = nullptr;
    if (!PyArg_ParseTuple(arguments, "OU", &target, &name) || !checkObject(target))
        return nullptr;
    const Reference text = toName(name);
    return text ? guarded([&] { return readEach(target, PyBytes_AsString(text.get())); }) : nullptr;
}

PyObject* doChanges(PyObject*, PyObject* target) {
    vlgs_object* const object = checkObject(target) ? used(target) : nullptr;
    std::uint64_t changes = 0;
    return object && succeeded(library.changes(object, &changes)) ? PyLong_FromUnsignedLongLong(changes)
                                                                  : nullptr;
}

PyObject* doConnect(PyObject*, PyObject* arguments) {
    PyObject* source = nullptr;
    PyObject* methods = nullptr;
    if (!PyArg_ParseTuple(arguments, "OO!", &source, &PyDict_Type, &methods) || !checkObject(source))
        return nullptr;
    return connect(source, methods);
}

PyObject* doDisconnect(PyObject*, PyObject* arguments) {
    PyObject* source = nullptr;
    int connection = 0;
    if (!PyArg_ParseTuple(arguments, "Oi", &source, &connection) || !checkObject(source))
        return nullptr;
    vlgs_object* const object = used(source);
    if (!object)
        return nullptr;
    const Inside inside(apartmentOf(source));
    return none(succeeded(library.disconnect(object, connection)));
}

// ---- Descriptions ----

const vlgs_class* classAt(Py_ssize_t address) {
    return std::bit_cast<const vlgs_class*>(address);
}

PyObject* typeTuple(const vlgs_type& type) {
    return Py_BuildValue("(iNNz)", static_cast<int>(type.type), PyBool_FromLong(type.by_reference),
                         PyBool_FromLong(type.enumerator), type.name);
}

PyObject* doClassAt(PyObject*, PyObject* index) {
    const auto place = PyLong_AsSize_t(index);
    if (PyErr_Occurred())
        return nullptr;
    const vlgs_class* const found = library.classAt(place);
    return found ? PyLong_FromSsize_t(reinterpret_cast<Py_ssize_t>(found)) : newNone();
}

PyObject* doClassFacts(PyObject*, PyObject* cls) {
    const Py_ssize_t address = PyLong_AsSsize_t(cls);
    if (PyErr_Occurred())
        return nullptr;
    vlgs_class_facts facts{};
    library.classDescribe(classAt(address), &facts);
    return Py_BuildValue("(zzzzNnn)", facts.library, facts.name, facts.help, facts.event_interface,
                         PyBool_FromLong(facts.creatable), static_cast<Py_ssize_t>(facts.member_count),
                         static_cast<Py_ssize_t>(facts.event_count));
}

PyObject* doMember(PyObject*, PyObject* arguments) {
    Py_ssize_t cls = 0;
    Py_ssize_t index = 0;
    if (!PyArg_ParseTuple(arguments, "nn", &cls, &index))
        return nullptr;
    vlgs_member row{};
    if (!library.memberDescribe(classAt(cls), static_cast<std::size_t>(index), &row))
        return newNone();
    return Py_BuildValue("(zziINnNnzz)", row.name, row.help, static_cast<int>(row.id),
                         static_cast<unsigned>(row.kind), PyBool_FromLong(row.hidden),
                         static_cast<Py_ssize_t>(row.parameter_count), typeTuple(row.result),
                         static_cast<Py_ssize_t>(row.error_count), row.example, row.example_output);
}

/// What `describe` tells of a row that belongs to a member, by class, member and place; None behind the last.
template <class Row>
PyObject* rowOfMember(PyObject* arguments, int (*describe)(const vlgs_class*, std::size_t, std::size_t, Row*),
                      PyObject* (*asTuple)(const Row&)) {
    Py_ssize_t cls = 0;
    Py_ssize_t member = 0;
    Py_ssize_t place = 0;
    if (!PyArg_ParseTuple(arguments, "nnn", &cls, &member, &place))
        return nullptr;
    Row row{};
    return describe(classAt(cls), static_cast<std::size_t>(member), static_cast<std::size_t>(place), &row)
               ? asTuple(row)
               : newNone();
}

PyObject* parameterTuple(const vlgs_parameter& row) {
    int order = std::endian::native == std::endian::little ? -1 : 1;
    return Py_BuildValue(
        "(zzNNiiN)", row.name, row.meaning, typeTuple(row.type), PyBool_FromLong(row.optional),
        static_cast<int>(row.default_type), static_cast<int>(row.default_number),
        PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(row.default_text),
                              static_cast<Py_ssize_t>(2 * row.default_length), "surrogatepass", &order));
}

PyObject* conditionTuple(const vlgs_error_condition& row) {
    return Py_BuildValue("(iz)", static_cast<int>(row.code), row.when);
}

PyObject* doParameter(PyObject*, PyObject* arguments) {
    return rowOfMember(arguments, library.parameterDescribe, parameterTuple);
}

PyObject* doCondition(PyObject*, PyObject* arguments) {
    return rowOfMember(arguments, library.errorDescribe, conditionTuple);
}

PyObject* doConstant(PyObject*, PyObject* index) {
    const auto place = PyLong_AsSize_t(index);
    vlgs_constant row{};
    if (PyErr_Occurred())
        return nullptr;
    if (!library.constantDescribe(place, &row))
        return newNone();
    return Py_BuildValue("(zzi)", row.enumeration, row.name, static_cast<int>(row.value));
}

PyMethodDef functions[] = {{"load", doLoad, METH_O, nullptr},
                           {"configure", doConfigure, METH_O, nullptr},
                           {"forget", doForget, METH_NOARGS, nullptr},
                           {"version", doVersion, METH_NOARGS, nullptr},
                           {"unknown_settings", doUnknownSettings, METH_NOARGS, nullptr},
                           {"create", doCreate, METH_O, nullptr},
                           {"wrap", doWrap, METH_O, nullptr},
                           {"invoke", doInvoke, METH_VARARGS, nullptr},
                           {"write", doWrite, METH_VARARGS, nullptr},
                           {"id_of", doIdOf, METH_VARARGS, nullptr},
                           {"iterate", doIterate, METH_VARARGS, nullptr},
                           {"read_each", doReadEach, METH_VARARGS, nullptr},
                           {"changes", doChanges, METH_O, nullptr},
                           {"connect", doConnect, METH_VARARGS, nullptr},
                           {"disconnect", doDisconnect, METH_VARARGS, nullptr},
                           {"class_at", doClassAt, METH_O, nullptr},
                           {"class_facts", doClassFacts, METH_O, nullptr},
                           {"member", doMember, METH_VARARGS, nullptr},
                           {"parameter", doParameter, METH_VARARGS, nullptr},
                           {"condition", doCondition, METH_VARARGS, nullptr},
                           {"constant", doConstant, METH_O, nullptr},
                           {nullptr, nullptr, 0, nullptr}};

PyModuleDef module{
    PyModuleDef_HEAD_INIT, "_native", nullptr, -1, functions, nullptr, nullptr, nullptr, nullptr};

} // namespace

} // namespace vlgs::python

// NOLINTNEXTLINE(bugprone-reserved-identifier): Python looks for this name
PyMODINIT_FUNC PyInit__native() {
    if (!vlgs::python::belongsHere())
        return nullptr;
    PyObject* const made = PyModule_Create(&vlgs::python::module);
    if (made && !vlgs::python::addTypes(made)) {
        Py_DECREF(made);
        return nullptr;
    }
    return made;
}
