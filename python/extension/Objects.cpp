// SPDX-License-Identifier: MIT
#include "Objects.h"

#include "Hooks.h"
#include "Library.h"
#include "Values.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace vlgs::python {

namespace {

constexpr std::uint32_t reading = VLGS_METHOD | VLGS_GET;
constexpr std::int32_t wrongThread = -2147417842;

PyTypeObject* objectType = nullptr;
PyTypeObject* boundType = nullptr;
PyTypeObject* iteratorType = nullptr;

PyObject* asObject(PyTypeObject* type) {
    return reinterpret_cast<PyObject*>(type);
}

/// What is known of an attribute name of a class.
struct Known {
    std::int32_t number;
    bool direct;      // a property without parameters, read as the attribute is
    Reference member; // its description in Python
};

/// The Python class for a native one, and the names of members that were asked for so far.
class ClassFacts {
  public:
    explicit ClassFacts(PyObject* type) : type_(type) {}
    PyTypeObject* type() const { return reinterpret_cast<PyTypeObject*>(type_); }

    /// By the identity of the name: those in programs are interned.
    const Known* find(PyObject* name) const {
        const auto found = known_.find(name);
        return found == known_.end() ? nullptr : &found->second;
    }
    /// Asks Python. Null without an error when there is no such member.
    const Known* ask(PyObject* name);
    void forget() {
        const auto old = std::exchange(known_, {});
        const auto names = std::exchange(names_, {});
    }

  private:
    static constexpr std::size_t enough = 1024; // a program may make names without end
    PyObject* type_;
    std::unordered_map<PyObject*, Known> known_;
    std::vector<Reference> names_; // keeps the identities in `known_` taken
    Known last_{};
};

const Known* ClassFacts::ask(PyObject* name) {
    const Reference found(PyObject_CallFunctionObjArgs(hooks.find, type_, name, nullptr));
    if (!found || found.get() == Py_None)
        return nullptr;
    int number = 0;
    int direct = 0;
    PyObject* member = nullptr;
    if (!PyArg_ParseTuple(found.get(), "ipO", &number, &direct, &member))
        return nullptr;
    last_ = {number, direct != 0, Reference::borrowed(member)};
    if (known_.size() >= enough || !PyUnicode_CheckExact(name))
        return &last_;
    Py_INCREF(name);
    PyUnicode_InternInPlace(&name);
    Reference interned(name);
    const auto [place, isNew] = known_.insert_or_assign(name, std::move(last_));
    if (isNew)
        names_.push_back(std::move(interned));
    return &place->second;
}

struct ObjectBody {
    PyObject ob_base;
    vlgs_object* object;
    ClassFacts* facts;
    std::shared_ptr<Apartment> apartment;
};

ObjectBody& bodyOf(PyObject* object) {
    return *reinterpret_cast<ObjectBody*>(object);
}

/// Frees the memory of an object and lets go of its type, as types made at run time want it.
void freeWithType(PyObject* self) {
    PyTypeObject* const type = Py_TYPE(self);
    reinterpret_cast<freefunc>(PyType_GetSlot(type, Py_tp_free))(self);
    Py_DECREF(asObject(type));
}

// ---- Bound: a member of one object ----

struct BoundBody {
    PyObject ob_base;
    PyObject* (*call)(PyObject*, PyObject* const*, std::size_t, PyObject*); // as vectorcall wants it
    PyObject* target;
    PyObject* member;
    std::int32_t number;
};

BoundBody& boundOf(PyObject* object) {
    return *reinterpret_cast<BoundBody*>(object);
}

// Every call of a method makes one of these and ends it, so their memory is kept for the next one.
std::vector<PyObject*>& spare() {
    static auto* const kept = new std::vector<PyObject*>; // outlives the interpreter's end
    return *kept;
}

PyObject* callBound(PyObject* self, PyObject* const* arguments, std::size_t count, PyObject* names) {
    constexpr std::size_t flag = std::size_t{1} << (8 * sizeof(std::size_t) - 1);
    const BoundBody& body = boundOf(self);
    return invoke(body.target, body.number, reading, {arguments, count & ~flag, names});
}

PyObject* bind(PyObject* target, PyObject* member, std::int32_t number) {
    PyObject* made = nullptr;
    if (spare().empty()) {
        made = reinterpret_cast<allocfunc>(PyType_GetSlot(boundType, Py_tp_alloc))(boundType, 0);
    } else {
        made = spare().back();
        spare().pop_back();
        PyObject_Init(made, boundType);
    }
    if (!made)
        return nullptr;
    BoundBody& body = boundOf(made);
    Py_INCREF(target);
    Py_INCREF(member);
    body.call = callBound;
    body.target = target;
    body.member = member;
    body.number = number;
    return made;
}

void endBound(PyObject* self) {
    BoundBody& body = boundOf(self);
    Py_CLEAR(body.target);
    Py_CLEAR(body.member);
    constexpr std::size_t enough = 16;
    if (spare().size() >= enough) {
        freeWithType(self);
        return;
    }
    if (spare().capacity() == 0)
        spare().reserve(enough);
    PyTypeObject* const type = Py_TYPE(self);
    spare().push_back(self);
    Py_DECREF(asObject(type));
}

PyObject* newBound(PyTypeObject*, PyObject* arguments, PyObject*) {
    PyObject* target = nullptr;
    PyObject* member = nullptr;
    int number = 0;
    if (!PyArg_ParseTuple(arguments, "O!Oi", objectType, &target, &member, &number))
        return nullptr;
    return bind(target, member, number);
}

PyObject* callBoundWith(PyObject* self, PyObject* arguments, PyObject* named) {
    return invokeWith(boundOf(self).target, boundOf(self).number, reading, arguments, named);
}

PyObject* readAt(PyObject* target, std::int32_t member, PyObject* index) {
    if (PyTuple_Check(index))
        return invokeWith(target, member, reading, index, nullptr);
    return invoke(target, member, reading, {&index, 1, nullptr});
}

int writeAt(PyObject* target, std::int32_t member, PyObject* index, PyObject* value) {
    if (!value) {
        PyErr_Format(PyExc_TypeError, "members are not deleted by position");
        return -1;
    }
    if (!PyTuple_Check(index)) {
        PyObject* const both[] = {index, value};
        return write(target, member, {both, 2, nullptr}) ? 0 : -1;
    }
    const Reference last(PyTuple_Pack(1, value));
    const Reference all(last ? PySequence_Concat(index, last.get()) : nullptr);
    return all && writeWith(target, member, all.get()) ? 0 : -1;
}

PyObject* readBoundAt(PyObject* self, PyObject* index) {
    return readAt(boundOf(self).target, boundOf(self).number, index);
}

int writeBoundAt(PyObject* self, PyObject* index, PyObject* value) {
    return writeAt(boundOf(self).target, boundOf(self).number, index, value);
}

PyObject* boundItself(PyObject* self, PyObject*, PyObject*) {
    Py_INCREF(self);
    return self;
}

PyObject* memberAttribute(PyObject* self, void* name) {
    return PyObject_GetAttrString(boundOf(self).member, static_cast<const char*>(name));
}

// The member's signature without the object itself.
PyObject* boundSignature(PyObject* self, void*) {
    const Reference whole(PyObject_GetAttrString(boundOf(self).member, "__signature__"));
    const Reference parameters(whole ? PyObject_GetAttrString(whole.get(), "parameters") : nullptr);
    const Reference values(parameters ? PyObject_CallMethod(parameters.get(), "values", nullptr) : nullptr);
    const Reference list(values ? PySequence_List(values.get()) : nullptr);
    if (!list || PyList_SetSlice(list.get(), 0, 1, nullptr) < 0)
        return nullptr;
    const Reference none(PyTuple_New(0));
    const Reference named(Py_BuildValue("{sO}", "parameters", list.get()));
    const Reference replace(PyObject_GetAttrString(whole.get(), "replace"));
    return none && named && replace ? PyObject_Call(replace.get(), none.get(), named.get()) : nullptr;
}

PyObject* describeBound(PyObject* self) {
    const Reference name(PyObject_GetAttrString(self, "__name__"));
    return name ? PyUnicode_FromFormat("<member %S of %R>", name.get(), boundOf(self).target) : nullptr;
}

PyObject* compareBound(PyObject* self, PyObject* other, int operation) {
    if (Py_TYPE(other) != boundType || (operation != Py_EQ && operation != Py_NE)) {
        Py_INCREF(Py_NotImplemented);
        return Py_NotImplemented;
    }
    const bool same = boundOf(self).number == boundOf(other).number &&
                      bodyOf(boundOf(self).target).object == bodyOf(boundOf(other).target).object;
    return PyBool_FromLong(same == (operation == Py_EQ));
}

Py_hash_t hashBound(PyObject* self) {
    const auto address = reinterpret_cast<std::uintptr_t>(bodyOf(boundOf(self).target).object);
    const auto mixed = static_cast<Py_hash_t>(address >> 4) ^ boundOf(self).number;
    return mixed == -1 ? -2 : mixed;
}

// ---- Object ----

PyObject* refuseNew(PyTypeObject*, PyObject*, PyObject*) {
    PyErr_SetString(PyExc_TypeError, "objects are created by vlgs.Dispatch");
    return nullptr;
}

void endObject(PyObject* self) {
    ObjectBody& body = bodyOf(self);
    if (body.apartment)
        body.apartment->drop(body.object);
    body.apartment.~shared_ptr();
    freeWithType(self);
}

PyObject* readMember(PyObject* self, const Known& known) {
    if (known.direct)
        return invoke(self, known.number, reading, {});
    return guarded([&] { return bind(self, known.member.get(), known.number); });
}

PyObject* readOther(PyObject* self, PyObject* name) {
    PyObject* const found = PyObject_GenericGetAttr(self, name);
    if (found || !PyErr_ExceptionMatches(PyExc_AttributeError))
        return found;
    PyErr_Clear();
    if (const Known* known = guarded([&] { return bodyOf(self).facts->ask(name); }))
        return readMember(self, *known);
    return PyErr_Occurred() ? nullptr : PyObject_CallFunctionObjArgs(hooks.readUnknown, self, name, nullptr);
}

PyObject* readAttribute(PyObject* self, PyObject* name) {
    if (const Known* known = bodyOf(self).facts->find(name))
        return readMember(self, *known);
    const bool isPythons = PyUnicode_ReadChar(name, 0) == '_';
    PyErr_Clear(); // of an empty name
    if (isPythons)
        return readOther(self, name);
    if (const Known* known = guarded([&] { return bodyOf(self).facts->ask(name); }))
        return readMember(self, *known);
    return PyErr_Occurred() ? nullptr : readOther(self, name);
}

int writeAttribute(PyObject* self, PyObject* name, PyObject* value) {
    if (!value)
        return PyObject_GenericSetAttr(self, name, value);
    if (const Known* known = bodyOf(self).facts->find(name))
        return write(self, known->number, {&value, 1, nullptr}) ? 0 : -1;
    const Reference done(PyObject_CallFunctionObjArgs(hooks.writeAttribute, self, name, value, nullptr));
    return done ? 0 : -1;
}

PyObject* callObject(PyObject* self, PyObject* arguments, PyObject* named) {
    return invokeWith(self, VLGS_DEFAULT_MEMBER, reading, arguments, named);
}

PyObject* readObjectAt(PyObject* self, PyObject* index) {
    return readAt(self, VLGS_DEFAULT_MEMBER, index);
}

int writeObjectAt(PyObject* self, PyObject* index, PyObject* value) {
    return writeAt(self, VLGS_DEFAULT_MEMBER, index, value);
}

PyObject* compareObjects(PyObject* self, PyObject* other, int operation) {
    if (!isObject(other) || (operation != Py_EQ && operation != Py_NE)) {
        Py_INCREF(Py_NotImplemented);
        return Py_NotImplemented;
    }
    return PyBool_FromLong((bodyOf(self).object == bodyOf(other).object) == (operation == Py_EQ));
}

Py_hash_t hashObject(PyObject* self) {
    return static_cast<Py_hash_t>(reinterpret_cast<std::uintptr_t>(bodyOf(self).object) >> 1);
}

std::unordered_map<const vlgs_class*, std::unique_ptr<ClassFacts>>& allClasses() {
    static auto* const classes = new std::unordered_map<const vlgs_class*, std::unique_ptr<ClassFacts>>;
    return *classes;
}

ClassFacts* factsOf(const vlgs_class* cls) {
    const auto found = allClasses().find(cls);
    if (found != allClasses().end())
        return found->second.get();
    PyObject* const type = PyObject_CallFunction(hooks.classFor, "n", reinterpret_cast<Py_ssize_t>(cls));
    if (!type)
        return nullptr;
    // Another thread may have been here meanwhile: the first one's stays, objects hold it.
    return allClasses().try_emplace(cls, std::make_unique<ClassFacts>(type)).first->second.get();
}

// ---- Iterator ----

// The members as they were when the iteration began.
struct IteratorBody {
    PyObject ob_base;
    PyObject* target;
    std::vector<vlgs_value> items;
    std::size_t next;
    std::int32_t counting;
    std::int32_t count;
};

IteratorBody& iteratorOf(PyObject* object) {
    return *reinterpret_cast<IteratorBody*>(object);
}

void clearItems(std::vector<vlgs_value>& items) {
    if (!items.empty())
        library.clear(items.data(), items.size());
    items.clear();
}

void endIterator(PyObject* self) {
    IteratorBody& body = iteratorOf(self);
    for (vlgs_value& item : body.items) // objects end on their thread
        if (item.type == VLGS_OBJECT && item.as.object)
            bodyOf(body.target).apartment->drop(std::exchange(item.as.object, nullptr));
    clearItems(body.items);
    body.items.~vector();
    Py_CLEAR(body.target);
    freeWithType(self);
}

bool readCount(PyObject* target, std::int32_t counting, std::int32_t& count) {
    count = 0;
    if (counting == VLGS_UNKNOWN_MEMBER)
        return true;
    vlgs_value value{};
    if (!succeeded(library.invoke(bodyOf(target).object, counting, reading, nullptr, 0, nullptr, 0, &value)))
        return false;
    count = value.as.number;
    library.clear(&value, 1);
    return true;
}

PyObject* nextOf(PyObject* self) {
    IteratorBody& body = iteratorOf(self);
    if (!used(body.target))
        return nullptr;
    const Inside inside(apartmentOf(body.target));
    std::int32_t count = 0;
    if (!readCount(body.target, body.counting, count))
        return nullptr;
    if (count != body.count)
        return PyErr_Format(PyExc_RuntimeError, "the collection changed while it was iterated over");
    if (body.next == body.items.size()) {
        clearItems(body.items);
        body.next = 0;
        return nullptr;
    }
    vlgs_value item = std::exchange(body.items[body.next++], vlgs_value{});
    PyObject* const taken = guarded([&] { return take(item); });
    if (item.type >= VLGS_TEXT)
        library.clear(&item, 1);
    return taken;
}

PyObject* iteratorItself(PyObject* self) {
    Py_INCREF(self);
    return self;
}

// ---- The types ----

// The bit is the same in all versions of Python that this runs on; the stable interface names it from 3.12
// on.
constexpr unsigned long haveVectorcall = 1UL << 11;

PyTypeObject* makeType(PyType_Slot* slots, const char* name, std::size_t size, unsigned long flags) {
    PyType_Spec layout{name, static_cast<int>(size), 0, static_cast<unsigned>(Py_TPFLAGS_DEFAULT | flags),
                       slots};
    return reinterpret_cast<PyTypeObject*>(PyType_FromSpec(&layout));
}

PyTypeObject* makeObjectType() {
    PyType_Slot slots[] = {{Py_tp_new, slot(refuseNew)},
                           {Py_tp_dealloc, slot(endObject)},
                           {Py_tp_getattro, slot(readAttribute)},
                           {Py_tp_setattro, slot(writeAttribute)},
                           {Py_tp_call, slot(callObject)},
                           {Py_mp_subscript, slot(readObjectAt)},
                           {Py_mp_ass_subscript, slot(writeObjectAt)},
                           {Py_tp_richcompare, slot(compareObjects)},
                           {Py_tp_hash, slot(hashObject)},
                           {0, nullptr}};
    return makeType(slots, "vlgs._native.Object", sizeof(ObjectBody), Py_TPFLAGS_BASETYPE);
}

PyTypeObject* makeBoundType() {
    static char name[] = "__name__";
    static char doc[] = "__doc__";
    static char signature[] = "__signature__";
    static PyGetSetDef attributes[] = {{name, memberAttribute, nullptr, nullptr, name},
                                       {doc, memberAttribute, nullptr, nullptr, doc},
                                       {signature, boundSignature, nullptr, nullptr, nullptr},
                                       {nullptr, nullptr, nullptr, nullptr, nullptr}};
    static PyMemberDef members[] = {
        {"__vectorcalloffset__", T_PYSSIZET, offsetof(BoundBody, call), READONLY, nullptr},
        {"__self__", T_OBJECT_EX, offsetof(BoundBody, target), READONLY, nullptr},
        {"__func__", T_OBJECT_EX, offsetof(BoundBody, member), READONLY, nullptr},
        {nullptr, 0, 0, 0, nullptr}};
    PyType_Slot slots[] = {{Py_tp_new, slot(newBound)},
                           {Py_tp_dealloc, slot(endBound)},
                           {Py_tp_call, slot(callBoundWith)},
                           {Py_tp_getset, attributes},
                           {Py_tp_members, members},
                           {Py_tp_descr_get, slot(boundItself)},
                           {Py_mp_subscript, slot(readBoundAt)},
                           {Py_mp_ass_subscript, slot(writeBoundAt)},
                           {Py_tp_repr, slot(describeBound)},
                           {Py_tp_richcompare, slot(compareBound)},
                           {Py_tp_hash, slot(hashBound)},
                           {0, nullptr}};
    return makeType(slots, "vlgs._native.Bound", sizeof(BoundBody), haveVectorcall);
}

PyTypeObject* makeIteratorType() {
    PyType_Slot slots[] = {{Py_tp_new, slot(refuseNew)},
                           {Py_tp_dealloc, slot(endIterator)},
                           {Py_tp_iter, slot(iteratorItself)},
                           {Py_tp_iternext, slot(nextOf)},
                           {0, nullptr}};
    return makeType(slots, "vlgs._native.Iterator", sizeof(IteratorBody), 0);
}

} // namespace

bool addTypes(PyObject* module) {
    objectType = makeObjectType();
    boundType = objectType ? makeBoundType() : nullptr;
    iteratorType = boundType ? makeIteratorType() : nullptr;
    return iteratorType && PyObject_SetAttrString(module, "Object", asObject(objectType)) == 0 &&
           PyObject_SetAttrString(module, "Bound", asObject(boundType)) == 0;
}

void forget() {
    for (const auto& [cls, facts] : allClasses())
        if (facts)
            facts->forget();
}

bool isObject(PyObject* value) {
    return PyObject_TypeCheck(value, objectType);
}

vlgs_object* used(PyObject* object) {
    const ObjectBody& body = bodyOf(object);
    if (body.apartment.get() == Apartment::ofThisThread().get()) [[likely]]
        return body.object;
    raiseRunTime(wrongThread);
    return nullptr;
}

Apartment& apartmentOf(PyObject* object) {
    return *bodyOf(object).apartment;
}

PyObject* wrap(vlgs_object* object) {
    ClassFacts* const facts = factsOf(library.classOf(object));
    PyObject* const made =
        facts ? reinterpret_cast<allocfunc>(PyType_GetSlot(facts->type(), Py_tp_alloc))(facts->type(), 0)
              : nullptr;
    if (!made) {
        library.release(object);
        return nullptr;
    }
    ObjectBody& body = bodyOf(made);
    body.object = object;
    body.facts = facts;
    new (&body.apartment) std::shared_ptr<Apartment>(Apartment::ofThisThread());
    return made;
}

namespace {

bool keepItems(vlgs_object* object, std::vector<vlgs_value>& items) {
    Values enumerator(1);
    enumerator[0].type = VLGS_OBJECT;
    if (!succeeded(library.enumerate(object, &enumerator[0].as.object)))
        return false;
    for (;;) {
        Values item(1);
        int more = 0;
        if (!succeeded(library.next(enumerator[0].as.object, item.data(), &more)))
            return false;
        if (!more)
            return true;
        items.push_back(item[0]);
        item[0] = {};
    }
}

} // namespace

PyObject* iterate(PyObject* target, std::int32_t counting) {
    vlgs_object* const object = used(target);
    if (!object)
        return nullptr;
    const Inside inside(apartmentOf(target));
    PyObject* const made =
        reinterpret_cast<allocfunc>(PyType_GetSlot(iteratorType, Py_tp_alloc))(iteratorType, 0);
    if (!made)
        return nullptr;
    Reference owned(made);
    IteratorBody& body = iteratorOf(made);
    Py_INCREF(target);
    body.target = target;
    new (&body.items) std::vector<vlgs_value>;
    body.counting = counting;
    const bool done =
        guarded([&] { return readCount(target, counting, body.count) && keepItems(object, body.items); });
    return done ? owned.release() : nullptr;
}

namespace {

int appendTo(void* list, vlgs_value* values, std::size_t count) {
    const bool done = guarded([&] {
        for (std::size_t i = 0; i < count; ++i) {
            const Reference taken(take(values[i]));
            if (!taken || PyList_Append(static_cast<PyObject*>(list), taken.get()) < 0)
                return false;
        }
        return true;
    });
    return done ? VLGS_DONE : VLGS_RAISED;
}

} // namespace

PyObject* readEach(PyObject* target, const char* name) {
    vlgs_object* const object = used(target);
    if (!object)
        return nullptr;
    const Inside inside(apartmentOf(target));
    Reference list(PyList_New(0));
    if (!list)
        return nullptr;
    const int status = library.readEach(object, name, appendTo, list.get());
    return !PyErr_Occurred() && succeeded(status) ? list.release() : nullptr;
}

} // namespace vlgs::python
