# SPDX-License-Identifier: MIT
# mypy: ignore-errors
"""Values of automation that Python has no type for, and the codes of its types."""

EMPTY, NULL, INTEGER, LONG, SINGLE, DOUBLE, CURRENCY, DATE, TEXT = range(9)
OBJECT, ERROR, BOOLEAN, VARIANT, DECIMAL, BYTE, RECORD, ARRAY = 9, 10, 11, 12, 14, 17, 36, 0x2000


class _Singleton:
    """A value of which there is only one. It is falsy."""

    def __init__(self, name, meaning):
        self._name = name
        self.__doc__ = meaning

    def __bool__(self):
        return False

    def __repr__(self):
        return f"vlgs.{self._name}"

    def __reduce__(self):
        return self._name


Empty = _Singleton("Empty", "The value of a variant that was never given one.")
Null = _Singleton("Null", "The value of a variant that holds no valid data.")
Missing = _Singleton("Missing", "Stands for an optional argument that is left out.")


class ByRef:
    """An argument that receives what the member writes to it.

    >>> value = vlgs.ByRef("before"); obj.Member(value); value.value
    """

    __slots__ = ("value",)

    def __init__(self, value=Empty):
        self.value = value

    def __repr__(self):
        return f"vlgs.ByRef({self.value!r})"


class Variant:
    """A value of a type code that Python would not choose: Variant(2, 5) is a 16-bit integer,
    Variant(6, "1.25") a currency amount, Variant(0x2000 + 8, ["a", "b"]) an array of texts, Variant(10, n)
    an error value. Conversions are those of the run time: 13 type mismatch, 6 overflow."""

    __slots__ = ("code", "value")

    def __init__(self, code, value=None):
        self.code = code
        self.value = value

    def __eq__(self, other):
        if not isinstance(other, Variant):
            return NotImplemented
        return (self.code, self.value) == (other.code, other.value)

    __hash__ = None

    def __repr__(self):
        return f"vlgs.Variant({self.code}, {self.value!r})"


class Array(list):
    """An array with bounds of its own. It is a list of its items (of lists of items, for more dimensions)
    counted from 0 as lists are, and equals any list with the same items.

    Array(values, lower=1)           one dimension from 1 on
    Array([[1, 2], [3, 4]], (1, 1))  two dimensions
    Array(values, vartype=8)         texts; an element's type code, with or without 0x2000
    """

    def __init__(self, values=(), lower=0, vartype=ARRAY + VARIANT):
        self._lowers = tuple(lower) if isinstance(lower, (tuple, list)) else (lower,)
        self.vartype = vartype | ARRAY
        super().__init__(_nested(values, len(self._lowers)))
        self._counts()  # refuses lists of unequal lengths

    @property
    def dimensions(self):
        """The number of dimensions; 0 for an array that was never given any."""
        return len(self._lowers)

    @property
    def lower(self):
        """The lower bound, a tuple for more dimensions than one."""
        return self._bound(self._lowers) if self._lowers else 0

    @property
    def upper(self):
        """The upper bound, a tuple for more dimensions than one; -1 for an array without dimensions."""
        uppers = [low + count - 1 for low, count in zip(self._lowers, self._counts())]
        return self._bound(uppers) if uppers else -1

    @staticmethod
    def _bound(bounds):
        return bounds[0] if len(bounds) == 1 else tuple(bounds)

    def _counts(self):
        """The length of each dimension."""
        counts = []
        level = [self]
        for depth in range(len(self._lowers)):
            count = len(level[0]) if level else 0
            if any(len(row) != count for row in level):
                raise ValueError("the rows of an array have the same length")
            counts.append(count)
            if depth + 1 < len(self._lowers):
                level = [row for rows in level for row in rows]
        return counts

    def _flat(self):
        """The items in the order of memory, the first dimension fastest."""
        self._counts()
        return _flat(self, len(self._lowers))

    def __repr__(self):
        extras = [] if self.lower == 0 else [f"lower={self.lower!r}"]
        if self.vartype != ARRAY + VARIANT:
            extras.append(f"vartype={self.vartype:#x}")
        return f"vlgs.Array({', '.join([list.__repr__(self), *extras])})"


class Record:
    """A record: its fields are attributes. Record("udtName", sField="text") makes one."""

    def __init__(self, record_name, /, **fields):
        self.__dict__["_name"] = record_name
        self.__dict__.update(fields)

    def _fields(self):
        return {name: value for name, value in self.__dict__.items() if name != "_name"}

    def __getattr__(self, name):
        for field in self.__dict__:
            if field.lower() == name.lower():
                return self.__dict__[field]
        raise AttributeError(f"{self.__dict__.get('_name', 'Record')} has no field {name}")

    def __setattr__(self, name, value):
        for field in self.__dict__:
            if field.lower() == name.lower():
                name = field
        self.__dict__[name] = value

    def __eq__(self, other):
        if not isinstance(other, Record):
            return NotImplemented
        return self.__dict__ == other.__dict__

    __hash__ = None

    def __repr__(self):
        fields = "".join(f", {name}={value!r}" for name, value in self._fields().items())
        return f"vlgs.Record({self._name!r}{fields})"


def _nested(values, dimensions):
    if dimensions <= 1:
        return list(values)
    return [_nested(row, dimensions - 1) for row in values]


def _flat(rows, dimensions):
    if dimensions <= 1:
        return list(rows)
    return [item for column in zip(*(_flat(row, dimensions - 1) for row in rows)) for item in column]
