# SPDX-License-Identifier: MIT
# mypy: ignore-errors
"""The library's C interface (vlgs.h) through ctypes, for where the compiled extension was not built. What it offers
stands in _core."""

import collections
import ctypes
import itertools
import threading
from ctypes import (
    CFUNCTYPE,
    POINTER,
    Structure,
    Union,
    byref,
    c_char_p,
    c_double,
    c_float,
    c_int,
    c_int16,
    c_int32,
    c_int64,
    c_size_t,
    c_uint8,
    c_uint16,
    c_uint32,
    c_uint64,
    c_void_p,
)

from . import _library
from ._types import (
    ARRAY,
    BOOLEAN,
    BYTE,
    CURRENCY,
    DATE,
    DECIMAL,
    DOUBLE,
    EMPTY,
    ERROR,
    INTEGER,
    LONG,
    NULL,
    OBJECT,
    RECORD,
    SINGLE,
    TEXT,
    VARIANT,
    ByRef,
    Empty,
    Null,
)

_METHOD, _GET, _PUT, _PUTREF = 1, 2, 4, 8
_READ = _METHOD | _GET
_DEFAULT_MEMBER, _UNKNOWN_MEMBER = 0, -1
_WRONG_THREAD = -2147417842
_CHUNK = 4096


class _Content(Union):
    _fields_ = [
        ("integer", c_int16),
        ("number", c_int32),
        ("byte", c_uint8),
        ("boolean", c_uint8),
        ("single", c_float),
        ("real", c_double),
        ("currency", c_int64),
        ("low", c_uint64),
        ("object", c_void_p),
        ("shared", c_void_p),
    ]


class Value(Structure):
    """vlgs_value"""

    _anonymous_ = ("content",)
    _fields_ = [
        ("type", c_uint16),
        ("scale", c_uint8),
        ("sign", c_uint8),
        ("high", c_uint32),
        ("content", _Content),
    ]


class Dimension(Structure):
    _fields_ = [("lower", c_int32), ("count", c_int32)]


class RaisedError(Structure):
    _fields_ = [
        ("number", c_int32),
        ("source", c_void_p),
        ("source_length", c_size_t),
        ("description", c_void_p),
        ("description_length", c_size_t),
    ]


class ClassFacts(Structure):
    _fields_ = [
        ("library", c_char_p),
        ("name", c_char_p),
        ("help", c_char_p),
        ("event_interface", c_char_p),
        ("creatable", c_int),
        ("member_count", c_size_t),
        ("event_count", c_size_t),
    ]


class Type(Structure):
    _fields_ = [
        ("type", c_uint16),
        ("by_reference", c_uint8),
        ("enumerator", c_uint8),
        ("name", c_char_p),
    ]


class Member(Structure):
    _fields_ = [
        ("name", c_char_p),
        ("help", c_char_p),
        ("id", c_int32),
        ("kind", c_uint32),
        ("hidden", c_int),
        ("parameter_count", c_size_t),
        ("result", Type),
        ("error_count", c_size_t),
        ("example", c_char_p),
        ("example_output", c_char_p),
    ]


class Parameter(Structure):
    _fields_ = [
        ("name", c_char_p),
        ("meaning", c_char_p),
        ("type", Type),
        ("optional", c_int),
        ("default_type", c_uint16),
        ("default_number", c_int32),
        ("default_text", c_void_p),
        ("default_length", c_size_t),
    ]


class ErrorCondition(Structure):
    _fields_ = [("code", c_int32), ("when", c_char_p)]


class Constant(Structure):
    _fields_ = [("enumeration", c_char_p), ("name", c_char_p), ("value", c_int32)]


class Client(Structure):
    _fields_ = [
        ("id_of", CFUNCTYPE(c_int, c_void_p, c_char_p, POINTER(c_int32))),
        (
            "invoke",
            CFUNCTYPE(c_int, c_void_p, c_int32, c_uint32, POINTER(Value), c_size_t, POINTER(Value)),
        ),
        ("release", CFUNCTYPE(None, c_void_p)),
    ]


_VISIT = CFUNCTYPE(c_int, c_void_p, POINTER(Value), c_size_t)

_FUNCTIONS = {
    "vlgs_version": (c_char_p,),
    "vlgs_unknown_settings": (c_char_p,),
    "vlgs_last_error": (POINTER(RaisedError),),
    "vlgs_set_error": (None, c_int32, c_char_p, c_size_t, c_char_p, c_size_t),
    "vlgs_clear": (None, POINTER(Value), c_size_t),
    "vlgs_change_type": (c_int, POINTER(Value), c_uint16),
    "vlgs_text_new": (c_int, c_char_p, c_size_t, POINTER(Value)),
    "vlgs_text": (c_int, POINTER(Value), c_void_p, c_size_t, POINTER(c_size_t)),
    "vlgs_array_new": (c_int, c_uint16, POINTER(Dimension), c_size_t, POINTER(Value)),
    "vlgs_array_shape": (c_int, POINTER(Value), POINTER(POINTER(Dimension)), POINTER(c_size_t)),
    "vlgs_array_read": (c_int, POINTER(Value), c_size_t, c_size_t, POINTER(Value)),
    "vlgs_array_write": (c_int, POINTER(Value), c_size_t, c_size_t, POINTER(Value)),
    "vlgs_bytes_new": (c_int, c_char_p, c_size_t, POINTER(Value)),
    "vlgs_bytes": (c_int, POINTER(Value), POINTER(c_void_p), POINTER(c_size_t)),
    "vlgs_record_new": (c_int, c_char_p, POINTER(c_char_p), POINTER(Value), c_size_t, POINTER(Value)),
    "vlgs_record": (c_int, POINTER(Value), POINTER(c_char_p), POINTER(c_size_t)),
    "vlgs_record_field": (c_int, POINTER(Value), c_size_t, POINTER(c_char_p), POINTER(Value)),
    "vlgs_create": (c_int, c_char_p, POINTER(c_void_p)),
    "vlgs_retain": (None, c_void_p),
    "vlgs_release": (None, c_void_p),
    "vlgs_id_of": (c_int, c_void_p, c_char_p, POINTER(c_int32)),
    "vlgs_invoke": (
        c_int,
        c_void_p,
        c_int32,
        c_uint32,
        POINTER(Value),
        c_size_t,
        POINTER(c_char_p),
        c_size_t,
        POINTER(Value),
    ),
    "vlgs_enumerate": (c_int, c_void_p, POINTER(c_void_p)),
    "vlgs_next": (c_int, c_void_p, POINTER(Value), POINTER(c_int)),
    "vlgs_read_each": (c_int, c_void_p, c_char_p, _VISIT, c_void_p),
    "vlgs_changes": (c_int, c_void_p, POINTER(c_uint64)),
    "vlgs_object_new": (c_int, POINTER(Client), c_void_p, POINTER(c_void_p)),
    "vlgs_connect": (c_int, c_void_p, c_void_p, POINTER(c_int32)),
    "vlgs_disconnect": (c_int, c_void_p, c_int32),
    "vlgs_class_at": (c_void_p, c_size_t),
    "vlgs_class_of": (c_void_p, c_void_p),
    "vlgs_class_describe": (None, c_void_p, POINTER(ClassFacts)),
    "vlgs_member_describe": (c_int, c_void_p, c_size_t, POINTER(Member)),
    "vlgs_error_describe": (c_int, c_void_p, c_size_t, c_size_t, POINTER(ErrorCondition)),
    "vlgs_parameter_describe": (c_int, c_void_p, c_size_t, c_size_t, POINTER(Parameter)),
    "vlgs_constant_describe": (c_int, c_size_t, POINTER(Constant)),
}


def _open(path):
    opened = ctypes.CDLL(path)
    for name, (result, *arguments) in _FUNCTIONS.items():
        try:
            function = getattr(opened, name)
        except AttributeError:
            raise OSError("the library is of another version") from None
        function.restype = result
        function.argtypes = arguments
    return opened


_native = _library.load(_open)


class _Hooks:
    """The functions of the package that are called back, by name."""


_hooks = _Hooks()


def configure(hooks):
    _hooks.__dict__.update(hooks)


def forget():
    """Nothing is remembered here."""


def _bytes(text):
    return text.encode("utf-8", "surrogatepass")


def _text(address, length):
    return ctypes.string_at(address, length).decode("utf-8", "surrogatepass") if length else ""


def _name(text):
    """A name as the C interface takes it. It would end at a NUL, which no name has: U+FFFD stands for that."""
    return _bytes(text.replace("\0", "\ufffd"))


def _check(status):
    """Raises what a function of the library left behind, unless it succeeded."""
    if status:
        error = _native.vlgs_last_error().contents
        raise _hooks.error_of(
            error.number,
            _text(error.source, error.source_length),
            _text(error.description, error.description_length),
        )


def version():
    return _native.vlgs_version().decode()


def unknown_settings():
    return _native.vlgs_unknown_settings().decode()


# ---- Values in ------------------------------------------------------------------------------------------


def _put_none(value, slot):
    slot.object = None
    slot.type = OBJECT


def _put_bool(value, slot):
    slot.boolean = value
    slot.type = BOOLEAN


def _put_int(value, slot):
    if -0x8000_0000 <= value <= 0x7FFF_FFFF:
        slot.number = value
        slot.type = LONG
    else:
        _put_form(_hooks.form_of(value), slot)


def _put_float(value, slot):
    slot.real = value
    slot.type = DOUBLE


def _put_text(value, slot):
    text = _bytes(value)
    _check(_native.vlgs_text_new(text, len(text), byref(slot)))


def _put_list(value, slot):
    _put_items(ARRAY + VARIANT, [(0, len(value))], list(value), slot)


def _put_items(code, bounds, items, slot):
    shape = (Dimension * len(bounds))(*bounds)
    _check(_native.vlgs_array_new(code & ~ARRAY, shape, len(bounds), byref(slot)))
    chunk = (Value * min(_CHUNK, len(items) or 1))()
    for start in range(0, len(items), _CHUNK):
        part = items[start : start + _CHUNK]
        try:
            for native, item in zip(chunk, part):
                _put(item, native)
            _check(_native.vlgs_array_write(byref(slot), start, len(part), chunk))
        finally:
            _native.vlgs_clear(chunk, len(chunk))


def _put_record(name, fields, items, slot):
    names = (c_char_p * len(fields))(*map(_name, fields))
    values = (Value * len(fields))()
    try:
        for native, item in zip(values, items):
            _put(item, native)
        _check(_native.vlgs_record_new(_name(name), names, values, len(fields), byref(slot)))
    finally:
        _native.vlgs_clear(values, len(fields))


def _put_object(target, slot):
    pointer = target._handle.use()
    _native.vlgs_retain(pointer)
    slot.object = pointer
    slot.type = OBJECT


_PLAIN = {
    LONG: "number",
    DOUBLE: "real",
    BOOLEAN: "boolean",
    DATE: "real",
    CURRENCY: "currency",
    ERROR: "number",
}


def _put_form(form, slot):
    """Writes what form_of tells into an empty value."""
    code, *parts = form
    if code in _PLAIN:
        setattr(slot, _PLAIN[code], parts[0])
        slot.type = code
    elif code == TEXT:
        _put_text(parts[0], slot)
    elif code == OBJECT:
        (_put_none if parts[0] is None else _put_object)(parts[0], slot)
    elif code == DECIMAL:
        slot.scale, slot.sign, slot.high, slot.low = parts
        slot.type = code
    elif code == RECORD:
        _put_record(*parts, slot)
    elif code == VARIANT:
        _put(parts[0], slot)
        if slot.type != parts[1]:
            _check(_native.vlgs_change_type(byref(slot), parts[1]))
    elif code in (EMPTY, NULL):
        slot.type = code
    elif len(parts) == 2:
        _put_items(code, *parts, slot)
    elif parts[0] is None:
        slot.shared = None
        slot.type = code
    else:
        _check(_native.vlgs_bytes_new(parts[0], len(parts[0]), byref(slot)))


_WRITERS = {
    type(None): _put_none,
    bool: _put_bool,
    int: _put_int,
    float: _put_float,
    str: _put_text,
    list: _put_list,
    tuple: _put_list,
}


def _put(value, slot):
    """Writes a Python value into an empty native one. The caller clears that, also after a failure."""
    writer = _WRITERS.get(type(value))
    if writer is not None:
        writer(value, slot)
    elif isinstance(value, Object):
        _put_object(value, slot)
    else:
        _put_form(_hooks.form_of(value), slot)


# ---- Values out -----------------------------------------------------------------------------------------


def _take_text(slot):
    length = c_size_t()
    buffer = ctypes.create_string_buffer(256)
    _check(_native.vlgs_text(byref(slot), buffer, 256, byref(length)))
    if length.value > 256:
        buffer = ctypes.create_string_buffer(length.value)
        _check(_native.vlgs_text(byref(slot), buffer, length.value, byref(length)))
    return ctypes.string_at(buffer, length.value).decode("utf-8", "surrogatepass")


def _take_bytes(slot):
    data, size = c_void_p(), c_size_t()
    _check(_native.vlgs_bytes(byref(slot), byref(data), byref(size)))
    return ctypes.string_at(data, size.value) if size.value else b""


def _take_array(slot):
    shape, rank = POINTER(Dimension)(), c_size_t()
    _check(_native.vlgs_array_shape(byref(slot), byref(shape), byref(rank)))
    bounds = [(shape[i].lower, shape[i].count) for i in range(rank.value)]
    if slot.type == ARRAY + BYTE and len(bounds) <= 1:
        return _take_bytes(slot)
    if not bounds:
        return _hooks.no_array(slot.type)
    count = 1
    for _, each in bounds:
        count *= each
    return _hooks.array_of(slot.type, bounds, _take_items(slot, count))


def _take_items(slot, count):
    items = []
    chunk = (Value * min(_CHUNK, count or 1))()
    for start in range(0, count, _CHUNK):
        size = min(_CHUNK, count - start)
        _check(_native.vlgs_array_read(byref(slot), start, size, chunk))
        try:
            for i in range(size):  # a generator would take more of the stack for arrays inside of arrays
                items.append(_take(chunk[i]))
        finally:
            _native.vlgs_clear(chunk, size)
    return items


def _take_record(slot):
    name, count = c_char_p(), c_size_t()
    _check(_native.vlgs_record(byref(slot), byref(name), byref(count)))
    if name.value is None:
        return None
    fields = {}
    for index in range(count.value):
        field, content = c_char_p(), Value()
        _check(_native.vlgs_record_field(byref(slot), index, byref(field), byref(content)))
        try:
            fields[field.value.decode()] = _take(content)
        finally:
            _native.vlgs_clear(byref(content), 1)
    return _hooks.record_of(name.value.decode(), fields)


def _take_object(slot):
    pointer = slot.object
    if not pointer:
        return None
    _native.vlgs_retain(pointer)
    return wrap(pointer)


_READERS = {
    EMPTY: lambda slot: Empty,
    NULL: lambda slot: Null,
    INTEGER: lambda slot: slot.integer,
    LONG: lambda slot: slot.number,
    SINGLE: lambda slot: slot.single,
    DOUBLE: lambda slot: slot.real,
    CURRENCY: lambda slot: _hooks.currency_of(slot.currency),
    DATE: lambda slot: _hooks.moment_of(slot.real),
    TEXT: _take_text,
    OBJECT: _take_object,
    ERROR: lambda slot: _hooks.error_value_of(slot.number),
    BOOLEAN: lambda slot: slot.boolean != 0,
    DECIMAL: lambda slot: _hooks.decimal_of(slot.scale, slot.sign, slot.high, slot.low),
    BYTE: lambda slot: slot.byte,
    RECORD: _take_record,
}


def _take(slot):
    """The Python value of a native one, which stays as it is."""
    reader = _READERS.get(slot.type)
    return reader(slot) if reader else _take_array(slot)


def _take_result(result):
    # Plain values own nothing and need no clearing.
    if result.type < TEXT:
        return _take(result)
    try:
        return _take(result)
    finally:
        _native.vlgs_clear(byref(result), 1)


# ---- Threads --------------------------------------------------------------------------------------------


class _Apartment:
    """What belongs to one thread.

    Its objects count their references without any lock, so only one thread works with them at a time: the
    owner, within `entered`, or whoever drops a last reference while the owner is elsewhere or has ended. What
    is dropped while the owner is inside waits in `dropped` and is released as the owner leaves."""

    def __init__(self):
        self.entered = threading.RLock()
        self.dropped = collections.deque()
        self.kept = None

    def release_dropped(self):
        while self.dropped:
            if not self.entered.acquire(blocking=False):
                return  # who is inside does it on leaving
            try:
                while self.dropped:
                    _native.vlgs_release(self.dropped.popleft())
            finally:
                self.entered.release()

    def __enter__(self):
        self.entered.acquire()

    def __exit__(self, kind, error, traceback):
        self.entered.release()
        if self.dropped:
            self.release_dropped()
        if self.kept is not None:
            kept, self.kept = self.kept, None
            if not isinstance(kept, Exception):
                raise kept  # nobody may swallow it
            if error is not None:
                error.__cause__ = kept


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

    def __del__(self, release=_native.vlgs_release, threads=_threads):
        if getattr(threads, "apartment", None) is self.apartment:
            release(self.pointer)
        else:
            self.apartment.dropped.append(self.pointer)
            self.apartment.release_dropped()

    def use(self):
        if _apartment() is not self.apartment:
            raise _hooks.run_time_error(_WRONG_THREAD)
        return self.pointer


# ---- Objects --------------------------------------------------------------------------------------------


def invoke(target, member, kind, arguments, named):
    pointer = target._handle.use()
    with target._handle.apartment:
        try:
            return _invoke_inside(pointer, member, kind, arguments, named)
        except (ctypes.ArgumentError, RuntimeError) as error:  # what ctypes makes of a RecursionError
            if str(error).endswith("???"):
                raise RecursionError("too many lists inside of lists") from None
            raise


def _invoke_inside(pointer, member, kind, arguments, named):
    result = Value()
    if not arguments and not named:
        _check(_native.vlgs_invoke(pointer, member, kind, None, 0, None, 0, byref(result)))
        return _take_result(result)
    names = None
    given = list(arguments)
    if named:
        names = (c_char_p * len(named))(*map(_name, named))
        given.extend(named.values())
    natives = (Value * len(given))()
    try:
        for native, value in zip(natives, given):
            _put(value, native)
        status = _native.vlgs_invoke(
            pointer, member, kind, natives, len(given), names, len(named or ()), byref(result)
        )
        for native, value in zip(natives, given):
            if isinstance(value, ByRef):
                value.value = _take(native)
        _check(status)
    finally:
        _native.vlgs_clear(natives, len(given))
    return _take_result(result)


def write(target, member, arguments):
    kind = _PUTREF if isinstance(arguments[-1], Object) or arguments[-1] is None else _PUT
    invoke(target, member, kind, arguments, None)


def id_of(target, name):
    number = c_int32()
    pointer = target._handle.use()
    with target._handle.apartment:
        _check(_native.vlgs_id_of(pointer, _name(name), byref(number)))
    return number.value


def _arguments(index):
    return index if isinstance(index, tuple) else (index,)


class Object:
    __slots__ = ("_handle",)

    def __new__(cls, *_, **__):
        raise TypeError("objects are created by vlgs.Dispatch")

    def __getattr__(self, name):
        if name.startswith("__") or name == "_handle":
            raise AttributeError(name)
        found = _hooks.find(type(self), name)
        if found is None:
            return _hooks.read_unknown(self, name)
        return found[2].__get__(self, type(self))

    def __setattr__(self, name, value):
        _hooks.write_attribute(self, name, value)

    def __call__(self, *arguments, **named):
        return invoke(self, _DEFAULT_MEMBER, _READ, arguments, named)

    def __getitem__(self, index):
        return invoke(self, _DEFAULT_MEMBER, _READ, _arguments(index), None)

    def __setitem__(self, index, value):
        write(self, _DEFAULT_MEMBER, (*_arguments(index), value))

    def __delitem__(self, index):
        raise TypeError("members are not deleted by position")

    def __eq__(self, other):
        if not isinstance(other, Object):
            return NotImplemented
        return self._handle.pointer == other._handle.pointer

    def __hash__(self):
        return hash(self._handle.pointer)


class Bound:
    __slots__ = ("__self__", "__func__", "_id")

    def __init__(self, target, member, number):
        self.__self__ = target
        self.__func__ = member
        self._id = number

    @property
    def __name__(self):
        return self.__func__.__name__

    @property
    def __doc__(self):
        return self.__func__.__doc__

    @property
    def __signature__(self):
        signature = self.__func__.__signature__
        return signature.replace(parameters=list(signature.parameters.values())[1:])

    def __get__(self, target, owner=None):
        return self

    def __call__(self, *arguments, **named):
        return invoke(self.__self__, self._id, _READ, arguments, named)

    def __getitem__(self, index):
        return invoke(self.__self__, self._id, _READ, _arguments(index), None)

    def __setitem__(self, index, value):
        write(self.__self__, self._id, (*_arguments(index), value))

    def __eq__(self, other):
        if not isinstance(other, Bound):
            return NotImplemented
        return self.__self__ == other.__self__ and self._id == other._id

    def __hash__(self):
        return hash((self.__self__, self._id))

    def __repr__(self):
        return f"<member {self.__name__} of {self.__self__!r}>"


def wrap(pointer):
    wrapped = object.__new__(_hooks.class_for(_native.vlgs_class_of(pointer) or 0))
    object.__setattr__(wrapped, "_handle", _Handle(pointer))
    return wrapped


def create(name):
    if not isinstance(name, str):
        raise TypeError("the name of a class is a text")
    pointer = c_void_p()
    _check(_native.vlgs_create(_name(name), byref(pointer)))
    return wrap(pointer.value)


def iterate(target, count):
    def size():
        return invoke(target, count, _READ, (), None) if count != _UNKNOWN_MEMBER else None

    return _unchanged(_members(target), size)


def _unchanged(items, size):
    first = size()
    for item in items:
        if size() != first:
            raise RuntimeError("the collection changed while it was iterated over")
        yield item


def _members(target):
    enumerator = c_void_p()
    pointer = target._handle.use()
    with target._handle.apartment:
        _check(_native.vlgs_enumerate(pointer, byref(enumerator)))
    held = _Handle(enumerator.value)
    item, more = Value(), c_int()
    items = []
    with held.apartment:
        while True:
            _check(_native.vlgs_next(held.pointer, byref(item), byref(more)))
            if not more.value:
                return items
            items.append(_take_result(item))


def read_each(target, name):
    items, failures = [], []

    def visit(_, values, count):
        try:
            items.extend(_take(values[i]) for i in range(count))
        except BaseException as failure:
            failures.append(failure)
        return len(failures)

    pointer = target._handle.use()
    with target._handle.apartment:
        status = _native.vlgs_read_each(pointer, _name(name), _VISIT(visit), None)
    if failures:
        raise failures[0]
    _check(status)
    return items


def changes(target):
    number = c_uint64()
    _check(_native.vlgs_changes(target._handle.use(), byref(number)))
    return number.value


# ---- Descriptions ---------------------------------------------------------------------------------------


def _decoded(text):
    return None if text is None else text.decode()


def _type(described):
    return described.type, bool(described.by_reference), bool(described.enumerator), _decoded(described.name)


def class_facts(cls):
    facts = ClassFacts()
    _native.vlgs_class_describe(cls, byref(facts))
    texts = map(_decoded, (facts.library, facts.name, facts.help, facts.event_interface))
    return (*texts, bool(facts.creatable), facts.member_count, facts.event_count)


def class_at(index):
    return _native.vlgs_class_at(index)


def member(cls, index):
    row = Member()
    if not _native.vlgs_member_describe(cls, index, byref(row)):
        return None
    return (_decoded(row.name), _decoded(row.help), row.id, row.kind, bool(row.hidden), row.parameter_count,
            _type(row.result), row.error_count, _decoded(row.example), _decoded(row.example_output))


def parameter(cls, index, place):
    row = Parameter()
    if not _native.vlgs_parameter_describe(cls, index, place, byref(row)):
        return None
    default = ctypes.string_at(row.default_text, row.default_length * 2) if row.default_text else b""
    return (_decoded(row.name), _decoded(row.meaning), _type(row.type), bool(row.optional), row.default_type,
            row.default_number, default.decode("utf-16-le", "surrogatepass"))


def condition(cls, index, place):
    row = ErrorCondition()
    if not _native.vlgs_error_describe(cls, index, place, byref(row)):
        return None
    return row.code, _decoded(row.when)


def constant(index):
    row = Constant()
    if not _native.vlgs_constant_describe(index, byref(row)):
        return None
    return _decoded(row.enumeration), _decoded(row.name), row.value


# ---- Events ---------------------------------------------------------------------------------------------

_sinks = {}
_keys = itertools.count(1)


def _client_id_of(key, name, number):
    number[0] = _UNKNOWN_MEMBER  # events arrive by number
    return 0


def _client_invoke(key, number, kind, arguments, count, result):
    try:
        method = _sinks[key].get(number)
        if method is None:
            raise _hooks.run_time_error(438)
        method(*(_take(arguments[i]) for i in range(count)))
        return 0
    except BaseException as error:
        _apartment().kept = error  # until the call that raised the event is back
        code, source, description = _hooks.error_parts(error)
        source, description = _bytes(source), _bytes(description)
        _native.vlgs_set_error(code, source, len(source), description, len(description))
        return 1


def _client_release(key):
    _sinks.pop(key, None)


_kinds = dict(Client._fields_)
_client = Client(
    _kinds["id_of"](_client_id_of), _kinds["invoke"](_client_invoke), _kinds["release"](_client_release)
)


def connect(source, methods):
    """Has the functions of `methods` called by the numbers of the events that they stand under."""
    pointer = source._handle.use()
    key = next(_keys)
    _sinks[key] = methods
    sink = c_void_p()
    _check(_native.vlgs_object_new(byref(_client), key, byref(sink)))
    held = _Handle(sink.value)
    connection = c_int32()
    with held.apartment:
        _check(_native.vlgs_connect(pointer, held.use(), byref(connection)))
    return connection.value


def disconnect(source, connection):
    pointer = source._handle.use()
    with source._handle.apartment:
        _check(_native.vlgs_disconnect(pointer, connection))
