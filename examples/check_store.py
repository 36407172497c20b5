#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Checks all manifests in folders, on all processors, and prints what is wrong with them:

  check_store.py FOLDER...

Exit codes: 0 nothing worse than a hint, 1 something worse, 2 wrong usage, 3 a file that cannot be
read.
"""

import sys
from collections.abc import Iterator
from pathlib import Path

import veskpackage


def manifests(folder: Path) -> Iterator[Path]:
    """Those in a folder and below, in an order that is always the same."""
    yield from sorted(folder.rglob("manifest.xml"))


def shown(path: object, finding: veskpackage.Finding) -> str:
    """As compilers and editors know it."""
    place = f"{path}:{finding.begin.line}:{finding.begin.column}"
    return f"{place}: {finding.severity}: {finding.message} [{finding.rule}]"


def main(folders: list[str]) -> int:
    if not folders:
        print("usage: check_store.py FOLDER...", file=sys.stderr)
        return 2
    code = 0
    paths_by_uuid: dict[str, object] = {}
    for checked in veskpackage.check_many(
        path for folder in folders for path in manifests(Path(folder))
    ):
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
        if checked.uuid and first is not checked.path:
            print(f"{checked.path}: warning: {first} has the same uuid")
            code = max(code, 1)
    return code


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
