# SPDX-License-Identifier: MIT
"""Objects of the library as Python objects, one Python class for each class that is described."""

import collections
import ctypes
import difflib
import inspect
import threading
from ctypes import byref, c_char_p, c_int, c_int32, c_void_p

from . import _types, _values
from ._errors import NoSuchMember, check, run_time_error
from ._library import (
    DEFAULT_MEMBER,
    GET,
    METHOD,
    PUT,
    PUTREF,
    UNKNOWN_MEMBER,
    ClassFacts,
    ErrorCondition,
    Member,
    Parameter,
    Type,
    Value,
    library,
    name_of,
    warn_of_unknown_settings,
)

_READ = METHOD | GET
_WRONG_THREAD = -2147417842


class _Apartment:
    """What belongs to one thread.

    Its objects count their references without any lock, so only one thread works with them at a time: the
    owner, within `entered`, or whoever drops a last reference while the owner is elsewhere or has ended. What
    is dropped while the owner is inside waits in `dropped` and is released as the owner leaves."""

    def __init__(self):
        self.entered = threading.RLock()
        self.dropped = collections.deque()

    def release_dropped(self):
        while self.dropped:
            if not self.entered.acquire(blocking=False):
                return  # who is inside does it on leaving
            try:
                while self.dropped:
                    library.vlgs_release(self.dropped.popleft())
            finally:
                self.entered.release()

    def __enter__(self):
        self.entered.acquire()

    def __exit__(self, *_):
        self.entered.release()
        if self.dropped:
            self.release_dropped()


_threads = threading.local()


def _apartment():
    try:
        apartment = _threads.apartment
    except AttributeError:
        apartment = _threads.apartment = _Apartment()
    return apartment


class _Handle:
    """A counted reference to a native object, used on the thread that made it."""

    __slots__ = ("pointer", "apartment")

    def __init__(self, pointer):
        self.pointer = pointer
        self.apartment = _apartment()

    def __del__(self, release=library.vlgs_release, threads=_threads):
        if getattr(threads, "apartment", None) is self.apartment:
            release(self.pointer)
        else:
            self.apartment.dropped.append(self.pointer)
            self.apartment.release_dropped()

    def use(self):
        if _apartment() is not self.apartment:
            raise run_time_error(_WRONG_THREAD)
        return self.pointer


def _invoke(target, member, kind, arguments, named=None):
    pointer = target._handle.use()
    with target._handle.apartment:
        return _invoke_inside(pointer, member, kind, arguments, named)


def _invoke_inside(pointer, member, kind, arguments, named):
    result = Value()
    if not arguments and not named:
        check(library.vlgs_invoke(pointer, member, kind, None, 0, None, 0, byref(result)))
        return _take_result(result)
    names = None
    given = list(arguments)
    if named:
        names = (c_char_p * len(named))(*map(name_of, named))
        given.extend(named.values())
    natives = (Value * len(given))()
    try:
        for native, value in zip(natives, given):
            _values.put(value, native)
        status = library.vlgs_invoke(
            pointer, member, kind, natives, len(given), names, len(named or ()), byref(result)
        )
        for native, value in zip(natives, given):
            if isinstance(value, _types.ByRef):
                value.value = _values.take(native)
        check(status)
    finally:
        library.vlgs_clear(natives, len(given))
    return _take_result(result)


def _take_result(result):
    # Plain values own nothing and need no clearing.
    if result.type < _types.TEXT:
        return _values.take(result) if result.type != _types.EMPTY else _types.Empty
    try:
        return _values.take(result)
    finally:
        library.vlgs_clear(byref(result), 1)


def _write(target, member, arguments):
    """Writes a property; its value is the last argument."""
    kind = PUTREF if isinstance(arguments[-1], Object) or arguments[-1] is None else PUT
    _invoke(target, member, kind, arguments)


class Object:
    """An object of the library. Members are found by name in any case:

    obj.Property             reads a property without parameters
    obj.Property = value     writes one
    obj.Method(a, sName=b)   calls a method or reads a property with parameters
    obj.Property[a] = value  writes a property with parameters
    obj(a), obj[a]           the default member
    len(obj), iter(obj)      the members of a collection
    a == b                   whether both are the same object
    """

    __slots__ = ("_handle",)
    _members = {}
    _shown = ()

    def __init__(self):
        raise TypeError("objects are created by vlgs.Dispatch")

    def _member(self, name):
        """The canonical name of a member, or None."""
        found = self._members.get(name)
        if found is None:
            found = self._members.get(name.lower())
        return found

    def __getattr__(self, name):
        if name.startswith("__") or name == "_handle":
            raise AttributeError(name)
        known = self._member(name)
        if known is not None:
            return getattr(self, known)
        return _Parameterised(self, name, _id_of(self, name))

    def __setattr__(self, name, value):
        known = self._member(name)
        if known is None:
            _write(self, _id_of(self, name), (value,))
        else:
            _write(self, getattr(type(self), known)._vlgs_id, (value,))

    def __call__(self, *arguments, **named):
        return _invoke(self, DEFAULT_MEMBER, _READ, arguments, named)

    def __getitem__(self, index):
        return _invoke(self, DEFAULT_MEMBER, _READ, index if isinstance(index, tuple) else (index,))

    def __setitem__(self, index, value):
        _write(self, DEFAULT_MEMBER, (*index, value) if isinstance(index, tuple) else (index, value))

    def __len__(self):
        try:
            return _invoke(self, _id_of(self, "Count"), _READ, ())
        except NoSuchMember:
            raise run_time_error(451, type(self).__name__) from None

    def __bool__(self):
        return True  # no object is None, so an object is one however many members it has

    def __iter__(self):
        """Goes over the members; a collection that changes meanwhile raises RuntimeError."""
        enumerator = c_void_p()
        pointer = self._handle.use()
        with self._handle.apartment:
            check(library.vlgs_enumerate(pointer, byref(enumerator)))
        return _items(self, _Handle(enumerator.value))

    def __reversed__(self):
        return reversed(list(self))

    def __copy__(self):
        raise TypeError(f"{type(self).__name__} has no copy; documents have Clone")

    def __eq__(self, other):
        if not isinstance(other, Object):
            return NotImplemented
        return self._handle.pointer == other._handle.pointer

    def __hash__(self):
        return hash(self._handle.pointer)

    def __dir__(self):
        return [name for name in object.__dir__(self) if name.startswith("__")] + list(self._shown)

    def __repr__(self):
        return f"<{type(self)._progid} at {self._handle.pointer:#x}>"

    _progid = "vlgs.Object"


def _items(collection, enumerator):
    item, more = Value(), c_int()
    count = len(collection) if collection._member("Count") else None
    while True:
        if count is not None and len(collection) != count:
            raise RuntimeError(f"{type(collection).__name__} changed while it was iterated over")
        pointer = enumerator.use()
        with enumerator.apartment:
            check(library.vlgs_next(pointer, byref(item), byref(more)))
            if not more.value:
                return
            taken = _take_result(item)
        yield taken


def _id_of(target, name):
    number = c_int32()
    pointer = target._handle.use()
    with target._handle.apartment:
        check(library.vlgs_id_of(pointer, name_of(name), byref(number)))
    if number.value == UNKNOWN_MEMBER:
        near = difflib.get_close_matches(name.lower(), target._members, 1)
        hint = f"; did you mean {target._members[near[0]]}?" if near else ""
        error = run_time_error(438, f"{name} of {type(target).__name__}{hint}")
        error.name, error.obj = name, target
        raise error
    return number.value


# A property with parameters, or a member that nothing is known of, of one object.
class _Parameterised:
    __slots__ = ("_target", "_id", "__name__", "__doc__")

    def __init__(self, target, name, number, doc=None):
        self._target = target
        self._id = number
        self.__name__ = name
        self.__doc__ = doc

    def __call__(self, *arguments, **named):
        return _invoke(self._target, self._id, _READ, arguments, named)

    def __getitem__(self, index):
        return _invoke(self._target, self._id, _READ, index if isinstance(index, tuple) else (index,))

    def __setitem__(self, index, value):
        _write(self._target, self._id, (*index, value) if isinstance(index, tuple) else (index, value))

    def __repr__(self):
        return f"<member {self.__name__} of {self._target!r}>"


# ---- Python classes from descriptions -------------------------------------------------------------------


class _Property(property):
    """A property without parameters as an attribute of the Python class. Being one of Python's own, it is not
    read by completion."""

    def __init__(self, number, doc):
        super().__init__(doc=doc)
        self._vlgs_id = number
        self.__doc__ = doc

    def __get__(self, target, owner=None):
        if target is None:
            return self
        return _invoke(target, self._vlgs_id, _READ, ())

    def __set__(self, target, value):
        _write(target, self._vlgs_id, (value,))


class _PropertyWithParameters(_Property):
    def __init__(self, name, number, doc):
        super().__init__(number, doc)
        self._name = name

    def __get__(self, target, owner=None):
        if target is None:
            return self
        return _Parameterised(target, self._name, self._vlgs_id, self.__doc__)


def _method(name, number, doc, signature):
    def method(self, *arguments, **named):
        return _invoke(self, number, _READ, arguments, named)

    method.__name__ = method.__qualname__ = name
    method.__doc__ = doc
    method.__signature__ = signature
    method._vlgs_id = number
    return method


_TYPE_NAMES = {
    0: "None",
    2: "Integer",
    3: "Long",
    4: "Single",
    5: "Double",
    6: "Currency",
    7: "Date",
    8: "String",
    9: "Object",
    11: "Boolean",
    12: "Variant",
    14: "Decimal",
    17: "Byte",
}


class _Named:
    """The name of a type, shown in a signature as it is."""

    def __init__(self, type_):
        name = type_.name.decode() if type_.name else _TYPE_NAMES.get(type_.type & 0xFFF, "Variant")
        self.name = name + "()" * bool(type_.type & _types.ARRAY) + " ByRef" * bool(type_.by_reference)

    def __repr__(self):
        return self.name


class _Default(_Named):
    def __init__(self, parameter):
        if parameter.standard_type == _types.LONG:
            self.name = str(parameter.standard_number)
        elif parameter.standard_type == _types.TEXT:
            text = ctypes.string_at(parameter.standard_text, parameter.standard_length * 2)
            self.name = repr(text.decode("utf-16-le", "surrogatepass"))
        else:
            self.name = "Missing"


def _parameters(cls, row, member):
    for index in range(member.parameter_count):
        parameter = Parameter()
        library.vlgs_parameter_describe(cls, row, index, byref(parameter))
        yield inspect.Parameter(
            parameter.name.decode(),
            inspect.Parameter.POSITIONAL_OR_KEYWORD,
            annotation=_Named(parameter.type),
            default=_Default(parameter) if parameter.optional else inspect.Parameter.empty,
        )


def _signature(cls, row, member):
    parameters = list(_parameters(cls, row, member))
    # A required parameter behind an optional one is more than Python's own signatures allow.
    required = False
    for index in range(len(parameters) - 1, -1, -1):
        if required:
            parameters[index] = parameters[index].replace(default=inspect.Parameter.empty)
        required = required or parameters[index].default is inspect.Parameter.empty
    self = inspect.Parameter("self", inspect.Parameter.POSITIONAL_OR_KEYWORD)
    return inspect.Signature([self, *parameters], return_annotation=_Named(member.result))


def _contract(cls, rows):
    """What a member does, what its parameters mean and what it raises when."""
    text = [rows[0][1].help.decode()]
    meanings = {}
    for row, member in rows:
        for index in range(member.parameter_count):
            parameter = Parameter()
            library.vlgs_parameter_describe(cls, row, index, byref(parameter))
            if parameter.meaning:
                meanings.setdefault(parameter.name.decode(), parameter.meaning.decode())
    if meanings:
        text.append("\n".join(f"{name}: {meaning}" for name, meaning in meanings.items()))
    row, member = rows[0]
    raised = []
    for index in range(member.error_count):
        error = ErrorCondition()
        library.vlgs_error_describe(cls, row, index, byref(error))
        raised.append(f"Raises {error.code} when {error.when.decode()}.")
    if raised:
        text.append("\n".join(raised))
    if member.example:
        text.append(f"$ vlgs call {member.example.decode()}\n{member.example_output.decode()}")
    return "\n\n".join(text)


def _attribute(name, rows, cls):
    """The attribute for the rows of one member: its method, or the ways of reading and writing it."""
    index, member = rows[0]
    number = member.id
    text = _contract(cls, sorted(rows, key=lambda each: each[1].kind != GET))
    kinds = 0
    for _, each in rows:
        kinds |= each.kind
    if kinds & METHOD:
        return _method(name, number, text, _signature(cls, index, member))
    reading = [(row, each) for row, each in rows if each.kind == GET]
    row, shown = reading[0] if reading else rows[0]
    arguments = list(_signature(cls, row, shown).parameters.values())[1:]
    if not reading:
        arguments = arguments[:-1]
    access = "read/write" if kinds & GET and kinds & (PUT | PUTREF) else "read-only" if reading else "write-only"
    type_ = _Named(shown.result) if reading else ""
    if not arguments:
        return _Property(number, f"{type_} ({access}). {text}".lstrip())
    listed = ", ".join(str(argument) for argument in arguments)
    return _PropertyWithParameters(name, number, f"({listed}) -> {type_} ({access}). {text}")


_python_classes = {}


def _python_class(cls):
    """The Python class for a native one."""
    found = _python_classes.get(cls)
    if found is None:
        found = _python_classes[cls] = _make_class(cls) if cls else Object
    return found


def _make_class(cls):
    facts = ClassFacts()
    library.vlgs_class_describe(cls, byref(facts))
    rows = collections.OrderedDict()
    for index in range(facts.member_count):
        member = Member()
        library.vlgs_member_describe(cls, index, byref(member))
        rows.setdefault(member.name.decode(), []).append((index, member))
    name = facts.name.decode()
    base = _protocols.get(name, Object)
    help_text = facts.help.decode()
    attributes = {
        "__slots__": (),
        "__module__": "vlgs",
        "__doc__": help_text if base is Object else f"{help_text}\n\n{base.__doc__}",
        "_progid": f"{facts.library.decode()}.{name}",
        "_members": {each.lower(): each for each in rows},
        "_shown": [each for each, found in rows.items() if not found[0][1].hidden],
        "_native": cls,
    }
    for each, found in rows.items():
        attributes[each] = _attribute(each, found, cls)
    return type(name, (base,), attributes)


_protocols = {}


def with_protocols(kind):
    """Makes the Python class of the native class of that name a subclass of this one."""
    _protocols[kind.__name__] = kind
    return kind


def wrap(pointer):
    """The Python object for a counted reference, which it takes over."""
    python_class = _python_class(library.vlgs_class_of(pointer))
    wrapped = object.__new__(python_class)
    object.__setattr__(wrapped, "_handle", _Handle(pointer))
    return wrapped


def _put_object(value, slot):
    pointer = value._handle.use()
    library.vlgs_retain(pointer)
    slot.object = pointer
    slot.type = _types.OBJECT


def _take_object(slot):
    pointer = slot.object
    if not pointer:
        return None
    library.vlgs_retain(pointer)
    return wrap(pointer)


def _put_dict(value, slot):
    dictionary = Dispatch("Scripting.Dictionary")
    for key, item in value.items():
        dictionary.Add(key, item)
    _put_object(dictionary, slot)


_values.register(Object, _put_object)
_values.register(dict, _put_dict)
_values.register_reader(_types.OBJECT, _take_object)


def Dispatch(progid):
    """Creates an object: Dispatch("VlGeneralServices.Files"). Raises 429 for a name that no class has and
    for a class that is only made by others."""
    warn_of_unknown_settings()
    pointer = c_void_p()
    check(library.vlgs_create(name_of(progid), byref(pointer)))
    return wrap(pointer.value)
