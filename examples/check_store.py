#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Checks manifests, and all in folders, on all processors, and prints what is wrong with them:

  check_store.py FILE_OR_FOLDER...

Exit codes: 0 nothing worse than a hint, 1 something worse, 2 wrong usage, such as a folder that is
not there, 3 a file that cannot be read.
"""

import io
import sys
from collections.abc import Iterator
from pathlib import Path

import veskpackage


def manifests(place: str) -> Iterator[Path]:
    """Those in a folder and below, in an order that is always the same, or the file itself."""
    path = Path(place)
    yield from sorted(path.rglob("manifest.xml")) if path.is_dir() else [path]


def shown(path: object, finding: veskpackage.Finding) -> str:
    """As compilers and editors know it."""
    place = f"{path}:{finding.begin.line}:{finding.begin.column}"
    return f"{place}: {finding.severity}: {finding.message} [{finding.rule}]"


def main(places: list[str]) -> int:
    if not places:
        print("usage: check_store.py FILE_OR_FOLDER...", file=sys.stderr)
        return 2
    missing = [place for place in places if not Path(place).exists()]
    if missing:
        print(f"there is no {' and no '.join(missing)}", file=sys.stderr)
        return 2
    if isinstance(sys.stdout, io.TextIOWrapper):
        sys.stdout.reconfigure(errors="backslashreplace")  # names of files are not always text
    code = 0
    paths_by_uuid: dict[str, object] = {}
    for checked in veskpackage.check_many(path for place in places for path in manifests(place)):
        if checked.error is not None:
            print(f"{checked.error}", file=sys.stderr)
            code = 3
            continue
        for finding in checked.findings:
            print(shown(checked.path, finding))
            if finding.severity != "hint":
                code = max(code, 1)
        # What no manifest shows by itself.
        first = paths_by_uuid.setdefault(checked.uuid, checked.path)
        if checked.uuid and first != checked.path:
            print(f"{checked.path}: warning: {first} has the same uuid")
            code = max(code, 1)
    return code


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
