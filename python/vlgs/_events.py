# SPDX-License-Identifier: MIT
"""Events: an object of the library calls a Python handler."""

import itertools
from ctypes import byref, c_int32, c_void_p

from . import _values
from ._errors import Error, check, run_time_error
from ._library import UNKNOWN_MEMBER, ClassFacts, Client, Member, library
from ._objects import Object, _Handle

_sinks = {}
_keys = itertools.count(1)


def _set_error(error):
    if not isinstance(error, Error):
        error = Error(440, "Python", f"{type(error).__name__}: {error}")
    source = error.source.encode("utf-8", "surrogatepass")
    description = error.description.encode("utf-8", "surrogatepass")
    library.vlgs_set_error(error.number, source, len(source), description, len(description))


def _id_of(key, name, member):
    member[0] = UNKNOWN_MEMBER  # events arrive by number
    return 0


def _invoke(key, member, kind, arguments, count, result):
    try:
        method = _sinks[key].get(member)
        if method is None:
            raise run_time_error(438)
        method(*(_values.take(arguments[i]) for i in range(count)))
        return 0
    except BaseException as error:
        _set_error(error)
        return 1


def _release(key):
    _sinks.pop(key, None)


_kinds = dict(Client._fields_)
_client = Client(_kinds["id_of"](_id_of), _kinds["invoke"](_invoke), _kinds["release"](_release))


def _events(cls):
    """The events of a class: their numbers by name."""
    facts = ClassFacts()
    library.vlgs_class_describe(cls, byref(facts))
    events = {}
    for index in range(facts.member_count, facts.member_count + facts.event_count):
        member = Member()
        library.vlgs_member_describe(cls, index, byref(member))
        events[member.name.decode()] = member.id
    return events


class WithEvents:
    """Calls the methods of `handler` that are named for the events of `obj`, with or without "On" before
    the name: a method LinkOpened or OnLinkOpened is called at the event LinkOpened. `handler` is an object
    or a class that is then created. Raises 459 for an object whose class raises no events.

    The handler is called until close(), or until the object ends; the connection may be used in a `with`
    statement.
    """

    def __init__(self, obj, handler):
        if not isinstance(obj, Object):
            raise TypeError("events come from objects of the library")
        events = _events(type(obj)._native) if hasattr(type(obj), "_native") else {}
        if not events:
            raise run_time_error(459)
        self.handler = handler() if isinstance(handler, type) else handler
        methods = {}
        for name, number in events.items():
            method = getattr(self.handler, name, None) or getattr(self.handler, "On" + name, None)
            if method is not None:
                methods[number] = method
        key = next(_keys)
        _sinks[key] = methods
        sink = c_void_p()
        check(library.vlgs_object_new(byref(_client), key, byref(sink)))
        held = _Handle(sink.value)
        connection = c_int32()
        source = obj._handle.use()
        with held.apartment:
            check(library.vlgs_connect(source, held.use(), byref(connection)))
        self._source, self._connection = obj, connection.value

    def close(self):
        """Ends the connection; closing it again does nothing."""
        if self._source is not None:
            source, self._source = self._source, None
            pointer = source._handle.use()
            with source._handle.apartment:
                check(library.vlgs_disconnect(pointer, self._connection))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()
