# SPDX-License-Identifier: Apache-2.0
"""Ranges of versions on a scale that all packages of a store share.

The versions that the store names stand on it at equal distances, in their order as numbers: so 2.10
is behind 2.9, and one odd version does not squeeze all others.
"""

from __future__ import annotations

import re
from bisect import bisect_left
from collections.abc import Iterable
from dataclasses import dataclass

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

    def __str__(self) -> str:
        if self.lowest and self.highest:
            return (
                self.lowest if self.lowest == self.highest else f"{self.lowest} to {self.highest}"
            )
        if self.lowest or self.highest:
            return f"{self.lowest} and later" if self.lowest else f"up to {self.highest}"
        return "any"


@dataclass(frozen=True, slots=True)
class Bar:
    """Where bounds lie on a scale, from 0 to 1; None where they are open."""

    begin: float | None
    end: float | None


@dataclass(frozen=True, slots=True)
class Mark:
    """A version on a scale."""

    at: float  #: from 0 to 1
    label: str  #: empty where there is no room for it
    anchor: str  #: which part of the label is at the mark: "start", "middle" or "end"


class Scale:
    """All versions of one kind."""

    def __init__(self, versions: Iterable[Version]) -> None:
        self.versions = sorted(set(versions))
        self.labels = [".".join(map(str, version)) for version in self.versions]
        self.marks = self._marks()

    def _marks(self) -> list[Mark]:
        """Labels as far as there is room for them; of very many versions only the ends have marks."""
        last = len(self.labels) - 1
        is_roomy = last < 10 and sum(map(len, self.labels)) <= 45
        anchors = {last: "end", 0: "start"}
        return [
            Mark(
                self.at(rank),
                label if is_roomy or rank in anchors else "",
                "middle" if is_roomy else anchors.get(rank, ""),
            )
            for rank, label in enumerate(self.labels)
            if last < 40 or rank in anchors
        ]

    def rank(self, text: str) -> int | None:
        """The place of a version that is on the scale, from 0; None for what is no number."""
        numbers = version(text)
        return None if numbers is None else bisect_left(self.versions, numbers)

    def at(self, rank: int) -> float:
        return rank / (len(self.versions) - 1) if len(self.versions) > 1 else 0.5

    def bar(self, bounds: Bounds) -> Bar | None:
        """None where bounds cannot be drawn: a text that is no number, or nothing between them."""
        ranks = [self.rank(bounds.lowest), self.rank(bounds.highest)]
        has_texts = any(
            text and rank is None for text, rank in zip((bounds.lowest, bounds.highest), ranks)
        )
        if has_texts or bounds.is_reversed or not self.versions:
            return None
        begin, end = (None if rank is None else self.at(rank) for rank in ranks)
        return Bar(begin, end)
