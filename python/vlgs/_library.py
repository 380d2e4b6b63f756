# SPDX-License-Identifier: MIT
"""Finds the shared library and declares its C interface (vlgs.h)."""

import ctypes
import glob
import os
import warnings
from ctypes import (
    CFUNCTYPE,
    POINTER,
    Structure,
    Union,
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

# With the number of the binary interface: the name without it belongs to the development files.
_FILE_NAME = "libVlGeneralServices.so.9"

# Kinds of members and calls.
METHOD, GET, PUT, PUTREF = 1, 2, 4, 8
DEFAULT_MEMBER, UNKNOWN_MEMBER = 0, -1


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
        ("standard_type", c_uint16),
        ("standard_number", c_int32),
        ("standard_text", c_void_p),
        ("standard_length", c_size_t),
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


def _candidates():
    chosen = os.environ.get("VLGS_LIBRARY")
    if chosen:
        yield chosen
        return
    # The build tree and the installed tree both hold "python" beside (or some levels below the parent of)
    # "lib".
    folder = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    for _ in range(4):
        folder = os.path.dirname(folder)
        for pattern in ("lib", "lib64", os.path.join("lib", "*-linux-*")):
            for found in sorted(glob.glob(os.path.join(glob.escape(folder), pattern, _FILE_NAME))):
                yield found
    yield _FILE_NAME


def _load():
    failure = None
    for path in _candidates():
        try:
            library = ctypes.CDLL(path)
            break
        except OSError as error:
            failure = failure or error
    else:
        raise ImportError(
            f"{_FILE_NAME} was not found or cannot be loaded ({failure}); "
            "VLGS_LIBRARY can name the file"
        )
    for name, (result, *arguments) in _FUNCTIONS.items():
        function = getattr(library, name)
        function.restype = result
        function.argtypes = arguments
    return library


library = _load()


def name_of(text):
    """A name as the C interface takes it. It would end at a NUL, which no name has: U+FFFD stands for that."""
    return text.replace("\0", "\ufffd").encode("utf-8", "surrogatepass")
_told = set()


def warn_of_unknown_settings():
    """Tells once what the environment asks of the library and the library does not know."""
    lines = library.vlgs_unknown_settings().decode()
    if lines and lines not in _told:
        _told.add(lines)
        for line in lines.split("\n"):
            warnings.warn(line, RuntimeWarning, stacklevel=3)
