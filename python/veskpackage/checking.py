# SPDX-License-Identifier: Apache-2.0
"""Finds what the readers of manifests pass over in silence, and mends what can surely be mended."""

from __future__ import annotations

import os
import sys
from collections.abc import Generator, Iterable, Mapping
from dataclasses import dataclass
from functools import cache
from typing import Any, Literal, TypeAlias, cast

from . import _core
from ._batches import checked_count, checked_jobs, in_order
from ._files import Data, Path, is_data
from .containers import checked_text

__all__ = [
    "Checked",
    "Edit",
    "Finding",
    "Fixed",
    "Mend",
    "Position",
    "Rule",
    "Severity",
    "check",
    "check_many",
    "fix",
    "rules",
]

#: How grave a finding is. "error": no reader gets anything of the manifest; "warning": surely not meant so;
#: "hint": read as it is meant, but better mended; "off", in options and rules only: not reported.
Severity: TypeAlias = Literal["error", "warning", "hint", "off"]


@dataclass(frozen=True)
class Rule:
    """One thing that a manifest is checked for.

    Attributes:
        tag: its name, such as "unknown-element"; it does not change between versions
        severity: unless the options say otherwise
        is_lost: whether what it finds is lost when the manifest is read and written
        explanation: what is wrong, what the readers do with it, and how to mend it
    """

    tag: str
    severity: Severity
    is_lost: bool
    explanation: str


@dataclass(frozen=True, order=True)
class Position:
    """A place in the text of a manifest. All are 0 where something is nowhere in the text.

    Attributes:
        line: from 1
        column: from 1, in characters
        utf16_column: from 1, in UTF-16 code units
        offset: from 0, in bytes of the text in UTF-8
    """

    line: int
    column: int
    utf16_column: int
    offset: int


@dataclass(frozen=True)
class Edit:
    """A part of a text, and what shall stand there instead.

    Attributes:
        begin: where the part begins, as the offset of a Position
        end: where it has ended, the same
        text: what shall stand there
    """

    begin: int
    end: int
    text: str


@dataclass(frozen=True)
class Mend:
    """How a fault can surely be mended.

    Attributes:
        title: what it does, such as `write "lang"`
        edits: to be made at once
    """

    title: str
    edits: tuple[Edit, ...]


@dataclass(frozen=True)
class Finding:
    """One fault of one manifest.

    Attributes:
        rule: the tag of a Rule
        severity: never "off"
        message: one line, without the place
        begin: where the element, attribute or text begins that it is about
        end: where that has ended; equal to the beginning where no more is known
        place: the path of that as XPath has it; empty when the manifest could not be parsed
        mend: None where it is for people to judge what was meant
    """

    rule: str
    severity: Severity
    message: str
    begin: Position
    end: Position
    place: str
    mend: Mend | None


@dataclass(frozen=True)
class Fixed:
    """A manifest after its faults have been mended.

    Attributes:
        data: of the file; what was given where there was nothing to mend
        count: of the faults that were mended
        mended: the first of these, with places in the text as it was then
    """

    data: bytes
    count: int
    mended: tuple[Finding, ...]


@dataclass(frozen=True)
class Checked:
    """What checking one of many files gave.

    Attributes:
        path: as it was given
        findings: in the order of the text
        uuid: of the package; empty where it has none
        error: why the file could not be read, if it could not
    """

    path: Path
    findings: tuple[Finding, ...]
    uuid: str
    error: Exception | None = None


@cache
def rules() -> tuple[Rule, ...]:
    """Everything that manifests are checked for."""
    return tuple(Rule(*rule) for rule in cast(Any, _core.rules()))


def check(
    manifest: Path | Data,
    *,
    severities: Mapping[str, Severity] = {},
    package_folder: Path = "",
    most_of_a_rule: int = 1000,
) -> list[Finding]:
    """What is wrong with a manifest, in the order of the text: a file at a path, or the bytes of one.

    `severities` sets how grave the findings of rules are, by tag. Where a `package_folder` is named, paths
    in the manifest are looked up there. At most the first `most_of_a_rule` findings of a rule are given.

    A manifest that is not well-formed is a finding, too. Raises OSError where a file cannot be read, or
    there is no such folder, ManifestError where a file is larger than any manifest can be, and ValueError
    for a rule or severity that there is not.
    """
    findings, _ = _core.check_bytes(
        _bytes_of(manifest), _options(severities, package_folder, most_of_a_rule)
    )
    return list(_findings(findings))


def check_many(
    paths: Iterable[Path],
    *,
    jobs: int | None = None,
    severities: Mapping[str, Severity] = {},
    look_up_files: bool = False,
    most_of_a_rule: int = 1000,
) -> Generator[Checked, None, None]:
    """Checks files on several threads at once, as many as there are processors or `jobs`, and gives the
    results in the order of the paths, as they come. The paths are asked for as they are needed, so there
    can be any number. A file that cannot be read has an `error` and ends nothing.

    With `look_up_files`, the paths in each manifest are looked up in the folder where it lies. The other
    options are those of `check`.

    Leaving early does not wait: a thread that still waits for a file ends once that has been read.
    """
    options = _options(severities, "", most_of_a_rule)
    threads = checked_jobs(paths, jobs)

    def work(batch: list[bytes], stop: _core.Stop) -> list[Any]:
        return _core.check_all(batch, options, look_up_files, stop)

    def check_all() -> Generator[Checked, None, None]:
        for path, result in in_order(work, paths, threads):
            if isinstance(result, Exception):
                yield Checked(path, (), "", result)
            else:
                findings, uuid = result
                yield Checked(path, _findings(findings), uuid)

    return check_all()


def fix(
    manifest: Path | Data,
    *,
    severities: Mapping[str, Severity] = {},
    most_of_a_rule: int = 1000,
) -> Fixed:
    """Mends every fault that can surely be mended, in a file at a path or in the bytes of one, and gives
    the bytes of the mended one; the file is not changed.

    What is not mended keeps every byte. A manifest that no reader takes stays as it is. Raises what `check`
    raises.
    """
    data, count, mended = _core.fix_bytes(
        _bytes_of(manifest), _options(severities, "", most_of_a_rule)
    )
    return Fixed(data, count, _findings(mended))


def _bytes_of(manifest: Path | Data) -> bytes:
    if is_data(manifest):
        return bytes(manifest)
    return _core.file_bytes(os.fsencode(manifest))


def _options(
    severities: Mapping[str, Severity], package_folder: Path, most_of_a_rule: int
) -> _core.Options:
    folder = os.fsdecode(package_folder)
    if folder:
        os.stat(os.path.join(folder, ""))  # raises unless it is a folder
    return _core.Options(
        {checked_text(tag): checked_text(severity) for tag, severity in severities.items()},
        os.fsencode(folder),
        min(checked_count("most_of_a_rule", most_of_a_rule), sys.maxsize),
    )


def _findings(findings: list[Any]) -> tuple[Finding, ...]:
    return tuple(
        Finding(rule, severity, message, Position(*begin), Position(*end), place, _mend(mend))
        for rule, severity, message, begin, end, place, mend in findings
    )


def _mend(mend: Any) -> Mend | None:
    return mend and Mend(mend[0], tuple(Edit(*edit) for edit in mend[1]))
