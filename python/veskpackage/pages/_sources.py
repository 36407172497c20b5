# SPDX-License-Identifier: Apache-2.0
"""Finds manifests as the command-line tool does.

A file that is named itself is a manifest, whatever is in it. A folder stands for the manifests in it
and in its folders: files called manifest.xml, and others in .xml whose root is `package`, or does not
come within the first 64 KiB. Hidden ones, and folders behind links, are passed over. What cannot be
read counts, since it might be a manifest.
"""

from __future__ import annotations

import os
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from xml.parsers import expat

from .._files import Path


class NoManifest(ValueError):
    """There is no manifest in something that was named. Else a folder that is mistyped or not mounted
    would have all pages of an earlier run removed."""


@dataclass(frozen=True, slots=True)
class Source:
    """A manifest that was found."""

    path: str  #: to open it
    shown: str  #: from what was named; the same wherever that lies


def find(named: Iterable[Path]) -> list[Source]:
    """The manifests in files and folders: in the order in which they are named, those of a folder
    in the order of their names, each once. Raises NoManifest where there is none in one of them."""
    given = list(dict.fromkeys(map(os.fsdecode, named)))
    if not given:
        raise NoManifest("nothing is named")
    found: dict[str, Source] = {}
    for path, name in zip(given, _names(given)):
        for manifest in _named(path):
            shown = os.path.normpath(os.path.join(name, os.path.relpath(manifest, path)))
            found.setdefault(os.path.abspath(manifest), Source(manifest, shown))
    return list(found.values())


def _names(given: list[str]) -> list[str]:
    """What stands for each place in the paths that are shown: as many of its last parts as tell all
    of them apart; for a single folder, none."""
    if len(given) == 1 and os.path.isdir(given[0]):
        return [""]
    places = [os.path.abspath(path) for path in given]
    parts = [place.split(os.sep) for place in places]
    for count in range(1, max(map(len, parts))):
        ends = [os.sep.join(path[-count:]) for path in parts]
        if len(set(ends)) == len(set(places)):
            return ends
    return places


def _named(path: str) -> Iterable[str]:
    """A file that is named, or the manifests in a folder."""
    if os.path.isfile(path):
        return [path]
    try:
        manifests = list(_manifests(path))
    except NotADirectoryError:  # manifests are read more than once, which pipes do not allow
        raise NoManifest(f"no manifest in {path}: neither a file nor a folder") from None
    except OSError as error:
        raise NoManifest(f"no manifest in {path}: {error.strerror}") from None
    if not manifests:
        raise NoManifest(
            f"no manifest in {path}: looked for manifest.xml, and for .xml files whose root is package"
        )
    return manifests


def _manifests(folder: str) -> Iterator[str]:
    rest = _entries(folder)  # the next one last; folders can be deeper than calls
    while rest:
        entry = rest.pop()
        if entry.is_dir(follow_symlinks=False):
            try:
                rest += _entries(entry.path)
            except OSError:
                yield entry.path
        elif _is_manifest(entry):
            yield entry.path


def _entries(folder: str) -> list[os.DirEntry[str]]:
    with os.scandir(folder) as entries:
        seen = [entry for entry in entries if not entry.name.startswith(".")]
    return sorted(seen, key=lambda entry: os.fsencode(entry.name), reverse=True)


def _is_manifest(entry: os.DirEntry[str]) -> bool:
    if not entry.name.endswith(".xml") or not os.path.isfile(entry.path):
        return False
    if entry.name == "manifest.xml":
        return True
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
