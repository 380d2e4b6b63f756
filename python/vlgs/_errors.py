"""The one exception type, and how the library's last error becomes one."""

import ctypes

from ._library import library

_TEXTS = {
    6: "Overflow",
    13: "Type mismatch",
    438: "Object doesn't support this property or method",
    451: "Object not a collection",
    459: "Object or class does not support the set of events",
    -2147417842: "The object is used on a thread that did not make it",
}


class Error(Exception):
    """A failure that the library raised.

    number       signed 32-bit number: a small run-time number (5, 13, 53, 91 ...) or the number of the
                 component's own error
    source       what raised it, such as "VlGeneralServices.INIFile.CreateSection"
    description  its text
    """

    def __init__(self, number, source="", description=""):
        super().__init__(number, source, description)
        self.number = number
        self.source = source
        self.description = description

    def __str__(self):
        return f"error {self.number} {self.source}: {self.description}" if self.source else (
            f"error {self.number}: {self.description}"
        )


Error.__module__ = "vlgs"


# Python itself asks for members and for lengths and takes these for an answer.
class NoSuchMember(Error, AttributeError):
    pass


class NotACollection(Error, TypeError):
    pass


def run_time_error(number, kind=Error):
    return kind(number, "", _TEXTS[number])


def _text(address, length):
    return ctypes.string_at(address, length).decode("utf-8", "surrogatepass") if length else ""


def check(status):
    """Raises what a function of the library left behind, unless it succeeded."""
    if status:
        error = library.vlgs_last_error().contents
        kind = NoSuchMember if error.number == 438 else NotACollection if error.number == 451 else Error
        raise kind(
            error.number,
            _text(error.source, error.source_length),
            _text(error.description, error.description_length),
        )
