# SPDX-License-Identifier: Apache-2.0
"""Changes a manifest's text by as few edits as possible."""

from __future__ import annotations

import json
from collections.abc import Iterable, Mapping
from dataclasses import dataclass
from functools import cache
from typing import Any, Protocol, TypeAlias, overload

from . import _core
from ._files import Data, is_data
from ._record import Record, json_of
from .containers import checked_text
from .errors import FieldError

__all__ = ["FieldDescription", "edit", "fields"]

FieldPath: TypeAlias = str | tuple[str | int, ...]
Value: TypeAlias = str | bool | list[Any] | tuple[Any, ...] | Mapping[str, Any] | Record | None


class Changes(Protocol):
    """Any mapping from paths to values. Mapping itself would refuse, for its keys, a dict[str, str]."""

    def items(self) -> Iterable[tuple[FieldPath, Value]]:
        ...


@dataclass(frozen=True)
class FieldDescription:
    """A field that `edit` can change.

    Attributes:
        path: as in "behaviors[*].names.LANGUAGE", where the word in capitals stands for a key
        type: as in "map from language to text"
        place: the element or attribute; empty when a manifest does not hold the field
        meaning: in a sentence or two; empty where the place is
        absent: what it means that there is none; empty where the place is
    """

    path: str
    type: str
    place: str
    meaning: str
    absent: str


@cache
def fields() -> tuple[FieldDescription, ...]:
    """Every field of a manifest, the members of records behind the list that they are in."""
    return tuple(FieldDescription(*field) for field in _core.fields())


@overload
def edit(text: str, changes: Changes, *, keep_comments: bool = False) -> str:
    ...


@overload
def edit(text: Data, changes: Changes, *, keep_comments: bool = False) -> bytes:
    ...


def edit(text: str | Data, changes: Changes, *, keep_comments: bool = False) -> str | bytes:
    """A manifest with some fields changed: what is not changed keeps every character, with comments, unknown
    elements and layout. Takes and gives the text of a manifest, or the bytes of one in any encoding; it opens
    no files, and `replace_file` writes what it gives.

    >>> edit(text, {"version": "1.3", "names.fr_FR": None, ("behaviors", 0, "names", language): name})

    The keys are paths as the command-line tool has them: `names.en_US`, `behaviors[0].tags.en_US[1]`,
    `behaviors[*].nature`; `fields()` lists them. Or they are tuples of the names and indexes of a path, which
    may hold any character, where text would have to be put in quotes: `names."a.b"`. There is no `[*]` in a
    tuple, where "*" is a name.

    A value is a str, bool, list, dict or record. A str for what is no text is JSON, such as "true" or
    '["en_US"]'. None removes an entry of a list or mapping, which has to be there, and makes a field empty.
    What is set is set first, in the order of the changes; then the rest is removed, by the indexes of before.

    Among the entries of a list or mapping, readers take a comment for an empty one. To remove such an entry
    is refused, or, with `keep_comments`, it stays.

    Raises ManifestError for a manifest that cannot be read, FieldError for a path that leads to no field or
    entry or a value that is none for it, EditError where more would have to be changed, and ValueError for a
    str that names another encoding than UTF-8, of which the bytes are wanted.
    """
    if not (isinstance(text, str) or is_data(text)):
        raise TypeError(f"bytes or a str are wanted, not {type(text).__name__}")
    if not hasattr(changes, "items"):
        raise TypeError(f"a dict of changes is wanted, not {type(changes).__name__}")
    wanted = [_wanted(path, value) for path, value in changes.items()]
    if not isinstance(text, str):
        return _core.edit(bytes(text), wanted, keep_comments)
    data = text.encode()
    if not _core.is_utf8(data):
        raise ValueError("the text names another encoding than UTF-8; give the bytes of the file")
    return _core.edit(data, wanted, keep_comments).decode()


def _wanted(path: FieldPath, value: Value) -> _core.Wanted:
    if value is None or isinstance(value, str):
        return _core.Wanted(_path_text(path), value and checked_text(value), False)
    return _core.Wanted(_path_text(path), json_of(value), True)


def _path_text(path: FieldPath) -> str:
    if not isinstance(path, tuple):
        return checked_text(path)
    if not path:
        raise FieldError("(): a path has one step at least")
    text = ""
    for step in path:
        if isinstance(step, int):
            text += f"[{step}]"
        else:
            text += "." * bool(text) + json.dumps(checked_text(step))
    return text
