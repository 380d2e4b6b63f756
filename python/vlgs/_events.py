# SPDX-License-Identifier: MIT
"""Events: an object of the library calls a Python handler."""

from ._core import core
from ._errors import run_time_error
from ._objects import Object


def _events(cls):
    """The events of a class: their numbers by name."""
    *_, member_count, event_count = core.class_facts(cls)
    rows = [core.member(cls, place) for place in range(member_count, member_count + event_count)]
    return {row[0]: row[2] for row in rows}


class WithEvents:
    """Calls the methods of `handler` that are named for the events of `obj`, with or without "On" before
    the name: a method LinkOpened or OnLinkOpened is called at the event LinkOpened. `handler` is an object
    or a class that is then created. Raises 459 for an object whose class raises no events.

    An exception of the handler is the cause of the error that the call raises in which the event came: error 440, or
    the handler's own vlgs.Error. KeyboardInterrupt and SystemExit leave that call as they are.

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
        self._source, self._connection = obj, core.connect(obj, methods)

    def close(self):
        """Ends the connection; closing it again does nothing."""
        if self._source is not None:
            source, self._source = self._source, None
            core.disconnect(source, self._connection)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()
