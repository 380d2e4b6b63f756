# SPDX-License-Identifier: MIT
"""The objects of the library in the manner of pywin32, so that a script written for it changes its import line only:

    from vlgs.client import Dispatch, constants, com_error, gencache, pythoncom

Objects and values are pywin32's: Empty and Null come back as None, arrays as tuples, arrays of bytes as memoryview,
dates with the zone UTC, failures as com_error. Objects of `gencache.EnsureDispatch` return a tuple of the result and
the values of all by-reference parameters where a member has such, as pywin32's generated classes do; those of
`Dispatch` return the result alone. What differs stands in docs/pywin32.md.
"""

import datetime

import vlgs

constants = vlgs.constants
Missing = vlgs.Missing

_EXCEPTION = -2147352567  # DISP_E_EXCEPTION
_RUN_TIME = -2146828288  # 0x800A0000: small numbers of the run time travel as this + number
_STATUS = {  # failures of the call itself, which the platform answers without an exception
    438: (-2147352573, "Member not found."),
    448: (-2147352572, "Parameter not found."),
    449: (-2147352561, "Parameter not optional."),
    450: (-2147352562, "Invalid number of parameters."),
    429: (-2147221005, "Invalid class string"),
    -2147417842: (-2147417842, "The application called an interface that was marshalled for a different thread."),
}


class com_error(Exception):
    """hresult, strerror, excepinfo (code, source, description, help file, help context, scode) or None, argerror."""

    def __init__(self, hresult, strerror, excepinfo=None, argerror=None):
        super().__init__(hresult, strerror, excepinfo, argerror)
        self.hresult = hresult
        self.strerror = strerror
        self.excepinfo = excepinfo
        self.argerror = argerror


def _failure(error):
    if error.number in _STATUS and not error.source:
        return com_error(*_STATUS[error.number])
    scode = _RUN_TIME + error.number if 0 < error.number < 0x10000 else error.number
    excepinfo = (0, error.source or None, error.description or None, None, 0, scode)
    return com_error(_EXCEPTION, "Exception occurred.", excepinfo)


def _given(value):
    if isinstance(value, CDispatch):
        return value._target
    if type(value) in (list, tuple):
        return [_given(item) for item in value]
    if type(value) is dict:
        return {key: _given(item) for key, item in value.items()}
    return value


class CDispatch:
    """An object, late bound."""

    __slots__ = ("_target", "_with_outputs")

    def __init__(self, target, with_outputs=False):
        object.__setattr__(self, "_target", target)
        object.__setattr__(self, "_with_outputs", with_outputs)

    def _taken(self, value):
        if isinstance(value, vlgs.Object):
            return CDispatch(value, self._with_outputs)
        if value is vlgs.Empty or value is vlgs.Null:
            return None
        if isinstance(value, vlgs.Array):
            return tuple(self._taken(item) for item in value)
        if isinstance(value, list):  # a further dimension
            return tuple(self._taken(item) for item in value)
        if isinstance(value, bytes):
            return memoryview(value)
        if isinstance(value, datetime.datetime):
            return value.replace(tzinfo=datetime.timezone.utc)
        return value

    def _guarded(self, function, *arguments, **named):
        try:
            return self._taken(function(*arguments, **named))
        except vlgs.Error as error:
            raise _failure(error) from None

    def _called(self, name, member, arguments, named):
        outputs = _outputs(type(self._target), name) if self._with_outputs else ()
        arguments = [_given(each) for each in arguments]
        named = {key: _given(each) for key, each in named.items()}
        references = []
        for place, parameter in outputs:
            if place < len(arguments):
                arguments[place] = _reference(arguments[place])
                references.append(arguments[place])
            else:
                key = next((key for key in named if key.lower() == parameter.lower()), parameter)
                references.append(named.setdefault(key, vlgs.ByRef()))
                named[key] = references[-1] = _reference(references[-1])
        result = self._guarded(member, *arguments, **named)
        return (result, *(self._taken(each.value) for each in references)) if outputs else result

    def __getattr__(self, name):
        if name.startswith("_"):
            raise AttributeError(name)
        try:
            found = getattr(self._target, name)
        except vlgs.NoSuchMember as error:
            raise AttributeError(f"{type(self._target)._progid}.{name}") from error
        except vlgs.Error as error:
            raise _failure(error) from None
        if callable(found) and not isinstance(found, vlgs.Object):
            return lambda *arguments, **named: self._called(name, found, arguments, named)
        return self._taken(found)

    def __setattr__(self, name, value):
        self._guarded(setattr, self._target, name, _given(value))

    def __call__(self, *arguments, **named):
        return self._guarded(self._target, *map(_given, arguments), **named)

    def __getitem__(self, index):
        return self(*index) if isinstance(index, tuple) else self(index)

    def __setitem__(self, index, value):
        self._guarded(self._target.__setitem__, _given(index), _given(value))

    def __len__(self):
        return self._guarded(len, self._target)

    def __iter__(self):
        items = self._guarded(list, self._target)
        return iter(items if isinstance(items, tuple) else tuple(map(self._taken, items)))

    def __bool__(self):
        return True

    def __eq__(self, other):
        return isinstance(other, CDispatch) and self._target == other._target

    def __hash__(self):
        return hash(self._target)

    def __copy__(self):
        return CDispatch(self._target, self._with_outputs)

    def __dir__(self):
        return dir(self._target)

    def __repr__(self):
        return f"<COMObject {type(self._target)._progid}>"


def _reference(value):
    return value if isinstance(value, vlgs.ByRef) else vlgs.ByRef(value)


def _outputs(python_class, name):
    """Places and names of a method's by-reference parameters."""
    from vlgs._descriptions import outputs_of

    known = python_class._members.get(name.lower())
    return outputs_of(python_class._native, known) if known else []


def Dispatch(progid):
    """A new object, late bound."""
    try:
        return CDispatch(vlgs.Dispatch(progid))
    except vlgs.Error as error:
        raise _failure(error) from None


class gencache:
    """pywin32's generated classes, as far as scripts see them."""

    @staticmethod
    def EnsureDispatch(progid):
        """A new object whose methods return their by-reference parameters as well."""
        return CDispatch(Dispatch(progid)._target, True)


class pythoncom:
    """What scripts use of the module of that name."""

    com_error = com_error
    Missing = Missing
    Empty = vlgs.Empty

    @staticmethod
    def CoInitialize():
        """Does nothing: a thread needs no preparation."""

    CoUninitialize = CoInitialize
