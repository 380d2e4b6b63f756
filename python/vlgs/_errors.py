# SPDX-License-Identifier: MIT
"""The one exception type, and its subclasses that are Python's own as well."""

import errno

_TEXTS = {
    6: "Overflow",
    9: "Subscript out of range",
    13: "Type mismatch",
    438: "Object doesn't support this property or method",
    451: "Object not a collection",
    457: "This key is already associated with an element of this collection",
    459: "Object or class does not support the set of events",
    -2147417842: "The object is used on a thread that did not make it: "
    "make one on each thread, and hand over plain values or paths",
}


# Numbers of the message catalogue are raised as 0x80040000 + code.
_CATALOGUE = -2147221504


class Error(Exception):
    """A failure that the library raised.

    number       signed 32-bit number: a small run-time number (5, 13, 53, 91 ...) or the number of the
                 component's own error
    source       what raised it, such as "VlGeneralServices.INIFile.CreateSection"
    description  its text
    code         the code of the message catalogue (11508) where the number is made from one, else the number

    Where the number says what Python has an exception for, the error is one of those as well: 53 is caught by
    `except FileNotFoundError`, 13 by `except TypeError`.
    """

    def __init__(self, number, source="", description=""):
        Exception.__init__(self, number, source, description)
        self.number = number
        self.source = source
        self.description = description
        if isinstance(self, OSError):
            self.errno = errno.EACCES if isinstance(self, PermissionError) else errno.ENOENT

    @property
    def code(self):
        offset = self.number - _CATALOGUE
        return offset if 0 <= offset <= 0xFFFF else self.number

    def __str__(self):
        return f"error {self.number} {self.source}: {self.description}" if self.source else (
            f"error {self.number}: {self.description}"
        )


class NoSuchMember(Error, AttributeError):
    """438"""


class NotACollection(Error, TypeError):
    """451"""


class UnfitArgument(Error, TypeError):
    """13, and 94 and 448 to 450: arguments that are of the wrong type, missing, too many or misnamed"""


class NumberTooLarge(Error, OverflowError):
    """6"""


class NoSuchPosition(Error, IndexError):
    """9"""


class KeyFailure(Error, KeyError):
    """457, 32811: a key that is there already, or that is not there"""


class FileMissing(Error, FileNotFoundError):
    """53, 76, and the catalogue's messages of files and paths that do not exist"""


class AccessDenied(Error, PermissionError):
    """70, 75, and the catalogue's messages of files that may not be read or written"""


class OutOfMemory(Error, MemoryError):
    """7"""


_KINDS = {
    6: NumberTooLarge,
    7: OutOfMemory,
    9: NoSuchPosition,
    13: UnfitArgument,
    53: FileMissing,
    70: AccessDenied,
    75: AccessDenied,
    76: FileMissing,
    94: UnfitArgument,
    438: NoSuchMember,
    448: UnfitArgument,
    449: UnfitArgument,
    450: UnfitArgument,
    451: NotACollection,
    457: KeyFailure,
    32811: KeyFailure,
    _CATALOGUE + 11502: FileMissing,
    _CATALOGUE + 11532: FileMissing,
    _CATALOGUE + 11549: FileMissing,
}

for _kind in {Error, *_KINDS.values()}:
    _kind.__module__ = "vlgs"


# What messages of the catalogue about files end with: the run time's text of the cause.
_CAUSES = {
    "File not found": FileMissing,
    "Path not found": FileMissing,
    "Permission denied": AccessDenied,
    "Path/File access error": AccessDenied,
}


def error_of(number, source="", description=""):
    """The error of that number, of the class that its number, or the cause that its text ends with, asks for."""
    kind = _KINDS.get(number)
    if kind is None:
        kind = _CAUSES.get(description.splitlines()[-1], Error) if number < 0 and description else Error
    return kind(number, source, description)


def run_time_error(number, about=""):
    """An error that this module raises itself; `about` is appended to its text."""
    return error_of(number, "", _TEXTS[number] + (": " + about if about else ""))

