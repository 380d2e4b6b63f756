# SPDX-License-Identifier: MIT
"""The conversions of values between Python and automation.

`put` writes a Python value into a native one, `take` reads a native one. Whoever calls `put` clears the
native value, also after a failure.
"""

import ctypes
import datetime
import decimal
import math
import numbers
import os
import uuid
from ctypes import byref, c_char_p, c_size_t, c_void_p

from ._errors import check, run_time_error
from ._library import Dimension, Value, library, name_of
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
    Array,
    ByRef,
    Empty,
    Missing,
    Null,
    Record,
    Variant,
    _Singleton,
)

_MISSING_STATUS = -2147352572
_CHUNK = 4096


# ---- Dates and decimals ---------------------------------------------------------------------------------

_DAY_ZERO = datetime.datetime(1899, 12, 30)
_MICROSECONDS = 86_400_000_000


def days_of(moment):
    """The day count of a datetime, date or time; one with a zone is taken in local time. Before day 0 the time of day counts away from zero."""
    if isinstance(moment, datetime.datetime) and moment.tzinfo is not None:
        moment = moment.astimezone().replace(tzinfo=None)
    if isinstance(moment, datetime.time):
        if moment.tzinfo is not None:
            raise ValueError("a time of day with a zone is no moment: pass a datetime")
        moment = datetime.datetime.combine(_DAY_ZERO, moment)
    elif not isinstance(moment, datetime.datetime):
        moment = datetime.datetime.combine(moment, datetime.time())
    past = moment - _DAY_ZERO
    fraction = (past.seconds * 1_000_000 + past.microseconds) / _MICROSECONDS
    return past.days + fraction if past.days >= 0 else past.days - fraction


def moment_of(days):
    """The datetime of a day count, to the microsecond; Variant(7, days) outside the years 1 to 9999."""
    try:
        whole = math.trunc(days)
        time = round(abs(days - whole) * _MICROSECONDS)
        # Far from day 0 a day count is coarser than a microsecond: the roundest time that it stands for.
        for unit in (1_000_000, 1_000):
            rounded = (time + unit // 2) // unit * unit
            if math.copysign(abs(whole) + rounded / _MICROSECONDS, days) == days:
                time = rounded
                break
        return _DAY_ZERO + datetime.timedelta(days=whole, microseconds=time)
    except (OverflowError, ValueError):
        return Variant(DATE, days)


_EXACT = decimal.Context(prec=80, rounding=decimal.ROUND_HALF_EVEN, Emax=10**6, Emin=-(10**6))


def _checked(number):
    number = decimal.Decimal(number)
    if not number.is_finite() or number.adjusted() > 40:
        raise run_time_error(13 if number.is_nan() else 6)
    return number


def _put_decimal(number, slot):
    number = _checked(number)
    scale = min(28, max(0, -number.as_tuple().exponent))
    while True:
        units = int(_EXACT.scaleb(number, scale).to_integral_value(context=_EXACT)) if number else 0
        if abs(units) < 1 << 96:
            break
        if scale == 0:
            raise run_time_error(6)
        scale -= 1
    slot.type = DECIMAL
    slot.scale = scale
    slot.sign = 0x80 if number.is_signed() else 0
    slot.high = abs(units) >> 64
    slot.low = abs(units) & 0xFFFF_FFFF_FFFF_FFFF


def _put_currency(number, slot):
    units = int(_EXACT.scaleb(_checked(number), 4).to_integral_value(context=_EXACT))
    if not -(1 << 63) <= units < 1 << 63:
        raise run_time_error(6)
    slot.currency = units
    slot.type = CURRENCY


def _take_decimal(slot):
    units = slot.high << 64 | slot.low
    digits = tuple(map(int, str(units)))
    return decimal.Decimal((1 if slot.sign else 0, digits, -slot.scale))


# ---- In -------------------------------------------------------------------------------------------------


def _put_empty(value, slot):
    slot.type = EMPTY


def _put_null(value, slot):
    slot.type = NULL


def _put_error(status, slot):
    slot.number = status
    slot.type = ERROR


def _put_singleton(value, slot):
    if value is Missing:
        _put_error(_MISSING_STATUS, slot)
    else:
        slot.type = EMPTY if value is Empty else NULL


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
        try:
            slot.real = value
        except (OverflowError, ctypes.ArgumentError):
            raise run_time_error(6) from None
        slot.type = DOUBLE


def _put_float(value, slot):
    slot.real = value
    slot.type = DOUBLE


def _put_text(value, slot):
    text = value.encode("utf-8", "surrogatepass")
    check(library.vlgs_text_new(text, len(text), byref(slot)))


def _put_bytes(value, slot):
    data = bytes(value)
    check(library.vlgs_bytes_new(data, len(data), byref(slot)))


def _put_date(value, slot):
    slot.real = days_of(value)
    slot.type = DATE


def _put_list(value, slot):
    _put_items(list(value), [(0, len(value))], VARIANT, slot)


def _put_array(value, slot):
    element = value.vartype & ~ARRAY
    if value.dimensions == 0:
        slot.shared = None
        slot.type = value.vartype
    else:
        _put_items(value._flat(), list(zip(value._lowers, value._counts())), element, slot)


def _put_items(items, bounds, element, slot):
    shape = (Dimension * len(bounds))(*bounds)
    check(library.vlgs_array_new(element, shape, len(bounds), byref(slot)))
    chunk = (Value * min(_CHUNK, len(items) or 1))()
    for start in range(0, len(items), _CHUNK):
        part = items[start : start + _CHUNK]
        try:
            for native, item in zip(chunk, part):
                put(item, native)
            check(library.vlgs_array_write(byref(slot), start, len(part), chunk))
        finally:
            library.vlgs_clear(chunk, len(chunk))


def _put_record(value, slot):
    fields = value._fields()
    names = (c_char_p * len(fields))(*map(name_of, fields))
    values = (Value * len(fields))()
    try:
        for native, field in zip(values, fields.values()):
            put(field, native)
        name = name_of(value._name)
        check(library.vlgs_record_new(name, names, values, len(fields), byref(slot)))
    finally:
        library.vlgs_clear(values, len(fields))


def _put_variant(value, slot):
    code, content = value.code, value.value
    if code == ARRAY + BYTE and isinstance(content, (bytes, bytearray, memoryview)):
        _put_bytes(content, slot)
    elif code & ARRAY:
        if not isinstance(content, Array):
            content = Array(content) if content is not None else _no_array()
        retyped = Array.__new__(Array)
        list.__init__(retyped, content)
        retyped._lowers, retyped.vartype = content._lowers, code
        _put_array(retyped, slot)
    elif code == CURRENCY and isinstance(content, (int, decimal.Decimal)):
        _put_currency(content, slot)
    elif code == DECIMAL and isinstance(content, int):
        _put_decimal(content, slot)
    elif code in _PUT_CODE:
        _PUT_CODE[code](content, slot)
    else:
        put(content, slot)
        if code == DATE and slot.type in (LONG, DOUBLE):
            slot.real = content
            slot.type = DATE
        elif slot.type != code:
            check(library.vlgs_change_type(byref(slot), code))


def _put_object_or_none(value, slot):
    put(value, slot)
    if slot.type != OBJECT:
        raise run_time_error(13)


_PUT_CODE = {
    EMPTY: _put_empty,
    NULL: _put_null,
    ERROR: _put_error,
    OBJECT: _put_object_or_none,
    VARIANT: lambda value, slot: put(value, slot),
}

_PUT = {
    type(None): _put_none,
    bool: _put_bool,
    int: _put_int,
    float: _put_float,
    str: _put_text,
    bytes: _put_bytes,
    bytearray: _put_bytes,
    memoryview: _put_bytes,
    datetime.datetime: _put_date,
    datetime.date: _put_date,
    datetime.time: _put_date,
    decimal.Decimal: _put_decimal,
    Array: _put_array,
    list: _put_list,
    tuple: _put_list,
    Variant: _put_variant,
    Record: _put_record,
    range: _put_list,
    set: _put_list,
    frozenset: _put_list,
    uuid.UUID: lambda value, slot: _put_text(f"{{{value}}}".upper(), slot),
    ByRef: lambda value, slot: put(value.value, slot),
    _Singleton: _put_singleton,
}


def put(value, slot):
    """Writes a Python value into an empty native one."""
    writer = _PUT.get(type(value))
    if writer is None:
        writer = _writer_of(value)
    writer(value, slot)


def _writer_of(value):
    """The writer for a value of a derived or foreign type."""
    for kind, writer in _PUT.items():
        if isinstance(value, kind):
            return writer
    if isinstance(value, os.PathLike):
        return lambda path, slot: _put_text(os.fsdecode(path), slot)
    if isinstance(value, numbers.Integral):
        return lambda number, slot: _put_int(int(number), slot)
    if isinstance(value, numbers.Real):
        return lambda number, slot: _put_float(float(number), slot)
    raise TypeError(f"a value of type {type(value).__name__} has no form in automation")


def register(kind, writer):
    """Makes `put` know one more type."""
    _PUT[kind] = writer


# ---- Out ------------------------------------------------------------------------------------------------


def _take_text(slot):
    length = c_size_t()
    buffer = ctypes.create_string_buffer(256)
    check(library.vlgs_text(byref(slot), buffer, 256, byref(length)))
    if length.value > 256:
        buffer = ctypes.create_string_buffer(length.value)
        check(library.vlgs_text(byref(slot), buffer, length.value, byref(length)))
    return ctypes.string_at(buffer, length.value).decode("utf-8", "surrogatepass")


def _take_bytes(slot):
    data, size = c_void_p(), c_size_t()
    check(library.vlgs_bytes(byref(slot), byref(data), byref(size)))
    return ctypes.string_at(data, size.value) if size.value else b""


def _no_array(code=ARRAY + VARIANT):
    array = Array(vartype=code)
    array._lowers = ()
    return array


def _unflat(items, counts):
    if len(counts) <= 1:
        return items
    return [_unflat(items[first :: counts[0]], counts[1:]) for first in range(counts[0])]


def _take_array(slot):
    shape, rank = ctypes.POINTER(Dimension)(), c_size_t()
    check(library.vlgs_array_shape(byref(slot), byref(shape), byref(rank)))
    bounds = [(shape[i].lower, shape[i].count) for i in range(rank.value)]
    if slot.type == ARRAY + BYTE and len(bounds) <= 1:
        return _take_bytes(slot)
    array = _no_array(slot.type)
    counts = [count for _, count in bounds]
    items = _take_items(slot, math.prod(counts)) if bounds else []
    array.extend(_unflat(items, counts))
    array._lowers = tuple(lower for lower, _ in bounds)
    return array


def _take_items(slot, count):
    items = []
    chunk = (Value * min(_CHUNK, count or 1))()
    for start in range(0, count, _CHUNK):
        size = min(_CHUNK, count - start)
        check(library.vlgs_array_read(byref(slot), start, size, chunk))
        try:
            items.extend(take(chunk[i]) for i in range(size))
        finally:
            library.vlgs_clear(chunk, size)
    return items


def _take_record(slot):
    name, count = c_char_p(), c_size_t()
    check(library.vlgs_record(byref(slot), byref(name), byref(count)))
    if name.value is None:
        return None
    record = Record(name.value.decode())
    for index in range(count.value):
        field, content = c_char_p(), Value()
        check(library.vlgs_record_field(byref(slot), index, byref(field), byref(content)))
        try:
            record.__dict__[field.value.decode()] = take(content)
        finally:
            library.vlgs_clear(byref(content), 1)
    return record


def _take_error(slot):
    return Missing if slot.number == _MISSING_STATUS else Variant(ERROR, slot.number)


_TAKE = {
    EMPTY: lambda slot: Empty,
    NULL: lambda slot: Null,
    INTEGER: lambda slot: slot.integer,
    LONG: lambda slot: slot.number,
    SINGLE: lambda slot: slot.single,
    DOUBLE: lambda slot: slot.real,
    CURRENCY: lambda slot: _EXACT.scaleb(decimal.Decimal(slot.currency), -4),
    DATE: lambda slot: moment_of(slot.real),
    TEXT: _take_text,
    ERROR: _take_error,
    BOOLEAN: lambda slot: slot.boolean != 0,
    DECIMAL: _take_decimal,
    BYTE: lambda slot: slot.byte,
    RECORD: _take_record,
}


def take(slot):
    """The Python value of a native one, which stays as it is."""
    reader = _TAKE.get(slot.type)
    return reader(slot) if reader else _take_array(slot)


def register_reader(code, reader):
    """Makes `take` know one more type code."""
    _TAKE[code] = reader
