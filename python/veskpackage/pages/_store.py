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
from dataclasses import dataclass
from typing import Any

from .._batches import checked_jobs
from .._files import Path
from ..checking import Checked, check_many
from ..errors import ManifestError
from ..loading import Loaded, load_many
from ..package import Package
from ._coverage import Coverage, listed, matrix
from ._entry import Entry, broken_entry, entry_of, title_of
from ._findings import MOST_OF_A_RULE, counted, judged
from ._folder import PACKAGES, Folder
from ._index import index_context
from ._scales import Bounds, Scale, version
from ._sources import Source, find
from ._text import slug

INDEX = "index.html"

#: How many others with its uuid a page shows.
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

    manifests: Sequence[Source]
    pages: list[str]  #: how the page of each is called
    doubles: dict[str, list[int]]  #: which packages have a uuid that is not unique, by it
    scales: dict[str, Scale]

    @property
    def is_store(self) -> bool:
        return len(self.manifests) > 1


def write(
    sources: Iterable[Path], folder: Path, *, force: bool = False, jobs: int | None = None
) -> Written:
    """Writes a page for each manifest in files and folders, and an index where there are several;
    of a single one, index.html is its page. The same manifests give the same bytes, wherever they
    lie.

    Raises NoManifest where there is none in one of them, NotOurs for a folder that holds other files,
    unless `force` is set, and OSError where a page cannot be written. A manifest that cannot be read
    ends nothing: its page says why, and so does what is given. Raises ModuleNotFoundError where there
    is no Jinja2, and TypeError or ValueError for sources or jobs that are none, such as a single str.
    """
    from ._templates import environment  # whose Jinja2 is not asked for before there is need of it

    checked_jobs(sources, jobs)
    manifests = find(sources)
    site = Folder(folder, force=force)
    outline = _outline(manifests, jobs)
    site.begin([*outline.pages, *([INDEX] if outline.is_store else [])])
    template = environment().get_template("package.html")
    coverage = Coverage()
    entries: list[Entry] = []
    complaints: list[Complaint] = []
    for number, (loaded, checked) in enumerate(_read(manifests, jobs)):
        shown, page, groups = manifests[number].shown, outline.pages[number], judged(checked)
        package, error = loaded.package, loaded.error or checked.error
        if package is None or error is not None:
            assert error is not None
            complaints.append(Complaint(manifests[number].path, error))
            entry = broken_entry(page, shown, counted(groups))
            context: dict[str, Any] = {"package": None, "title": entry.title, "error": _told(error)}
        else:
            entry = entry_of(package, page, shown, counted(groups), coverage.add(package))
            context = _package_context(package, number, outline)
        entries.append(entry)
        context |= {"entry": entry, "findings": groups, "is_store": outline.is_store}
        site.write(page, template.generate(context))
    if outline.is_store:
        doubles = {
            uuid: [entries[number] for number in numbers]
            for uuid, numbers in outline.doubles.items()
        }
        context = index_context(entries, doubles, coverage, outline.scales["mirel"])
        site.write(INDEX, environment().get_template("index.html").generate(context))
    site.end()
    return Written(len(entries), tuple(complaints))


def _read(manifests: Sequence[Source], jobs: int | None) -> Iterable[tuple[Loaded, Checked]]:
    paths = [manifest.path for manifest in manifests]
    checking = check_many(paths, jobs=jobs, most_of_a_rule=MOST_OF_A_RULE)
    return zip(load_many(paths, jobs=jobs), checking)


def _package_context(package: Package, number: int, outline: _Outline) -> dict[str, Any]:
    """What the page of a package shows and the index does not."""
    doubles = outline.doubles.get(package.uuid, [])
    others = [other for other in doubles[: MOST_DOUBLES + 1] if other != number][:MOST_DOUBLES]
    return {
        "package": package,
        "title": title_of(package, outline.manifests[number].shown),
        # Where a language stands among others: first the listed ones.
        "order": {language: place for place, language in enumerate(listed(package))},
        "matrix": matrix(package),
        "bounds": Bounds,
        "scales": outline.scales,
        "doubles": [(outline.pages[other], outline.manifests[other].shown) for other in others],
        "doubles_left_out": max(0, len(doubles) - 1 - MOST_DOUBLES),
    }


def _outline(manifests: Sequence[Source], jobs: int | None) -> _Outline:
    used: set[str] = set()
    pages: list[str] = []
    versions: dict[str, set[str]] = {"mirel": set(), "head": set(), "body": set()}
    by_uuid: dict[str, list[int]] = defaultdict(list)
    loading = load_many((manifest.path for manifest in manifests), jobs=jobs)
    for number, loaded in enumerate(loading):
        package = loaded.package or Package()
        shown = manifests[number].shown
        pages.append(_page_name(package, shown, used) if len(manifests) > 1 else INDEX)
        if package.uuid.strip():
            by_uuid[package.uuid].append(number)
        for kind, texts in _versions(package):
            versions[kind].update(filter(version, texts))
    doubles = {uuid: numbers for uuid, numbers in by_uuid.items() if len(numbers) > 1}
    return _Outline(
        manifests, pages, doubles, {kind: Scale(found) for kind, found in versions.items()}
    )


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


def _told(error: Exception) -> str:
    """Without the path, which would say where the manifest lies."""
    if isinstance(error, ManifestError) and error.line:
        return f"{error.message} (line {error.line}, column {error.column})"
    return _message(error)


def _message(error: Exception) -> str:
    if isinstance(error, ManifestError):
        return error.message
    reason = error.strerror if isinstance(error, OSError) else None
    return reason or type(error).__name__
