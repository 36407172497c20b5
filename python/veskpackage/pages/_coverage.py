# SPDX-License-Identifier: Apache-2.0
"""Which texts of a package there are in which languages.

Names and descriptions are expected in the description languages; tags, what is said and heard, and
topics of dialogs in the supported ones. As for trimming, a text in en_US will do where "en" is listed.
A hole is a text that there is in some language, but not in one where it is expected; names of the
package and of behaviors, and topics, are expected in any case.
"""

from __future__ import annotations

from bisect import bisect_left
from collections.abc import Iterable, Iterator, Mapping
from dataclasses import dataclass, field
from itertools import islice

from ..package import Package

# Of the languages that a package lists, the first: more would help nobody, and a hostile manifest
# could have the work grow with the square of its size.
MOST_LANGUAGES = 60
#: Of a matrix.
MOST_ROWS = 400


@dataclass(frozen=True, slots=True)
class Row:
    """A text of the package: how many there are in which languages, and where it is expected."""

    subject: str  #: of what, as the id of its part of the page; empty for the package
    what: str
    counts: Mapping[str, int]
    expected: tuple[str, ...]

    def holes(self) -> list[str]:
        there = sorted(self.counts)
        return [language for language in self.expected if not _begins(there, language)]


@dataclass(frozen=True, slots=True)
class Cell:
    """A text in a language."""

    kind: str  #: "there", "hole", "unlisted" for a language that is not listed, or "none"
    count: int = 0


@dataclass(frozen=True, slots=True)
class Matrix:
    languages: list[str]
    rows: list[tuple[Row, list[Cell]]]
    languages_left_out: int
    rows_left_out: int


@dataclass(slots=True)
class Share:
    """How much of what is expected there is."""

    there: int = 0
    expected: int = 0
    packages: int = 0

    @property
    def percent(self) -> int:
        return 100 * self.there // self.expected if self.expected else 100


@dataclass(slots=True)
class Coverage:
    """That of one package or of many, by language."""

    languages: dict[str, Share] = field(default_factory=dict)

    def add(self, package: Package) -> Share:
        """Adds a package, and gives the share of all of its languages together."""
        whole = Share(packages=1)
        for language in listed(package):
            self.languages.setdefault(language, Share()).packages += 1
        for row in rows(package):
            holes = frozenset(row.holes())
            for language in row.expected:
                share = self.languages[language]
                share.expected += 1
                share.there += language not in holes
            whole.expected += len(row.expected)
            whole.there += len(row.expected) - len(holes)
        return whole


def listed(package: Package) -> list[str]:
    """The languages that a package lists, in its order."""
    return list(
        dict.fromkeys(_first(package.description_languages) + _first(package.supported_languages))
    )


def _first(languages: Iterable[str]) -> tuple[str, ...]:
    """Without the empty one, which a comment gives."""
    return tuple(islice(filter(str.strip, languages), MOST_LANGUAGES))


def rows(package: Package) -> Iterator[Row]:
    """Every text that there is, or that is expected, in the order of the page."""
    described, spoken = _first(package.description_languages), _first(package.supported_languages)

    def row(
        subject: str,
        what: str,
        texts: Mapping[str, str | list[str]],
        expected: tuple[str, ...],
        always: bool = False,
    ) -> Iterator[Row]:
        counts = {language: count for language, text in texts.items() if (count := _count(text))}
        if counts or (always and expected):
            yield Row(subject, what, counts, expected)

    yield from row("", "Name", package.names, described, always=True)
    yield from row("", "Description", package.descriptions, described)
    for number, behavior in enumerate(package.behaviors, 1):
        subject = f"behavior-{number}"
        yield from row(subject, "Name", behavior.names, described, always=True)
        yield from row(subject, "Description", behavior.descriptions, described)
        yield from row(subject, "Tags", behavior.tags, spoken)
        yield from row(subject, "Trigger sentences", behavior.trigger_sentences, spoken)
        yield from row(subject, "Loading responses", behavior.loading_responses, spoken)
    for number, dialog in enumerate(package.dialogs, 1):
        yield from row(f"dialog-{number}", "Topic", dialog.topics, spoken, always=True)
    for number, pack in enumerate(package.languages, 1):
        yield from row(f"language-pack-{number}", "Name", pack.names, described)


def matrix(package: Package) -> Matrix:
    """Languages by texts: first the listed languages, then others in which there are texts."""
    all_rows = list(rows(package))
    known = listed(package)
    others = sorted({language for row in all_rows for language in row.counts} - set(known))
    columns = [*known, *others][: 2 * MOST_LANGUAGES]
    is_listed = {
        expected: {language: _is_listed(language, expected) for language in columns}
        for expected in {row.expected for row in all_rows}
    }
    table = []
    for row in all_rows[:MOST_ROWS]:
        holes = frozenset(row.holes())
        cells = [
            _cell(row, language, holes, is_listed[row.expected][language]) for language in columns
        ]
        table.append((row, cells))
    return Matrix(
        columns, table, len(known) + len(others) - len(columns), len(all_rows) - len(table)
    )


def _cell(row: Row, language: str, holes: frozenset[str], is_listed: bool) -> Cell:
    if language in holes:
        return Cell("hole")
    if count := row.counts.get(language, 0):
        return Cell("there" if is_listed else "unlisted", count)
    if language in row.expected:  # what is there begins with it, such as en_US with en
        return Cell(
            "there", sum(n for other, n in row.counts.items() if other.startswith(language))
        )
    return Cell("none")


def _count(text: str | Iterable[str]) -> int:
    texts = [text] if isinstance(text, str) else text
    return sum(1 for each in texts if each.strip())


def _begins(there: list[str], language: str) -> bool:
    at = bisect_left(there, language)
    return at < len(there) and there[at].startswith(language)


def _is_listed(language: str, expected: tuple[str, ...]) -> bool:
    return not expected or any(language.startswith(one) for one in expected)
