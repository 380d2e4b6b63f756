# SPDX-License-Identifier: MIT
"""Objects of the library as Python objects, one Python class for each class that is described."""

import warnings

from . import _types, _values
from ._core import DEFAULT_MEMBER, GET, METHOD, READ, UNKNOWN_MEMBER, core
from ._errors import Error, NoSuchMember, error_of, run_time_error


class _Class(type):
    """The type of the classes: what was found out about attributes no longer holds when one is changed."""

    def __setattr__(cls, name, value):
        super().__setattr__(name, value)
        core.forget()

    def __delattr__(cls, name):
        super().__delattr__(name)
        core.forget()


class Object(core.Object, metaclass=_Class):
    """An object of the library. Members are found by name in any case:

    obj.Property             reads a property without parameters
    obj.Property = value     writes one
    obj.Method(a, sName=b)   calls a method or reads a property with parameters
    obj.Property[a] = value  writes a property with parameters
    obj(a), obj[a]           the default member
    len(obj), iter(obj)      the members of a collection
    a == b                   whether both are the same object
    """

    __slots__ = ()
    _progid = "vlgs.Object"
    _members = {}
    _shown = ()

    def __init__(self):
        raise TypeError("objects are created by vlgs.Dispatch")

    def __len__(self):
        try:
            return core.invoke(self, _id_of(self, "Count"), READ, (), None)
        except NoSuchMember:
            raise run_time_error(451, type(self).__name__) from None

    def __bool__(self):
        return True  # no object is None, so an object is one however many members it has

    def __iter__(self):
        """Goes over the members as they are now; a collection of another length meanwhile raises RuntimeError."""
        return core.iterate(self, core.id_of(self, "Count"))

    def __reversed__(self):
        return reversed(list(self))

    def __copy__(self):
        raise TypeError(f"{type(self).__name__} has no copy; documents have Clone")

    def __deepcopy__(self, _):
        return self.__copy__()

    def __reduce_ex__(self, _):
        raise TypeError(f"{type(self).__name__} stays in its process; hand over plain values or paths")

    def __dir__(self):
        return [name for name in object.__dir__(self) if name.startswith("__")] + list(self._shown)

    def __repr__(self):
        return f"<{self._progid} at {hash(self):#x}>"


def _id_of(target, name):
    number = core.id_of(target, name)
    if number == UNKNOWN_MEMBER:
        import difflib

        near = difflib.get_close_matches(name.lower(), target._members, 1)
        hint = f"; did you mean {target._members[near[0]]}?" if near else ""
        error = run_time_error(438, f"{name} of {type(target).__name__}{hint}")
        error.name, error.obj = name, target
        raise error
    return number


# ---- Members as attributes of the Python classes ----------------------------------------------------------


class _Described:
    """A member of a class; what help shows of it is made when somebody looks."""

    def _describe(self, name, cls, rows, number):
        self.__name__ = self.__qualname__ = name
        self._cls = cls
        self._places = rows
        self._vlgs_id = number

    def _rows(self):
        from ._descriptions import member_of

        return [member_of(self._cls, row) for row in self._places]


class _Property(_Described, property):
    """A property without parameters. Being one of Python's own, it is not read by completion."""

    _direct = True

    def __init__(self, *described):
        self._describe(*described)

    @property
    def __doc__(self):
        from ._descriptions import property_text

        return property_text(self._rows())

    def __get__(self, target, owner=None):
        if target is None:
            return self
        return core.invoke(target, self._vlgs_id, READ, (), None)

    def __set__(self, target, value):
        core.write(target, self._vlgs_id, (value,))


class _PropertyWithParameters(_Property):
    _direct = False
    __doc__ = _Property.__dict__["__doc__"]

    def __get__(self, target, owner=None):
        if target is None:
            return self
        return core.Bound(target, self, self._vlgs_id)


class _Method(_Described):
    _direct = False

    def __init__(self, *described):
        self._describe(*described)

    @property
    def __doc__(self):
        from ._descriptions import contract_of

        return contract_of(self._rows())

    @property
    def __signature__(self):
        from ._descriptions import signature_of

        return signature_of(self._rows()[0])

    def __get__(self, target, owner=None):
        if target is None:
            return self
        return core.Bound(target, self, self._vlgs_id)

    def __call__(self, target, *arguments, **named):
        return core.invoke(target, self._vlgs_id, READ, arguments, named)

    def __repr__(self):
        return f"<method {self.__name__} of {self.__objclass__.__name__}>"


class _Unknown:
    """A member of an object that nothing more is known of."""

    def __init__(self, name):
        self.__name__ = name


def _attribute(name, cls, rows):
    """The attribute for the rows of one member, given as pairs of their places and themselves."""
    kinds = 0
    for _, row in rows:
        kinds |= row[3]
    described = name, cls, [place for place, _ in rows], rows[0][1][2]
    if kinds & METHOD:
        return _Method(*described)
    reading = [row for _, row in rows if row[3] == GET]
    parameters = reading[0][5] if reading else rows[0][1][5] - 1
    return (_PropertyWithParameters if parameters else _Property)(*described)


def _make_class(cls):
    if not cls:
        return Object
    library, name, help_text, _, _, member_count, _ = core.class_facts(cls)
    rows = {}
    for place in range(member_count):
        row = core.member(cls, place)
        rows.setdefault(row[0], []).append((place, row))
    base = _protocols.get(name, Object)
    attributes = {
        "__slots__": (),
        "__module__": "vlgs",
        "__doc__": help_text if base is Object else f"{help_text}\n\n{base.__doc__}",
        "_progid": f"{library}.{name}",
        "_members": {each.lower(): each for each in rows},
        "_shown": [each for each, found in rows.items() if not found[0][1][4]],
        "_native": cls,
    }
    for each, found in rows.items():
        attributes[each] = _attribute(each, cls, found)
    made = _Class(name, (base,), attributes)
    for each in rows:
        attributes[each].__objclass__ = made
    return made


_python_classes = {}


def _python_class(cls):
    """The Python class for a native one."""
    found = _python_classes.get(cls)
    if found is None:  # two threads may make it at once: the first one's stays
        found = _python_classes.setdefault(cls, _make_class(cls))
    return found


_protocols = {}


def with_protocols(kind):
    """Makes the Python class of the native class of that name a subclass of this one."""
    _protocols[kind.__name__] = kind
    return kind


# ---- What the way to the library calls back ---------------------------------------------------------------


def _find(python_class, name):
    """The member that an attribute name means, in any case, as (number, whether it is read at once, itself); None
    where Python knows an attribute of just that name, and where there is no such member."""
    found = getattr(python_class, name, None)
    if found is None:
        known = python_class._members.get(name.lower())
        found = known and getattr(python_class, known)
    return (found._vlgs_id, found._direct, found) if isinstance(found, _Described) else None


def _read_unknown(target, name):
    """What an attribute is that the Python class does not have."""
    if name.startswith("__"):
        raise AttributeError(name)
    return core.Bound(target, _Unknown(name), _id_of(target, name))


def _write_attribute(target, name, value):
    known = target._members.get(name.lower())
    number = getattr(type(target), known)._vlgs_id if known else _id_of(target, name)
    core.write(target, number, (value,))


def _error_parts(error):
    """An exception as number, source and description."""
    if not isinstance(error, Error):
        error = Error(440, "Python", f"{type(error).__name__}: {error}")
    return error.number, error.source, error.description


core.configure(
    {
        "class_for": _python_class,
        "find": _find,
        "read_unknown": _read_unknown,
        "write_attribute": _write_attribute,
        "error_of": error_of,
        "run_time_error": run_time_error,
        "error_parts": _error_parts,
        "ByRef": _types.ByRef,
        "Empty": _types.Empty,
        "Null": _types.Null,
        "Missing": _types.Missing,
        "form_of": _values.form_of,
        "array_of": _values.array_of,
        "no_array": _values.no_array,
        "record_of": _values.record_of,
        "moment_of": _values.moment_of,
        "currency_of": _values.currency_of,
        "decimal_of": _values.decimal_of,
        "error_value_of": _values.error_value_of,
    }
)
wrap = core.wrap


_told = set()


def _warn_of_unknown_settings():
    """Tells once what the environment asks of the library and the library does not know."""
    lines = core.unknown_settings()
    if lines and lines not in _told:
        _told.add(lines)
        for line in lines.split("\n"):
            warnings.warn(line, RuntimeWarning, stacklevel=3)


def Dispatch(progid):
    """Creates an object: Dispatch("VlGeneralServices.Files"). Raises 429 for a name that no class has and
    for a class that is only made by others."""
    _warn_of_unknown_settings()
    try:
        return core.create(progid)
    except Error as error:
        raise _with_nearest(error, progid) if error.number == 429 else error from None


def _with_nearest(error, progid):
    import difflib

    from ._descriptions import classes, facts_of

    names = {}
    for facts in map(facts_of, classes()):
        if facts.creatable:
            names[facts.name.lower()] = f"{facts.library}.{facts.name}"
    near = difflib.get_close_matches(progid.rpartition(".")[2].lower(), names, 1)
    hint = f"; did you mean {names[near[0]]}?" if near and names[near[0]].lower() != progid.lower() else ""
    return error_of(error.number, error.source, error.description + hint)


_values.make = Dispatch
_values.object_type = Object
