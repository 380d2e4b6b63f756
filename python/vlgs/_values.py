# SPDX-License-Identifier: MIT
"""The rules by which values travel between Python and automation.

`form_of` tells what a Python value is in automation, as a tuple that begins with a type code; both ways of reaching the
library (_native, _pure) write such forms, and know those of the commonest types by heart:

    (EMPTY,), (NULL,), (LONG, int), (DOUBLE, float), (BOOLEAN, bool), (DATE, days), (TEXT, str), (ERROR, status)
    (CURRENCY, ten-thousandths), (DECIMAL, scale, sign, upper 32 bits, lower 64 bits), (OBJECT, an object or None)
    (ARRAY + element, None)            an array without dimensions
    (ARRAY + BYTE, bytes)
    (ARRAY + element, bounds, items)   bounds are pairs of the lower bound and the count, items in memory's order
    (RECORD, name, fields, values)
    (VARIANT, value, code)             the value, converted by the run time to that type code

The functions behind `form_of` make Python values of what comes back.
"""

import os

from ._errors import run_time_error
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
    LONG,
    NULL,
    OBJECT,
    RECORD,
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

MISSING_STATUS = -2147352572
_LOWEST, _HIGHEST = -0x8000_0000, 0x7FFF_FFFF


# ---- Dates and decimals ---------------------------------------------------------------------------------

_MICROSECONDS = 86_400_000_000


def _day_zero():
    import datetime

    return datetime.datetime(1899, 12, 30)


def days_of(moment):
    """The day count of a datetime, date or time; one with a zone is taken in local time. Before day 0 the time of day
    counts away from zero."""
    import datetime

    if isinstance(moment, datetime.datetime) and moment.tzinfo is not None:
        moment = moment.astimezone().replace(tzinfo=None)
    if isinstance(moment, datetime.time):
        if moment.tzinfo is not None:
            raise ValueError("a time of day with a zone is no moment: pass a datetime")
        moment = datetime.datetime.combine(_day_zero(), moment)
    elif not isinstance(moment, datetime.datetime):
        moment = datetime.datetime.combine(moment, datetime.time())
    past = moment - _day_zero()
    fraction = (past.seconds * 1_000_000 + past.microseconds) / _MICROSECONDS
    return past.days + fraction if past.days >= 0 else past.days - fraction


def moment_of(days):
    """The datetime of a day count, to the microsecond; Variant(7, days) outside the years 1 to 9999."""
    import datetime
    import math

    try:
        whole = math.trunc(days)
        time = round(abs(days - whole) * _MICROSECONDS)
        # Far from day 0 a day count is coarser than a microsecond: the roundest time that it stands for.
        for unit in (1_000_000, 1_000):
            rounded = (time + unit // 2) // unit * unit
            if math.copysign(abs(whole) + rounded / _MICROSECONDS, days) == days:
                time = rounded
                break
        return _day_zero() + datetime.timedelta(days=whole, microseconds=time)
    except (OverflowError, ValueError):
        return Variant(DATE, days)


def _exact():
    import decimal

    return decimal.Context(prec=80, rounding=decimal.ROUND_HALF_EVEN, Emax=10**6, Emin=-(10**6))


def _checked(number):
    import decimal

    number = decimal.Decimal(number)
    if not number.is_finite() or number.adjusted() > 40:
        raise run_time_error(13 if number.is_nan() else 6)
    return number


def _units(number, scale):
    """The number times that power of ten, to the nearest integer."""
    exact = _exact()
    return int(exact.scaleb(number, scale).to_integral_value(context=exact)) if number else 0


def _decimal_form(number):
    number = _checked(number)
    scale = min(28, max(0, -number.as_tuple().exponent))
    while abs(units := _units(number, scale)) >= 1 << 96:
        if scale == 0:
            raise run_time_error(6)
        scale -= 1
    units = abs(units)
    return DECIMAL, scale, 0x80 if number.is_signed() else 0, units >> 64, units & 0xFFFF_FFFF_FFFF_FFFF


def decimal_of(scale, sign, high, low):
    import decimal

    digits = tuple(map(int, str(high << 64 | low)))
    return decimal.Decimal((1 if sign else 0, digits, -scale))


def _currency_form(number):
    units = _units(_checked(number), 4)
    if not -(1 << 63) <= units < 1 << 63:
        raise run_time_error(6)
    return CURRENCY, units


def currency_of(units):
    import decimal

    return _exact().scaleb(decimal.Decimal(units), -4)


# ---- In -------------------------------------------------------------------------------------------------


def _number_form(value):
    if _LOWEST <= value <= _HIGHEST:
        return LONG, int(value)
    try:
        return DOUBLE, float(value)
    except OverflowError:
        raise run_time_error(6) from None


def _error_form(status):
    if not _LOWEST <= status <= _HIGHEST:
        raise run_time_error(6)
    return ERROR, status


def _singleton_form(value):
    if value is Missing:
        return ERROR, MISSING_STATUS
    return (EMPTY,) if value is Empty else (NULL,)


def _items_form(value):
    items = list(value)
    return ARRAY + VARIANT, [(0, len(items))], items


def _array_form(value, code=None):
    code = (value.vartype if code is None else code) & 0xFFFF
    if value.dimensions == 0:
        return code, None
    bounds = list(zip(value._lowers, value._counts()))
    if any(not _LOWEST <= lower <= _HIGHEST for lower, _ in bounds):
        raise run_time_error(6)
    return code, bounds, value._flat()


def _record_form(value):
    fields = value._fields()
    if not isinstance(value._name, str):
        raise run_time_error(13)
    return RECORD, value._name, list(fields), list(fields.values())


def no_array(code=ARRAY + VARIANT):
    """An array that was never given dimensions."""
    array = Array(vartype=code)
    array._lowers = ()
    return array


def _variant_form(value):
    code, content = value.code, value.value
    if not isinstance(code, int) or not 0 <= code <= 0xFFFF:
        raise run_time_error(13)
    if code == ARRAY + BYTE and isinstance(content, (bytes, bytearray, memoryview)):
        return code, bytes(content)
    if code & ARRAY:
        if content is None:
            return code, None
        return _array_form(content if isinstance(content, Array) else Array(content), code)
    if code in (EMPTY, NULL):
        return (code,)
    if code == ERROR:
        return _error_form(content)
    if code in (CURRENCY, DECIMAL):
        import decimal

        if isinstance(content, (int, decimal.Decimal)):
            return _currency_form(content) if code == CURRENCY else _decimal_form(content)
    form = form_of(content)
    if code == OBJECT and form[0] != OBJECT:
        raise run_time_error(13)
    if code == DATE and form[0] in (LONG, DOUBLE):
        return DATE, float(form[1])
    return form if code in (VARIANT, form[0]) else (VARIANT, content, code)


def dictionary_of(value):
    """A dictionary of the run time with a dict's items."""
    dictionary = make("Scripting.Dictionary")
    for key, item in value.items():
        dictionary.Add(key, item)
    return dictionary


# Set by _objects, which stands above: what creates an object by its name, and the type of all objects.
make = object_type = None
_forms = {}


def _all_forms():
    import datetime
    import decimal
    import uuid

    def date_form(value):
        return DATE, days_of(value)

    def bytes_form(value):
        return ARRAY + BYTE, bytes(value)

    # Derived types go before those that they derive from.
    return {
        bool: lambda value: (BOOLEAN, value),
        int: _number_form,
        float: lambda value: (DOUBLE, float.__float__(value)),
        str: lambda value: (TEXT, str.__str__(value)),
        bytes: bytes_form,
        bytearray: bytes_form,
        memoryview: bytes_form,
        datetime.datetime: date_form,
        datetime.date: date_form,
        datetime.time: date_form,
        decimal.Decimal: _decimal_form,
        Array: _array_form,
        list: _items_form,
        tuple: _items_form,
        Variant: _variant_form,
        Record: _record_form,
        range: _items_form,
        set: _items_form,
        frozenset: _items_form,
        uuid.UUID: lambda value: (TEXT, f"{{{value}}}".upper()),
        ByRef: lambda value: form_of(value.value),
        _Singleton: _singleton_form,
        dict: lambda value: (OBJECT, dictionary_of(value)),
        type(None): lambda value: (OBJECT, value),
        object_type: lambda value: (OBJECT, value),
    }


def form_of(value):
    """What a value is in automation. Raises 6 and 13 for values that are outside its types, TypeError for those that
    have no form in it."""
    if not _forms:
        _forms.update(_all_forms())
    known = _forms.get(type(value)) or _form_of_derived(value)
    return known(value)


def _form_of_derived(value):
    import numbers

    for kind, known in _forms.items():
        if isinstance(value, kind):
            return known
    if isinstance(value, os.PathLike):
        return lambda path: (TEXT, os.fsdecode(path))
    if isinstance(value, numbers.Integral):
        return lambda number: _number_form(int(number))
    if isinstance(value, numbers.Real):
        return lambda number: (DOUBLE, float(number))
    raise TypeError(f"a value of type {type(value).__name__} has no form in automation")


# ---- Out ------------------------------------------------------------------------------------------------


def _unflat(items, counts):
    if len(counts) <= 1:
        return items
    return [_unflat(items[first :: counts[0]], counts[1:]) for first in range(counts[0])]


def array_of(code, bounds, items):
    """The array of these items, which stand in memory's order; `bounds` are pairs of the lower bound and the count."""
    array = no_array(code)
    array.extend(_unflat(items, [count for _, count in bounds]))
    array._lowers = tuple(lower for lower, _ in bounds)
    return array


def record_of(name, fields):
    record = Record(name)
    record.__dict__.update(fields)
    return record


def error_value_of(status):
    return Missing if status == MISSING_STATUS else Variant(ERROR, status)
