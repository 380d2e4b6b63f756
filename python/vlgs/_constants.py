# SPDX-License-Identifier: MIT
"""The members of all enumerations by name."""

from ._core import core


class _Constants:
    """All enumeration members: constants.eINI_VLS. Names ignore case; dir(constants) lists them."""

    def __init__(self):
        self._names = {}
        self._folded = {}
        index = 0
        while (found := core.constant(index)) is not None:
            _, name, value = found
            self._names[name] = value
            self._folded[name.lower()] = value
            index += 1

    def __getattr__(self, name):
        if name in ("_names", "_folded"):
            raise AttributeError(name)
        try:
            return self._names[name] if name in self._names else self._folded[name.lower()]
        except KeyError:
            import difflib

            near = difflib.get_close_matches(name, self._names, 1)
            hint = f"; did you mean {near[0]}?" if near else ""
            raise AttributeError(f"no enumeration has a member {name}{hint}") from None

    def __dir__(self):
        return list(self._names)

    def __repr__(self):
        return f"<vlgs.constants: {len(self._names)} enumeration members>"


constants = _Constants()
