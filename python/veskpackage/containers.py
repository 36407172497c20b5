# SPDX-License-Identifier: Apache-2.0
"""The lists and mappings that records have: a list and a dict that take only what a record can hold.

Whatever is put in is looked at before anything is changed, so that a wrong value raises a TypeError or
ValueError where it is given, not when the package is written. In all else they are Python's own: they
are equal to plain lists and dicts, can be sliced, sorted, copied, pickled and given to json.
"""

from __future__ import annotations

from collections.abc import Iterable, Mapping
from typing import Any, Generic, Self, SupportsIndex, TypeVar, overload

from . import _core

__all__ = [
    "CheckedDict",
    "CheckedList",
    "Permissions",
    "TextList",
    "TextLists",
    "Texts",
    "UniqueTexts",
]

Item = TypeVar("Item")
Given = TypeVar("Given")
Items = Mapping[str, Given] | Iterable[tuple[str, Given]]


def checked_text(value: object) -> str:
    """The value, if it is a text in Unicode, such as a manifest holds."""
    if not isinstance(value, str):
        raise TypeError(f"a str is wanted, not {type(value).__name__}")
    value.encode()  # a lone surrogate raises UnicodeEncodeError, which is a ValueError
    return value


class CheckedList(list[Item]):
    """A list that takes certain items only."""

    __slots__ = ()

    def _checked(self, item: Any) -> Item:
        """The item to keep for what is put in."""
        raise NotImplementedError

    def _settle(self) -> None:
        """Called when items have been put in."""

    def _all_checked(self, items: Iterable[Any]) -> list[Item]:
        if isinstance(items, (str, bytes)) or not isinstance(items, Iterable):
            raise TypeError(f"a list is wanted, not {type(items).__name__}")
        return [self._checked(item) for item in items]

    @classmethod
    def _trusted(cls, items: Iterable[Item]) -> Self:
        """With items that need no look."""
        made = cls.__new__(cls)
        list.extend(made, items)
        return made

    def _become(self, items: Iterable[Item]) -> None:
        self[:] = items

    def __init__(self, items: Iterable[Item] = (), /) -> None:
        super().__init__(self._all_checked(items))
        self._settle()

    def __reduce__(self) -> tuple[Any, ...]:
        return self._trusted, (list(self),)

    def append(self, item: Item) -> None:
        super().append(self._checked(item))
        self._settle()

    def insert(self, index: SupportsIndex, item: Item) -> None:
        super().insert(index, self._checked(item))
        self._settle()

    def extend(self, items: Iterable[Item]) -> None:
        super().extend(self._all_checked(items))
        self._settle()

    def __iadd__(self, items: Iterable[Item]) -> Self:  # type: ignore[override, misc]
        self.extend(items)
        return self

    def __imul__(self, times: SupportsIndex) -> Self:
        super().__imul__(times)
        self._settle()
        return self

    @overload
    def __setitem__(self, index: SupportsIndex, item: Item) -> None:
        ...

    @overload
    def __setitem__(self, index: slice, item: Iterable[Item]) -> None:
        ...

    def __setitem__(self, index: Any, item: Any) -> None:
        if isinstance(index, slice):
            super().__setitem__(index, self._all_checked(item))
        else:
            super().__setitem__(index, self._checked(item))
        self._settle()


class TextList(CheckedList[str]):
    """A list of texts."""

    __slots__ = ()

    def _checked(self, item: Any) -> str:
        return checked_text(item)


class UniqueTexts(TextList):
    """A list of texts, each there once: of equal ones only the first stays. So to assign to an item may make
    the list shorter, to append may change nothing, and to insert may move a text to the front."""

    __slots__ = ()

    def _settle(self) -> None:
        unique = dict.fromkeys(self)
        if len(unique) != len(self):
            list.__setitem__(self, slice(None), unique)


class Permissions(UniqueTexts):
    """The permissions that a behavior claims, each once; a ValueError for one that no robot knows."""

    __slots__ = ()
    supported = tuple(_core.supported_permissions())

    def _checked(self, item: Any) -> str:
        text = super()._checked(item)
        if text not in self.supported and text not in self:
            raise ValueError(f"no permission: {text!r}; there are {', '.join(self.supported)}")
        return text

    def _all_checked(self, items: Iterable[Any]) -> list[str]:
        return list(items) if isinstance(items, Permissions) else super()._all_checked(items)


class CheckedDict(dict[str, Item], Generic[Item, Given]):
    """A dict from texts to certain values only, made of what is given."""

    __slots__ = ()

    def _checked(self, key: str, value: Any) -> Item:
        """What to keep for a value that is put in."""
        raise NotImplementedError

    def _all_checked(self, items: Mapping[str, Any]) -> dict[str, Item]:
        return {checked_text(key): self._checked(key, value) for key, value in items.items()}

    @classmethod
    def _trusted(cls, items: dict[str, Item]) -> Self:
        """With items that need no look."""
        made = cls.__new__(cls)
        super(CheckedDict, made).update(items)
        return made

    def _become(self, items: Mapping[str, Any]) -> None:
        if not isinstance(items, Mapping):
            raise TypeError(f"a dict is wanted, not {type(items).__name__}")
        given = self._all_checked(items)
        self.clear()
        super().update(given)

    def __init__(self, items: Items[Given] = (), /, **more: Given) -> None:
        super().__init__()
        self.update(items, **more)

    def __setitem__(self, key: str, value: Given) -> None:  # type: ignore[override]
        super().__setitem__(checked_text(key), self._checked(key, value))

    def setdefault(self, key: str, default: Given) -> Item:  # type: ignore[override]
        """The value under a key; the given one is put in first if there is none."""
        if key not in self:
            self[key] = default
        return self[key]

    def update(self, items: Items[Given] = (), /, **more: Given) -> None:  # type: ignore[override]
        given: dict[str, Given] = dict(items)
        given.update(more)
        super().update(self._all_checked(given))

    def __ior__(self, items: Items[Given]) -> Self:  # type: ignore[override, misc]
        self.update(items)
        return self

    def __reduce__(self) -> tuple[Any, ...]:
        return self._trusted, (dict(self),)


class Texts(CheckedDict[str, str]):
    """Texts by language, such as ``{"en_US": "Hello"}``."""

    __slots__ = ()

    def _checked(self, key: str, value: Any) -> str:
        return checked_text(value)


class TextLists(CheckedDict[TextList, Iterable[str]]):
    """Lists of texts by language or purpose.

    What is put in is copied to a list of its own, unless it is that list already:
    ``tags["en_US"] = ["greeting"]`` and then ``tags["en_US"] += ["hello"]``.
    """

    __slots__ = ()

    def _checked(self, key: str, value: Any) -> TextList:
        is_there = key in self and self[key] is value
        return self[key] if is_there else TextList(value)

    def setdefault(self, key: str, default: Iterable[str] = ()) -> TextList:
        """The list under a key; an empty or the given one is put in first if there is none."""
        return super().setdefault(key, default)
