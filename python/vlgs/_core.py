# SPDX-License-Identifier: MIT
# mypy: ignore-errors
"""The way to the library: the compiled extension `_native` where it was built, else `_pure` on ctypes (also when the
environment variable VLGS_PURE is set). Both offer the same:

    configure(hooks)        tells the functions of this package that they call back
    version(), unknown_settings()
    create(name)            a new object
    wrap(pointer)           the object for a counted reference, which it takes over
    invoke(target, member, kind, arguments, named)
    write(target, member, arguments)
                            writes a property, whose value is the last argument
    id_of(target, name)     a member's number, UNKNOWN_MEMBER for none
    forget()                tells that a Python class was changed
    iterate(target, count)  an iterator over the members as they are now; `count` is the number of the member that counts the members, or UNKNOWN_MEMBER
    read_each(target, name)
                            a list of what that property of each member of a collection is
    changes(target)         a number that is another one once members of a collection were added or removed
    connect(source, methods), disconnect(source, connection)
    class_at(index), class_facts(cls), member(cls, index), parameter(cls, index, place), condition(cls, index, place),
    constant(index)
                            tuples, see _descriptions; None behind the last one
    Object                  what the Python classes of objects derive from: it finds members, calls them, compares
    Bound                   a member of one object, to be called or indexed
"""

import os

METHOD, GET, PUT, PUTREF = 1, 2, 4, 8
READ = METHOD | GET
DEFAULT_MEMBER, UNKNOWN_MEMBER = 0, -1


def _choose():
    if os.environ.get("VLGS_PURE", "0") in ("", "0"):
        try:
            from . import _native
            from ._library import load

            load(_native.load)
            return _native
        except ImportError:
            pass
    from . import _pure

    return _pure


core = _choose()
