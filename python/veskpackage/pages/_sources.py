# SPDX-License-Identifier: Apache-2.0
"""Finds manifests as the command-line tool does.

What is named itself is a manifest, whatever it is. A folder stands for the manifests in it and in
its folders: files called manifest.xml, and others in .xml whose root is `package`, or does not come
within the first 64 KiB. Hidden ones, and folders behind links, are passed over. What cannot be read
counts, since it might be a manifest.
"""

from __future__ import annotations

import os
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from xml.parsers import expat

from .._files import Path


class NoManifest(ValueError):
    """There is no manifest in what was named."""


@dataclass(frozen=True, slots=True)
class Source:
    """A manifest that was found."""

    path: str  #: to open it
    shown: str  #: from what was named; the same wherever that lies


def find(named: Iterable[Path]) -> list[Source]:
    """The manifests in files and folders: in the order in which they are named, those of a folder
    in the order of their names, each once. Raises NoManifest where there is none."""
    given = list(dict.fromkeys(map(os.fsdecode, named)))
    found: dict[str, Source] = {}
    for path, name in zip(given, _names(given)):
        for manifest in _manifests(path):
            shown = os.path.normpath(os.path.join(name, os.path.relpath(manifest, path)))
            found.setdefault(os.path.abspath(manifest), Source(manifest, shown))
    if not found:
        raise NoManifest(
            f"no manifest in {', '.join(given) or 'nothing'}: looked for manifest.xml, and for "
            ".xml files whose root is package"
        )
    return list(found.values())


def _names(given: list[str]) -> list[str]:
    """What stands for each place in the paths that are shown: as many of its last parts as tell all
    of them apart; for a single folder, none."""
    if len(given) == 1 and os.path.isdir(given[0]):
        return [""]
    places = [os.path.abspath(path) for path in given]
    parts = [place.split(os.sep) for place in places]
    for count in range(1, max(map(len, parts), default=0)):
        ends = [os.sep.join(path[-count:]) for path in parts]
        if len(set(ends)) == len(set(places)):
            return ends
    return places


def _manifests(path: str) -> Iterator[str]:
    try:
        entries = sorted(os.scandir(path), key=lambda entry: os.fsencode(entry.name))
    except OSError:  # a file, or a folder that may not be read
        yield path
        return
    for entry in entries:
        if entry.name.startswith("."):
            continue
        if entry.is_dir(follow_symlinks=False):
            yield from _manifests(entry.path)
        elif entry.is_file() and _is_manifest(entry):
            yield entry.path


def _is_manifest(entry: os.DirEntry[str]) -> bool:
    if entry.name == "manifest.xml":
        return True
    if not entry.name.endswith(".xml"):
        return False
    try:
        with open(entry.path, "rb") as file:
            return _root_name(file.read(65536)) in (None, "package")
    except OSError:
        return True


def _root_name(beginning: bytes) -> str | None:
    """What the root is called, without a prefix; None where that cannot be told."""
    names: list[str] = []
    parser = expat.ParserCreate()
    parser.StartElementHandler = lambda name, attributes: names.append(name)
    try:
        parser.Parse(beginning, False)
    except (expat.ExpatError, ValueError, LookupError):
        pass  # what stands behind the root does not matter
    return names[0].rpartition(":")[2] if names else None
