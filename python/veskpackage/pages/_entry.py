# SPDX-License-Identifier: Apache-2.0
"""What an index knows of a package, small enough to be kept for each one of a store."""

from __future__ import annotations

from collections import Counter
from collections.abc import Mapping, Sequence
from dataclasses import dataclass, field

from ..checking import Finding, Severity
from ..package import Package
from ._coverage import Share, listed
from ._scales import Bounds
from ._text import cut

#: From the gravest on.
SEVERITIES: tuple[Severity, ...] = ("error", "warning", "hint")

# A stranger's text can be long, and an index has thousands of them.
_MOST_OF_TEXT = 100
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
    others: str = ""  #: its other names and its makers, to be searched
    languages: list[str] = field(default_factory=list)
    behaviors: int = 0
    dialogs: int = 0
    started: int = 0  #: services that start by themselves
    mirel: list[Bounds] = field(default_factory=list)
    models: list[str] = field(default_factory=list)
    share: Share = field(default_factory=Share)

    @property
    def runs_on_any_robot(self) -> bool:
        """Also where it does not say on which."""
        return not self.is_broken and (not self.models or "" in self.models)

    @property
    def gravity(self) -> int:
        """For sorting: any error before any number of warnings."""
        return sum(
            min(self.counts[severity], 999) * 1000**power
            for power, severity in enumerate(reversed(SEVERITIES))
        )


def title_of(package: Package, fallback: str) -> Title:
    """In the first of its languages in which it has a name."""
    for language in [*listed(package), *sorted(package.names)]:
        if package.names.get(language, "").strip():
            return Title(package.names[language], language)
    return Title(package.uuid if package.uuid.strip() else fallback)


def counted(findings: Sequence[Finding]) -> Mapping[str, int]:
    counts = Counter(finding.severity for finding in findings)
    return {severity: counts[severity] for severity in SEVERITIES}


def entry_of(
    package: Package, page: str, path: str, findings: Sequence[Finding], share: Share
) -> Entry:
    title = title_of(package, path)
    makers = [package.author, package.organization]
    names = [package.names[language] for language in sorted(package.names)]
    return Entry(
        page,
        path,
        Title(cut(title.text, _MOST_OF_TEXT), title.language),
        counted(findings),
        uuid=cut(package.uuid, _MOST_OF_TEXT),
        version=cut(package.version, _MOST_OF_TEXT),
        channel=cut(package.channel, _MOST_OF_TEXT),
        others=cut(" ".join(filter(None, [*names, *makers])), 3 * _MOST_OF_TEXT),
        languages=[cut(language, _MOST_OF_TEXT) for language in listed(package)[:_MOST_OF_LIST]],
        behaviors=len(package.behaviors),
        dialogs=len(package.dialogs),
        started=sum(service.auto_run for service in package.services),
        mirel=[
            Bounds(cut(needed.min_version, _MOST_OF_TEXT), cut(needed.max_version, _MOST_OF_TEXT))
            for needed in package.mirel_requirements[:_MOST_OF_LIST]
        ],
        models=sorted(
            {
                cut(needed.model, _MOST_OF_TEXT)
                for needed in package.robot_requirements[:_MOST_OF_LIST]
            }
        ),
        share=share,
    )
