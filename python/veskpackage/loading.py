# SPDX-License-Identifier: Apache-2.0
"""Reads packages from manifests."""

from __future__ import annotations

import os
from collections.abc import Generator, Iterable
from dataclasses import dataclass

from . import _core
from ._batches import checked_jobs, in_order
from ._files import Data, Path, is_data
from .package import Package

__all__ = ["Loaded", "load", "load_many", "loads"]


@dataclass(frozen=True)
class Loaded:
    """What loading one of many files gave: a package, or why there is none.

    Attributes:
        path: as it was given
        package: None where there is an error
        error: why there is no package; None where there is one
    """

    path: Path
    package: Package | None
    error: Exception | None

    def result(self) -> Package:
        """The package; where there is none, raises the error."""
        if self.error:
            raise self.error
        assert self.package
        return self.package


def load(path: Path) -> Package:
    """Reads the manifest in a file, in whatever encoding it is.

    Raises ManifestError for a manifest that is not well-formed, or that would cost too much to parse, and
    OSError where the file cannot be read. What the format does not know is skipped; `veskpackage.check`
    finds it.
    """
    return Package._of(_core.load(os.fsencode(path)))


def loads(manifest: Data | str) -> Package:
    """Reads a manifest from the bytes of a file, or from a text.

    Raises ManifestError as `load` does. Whatever encoding a str names, it is Unicode already; an attribute
    with a declared prefix counts under its name without the prefix there, and what follows a NUL character
    is not read.
    """
    if isinstance(manifest, str):
        return Package._of(_core.read_text(manifest))
    if not is_data(manifest):
        raise TypeError(f"bytes or a str are wanted, not {type(manifest).__name__}")
    return Package._of(_core.read_bytes(bytes(manifest)))


def load_many(paths: Iterable[Path], *, jobs: int | None = None) -> Generator[Loaded, None, None]:
    """Loads files on several threads at once, as many as there are processors or `jobs`, and gives the
    results in the order of the paths, as they come. The paths are asked for as they are needed, so there
    can be any number. A file that cannot be read has an `error` and ends nothing.

    Leaving early does not wait: a thread that still waits for a file ends once that has been read.
    """
    threads = checked_jobs(paths, jobs)

    def load_all() -> Generator[Loaded, None, None]:
        for path, result in in_order(_core.load_all, paths, threads):
            if isinstance(result, Exception):
                yield Loaded(path, None, result)
            else:
                yield Loaded(path, Package._of(result), None)

    return load_all()
