# SPDX-License-Identifier: Apache-2.0
"""What the checker finds in a manifest, as its page shows it."""

from __future__ import annotations

import os
import re
from collections import defaultdict
from collections.abc import Iterable, Mapping, Sequence
from dataclasses import dataclass

from .. import _core
from ..checking import Checked, Finding, Severity
from ..errors import ManifestError
from ._excerpt import Excerpt, Excerpts

#: From the gravest on.
SEVERITIES: tuple[Severity, ...] = ("error", "warning", "hint")
#: Of a rule, how many findings a page shows.
MOST_OF_A_RULE = 50

# How the checker ends the message of the last one where there are more.
_LEFT_OUT = re.compile("; ([0-9]+) more of these are left out$")


@dataclass(frozen=True, slots=True)
class Group:
    """The findings of a rule."""

    severity: Severity
    rule: str
    count: int  #: also of those that are left out
    findings: list[tuple[Finding, Excerpt | None]]


def judged(checked: Checked) -> list[Group]:
    """The findings with their excerpts, by rule, the gravest first."""
    by_rule: dict[tuple[int, str], list[Finding]] = defaultdict(list)
    for finding in checked.findings:
        by_rule[SEVERITIES.index(finding.severity), finding.rule].append(finding)
    excerpts = _excerpts(checked) if by_rule else None
    return [
        Group(
            SEVERITIES[gravity],
            rule,
            _count(found),
            [(finding, excerpts.of(finding) if excerpts else None) for finding in found],
        )
        for (gravity, rule), found in sorted(by_rule.items(), key=lambda item: item[0])
    ]


def counted(groups: Iterable[Group]) -> Mapping[str, int]:
    """How many findings there are, by severity."""
    counts: dict[str, int] = dict.fromkeys(SEVERITIES, 0)
    for group in groups:
        counts[group.severity] += group.count
    return counts


def _count(found: Sequence[Finding]) -> int:
    match = _LEFT_OUT.search(found[-1].message) if len(found) == MOST_OF_A_RULE else None
    return len(found) + (int(match[1]) if match else 0)


def _excerpts(checked: Checked) -> Excerpts | None:
    try:
        return Excerpts(_core.file_bytes(os.fsencode(checked.path)), checked.findings)
    except (OSError, ManifestError):
        return None
