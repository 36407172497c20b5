# SPDX-License-Identifier: Apache-2.0
"""What an index knows of a package, small enough to be kept for each one of a store."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import dataclass, field

from ..package import Package
from ..records import MirelRequirement, RobotRequirement
from ._coverage import Share, listed
from ._findings import SEVERITIES
from ._scales import Bounds
from ._text import cut, language_name, with_visible_ends

# A stranger's text can be long, and an index has thousands of them.
_MOST_OF_TEXT = 100
_MOST_OF_NAMES = 300
_MOST_OF_LIST = 40


@dataclass(frozen=True, slots=True)
class Title:
    """What a package is called in one of its languages, or else by its uuid or place."""

    text: str
    language: str = ""


@dataclass(slots=True)
class Entry:
    page: str  #: the name of its page, from the index
    path: str  #: of the manifest
    title: Title
    counts: Mapping[str, int]  #: of findings, by severity
    is_broken: bool = False  #: no reader gets anything of it
    uuid: str = ""
    version: str = ""
    channel: str = ""
    others: str = ""  #: its makers and other names, to be searched
    languages: list[str] = field(default_factory=list)
    behaviors: int = 0
    dialogs: int = 0
    started: int = 0  #: services that start by themselves
    mirel: list[Bounds] = field(default_factory=list)  #: any where nothing is required
    models: list[str] = field(default_factory=list)  #: "" is any, also where nothing is required
    share: Share = field(default_factory=Share)

    @property
    def gravity(self) -> int:
        """For sorting: any error before any number of warnings."""
        return sum(
            min(self.counts[severity], 999_999) * 1_000_000**power
            for power, severity in enumerate(reversed(SEVERITIES))
        )


def title_of(package: Package, fallback: str) -> Title:
    """In the first of its languages in which it has a name."""
    for language in [*listed(package), *sorted(package.names)]:
        if package.names.get(language, "").strip():
            return Title(package.names[language], language)
    return Title(package.uuid if package.uuid.strip() else fallback)


def broken_entry(page: str, path: str, counts: Mapping[str, int]) -> Entry:
    """Of a manifest that no reader takes, which is an error even where it cannot be checked."""
    counts = {**counts, "error": max(1, counts["error"])}
    return Entry(page, path, Title(path), counts, is_broken=True)


def entry_of(
    package: Package, page: str, path: str, counts: Mapping[str, int], share: Share
) -> Entry:
    title = title_of(package, path)
    makers = [cut(maker, _MOST_OF_TEXT) for maker in (package.author, package.organization)]
    names = " ".join(package.names[language] for language in sorted(package.names))
    return Entry(
        page,
        path,
        Title(cut(title.text, _MOST_OF_TEXT), title.language),
        counts,
        uuid=cut(package.uuid, _MOST_OF_TEXT),
        version=cut(package.version, _MOST_OF_TEXT),
        channel=cut(with_visible_ends(package.channel), _MOST_OF_TEXT),
        others=" ".join(filter(None, [*makers, cut(names, _MOST_OF_NAMES)])),
        languages=[cut(language_name(language), _MOST_OF_TEXT) for language in listed(package)],
        behaviors=len(package.behaviors),
        dialogs=len(package.dialogs),
        started=sum(service.auto_run for service in package.services),
        mirel=[
            Bounds(cut(needed.min_version, _MOST_OF_TEXT), cut(needed.max_version, _MOST_OF_TEXT))
            for needed in package.mirel_requirements[:_MOST_OF_LIST] or [MirelRequirement()]
        ],
        models=sorted(
            {
                cut(with_visible_ends(needed.model), _MOST_OF_TEXT)
                for needed in package.robot_requirements[:_MOST_OF_LIST] or [RobotRequirement()]
            }
        ),
        share=share,
    )
