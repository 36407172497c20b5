# SPDX-License-Identifier: Apache-2.0
"""Reads packages from manifests."""

from __future__ import annotations

import os
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from typing import Any

from . import _core
from ._batches import in_order
from ._files import Path
from .errors import ManifestError
from .package import Package

__all__ = ["Loaded", "load", "load_many", "loads"]


@dataclass(frozen=True)
class Loaded:
    """What loading one of many files gave: a package, or why there is none."""

    path: Path  #: as it was given
    package: Package | None
    error: ManifestError | OSError | None


def load(path: Path) -> Package:
    """Reads the manifest in a file, in whatever encoding it is.

    Raises ManifestError for a manifest that is not well-formed, or that would cost too much to parse, and
    OSError where the file cannot be read. What the format does not know is skipped; `veskpackage.check`
    finds it.
    """
    return Package._of(_core.load(os.fsencode(path)))


def loads(manifest: bytes | bytearray | memoryview | str) -> Package:
    """Reads a manifest from the bytes of a file, or from a text.

    Raises ManifestError as `load` does. Whatever encoding a str names, it is Unicode already; an attribute
    with a declared prefix counts under its name without the prefix there, and what follows a NUL character
    is not read.
    """
    if isinstance(manifest, str):
        return Package._of(_core.read_text(manifest))
    return Package._of(_core.read_bytes(bytes(memoryview(manifest))))


def load_many(paths: Iterable[Path], *, jobs: int | None = None) -> Iterator[Loaded]:
    """Loads files on several threads at once, as many as there are processors or `jobs`, and gives the
    results in the order of the paths, as they come. The paths are asked for as they are needed, so there
    can be any number. A file that cannot be read has an `error` and ends nothing."""

    def load_all(batch: list[Path]) -> list[Any]:
        return _core.load_all([os.fsencode(path) for path in batch])

    for path, result in in_order(load_all, paths, jobs):
        if isinstance(result, (ManifestError, OSError)):
            yield Loaded(path, None, result)
        else:
            yield Loaded(path, Package._of(result), None)
