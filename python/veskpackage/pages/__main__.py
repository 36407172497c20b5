# SPDX-License-Identifier: Apache-2.0
"""The command line of veskpackage.pages."""

from __future__ import annotations

import argparse
import sys
from collections.abc import Sequence

from . import NoManifest, NotOurs, write
from ._text import plain

DONE, REFUSED, WRONG_USAGE, UNREADABLE = range(4)  # as the command-line tool has them


def run(arguments: Sequence[str] | None = None) -> int:
    parser = argparse.ArgumentParser(
        "python -m veskpackage.pages",
        description="Writes pages of HTML about packages, which open from a disk: one for each "
        "manifest, and an index where there are several. A veskpackage.toml is not asked.",
        epilog="Exit codes: 0 done, 1 the folder holds files of somebody else, 2 wrong usage, no "
        "manifest in a SOURCE or no Jinja2, 3 a manifest is unreadable or malformed, or a page cannot be written.",
    )
    parser.add_argument(
        "source",
        nargs="+",
        metavar="SOURCE",
        help="a manifest, or a folder: manifest.xml, and other .xml files whose root is package",
    )
    parser.add_argument(
        "-o",
        "--output",
        required=True,
        metavar="FOLDER",
        help="where the pages are written; pages of an earlier run that have no package any more "
        "are removed",
    )
    parser.add_argument(
        "-f",
        "--force",
        action="store_true",
        help="write also into a folder that holds other files; these stay, unless they are called "
        "like pages",
    )
    parser.add_argument(
        "-j",
        "--jobs",
        type=_positive,
        metavar="N",
        help="read with N threads; else as many as there are processors",
    )
    options = parser.parse_args(arguments)
    try:
        written = write(options.source, options.output, force=options.force, jobs=options.jobs)
    except NotOurs as refusal:
        _complain(str(refusal))
        return REFUSED
    except NoManifest as none:
        _complain(str(none))
        return WRONG_USAGE
    except ModuleNotFoundError as missing:
        _complain(f"{missing}: pages need Jinja2, Debian's python3-jinja2 or the extra [pages]")
        return WRONG_USAGE
    except OSError as error:
        _complain(f"{error.filename}: error: {error.strerror}" if error.filename else str(error))
        return UNREADABLE
    for complaint in written.complaints:
        _complain(str(complaint))
    return UNREADABLE if written.complaints else DONE


def _positive(text: str) -> int:
    if not text.isdecimal() or not int(text):
        raise argparse.ArgumentTypeError(f"{text!r} is no number from 1 on")
    return int(text)


def _complain(message: str) -> None:
    print(plain(message).replace("\n", "<U+000A>"), file=sys.stderr)


if __name__ == "__main__":
    sys.exit(run())
