# SPDX-License-Identifier: MIT
# mypy: ignore-errors
"""What the library tells about its classes, and the texts and signatures that Python shows for them."""

import collections
import inspect

from . import _types
from ._core import GET, core

Type = collections.namedtuple("Type", "type by_reference enumerator name")
Facts = collections.namedtuple("Facts", "library name help event_interface creatable member_count event_count")
_MEMBER = "name help id kind hidden parameter_count result error_count example example_output"
_PARAMETER = "name meaning type optional default_type default_number default_text"
Constant = collections.namedtuple("Constant", "enumeration name value")


class Member(collections.namedtuple("Member", _MEMBER + " cls row")):
    """A row of a class's description."""

    __slots__ = ()

    def parameters(self):
        for place in range(self.parameter_count):
            found = Parameter._make(core.parameter(self.cls, self.row, place))
            yield found._replace(type=Type._make(found.type))

    def conditions(self):
        """Pairs of a code and when it is raised."""
        return [core.condition(self.cls, self.row, place) for place in range(self.error_count)]


Parameter = collections.namedtuple("Parameter", _PARAMETER)


def classes():
    index = 0
    while cls := core.class_at(index):
        yield cls
        index += 1


def facts_of(cls):
    return Facts._make(core.class_facts(cls))


def member_of(cls, row):
    """A row by its place, the events behind the others; None behind the last one."""
    found = core.member(cls, row)
    if found is None:
        return None
    member = Member(*found, cls, row)
    return member._replace(result=Type._make(member.result))


def members_of(cls):
    """All rows, with those of the events."""
    row = 0
    while (member := member_of(cls, row)) is not None:
        yield member
        row += 1


def constants():
    index = 0
    while (found := core.constant(index)) is not None:
        yield Constant._make(found)
        index += 1


_TYPE_NAMES = {
    0: "None",
    2: "Integer",
    3: "Long",
    4: "Single",
    5: "Double",
    6: "Currency",
    7: "Date",
    8: "String",
    9: "Object",
    11: "Boolean",
    12: "Variant",
    14: "Decimal",
    17: "Byte",
}


class Named:
    """The name of a type, shown in a signature as it is."""

    def __init__(self, type_):
        name = type_.name or _TYPE_NAMES.get(type_.type & 0xFFF, "Variant")
        self.name = name + "()" * bool(type_.type & _types.ARRAY) + " ByRef" * bool(type_.by_reference)

    def __repr__(self):
        return self.name


class _Default(Named):
    def __init__(self, parameter):
        if parameter.default_type == _types.LONG:
            self.name = str(parameter.default_number)
        elif parameter.default_type == _types.TEXT:
            self.name = repr(parameter.default_text)
        else:
            self.name = "Missing"


def _parameters(member):
    for parameter in member.parameters():
        yield inspect.Parameter(
            parameter.name,
            inspect.Parameter.POSITIONAL_OR_KEYWORD,
            annotation=Named(parameter.type),
            default=_Default(parameter) if parameter.optional else inspect.Parameter.empty,
        )


def signature_of(member):
    """The signature of a row, with the object itself as the first parameter."""
    parameters = list(_parameters(member))
    # A required parameter behind an optional one is more than Python's own signatures allow.
    required = False
    for index in range(len(parameters) - 1, -1, -1):
        if required:
            parameters[index] = parameters[index].replace(default=inspect.Parameter.empty)
        required = required or parameters[index].default is inspect.Parameter.empty
    self = inspect.Parameter("self", inspect.Parameter.POSITIONAL_OR_KEYWORD)
    return inspect.Signature([self, *parameters], return_annotation=Named(member.result))


def contract_of(rows):
    """What a member does, what its parameters mean and what it raises when."""
    rows = sorted(rows, key=lambda row: row.kind != GET)
    text = [rows[0].help]
    meanings = {}
    for row in rows:
        for parameter in row.parameters():
            if parameter.meaning:
                meanings.setdefault(parameter.name, parameter.meaning)
    if meanings:
        text.append("\n".join(f"{name}: {meaning}" for name, meaning in meanings.items()))
    raised = [f"Raises {code} when {when}." for code, when in rows[0].conditions()]
    if raised:
        text.append("\n".join(raised))
    if rows[0].example:
        text.append(f"$ vlgs call {rows[0].example}\n{rows[0].example_output}")
    return "\n\n".join(text)


def property_text(rows):
    """What help shows of a property: its parameters and type, whether it is read and written, its contract."""
    reading = [row for row in rows if row.kind == GET]
    shown = reading[0] if reading else rows[0]
    arguments = list(signature_of(shown).parameters.values())[1 : None if reading else -1]
    written = len(rows) > len(reading)
    access = "read/write" if reading and written else "read-only" if reading else "write-only"
    head = f"{Named(shown.result)} " if reading else ""
    if arguments:
        head = f"({', '.join(map(str, arguments))}) -> {head}"
    return f"{head}({access}). {contract_of(rows)}"


def outputs_of(cls, name):
    """Places and names of a member's by-reference parameters."""
    for member in members_of(cls):
        if member.name == name:
            return [(place, each.name) for place, each in enumerate(member.parameters()) if each.type.by_reference]
    return []
