# SPDX-License-Identifier: MIT
"""The members of all enumerations by name."""

from ctypes import byref

from ._library import Constant, library


class _Constants:
    """All enumeration members: constants.eINI_VLS. Names ignore case; dir(constants) lists them."""

    def __init__(self):
        self._names = {}
        self._folded = {}
        constant, index = Constant(), 0
        while library.vlgs_constant_describe(index, byref(constant)):
            name = constant.name.decode()
            self._names[name] = constant.value
            self._folded[name.lower()] = constant.value
            index += 1

    def __getattr__(self, name):
        if name in ("_names", "_folded"):
            raise AttributeError(name)
        try:
            return self._names[name] if name in self._names else self._folded[name.lower()]
        except KeyError:
            raise AttributeError(f"no enumeration has a member {name}") from None

    def __dir__(self):
        return list(self._names)

    def __repr__(self):
        return f"<vlgs.constants: {len(self._names)} enumeration members>"


constants = _Constants()
