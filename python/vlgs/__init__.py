# SPDX-License-Identifier: MIT
"""Late-bound access to the classes of VlGeneralServices.

    import vlgs

    files = vlgs.Dispatch("VlGeneralServices.Files")
    print(files.BuildConnectionStringFromPath("demo.VLS"))

dir(files) lists the members of an object and help(files) tells what they do. Failures raise vlgs.Error.

In: bool, int (Long, Double outside 32 bits), float, str, bytes (array of bytes), datetime, date and time
(Date), decimal.Decimal, lists and tuples (arrays of variants from 0), Array (other bounds, dimensions and
element types), Variant (any type code), Record, objects, None (no object), Empty, Null, Missing.
Out: the same in reverse. An argument that a member changes is passed as ByRef(value).

Besides: os.PathLike and uuid.UUID (text), range, set and frozenset (arrays), dict (a dictionary object), datetimes
with a zone (the local moment). Documents, sections and dictionaries are mappings as well, see help(type(document)).

Errors are also of the Python class that their number says: FileNotFoundError, PermissionError, KeyError, IndexError,
TypeError, OverflowError, AttributeError; error.code is the code of the message catalogue.

An object is used on the thread that made it; its last reference may go on any thread, also when that one
has ended.
"""

from . import _core
from . import _documents  # noqa: F401 (adds what Python expects of documents and collections)
from ._constants import constants
from ._errors import (
    AccessDenied,
    Error,
    FileMissing,
    KeyFailure,
    NoSuchMember,
    NoSuchPosition,
    NotACollection,
    NumberTooLarge,
    OutOfMemory,
    UnfitArgument,
)
from ._events import WithEvents
from ._objects import Dispatch, Object
from ._types import Array, ByRef, Empty, Missing, Null, Record, Variant

__version__ = _core.core.version()
__all__ = [
    "AccessDenied",
    "Array",
    "ByRef",
    "constants",
    "Dispatch",
    "Empty",
    "Error",
    "FileMissing",
    "KeyFailure",
    "Missing",
    "NoSuchMember",
    "NoSuchPosition",
    "NotACollection",
    "Null",
    "NumberTooLarge",
    "Object",
    "OutOfMemory",
    "Record",
    "UnfitArgument",
    "Variant",
    "WithEvents",
]
