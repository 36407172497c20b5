# SPDX-License-Identifier: Apache-2.0
from __future__ import annotations

import os
import secrets
import stat
from contextlib import suppress
from typing import TypeGuard

#: A path of a file.
Path = str | os.PathLike[str]
#: The bytes of one.
Data = bytes | bytearray | memoryview


def is_data(value: object) -> TypeGuard[Data]:
    return isinstance(value, (bytes, bytearray, memoryview))


def replace_file(path: Path, data: Data) -> None:
    """Writes a file as `Package.save` does: for what `edit` and `fix` give.

    Whatever goes wrong, the file has all of the data or all of what it had before, and nobody ever sees a
    part of it. An OSError says what went wrong, and names the path that was given.

    A file that is there is replaced by another one. It keeps its mode and, where that is permitted, its
    owner and group, but neither extended attributes nor other names (hard links), which still lead to what
    was there before. For this the folder has to be writable. A symbolic link stays: what it leads to is
    replaced, or made. What is no regular file, such as a pipe or "/dev/stdout", is written to.
    """
    try:
        _write(os.fsdecode(path), data)
    except OSError as error:  # which may name what stood there for a moment
        raise OSError(error.errno, error.strerror, os.fspath(path)) from None


def _write(path: str, data: Data) -> None:
    try:
        old = os.stat(path)
    except FileNotFoundError:
        old = None
    path = _end_of_links(path)
    if old and (os.path.islink(path) or not stat.S_ISREG(old.st_mode)):
        with open(_own_descriptor(path), "wb") as file:
            file.write(data)
    else:
        _replace(path, old, data)


def _end_of_links(path: str) -> str:
    """What a path leads to. Links in /proc are no paths, whatever they look like: it ends there."""
    while os.path.islink(path):
        folder = os.path.dirname(path)
        if os.path.realpath(folder).startswith("/proc/"):
            break
        path = os.path.join(folder, os.readlink(path))
    return path


def _own_descriptor(path: str) -> int | str:
    """Another descriptor of what is open in this process, or the path of what is not. To open a file anew,
    as a redirected "/dev/stdout", would cut it off, and write it from its beginning."""
    folder, name = os.path.split(path)
    is_own = os.path.realpath(folder) == os.path.realpath("/proc/self/fd")
    return os.dup(int(name)) if is_own else path


def _replace(path: str, old: os.stat_result | None, data: Data) -> None:
    fresh = os.path.join(os.path.dirname(path), f".{secrets.token_hex(8)}")
    with open(fresh, "xb") as file:
        try:
            if old:
                _keep_rights(file.fileno(), old)  # before anything is there to be read
            file.write(data)
            file.flush()
            os.fsync(file.fileno())
            os.replace(fresh, path)
        except BaseException:
            with suppress(FileNotFoundError):  # where it has its place already
                os.unlink(fresh)
            raise


def _keep_rights(file: int, old: os.stat_result) -> None:
    for owner, group in ((old.st_uid, -1), (-1, old.st_gid)):
        with suppress(OSError):
            os.fchown(file, owner, group)
    os.fchmod(file, stat.S_IMODE(old.st_mode))  # last, as a new owner takes bits away
