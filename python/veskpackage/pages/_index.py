# SPDX-License-Identifier: Apache-2.0
"""What the template of the index is filled with."""

from __future__ import annotations

from collections.abc import Iterable, Mapping, Sequence
from typing import Any

from ._coverage import Coverage
from ._entry import Entry
from ._scales import Scale
from ._text import language_name, sort_key


def index_context(
    entries: Iterable[Entry],
    doubles: Mapping[str, Sequence[Entry]],
    coverage: Coverage,
    scale: Scale,
) -> dict[str, Any]:
    """Of packages in any order, those that share a uuid by it, and the scale of versions of Mirel."""
    ordered = sorted(entries, key=lambda entry: (sort_key(entry.title.text), entry.path))
    languages = sorted(coverage.languages.items(), key=lambda item: (-item[1].packages, item[0]))
    return {
        "entries": ordered,
        "doubles": sorted(doubles.items()),
        "doubled": {entry.page for several in doubles.values() for entry in several},
        "coverage": [(language_name(language), share) for language, share in languages],
        "totals": _totals(ordered),
        "scale": scale,
        "languages": _numbered(language for entry in ordered for language in entry.languages),
        "channels": _numbered(entry.channel for entry in ordered if entry.channel),
        "models": _numbered(model for entry in ordered for model in entry.models if model),
    }


def _totals(entries: Sequence[Entry]) -> dict[str, int]:
    return {
        "behaviors": sum(entry.behaviors for entry in entries),
        "dialogs": sum(entry.dialogs for entry in entries),
        "started": sum(entry.started > 0 for entry in entries),
        "broken": sum(entry.is_broken for entry in entries),
        "holes": sum(entry.share.there < entry.share.expected for entry in entries),
        "errors": sum(entry.counts["error"] > 0 for entry in entries),
        "warnings": sum(entry.counts["warning"] > 0 for entry in entries),
    }


def _numbered(values: Iterable[str]) -> dict[str, int]:
    return {value: number for number, value in enumerate(sorted(set(values)))}
