# SPDX-License-Identifier: Apache-2.0
"""Changes a manifest's text by as few edits as possible."""

from __future__ import annotations

import json
from collections.abc import Mapping
from dataclasses import dataclass
from functools import cache
from typing import Any, TypeVar

from . import _core
from .containers import checked_text

__all__ = ["FieldDescription", "edit", "fields"]

Text = TypeVar("Text", str, bytes)


@dataclass(frozen=True)
class FieldDescription:
    """A field that `edit` can change."""

    path: str  #: as in "behaviors[*].names.LANGUAGE", where the word in capitals stands for a key
    type: str  #: as in "map from language to text"
    place: str  #: the element or attribute; empty when a manifest does not hold the field
    meaning: str  #: in a sentence or two; empty where the place is
    absent: str  #: what it means that there is none; empty where the place is


@cache
def fields() -> tuple[FieldDescription, ...]:
    """Every field of a manifest, the members of records behind the list that they are in."""
    return tuple(FieldDescription(*field) for field in _core.fields())


def edit(text: Text, changes: Mapping[str, Any], *, keep_comments: bool = False) -> Text:
    """A manifest with some fields changed: what is not changed keeps every character, with comments, unknown
    elements and layout. Takes and gives a str, or the bytes of a file in any encoding.

    >>> edit(text, {"version": "1.3", "names.fr_FR": None})

    The keys are paths as the command-line tool has them: `names.en_US`, `behaviors[0].tags.en_US[1]`,
    `behaviors[*].nature`; `fields()` lists them. A value is a str, bool, list or dict; None removes an
    entry of a list or mapping, and makes a text empty. What is set is set first, in the order of the
    changes; then the rest is removed, by the indexes of before.

    Among the entries of a list or mapping, readers take a comment for an empty one. To remove such an entry
    is refused, or, with `keep_comments`, it stays.

    Raises ManifestError for a manifest that cannot be read, FieldError for a path that leads to no field or
    a value that is none for it, and EditError where more would have to be changed.
    """
    wanted = [
        _core.Wanted(
            checked_text(path),
            None if value is None else _written(value),
            not isinstance(value, str),
        )
        for path, value in changes.items()
    ]
    if not isinstance(text, str):
        return _core.edit(bytes(memoryview(text)), wanted, keep_comments)
    data = text.encode()
    if not _core.is_utf8(data):
        raise ValueError("the text names another encoding than UTF-8; give the bytes of the file")
    return _core.edit(data, wanted, keep_comments).decode()


def _written(value: Any) -> str:
    return checked_text(value) if isinstance(value, str) else json.dumps(value)
