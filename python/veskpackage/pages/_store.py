# SPDX-License-Identifier: Apache-2.0
"""Writes the pages of packages, a package at a time.

The manifests are read twice: first for what all pages need of all packages, which is the scales and
which packages have the same uuid, and then for the pages. So memory holds a line for each package,
not its manifest.
"""

from __future__ import annotations

import hashlib
import os
from collections import defaultdict
from collections.abc import Iterable, Sequence
from dataclasses import dataclass, field
from typing import Any

from .. import _core
from .._files import Path
from ..checking import Checked, Finding, check_many
from ..errors import ManifestError
from ..loading import load_many
from ..package import Package
from ._coverage import Coverage, listed, matrix
from ._entry import SEVERITIES, Entry, Title, counted, entry_of, title_of
from ._excerpt import Excerpts
from ._folder import PACKAGES, Folder
from ._scales import Bounds, Scale, version
from ._sources import Source, find
from ._templates import environment
from ._text import slug

INDEX = "index.html"

#: Of a rule, how many findings a page shows.
MOST_OF_A_RULE = 50
#: How many others with its uuid.
MOST_DOUBLES = 20


@dataclass(frozen=True)
class Complaint:
    """A manifest that no reader takes; it has a page all the same."""

    path: str
    error: Exception

    def __str__(self) -> str:
        place = ""
        if isinstance(self.error, ManifestError) and self.error.line:
            place = f":{self.error.line}:{self.error.column}"
        return f"{self.path}{place}: error: {_message(self.error)}"


@dataclass(frozen=True)
class Written:
    """What writing the pages of a store gave."""

    pages: int  #: of packages
    complaints: tuple[Complaint, ...]


@dataclass(slots=True)
class _Outline:
    """What is known of all packages before the first page."""

    pages: list[str] = field(default_factory=list)
    versions: dict[str, set[str]] = field(default_factory=lambda: defaultdict(set))
    doubles: dict[str, list[int]] = field(default_factory=dict)  #: indexes of packages by uuid

    def scales(self) -> dict[str, Scale]:
        return {kind: Scale(self.versions[kind]) for kind in ("mirel", "head", "body")}


def write(
    sources: Iterable[Path], folder: Path, *, force: bool = False, jobs: int | None = None
) -> Written:
    """Writes a page for each manifest in files and folders, and an index where there are several;
    of a single one, index.html is its page. The same manifests give the same bytes, wherever they
    lie.

    Raises NoManifest where there is none, NotOurs for a folder that holds other files, unless
    `force` is set, and OSError where a page cannot be written. A manifest that cannot be read ends
    nothing: its page says why, and so does what is given.
    """
    manifests = find(sources)
    site = Folder(folder, force=force)
    outline = _outline(manifests, jobs)
    is_store = len(manifests) > 1
    site.begin([*outline.pages, *([INDEX] if is_store else [])])
    template = environment().get_template("package.html")
    scales = outline.scales()
    coverage = Coverage()
    entries: list[Entry] = []
    complaints: list[Complaint] = []
    paths = [manifest.path for manifest in manifests]
    loading = load_many(paths, jobs=jobs)
    checking = check_many(paths, jobs=jobs, most_of_a_rule=MOST_OF_A_RULE)
    for number, (loaded, checked) in enumerate(zip(loading, checking)):
        shown, page = manifests[number].shown, outline.pages[number]
        package, error = loaded.package, loaded.error or checked.error
        if package is None or error is not None:
            assert error is not None
            complaints.append(Complaint(os.fspath(paths[number]), error))
            counts = {
                **counted(checked.findings),
                "error": max(1, counted(checked.findings)["error"]),
            }
            entries.append(Entry(page, shown, Title(shown), counts, is_broken=True))
            context: dict[str, Any] = {"package": None, "error": _message(error)}
        else:
            share = coverage.add(package)
            entries.append(entry_of(package, page, shown, checked.findings, share))
            doubles = outline.doubles.get(package.uuid, [])
            others = [other for other in doubles[: MOST_DOUBLES + 1] if other != number]
            context = {
                "package": package,
                "order": _order(package),
                "matrix": matrix(package),
                "bounds": Bounds,
                "scales": scales,
                "doubles": [
                    (outline.pages[other], manifests[other].shown)
                    for other in others[:MOST_DOUBLES]
                ],
                "doubles_left_out": max(0, len(doubles) - 1 - MOST_DOUBLES),
            }
        entry = entries[-1]
        title = title_of(package, shown) if package is not None else entry.title
        site.write(
            page,
            template.generate(
                entry=entry, title=title, is_store=is_store, findings=_judged(checked), **context
            ),
        )
    if is_store:
        site.write(INDEX, _index(entries, outline, coverage, scales["mirel"]))
    site.end()
    return Written(len(entries), tuple(complaints))


def _outline(manifests: Sequence[Source], jobs: int | None) -> _Outline:
    outline = _Outline()
    used: set[str] = set()
    by_uuid: dict[str, list[int]] = defaultdict(list)
    for number, loaded in enumerate(
        load_many((manifest.path for manifest in manifests), jobs=jobs)
    ):
        package = loaded.package or Package()
        if len(manifests) == 1:
            outline.pages.append(INDEX)
        else:
            outline.pages.append(_page_name(package, manifests[number].shown, used))
        if package.uuid.strip():
            by_uuid[package.uuid].append(number)
        for kind, texts in _versions(package):
            outline.versions[kind].update(filter(version, texts))
    outline.doubles = {uuid: numbers for uuid, numbers in by_uuid.items() if len(numbers) > 1}
    return outline


def _versions(package: Package) -> Iterable[tuple[str, list[str]]]:
    for mirel in package.mirel_requirements:
        yield "mirel", [mirel.min_version, mirel.max_version]
    for robot in package.robot_requirements:
        yield "head", [robot.min_head_version, robot.max_head_version]
        yield "body", [robot.min_body_version, robot.max_body_version]


def _page_name(package: Package, shown: str, used: set[str]) -> str:
    """Of a stranger's text only letters and digits; by where the manifest lies there is one."""
    digest = hashlib.sha256(os.fsencode(shown)).hexdigest()
    start = slug(package.uuid) or "package"
    names = (f"{PACKAGES}/{start}-{digest[:length]}.html" for length in range(8, len(digest)))
    name = next(name for name in names if name not in used)
    used.add(name)
    return name


def _order(package: Package) -> dict[str, int]:
    """Where a language stands among others: first the listed ones."""
    return {language: place for place, language in enumerate(listed(package))}


def _judged(checked: Checked) -> list[dict[str, Any]]:
    """The findings with their excerpts, by rule, the gravest first."""
    if not checked.findings:
        return []
    excerpts = _excerpts(checked)
    by_rule: dict[tuple[int, str], list[Finding]] = defaultdict(list)
    for finding in checked.findings:
        by_rule[SEVERITIES.index(finding.severity), finding.rule].append(finding)
    return [
        {
            "severity": SEVERITIES[gravity],
            "rule": rule,
            "findings": [(finding, excerpts and excerpts.of(finding)) for finding in found],
        }
        for (gravity, rule), found in sorted(by_rule.items(), key=lambda item: item[0])
    ]


def _excerpts(checked: Checked) -> Excerpts | None:
    try:
        return Excerpts(_core.file_bytes(os.fsencode(checked.path)), checked.findings)
    except (OSError, ManifestError):
        return None


def _message(error: Exception) -> str:
    """Without the path, which would say where the manifest lies."""
    if isinstance(error, ManifestError):
        return error.message
    reason = error.strerror if isinstance(error, OSError) else None
    return reason or type(error).__name__


def _index(
    entries: list[Entry], outline: _Outline, coverage: Coverage, scale: Scale
) -> Iterable[str]:
    entries.sort(key=lambda entry: (entry.title.text.casefold(), entry.path))
    by_page = {entry.page: entry for entry in entries}
    doubles = [
        (uuid, [by_page[outline.pages[number]] for number in numbers])
        for uuid, numbers in sorted(outline.doubles.items())
    ]
    languages = sorted(coverage.languages.items(), key=lambda item: (-item[1].packages, item[0]))

    def numbered(values: Iterable[str]) -> dict[str, int]:
        return {value: number for number, value in enumerate(sorted(set(values)))}

    totals = {
        "behaviors": sum(entry.behaviors for entry in entries),
        "dialogs": sum(entry.dialogs for entry in entries),
        "started": sum(entry.started > 0 for entry in entries),
        "broken": sum(entry.is_broken for entry in entries),
        "holes": sum(entry.share.there < entry.share.expected for entry in entries),
        "errors": sum(entry.counts["error"] > 0 for entry in entries),
        "warnings": sum(entry.counts["warning"] > 0 for entry in entries),
    }
    return (
        environment()
        .get_template("index.html")
        .generate(
            entries=entries,
            doubles=doubles,
            doubled={
                outline.pages[number] for numbers in outline.doubles.values() for number in numbers
            },
            coverage=languages,
            totals=totals,
            scale=scale,
            languages=numbered(language for entry in entries for language in entry.languages),
            channels=numbered(entry.channel for entry in entries if entry.channel),
            models=numbered(model for entry in entries for model in entry.models if model),
        )
    )
