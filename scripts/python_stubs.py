#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes python/vlgs/__init__.pyi, what editors and type checkers know of the module, from the descriptions of the
classes.

    PYTHONPATH=build/dev/python scripts/python_stubs.py           # prints it
    PYTHONPATH=build/dev/python scripts/python_stubs.py --write
"""

import itertools
import pathlib
import sys
import textwrap

import vlgs
from vlgs import _descriptions
from vlgs._core import GET, METHOD, PUT, PUTREF
from vlgs._types import ARRAY

TARGET = pathlib.Path(__file__).resolve().parent.parent / "python/vlgs/__init__.pyi"

HEAD = '''\
# SPDX-License-Identifier: MIT
# Made by scripts/python_stubs.py from the descriptions of the classes; run it again instead of editing this file.
# Members answer to their names in any case; the names here are the ones that a checker knows.
import datetime
import decimal
import os
import uuid
from typing import Any, Dict, Iterable, Iterator, List, Literal, Mapping, Sequence, Tuple, Type, TypeVar, Union, overload

_T = TypeVar("_T", bound="Object")
_Text = Union[str, "os.PathLike[str]", uuid.UUID, ByRef]
_Date = Union[datetime.date, datetime.time, float, str, ByRef]
_Number = Union[float, decimal.Decimal, ByRef]
_Items = Union[Sequence[Any], range, "set[Any]", "frozenset[Any]", bytes, ByRef]

__version__: str

class ByRef:
    value: Any
    def __init__(self, value: Any = ...) -> None: ...

class Variant:
    code: int
    value: Any
    def __init__(self, code: int, value: Any = ...) -> None: ...

class Array(List[Any]):
    vartype: int
    @property
    def lower(self) -> Any: ...
    @property
    def upper(self) -> Any: ...
    @property
    def dimensions(self) -> int: ...
    def __init__(self, values: Iterable[Any] = ..., lower: Union[int, Tuple[int, ...]] = ..., vartype: int = ...) -> None: ...

class Record:
    def __init__(self, name: str, **fields: Any) -> None: ...
    def __getattr__(self, name: str) -> Any: ...
    def __setattr__(self, name: str, value: Any) -> None: ...

class _Singleton:
    def __bool__(self) -> Literal[False]: ...

Empty: _Singleton
Null: _Singleton
Missing: Any

class WithEvents:
    handler: Any
    def __init__(self, source: Object, handler: Any) -> None: ...
    def close(self) -> None: ...
    def __enter__(self) -> WithEvents: ...
    def __exit__(self, *raised: Any) -> None: ...

class Object:
    def __call__(self, *arguments: Any, **named: Any) -> Any: ...
    def __getitem__(self, index: Any) -> Any: ...
    def __setitem__(self, index: Any, value: Any) -> None: ...
    def __len__(self) -> int: ...
    def __iter__(self) -> Iterator[Any]: ...
    def __reversed__(self) -> Iterator[Any]: ...
'''

# What vlgs._documents adds to the members of a class.
ADDED = {
    "INIFile": '''\
    def __contains__(self, name: str) -> bool: ...
    def __getitem__(self, index: Any) -> Property: ...
    def __setitem__(self, name: str, keys: Mapping[str, Any]) -> None: ...
    def __delitem__(self, name: str) -> None: ...
    def __iter__(self) -> Iterator[Property]: ...
    def get(self, name: str, default: Any = ...) -> Any: ...
    def keys(self) -> List[str]: ...
    def values(self) -> List[Property]: ...
    def items(self) -> List[Tuple[str, Property]]: ...
    def __enter__(self: _T) -> _T: ...
    def __exit__(self, *raised: Any) -> None: ...
''',
    "Property": '''\
    def texts(self) -> Dict[str, str]: ...
    def __contains__(self, name: str) -> bool: ...
    def __delitem__(self, name: str) -> None: ...
    def __iter__(self) -> Iterator[Property]: ...
    def get(self, name: str, default: Any = ...) -> Any: ...
    def keys(self) -> List[str]: ...
    def values(self) -> List[Property]: ...
    def items(self) -> List[Tuple[str, Property]]: ...
''',
}

PLAIN = {2: "int", 3: "int", 4: "float", 5: "float", 6: "decimal.Decimal", 7: "datetime.datetime", 8: "str",
         11: "bool", 14: "decimal.Decimal", 17: "int"}
WIDER = {"int": "Union[int, ByRef]", "float": "_Number", "decimal.Decimal": "_Number", "datetime.datetime": "_Date",
         "str": "_Text", "bool": "Union[bool, ByRef]"}


def result(type_, own):
    if type_.type & ARRAY:
        return "Array"
    if type_.type == 0:
        return "None"
    if type_.type == 9:
        return type_.name if type_.name in own else "Any"
    return PLAIN.get(type_.type, "Any")


def argument(type_, own):
    if type_.type & ARRAY:
        return "_Items"
    name = result(type_, own)
    return f"Union[{name}, ByRef, None]" if name in own else WIDER.get(name, "Any")


def parameters(member, own):
    given = list(member.parameters())
    last = max((i for i, each in enumerate(given) if not each.optional), default=-1)
    return [f"{each.name}: {argument(each.type, own)}" + (" = ..." if i > last else "") for i, each in enumerate(given)]


def docstring(rows):
    text = _descriptions.contract_of(rows).replace("\\", "\\\\").replace('"""', "'''").replace("\r\n", "\n")
    return textwrap.indent(f'"""{text.rstrip()}\n"""' if "\n" in text else f'"""{text}"""', " " * 8,
                           lambda line: line.strip())


def member_lines(name, rows, own):
    kinds = 0
    for each in rows:
        kinds |= each.kind
    main = min(rows, key=lambda each: each.kind != GET)
    listed = parameters(main, own)
    doc = docstring(rows)
    if kinds & METHOD or (listed and kinds & GET):
        signature = ", ".join(["self", *listed])
        return f"    def {name}({signature}) -> {result(main.result, own)}:\n{doc}\n        ...\n"
    if not kinds & GET:
        return ""
    lines = f"    @property\n    def {name}(self) -> {result(main.result, own)}:\n{doc}\n        ...\n"
    if kinds & (PUT | PUTREF):
        put = next(each for each in rows if each.kind in (PUT, PUTREF))
        value = parameters(put, own)[-1].split(": ", 1)[1]
        lines += f"    @{name}.setter\n    def {name}(self, value: {value}) -> None: ...\n"
    return lines


def errors():
    kinds = sorted((each for each in vars(vlgs).values() if isinstance(each, type) and issubclass(each, vlgs.Error)),
                   key=lambda each: (each is not vlgs.Error, each.__name__))
    for kind in kinds:
        if kind is vlgs.Error:
            yield ("class Error(Exception):\n    number: int\n    source: str\n    description: str\n"
                   "    @property\n    def code(self) -> int: ...\n"
                   "    def __init__(self, number: int, source: str = ..., description: str = ...) -> None: ...\n")
        else:
            yield f"class {kind.__name__}({', '.join(base.__name__ for base in kind.__bases__)}): ...\n"


def stub():
    found = [(cls, _descriptions.facts_of(cls)) for cls in _descriptions.classes()]
    own = {facts.name for _, facts in found}
    members = {}
    for cls, facts in found:
        rows = {}
        for member in itertools.islice(_descriptions.members_of(cls), facts.member_count):
            if not member.hidden:
                rows.setdefault(member.name, []).append(member)
        members[facts.name] = {each: member_lines(each, given, own) for each, given in rows.items()}
    shared = dict(set.intersection(*(set(lines.items()) for lines in members.values())))
    text = [HEAD, *errors(), "class _Component(Object):\n", *(shared[each] for each in sorted(shared))]
    for _, facts in found:
        text += [f'class {facts.name}(_Component):\n    """{facts.help}"""\n', ADDED.get(facts.name, ""),
                 *(lines for each, lines in members[facts.name].items() if each not in shared)]
    text += [f'@overload\ndef Dispatch(progid: Literal["VlGeneralServices.{facts.name}"]) -> {facts.name}: ...\n'
             for _, facts in found if facts.creatable]
    text += ["@overload\ndef Dispatch(progid: str) -> Any: ...\n", "class _Constants:\n",
             *(f"    {each.name}: int\n" for each in _descriptions.constants()), "constants: _Constants\n"]
    return "".join(text)


if __name__ == "__main__":
    if sys.argv[1:] == ["--write"]:
        TARGET.write_text(stub())
    else:
        print(stub(), end="")
