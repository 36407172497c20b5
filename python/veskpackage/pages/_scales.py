# SPDX-License-Identifier: Apache-2.0
"""Ranges of versions on a scale that all packages of a store share.

The versions that the store names stand on it at equal distances, in their order as numbers: so 2.10
is behind 2.9, and one odd version does not squeeze all others.
"""

from __future__ import annotations

import re
from bisect import bisect_left
from collections.abc import Iterable, Sequence
from dataclasses import dataclass

from ._text import cut

Version = tuple[int, ...]

_VERSION = re.compile(r"[0-9]{1,9}(?:\.[0-9]{1,9}){0,9}")


def version(text: str) -> Version | None:
    """The numbers of a version such as "2.4"; None for other texts. "2.0" is "2"."""
    if not _VERSION.fullmatch(text):
        return None
    numbers = [int(number) for number in text.split(".")]
    while len(numbers) > 1 and numbers[-1] == 0:
        numbers.pop()
    return tuple(numbers)


@dataclass(frozen=True, slots=True)
class Bounds:
    """Which versions are meant: from the lowest to the highest; an empty text is no bound."""

    lowest: str
    highest: str

    @property
    def is_reversed(self) -> bool:
        low, high = version(self.lowest), version(self.highest)
        return low is not None and high is not None and low > high

    @property
    def is_text(self) -> bool:
        """Whether one of them is no number."""
        return any(text and version(text) is None for text in (self.lowest, self.highest))

    def __str__(self) -> str:
        if self.lowest and self.highest:
            return (
                self.lowest if self.lowest == self.highest else f"{self.lowest} to {self.highest}"
            )
        if self.lowest or self.highest:
            return f"{self.lowest} and later" if self.lowest else f"up to {self.highest}"
        return "any"


@dataclass(frozen=True, slots=True)
class Label:
    """A version, or two that lie close together, beside a scale."""

    at: float  #: from 0 to 1
    text: str
    anchor: str  #: which part of the text is there: "start", "middle" or "end"


@dataclass(frozen=True, slots=True)
class Bar:
    """Where bounds lie on a scale, from 0 to 1; None where they are open."""

    begin: float | None
    end: float | None
    labels: list[Label]


# Of the narrowest scale, in widths of a digit; how far labels may hang over it; and how much of a
# version they show.
_WIDTH = 28
_OVERHANG = 2
_MOST_OF_LABEL = 12
# With more versions only those at the ends have marks, and labels.
_MOST_MARKS = 40


class Scale:
    """All versions of one kind. Texts that are no numbers are not on it."""

    def __init__(self, versions: Iterable[str]) -> None:
        notations: dict[Version, str] = {}
        for text in sorted(versions, key=lambda text: (len(text), text)):
            numbers = version(text)
            if numbers is not None:
                notations.setdefault(numbers, text)
        self.versions = sorted(notations)
        #: As a package writes them; of "2.0" and "2.0.0" the shortest.
        self.labels = [notations[numbers] for numbers in self.versions]
        ranks = range(len(self.versions))
        self.marks = [self.at(rank) for rank in self._ends(ranks)]

    def rank(self, text: str) -> int | None:
        """The place of a version that is on the scale, from 0; None for what is no number."""
        numbers = version(text)
        return None if numbers is None else bisect_left(self.versions, numbers)

    def at(self, rank: int) -> float:
        return rank / (len(self.versions) - 1) if len(self.versions) > 1 else 0.5

    def bar(self, bounds: Bounds) -> Bar | None:
        """None where bounds cannot be drawn: a text that is no number, nothing between them, or a version
        that has come into a manifest since the scale was made."""
        if bounds.is_text or bounds.is_reversed or not self.versions:
            return None
        if not {version(text) for text in (bounds.lowest, bounds.highest) if text} <= {
            *self.versions
        }:
            return None
        ranks = [self.rank(bounds.lowest), self.rank(bounds.highest)]
        begin, end = (None if rank is None else self.at(rank) for rank in ranks)
        own = sorted({rank for rank in ranks if rank is not None})
        return Bar(begin, end, self._labels(own))

    def _ends(self, ranks: range) -> Sequence[int]:
        """The ends of the scale, and what is between them where there are few."""
        return ranks if len(ranks) <= _MOST_MARKS else [ranks[0], ranks[-1]]

    def _labels(self, own: Sequence[int]) -> list[Label]:
        """The ends of a bar always have labels; then those of the scale, and what there is room for."""
        labels: list[Label] = []
        taken: list[tuple[float, float]] = []

        def place(ranks: Sequence[int]) -> bool:
            text = " – ".join(cut(self.labels[rank], _MOST_OF_LABEL) for rank in ranks)
            at = sum(map(self.at, ranks)) / len(ranks)
            middle, half = at * _WIDTH, len(text) / 2
            anchor, begin = "middle", middle - half
            if begin < -_OVERHANG:
                anchor, begin = "start", middle
            elif middle + half > _WIDTH + _OVERHANG:
                anchor, begin = "end", middle - 2 * half
            end = begin + 2 * half
            if any(begin < behind + 1 and before < end + 1 for before, behind in taken):
                return False
            taken.append((begin, end))
            labels.append(Label(at, text, anchor))
            return True

        if own and not all([place([rank]) for rank in own]):
            labels.clear()
            taken.clear()
            place(own)
        ranks = range(len(self.versions))
        for rank in [ranks[0], ranks[-1], *self._ends(ranks)]:
            place([rank])
        return labels
