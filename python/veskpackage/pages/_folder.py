# SPDX-License-Identifier: Apache-2.0
"""A folder of pages: what is written there, and what is left alone."""

from __future__ import annotations

import os
import re
import secrets
from collections.abc import Iterable
from contextlib import suppress

from .._files import Path

#: In a folder that pages have been written to, the list of these.
LIST = ".veskpackage-pages"
#: Where the pages of packages are.
PACKAGES = "packages"

_PAGE = re.compile(rf"index\.html|{PACKAGES}/[a-z0-9-]+\.html")


class NotOurs(Exception):
    """A folder that holds files of somebody else, so that nothing was written there."""


class Folder:
    """Writes pages into a folder.

    Only what is a page by its name is ever written, and only what an earlier run has listed is
    removed. Each file is replaced as a whole; a link in its place is replaced, not followed.
    """

    def __init__(self, path: Path, *, force: bool) -> None:
        """Makes the folder. Raises NotOurs where other files are in it, unless `force` is set."""
        self._path = os.fsdecode(path)
        packages = self._at(PACKAGES)
        os.makedirs(self._path, exist_ok=True)
        self._earlier = self._listed()
        if not self._earlier and not force and os.listdir(self._path):
            raise NotOurs(
                f"{self._path} holds files that are no pages of an earlier run; "
                "choose an empty folder, or write there all the same with --force"
            )
        if os.path.islink(packages):
            raise NotOurs(f"{packages} is a link, and would lead the pages elsewhere")

    def _at(self, name: str) -> str:
        return os.path.join(self._path, *name.split("/"))

    def _listed(self) -> set[str]:
        try:
            with open(self._at(LIST), encoding="ascii", errors="replace") as file:
                return {name for name in file.read().split("\n") if _PAGE.fullmatch(name)}
        except FileNotFoundError:
            return set()

    def begin(self, names: Iterable[str]) -> None:
        """Lists what will be written, so that the folder is known even if the run is broken off."""
        self._names = set(names)
        if any(name.startswith(PACKAGES) for name in self._names):
            os.makedirs(self._at(PACKAGES), exist_ok=True)
        self._write_list(self._names | self._earlier)

    def end(self) -> None:
        """Removes the pages of an earlier run that have not been written again."""
        for name in sorted(self._earlier - self._names):
            try:
                os.unlink(self._at(name))
            except FileNotFoundError:
                pass
        with suppress(OSError):  # it is needed, or not there, or holds what others have put there
            os.rmdir(self._at(PACKAGES))
        self._write_list(self._names)

    def write(self, name: str, content: str | Iterable[str]) -> None:
        assert _PAGE.fullmatch(name), name
        self._replace(name, [content] if isinstance(content, str) else content)

    def _write_list(self, names: set[str]) -> None:
        self._replace(LIST, ["".join(f"{name}\n" for name in sorted(names))])

    def _replace(self, name: str, content: Iterable[str]) -> None:
        fresh = f"{self._at(name)}.{secrets.token_hex(8)}"
        try:
            with open(fresh, "x", encoding="utf-8", newline="\n") as file:
                file.writelines(content)
            os.replace(fresh, self._at(name))
        except BaseException as failure:
            if os.path.lexists(fresh):
                os.unlink(fresh)
            if isinstance(failure, OSError):  # which names what stood there for a moment
                raise OSError(failure.errno, failure.strerror, self._at(name)) from None
            raise
