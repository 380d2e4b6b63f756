# SPDX-License-Identifier: MIT
"""What Python programs expect of INI documents, their sections and keys, collections and dictionaries, besides
the members that every caller has."""

from ._core import core
from ._errors import run_time_error
from ._objects import Dispatch, Object, with_protocols


def _item(target, index):
    """What the default member gives, which is Empty where there is nothing, as for every caller."""
    if isinstance(index, int) and index < 0:
        raise run_time_error(9, f"positions count from 1, {index} is none")
    return Object.__getitem__(target, index)


class _Names(Object):
    """Keeps the names that it listed last."""

    __slots__ = ("_listed",)

    def _names(self, members):
        changes = core.changes(members)
        try:
            known, then, names = self._listed
        except AttributeError:
            known = None
        if known is None or known != members or then != changes:
            names = core.read_each(members, "Name")
            _Names._listed.__set__(self, (members, changes, names))
        return names.copy()


@with_protocols
class INIFile(_Names):
    """An INI document as a mapping of names to sections.

    for section in document              the sections in order
    document["ODBC"]["DSN"]              a key; it equals its text, and str() gives that
                                         (vlgs.Empty where there is none, as the default member has it)
    document["ODBC"]["DSN"] = "Demo"     creates or changes a key
    document["ODBC"] = {"DSN": "Demo"}   gives a section these keys alone
    del document["ODBC"]["DSN"], document["ODBC"]
    with files.CreateINIFile(path) as document: ...
                                         saves the document at the end, unless the block raises; the document of
                                         a lock, which deletes its file, is let go instead
    """

    __slots__ = ()

    def __iter__(self):
        return iter(self.values())

    def __contains__(self, name):
        return self.Section(name) is not None

    def __getitem__(self, index):
        section = _item(self, index)
        if isinstance(section, Property):
            Property._document.__set__(section, self)
        return section

    def __setitem__(self, name, keys):
        keys = dict(keys)
        if None in keys.values():
            raise TypeError("a key has a text")
        # What is no name or no text fails here, before anything is changed.
        trial = Dispatch("VlGeneralServices.Files").CreateINIFile(self.FullPath)
        for key, text in keys.items():
            trial.CreateKey("Keys", key, text)
        keys = trial["Keys"].texts() if len(trial) else {}
        if isinstance(name, int) and not 1 <= name <= len(self):
            raise run_time_error(9, f"there is no section {name}")
        section = self.values()[name - 1].Name if isinstance(name, int) else self.CreateSection(name).Name
        for known in list(self[section].keys()):
            if known not in keys:
                self.DeleteKey(section, known)
        for key, text in keys.items():
            self.CreateKey(section, key, text)

    def __delitem__(self, name):
        if not self.DeleteSection(name):
            raise KeyError(name)

    def get(self, name, default=None):
        """A section by its name, or the default."""
        return self[name] if name in self else default

    def keys(self):
        """The names of the sections."""
        return self._names(self.Sections)

    def values(self):
        """The sections."""
        sections = list(self.Sections)
        for section in sections:
            Property._document.__set__(section, self)
        return sections

    def items(self):
        """Pairs of a section's name and the section."""
        return list(zip(self.keys(), self.values()))

    def __enter__(self):
        return self

    def __exit__(self, kind, error, traceback):
        if self.DelayedDelete:
            self.Delete()
        elif kind is None:
            self.Save()

    def __repr__(self):
        return f"<{self._progid} {self.FullPath!r}>"


@with_protocols
class Property(_Names):
    """A section as a mapping of names to keys, or a key, which equals its text."""

    __slots__ = ("_document",)

    def _keys(self):
        keys = self.Value
        if not isinstance(keys, Object):
            raise run_time_error(451, f"the key {self.Name}")
        return keys

    def _owner(self):
        try:
            return self._document
        except AttributeError:
            raise TypeError(
                "this section does not know its document: write document[section][key] = text"
            ) from None

    def __iter__(self):
        return iter(self._keys())

    def __len__(self):
        return len(self._keys())

    def __contains__(self, name):
        return self._keys().IsPresent(name)

    def __getitem__(self, index):
        return _item(self, index)

    def __setitem__(self, name, text):
        document = self._owner()
        if document.Section(self.Name) != self:
            raise KeyError(f"the section {self.Name} was deleted")
        document.CreateKey(self.Name, name, text)

    def __delitem__(self, name):
        if not self._owner().DeleteKey(self.Name, name):
            raise KeyError(name)

    def get(self, name, default=None):
        """A key by its name, or the default."""
        return self[name] if name in self else default

    def texts(self):
        """A dict of the keys' texts by their names."""
        keys = self._keys()
        return dict(zip(self._names(keys), core.read_each(keys, "Value")))

    def keys(self):
        """The names of the section's keys."""
        return self._names(self._keys())

    def values(self):
        """The section's keys."""
        return list(self._keys())

    def items(self):
        """Pairs of a key's name and the key."""
        return list(zip(self.keys(), self.values()))

    def __eq__(self, other):
        if isinstance(other, str):
            return self.Value == other
        return super().__eq__(other)

    def __hash__(self):
        value = self.Value
        return super().__hash__() if isinstance(value, Object) else hash(value)

    def __str__(self):
        value = self.Value
        return repr(self) if isinstance(value, Object) else str(value)

    def __repr__(self):
        value = self.Value
        return f"<{self._progid} {self.Name}: {len(value)} keys>" if isinstance(value, Object) else (
            f"<{self._progid} {self.Name}={value!r}>"
        )


@with_protocols
class Collection(Object):
    """Members counted from 1; a negative position is an error, not one from the end."""

    __slots__ = ()

    def __getitem__(self, index):
        return _item(self, index)

    def __repr__(self):
        return f"<{self._progid}: {len(self)} members>"


@with_protocols
class Dictionary(Object):
    """Items by their keys. Reading dictionary[key] adds a key that is not there, with the item Empty, as it does for
    all callers; `key in dictionary` tells."""

    __slots__ = ()

    def __contains__(self, key):
        return self.Exists(key)

    def __delitem__(self, key):
        self.Remove(key)

    def __repr__(self):
        return f"<{self._progid}: {len(self)} items>"
