# SPDX-License-Identifier: Apache-2.0
from __future__ import annotations

import os
import secrets
import shutil
import stat

#: A path of a file.
Path = str | os.PathLike[str]


def replace_file(path: Path, content: bytes) -> None:
    """Writes a file so that nobody ever sees a part of it. What a link leads to is written; the mode
    stays. Devices and pipes are written to. An OSError names the path that was given."""
    try:
        _replace(os.path.realpath(os.fsdecode(path)), content)
    except OSError as error:
        error.filename, error.filename2 = os.fspath(path), None  # not what stood there for a moment
        raise


def _replace(target: str, content: bytes) -> None:
    exists = os.path.exists(target)
    if exists and not stat.S_ISREG(os.stat(target).st_mode):
        with open(target, "wb") as device:
            device.write(content)
        return
    fresh = os.path.join(os.path.dirname(target), f".{secrets.token_hex(8)}")
    with open(fresh, "xb") as file:
        try:
            if exists:
                shutil.copymode(target, fresh)  # before anything is there to be read
            file.write(content)
            file.flush()
            os.fsync(file.fileno())
            os.replace(fresh, target)
        except BaseException:
            os.unlink(fresh)
            raise
