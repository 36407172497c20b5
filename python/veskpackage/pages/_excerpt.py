# SPDX-License-Identifier: Apache-2.0
"""The text that a finding is about, as the command-line tool shows it: of several lines the first,
and of a long line a part around the place."""

from __future__ import annotations

import codecs
import re
from collections.abc import Sequence
from dataclasses import dataclass

from .. import _core
from ..checking import Finding

_MOST_BEFORE = 40
_MOST = 100
_MOST_BYTES = 4 * (_MOST + 2)  # more characters than are shown, though the outermost may be cut
_LINE_END = re.compile(b"[\r\n]")
# The encodings that readers know, as Python calls them. It has others, such as "idna" and "utf-7", which
# refuse bytes, take long, or give what is no text.
_KNOWN = re.compile("ascii|big5|cp[0-9]|euc_|gb|hp-|iso|koi8-|mac-|shift_jis|tis-|utf-(?:16|32)")


@dataclass(frozen=True, slots=True)
class Excerpt:
    line: int
    before: str
    marked: str
    behind: str


class Excerpts:
    """Those of one manifest. The text is not kept as Unicode, since offsets count its bytes."""

    def __init__(self, data: bytes, findings: Sequence[Finding]) -> None:
        self._text = data if _core.is_utf8(data) else _decoded(data).encode(errors="replace")
        places = [finding for finding in findings if _has_exact_place(finding)]
        # Where the encoding is taken for another one than the checker takes it for, nothing is
        # better.
        self._is_known = not places or self._is_at(
            max(places, key=lambda finding: finding.begin.offset)
        )

    def _is_at(self, finding: Finding) -> bool:
        before = self._text[: finding.begin.offset].decode(errors="replace")
        line = re.split("\r\n|\r|\n", before)[-1].removeprefix("\ufeff")
        return len(line) + 1 == finding.begin.column

    def of(self, finding: Finding) -> Excerpt | None:
        """None for what is nowhere in the text, or not known where exactly."""
        if not self._is_known or not _has_exact_place(finding):
            return None
        begin, end = finding.begin.offset, finding.end.offset
        marked_bytes = _first_line(self._text[begin : min(end, begin + _MOST_BYTES)])
        rest = begin + len(marked_bytes)
        before = _shown(_LINE_END.split(self._text[max(begin - _MOST_BYTES, 0) : begin])[-1])
        marked = _shown(marked_bytes)
        behind = _shown(_first_line(self._text[rest : rest + _MOST_BYTES]))
        if len(before) > _MOST_BEFORE:
            before = "…" + before[-_MOST_BEFORE:]
        room = _MOST - len(before)
        if len(marked) > room:
            marked, behind = marked[:room] + "…", ""
        elif len(marked) + len(behind) > room:
            behind = behind[: room - len(marked)] + "…"
        return Excerpt(finding.begin.line, before, marked, behind)


def _first_line(text: bytes) -> bytes:
    return _LINE_END.split(text, maxsplit=1)[0]


def _shown(line: bytes) -> str:
    return line.decode(errors="replace").removeprefix("\ufeff").replace("\t", "    ")


def _has_exact_place(finding: Finding) -> bool:
    begin = finding.begin
    return begin.offset > 0 or (begin.line == 1 and begin.column == 1)


def _decoded(data: bytes) -> str:
    """With a byte order mark, if there is one. What is in no known encoding is read as UTF-8."""
    declared = re.match(rb"""<\?xml[^>]{0,100}encoding\s*=\s*["']([A-Za-z0-9._-]+)""", data)
    encoding = "utf-16-be" if data.startswith(codecs.BOM_UTF16_BE) else "utf-16-le"
    if declared:
        try:
            encoding = codecs.lookup(declared[1].decode()).name
        except LookupError:
            encoding = ""
    return data.decode(encoding if _KNOWN.match(encoding) else "utf-8", errors="replace")
