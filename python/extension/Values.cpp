// SPDX-License-Identifier: MIT
#include "Values.h"

#include "Hooks.h"
#include "Library.h"
#include "Objects.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <pthread.h>
#include <vector>

namespace vlgs::python {

namespace {

/// The stack below which values are not looked into any deeper, as a list may hold lists without end.
std::uintptr_t lowestUse() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    void* start = nullptr;
    std::size_t size = 0;
    std::size_t guard = 0;
    pthread_attr_getstack(&attributes, &start, &size);
    pthread_attr_getguardsize(&attributes, &guard);
    pthread_attr_destroy(&attributes);
    return reinterpret_cast<std::uintptr_t>(start) + guard + size / 2;
}

/// One more level of a value inside of others; RecursionError where there are too many.
class Deeper {
  public:
    explicit Deeper(const char* where) {
        thread_local const std::uintptr_t lowest = lowestUse();
        if (reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) < lowest)
            PyErr_Format(PyExc_RecursionError, "the thread's stack is too small%s", where);
        else
            entered_ = Py_EnterRecursiveCall(where) == 0;
    }
    ~Deeper() {
        if (entered_)
            Py_LeaveRecursiveCall();
    }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;
    explicit operator bool() const { return entered_; }

  private:
    bool entered_ = false;
};

constexpr std::size_t chunk = 256; // elements of an array that travel at once

bool ownsSomething(const vlgs_value& value) {
    return value.type == VLGS_TEXT || value.type == VLGS_OBJECT || value.type == VLGS_RECORD ||
           value.type >= VLGS_ARRAY;
}

// ---- In ----

// Shorter texts go through the stack; Python's stable interface shows no characters in place.
constexpr Py_ssize_t shortText = 128;

bool putShortText(PyObject* text, Py_ssize_t length, vlgs_value& slot) {
    static_assert(sizeof(wchar_t) == 4);
    wchar_t characters[shortText];
    if (PyUnicode_AsWideChar(text, characters, length) < 0)
        return false;
    std::uint16_t units[2 * shortText];
    std::size_t count = 0;
    for (Py_ssize_t i = 0; i < length; ++i) {
        auto character = static_cast<char32_t>(characters[i]);
        if (character >= 0x10000) [[unlikely]] {
            character -= 0x10000;
            units[count++] = static_cast<std::uint16_t>(0xD800 + (character >> 10));
            character = 0xDC00 + (character & 0x3FF);
        }
        units[count++] = static_cast<std::uint16_t>(character);
    }
    return succeeded(library.textUtf16New(units, count, &slot));
}

bool putText(PyObject* text, vlgs_value& slot) {
    const Py_ssize_t length = PyUnicode_GetLength(text);
    if (length < 0)
        return false;
    if (length <= shortText)
        return putShortText(text, length, slot);
    const Reference bytes = toUtf8(text);
    return bytes && succeeded(library.textNew(PyBytes_AsString(bytes.get()),
                                              static_cast<std::size_t>(PyBytes_Size(bytes.get())), &slot));
}

void putLong(long number, vlgs_value& slot) {
    slot.as.number = static_cast<std::int32_t>(number);
    slot.type = VLGS_LONG;
}

void putReal(double number, std::uint16_t type, vlgs_value& slot) {
    slot.as.real = number;
    slot.type = type;
}

void putStatus(std::int32_t status, vlgs_value& slot) {
    slot.as.number = status;
    slot.type = VLGS_ERROR;
}

bool putObject(PyObject* value, vlgs_value& slot) {
    vlgs_object* const object = used(value);
    if (!object)
        return false;
    library.retain(object);
    slot.as.object = object;
    slot.type = VLGS_OBJECT;
    return true;
}

void putNoObject(vlgs_value& slot) {
    slot.as.object = nullptr;
    slot.type = VLGS_OBJECT;
}

/// Items of a list or tuple, which conversions may change meanwhile.
class Items {
  public:
    explicit Items(PyObject* sequence) : sequence_(sequence), list_(PyList_Check(sequence)) {}
    std::size_t size() const {
        return static_cast<std::size_t>(list_ ? PyList_Size(sequence_) : PyTuple_Size(sequence_));
    }
    Reference operator[](std::size_t index) const {
        const auto place = static_cast<Py_ssize_t>(index);
        return Reference::borrowed(list_ ? PyList_GetItem(sequence_, place)
                                         : PyTuple_GetItem(sequence_, place));
    }

  private:
    PyObject* sequence_;
    bool list_;
};

bool putElements(const Items& items, std::size_t count, vlgs_value& array) {
    for (std::size_t start = 0; start < count; start += chunk) {
        Values part(std::min(chunk, count - start));
        for (std::size_t i = 0; i < part.size(); ++i) {
            const Reference item = items[start + i];
            if (!item || !put(item.get(), part[i]))
                return false;
        }
        if (!succeeded(library.arrayWrite(&array, start, part.size(), part.data())))
            return false;
    }
    return true;
}

bool putItems(PyObject* sequence, vlgs_value& slot) {
    const Items items(sequence);
    const std::size_t count = items.size();
    if (count > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        raiseRunTime(6);
        return false;
    }
    const vlgs_dimension bounds{0, static_cast<std::int32_t>(count)};
    if (!succeeded(library.arrayNew(VLGS_VARIANT, &bounds, 1, &slot)))
        return false;
    const Deeper deeper(" while a list is converted");
    return deeper && putElements(items, count, slot);
}

// ---- In, by the forms that _values.py tells ----

long partOf(PyObject* form, Py_ssize_t index) {
    return PyLong_AsLong(PyTuple_GetItem(form, index));
}

bool putBounds(PyObject* bounds, std::vector<vlgs_dimension>& shape) {
    for (Py_ssize_t i = 0; i < PyList_Size(bounds); ++i) {
        int lower = 0;
        int count = 0;
        if (!PyArg_ParseTuple(PyList_GetItem(bounds, i), "ii", &lower, &count))
            return false;
        shape.push_back({lower, count});
    }
    return true;
}

bool putArrayForm(PyObject* form, std::uint16_t code, vlgs_value& slot) {
    PyObject* const first = PyTuple_GetItem(form, 1);
    if (PyTuple_Size(form) == 3) {
        std::vector<vlgs_dimension> shape;
        const auto element = static_cast<std::uint16_t>(code & ~VLGS_ARRAY);
        const Items items(PyTuple_GetItem(form, 2));
        return putBounds(first, shape) &&
               succeeded(library.arrayNew(element, shape.data(), shape.size(), &slot)) &&
               putElements(items, items.size(), slot);
    }
    if (first == Py_None) {
        slot.as.shared = nullptr;
        slot.type = code;
        return true;
    }
    return succeeded(
        library.bytesNew(PyBytes_AsString(first), static_cast<std::size_t>(PyBytes_Size(first)), &slot));
}

bool putRecordForm(PyObject* form, vlgs_value& slot) {
    const Items fields(PyTuple_GetItem(form, 2));
    const Items items(PyTuple_GetItem(form, 3));
    Values values(items.size());
    std::vector<Reference> held;
    std::vector<const char*> names;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Reference field = fields[i];
        const Reference item = items[i];
        held.push_back(toName(field.get()));
        if (!held.back() || !put(item.get(), values[i]))
            return false;
        names.push_back(PyBytes_AsString(held.back().get()));
    }
    const Reference name = toName(PyTuple_GetItem(form, 1));
    return name && succeeded(library.recordNew(PyBytes_AsString(name.get()), names.data(), values.data(),
                                               values.size(), &slot));
}

bool putDecimalForm(PyObject* form, vlgs_value& slot) {
    slot.scale = static_cast<std::uint8_t>(partOf(form, 1));
    slot.sign = static_cast<std::uint8_t>(partOf(form, 2));
    slot.high = static_cast<std::uint32_t>(partOf(form, 3));
    slot.as.low = PyLong_AsUnsignedLongLong(PyTuple_GetItem(form, 4));
    slot.type = VLGS_DECIMAL;
    return !PyErr_Occurred();
}

bool putConverted(PyObject* form, vlgs_value& slot) {
    const auto code = static_cast<std::uint16_t>(partOf(form, 2));
    return put(PyTuple_GetItem(form, 1), slot) &&
           (slot.type == code || succeeded(library.changeType(&slot, code)));
}

bool putForm(PyObject* form, vlgs_value& slot) {
    const auto code = static_cast<std::uint16_t>(partOf(form, 0));
    PyObject* const first = PyTuple_Size(form) > 1 ? PyTuple_GetItem(form, 1) : nullptr;
    switch (code) {
    case VLGS_EMPTY:
    case VLGS_NULL:
        slot.type = code;
        return true;
    case VLGS_LONG:
        putLong(PyLong_AsLong(first), slot);
        break;
    case VLGS_ERROR:
        putStatus(static_cast<std::int32_t>(PyLong_AsLong(first)), slot);
        break;
    case VLGS_DOUBLE:
    case VLGS_DATE:
        putReal(PyFloat_AsDouble(first), code, slot);
        break;
    case VLGS_CURRENCY:
        slot.as.currency = PyLong_AsLongLong(first);
        slot.type = code;
        break;
    case VLGS_BOOLEAN:
        slot.as.boolean = first == Py_True;
        slot.type = code;
        return true;
    case VLGS_TEXT:
        return putText(first, slot);
    case VLGS_OBJECT:
        return first == Py_None ? (putNoObject(slot), true) : putObject(first, slot);
    case VLGS_DECIMAL:
        return putDecimalForm(form, slot);
    case VLGS_RECORD:
        return putRecordForm(form, slot);
    case VLGS_VARIANT:
        return putConverted(form, slot);
    default:
        return putArrayForm(form, code, slot);
    }
    return !PyErr_Occurred();
}

bool putOther(PyObject* value, vlgs_value& slot) {
    if (isObject(value))
        return putObject(value, slot);
    if (value == hooks.empty)
        return true;
    if (value == hooks.null) {
        slot.type = VLGS_NULL;
        return true;
    }
    if (value == hooks.missing) {
        putStatus(VLGS_MISSING, slot);
        return true;
    }
    const Deeper deeper(" while a value is converted");
    const Reference form(deeper ? PyObject_CallFunctionObjArgs(hooks.formOf, value, nullptr) : nullptr);
    return form && putForm(form.get(), slot);
}

// ---- Out ----

PyObject* takeText(const vlgs_value& slot) {
    const std::uint16_t* text = nullptr;
    std::size_t length = 0;
    if (!succeeded(library.textUtf16(&slot, &text, &length)))
        return nullptr;
    constexpr std::size_t usual = 256;
    char narrow[usual];
    if (length <= usual) {
        std::uint16_t all = 0;
        for (std::size_t i = 0; i < length; ++i) {
            all |= text[i];
            narrow[i] = static_cast<char>(text[i]);
        }
        if (all < 0x100)
            return PyUnicode_DecodeLatin1(narrow, static_cast<Py_ssize_t>(length), nullptr);
    }
    int order = std::endian::native == std::endian::little ? -1 : 1;
    return PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(text), static_cast<Py_ssize_t>(2 * length),
                                 "surrogatepass", &order);
}

PyObject* takeBytes(const vlgs_value& slot) {
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    if (!succeeded(library.bytes(&slot, &data, &size)))
        return nullptr;
    return PyBytes_FromStringAndSize(reinterpret_cast<const char*>(data), static_cast<Py_ssize_t>(size));
}

Reference takeElements(const vlgs_value& slot, std::size_t count) {
    Reference items(PyList_New(static_cast<Py_ssize_t>(count)));
    for (std::size_t start = 0; items && start < count; start += chunk) {
        Values part(std::min(chunk, count - start));
        if (!succeeded(library.arrayRead(&slot, start, part.size(), part.data())))
            return {};
        for (std::size_t i = 0; i < part.size(); ++i) {
            PyObject* const item = take(part[i]);
            if (!item || PyList_SetItem(items.get(), static_cast<Py_ssize_t>(start + i), item) < 0)
                return {};
        }
    }
    return items;
}

PyObject* takeArray(const vlgs_value& slot) {
    const Deeper deeper(" while an array is converted");
    if (!deeper)
        return nullptr;
    const vlgs_dimension* shape = nullptr;
    std::size_t rank = 0;
    if (!succeeded(library.arrayShape(&slot, &shape, &rank)))
        return nullptr;
    if (slot.type == (VLGS_ARRAY | VLGS_BYTE) && rank <= 1)
        return takeBytes(slot);
    if (rank == 0)
        return PyObject_CallFunction(hooks.noArray, "i", static_cast<int>(slot.type));
    const Reference bounds(PyList_New(0));
    std::size_t count = 1;
    for (std::size_t i = 0; bounds && i < rank; ++i) {
        count *= static_cast<std::size_t>(shape[i].count);
        const Reference pair(
            Py_BuildValue("ii", static_cast<int>(shape[i].lower), static_cast<int>(shape[i].count)));
        if (!pair || PyList_Append(bounds.get(), pair.get()) < 0)
            return nullptr;
    }
    const Reference items = bounds ? takeElements(slot, count) : Reference();
    return items ? PyObject_CallFunction(hooks.arrayOf, "iOO", static_cast<int>(slot.type), bounds.get(),
                                         items.get())
                 : nullptr;
}

PyObject* takeRecord(const vlgs_value& slot) {
    const char* name = nullptr;
    std::size_t count = 0;
    if (!succeeded(library.record(&slot, &name, &count)))
        return nullptr;
    if (!name)
        return newNone();
    const Reference fields(PyDict_New());
    for (std::size_t i = 0; fields && i < count; ++i) {
        Values content(1);
        const char* field = nullptr;
        if (!succeeded(library.recordField(&slot, i, &field, content.data())))
            return nullptr;
        const Reference value(take(content[0]));
        if (!value || PyDict_SetItemString(fields.get(), field, value.get()) < 0)
            return nullptr;
    }
    return fields ? PyObject_CallFunction(hooks.recordOf, "sO", name, fields.get()) : nullptr;
}

PyObject* takeObject(vlgs_value& slot) {
    vlgs_object* const object = slot.as.object;
    if (!object)
        return newNone();
    slot.as.object = nullptr;
    return wrap(object);
}

PyObject* newReference(PyObject* object) {
    Py_INCREF(object);
    return object;
}

} // namespace

void Values::clear() {
    for (std::size_t i = 0; i < count_; ++i)
        if (ownsSomething(data_[i]))
            library.clear(data_ + i, 1);
}

bool put(PyObject* value, vlgs_value& slot) {
    if (PyUnicode_CheckExact(value))
        return putText(value, slot);
    if (PyLong_CheckExact(value)) {
        int overflow = 0;
        const long number = PyLong_AsLongAndOverflow(value, &overflow);
        if (overflow == 0 && number == static_cast<std::int32_t>(number)) {
            putLong(number, slot);
            return true;
        }
        return putOther(value, slot);
    }
    if (value == Py_None) {
        putNoObject(slot);
        return true;
    }
    if (PyBool_Check(value)) {
        slot.as.boolean = value == Py_True;
        slot.type = VLGS_BOOLEAN;
        return true;
    }
    if (PyFloat_CheckExact(value)) {
        putReal(PyFloat_AsDouble(value), VLGS_DOUBLE, slot);
        return true;
    }
    if (PyList_CheckExact(value) || PyTuple_CheckExact(value))
        return putItems(value, slot);
    return putOther(value, slot);
}

PyObject* take(vlgs_value& slot) {
    switch (slot.type) {
    case VLGS_TEXT:
        return takeText(slot);
    case VLGS_LONG:
        return PyLong_FromLong(slot.as.number);
    case VLGS_INTEGER:
        return PyLong_FromLong(slot.as.integer);
    case VLGS_BYTE:
        return PyLong_FromLong(slot.as.byte);
    case VLGS_BOOLEAN:
        return PyBool_FromLong(slot.as.boolean);
    case VLGS_DOUBLE:
        return PyFloat_FromDouble(slot.as.real);
    case VLGS_SINGLE:
        return PyFloat_FromDouble(static_cast<double>(slot.as.single));
    case VLGS_OBJECT:
        return takeObject(slot);
    case VLGS_EMPTY:
        return newReference(hooks.empty);
    case VLGS_NULL:
        return newReference(hooks.null);
    case VLGS_DATE:
        return PyObject_CallFunction(hooks.momentOf, "d", slot.as.real);
    case VLGS_CURRENCY:
        return PyObject_CallFunction(hooks.currencyOf, "L", static_cast<long long>(slot.as.currency));
    case VLGS_DECIMAL:
        return PyObject_CallFunction(hooks.decimalOf, "iiIK", static_cast<int>(slot.scale),
                                     static_cast<int>(slot.sign), static_cast<unsigned>(slot.high),
                                     static_cast<unsigned long long>(slot.as.low));
    case VLGS_ERROR:
        return PyObject_CallFunction(hooks.errorValueOf, "i", static_cast<int>(slot.as.number));
    case VLGS_RECORD:
        return takeRecord(slot);
    default:
        return takeArray(slot);
    }
}

} // namespace vlgs::python
