# SPDX-License-Identifier: Apache-2.0
"""The questions of docs/fleet.md, asked about stores whose answers are known."""

from __future__ import annotations

import re
import shutil
import subprocess
from pathlib import Path

import duckdb
import pytest
from document import ROOT, blocks

MADE = {
    "a": '<names><name lang="en_US">A</name></names><descriptionLanguages><l>en</l><l>fr</l></descriptionLanguages>'
    '<requirements><mirelRequirement minVersion="2.9" maxVersion="2.9.5"/></requirements>',
    "b": '<requirements><mirelRequirement minVersion="2.10.0"/></requirements>'
    '<services><service name="none"/><service name="it" execStart="b" autorun="true"/></services>',
    "c": '<requirements><mirelRequirement maxVersion="2"/><mirelRequirement minVersion="v2.2 beta"/></requirements>'
    '<supportedLanguages><l>en</l></supportedLanguages><contents><behaviorContent path="x"><triggerSentences>'
    '<s lang="de">c</s></triggerSentences></behaviorContent><dialogContent topicName="d"/></contents>',
    "d": '<requirements><mirelRequirement minVersion="10.0"/></requirements>',
    "e": '<requirements><mirelRequirement minVersion="2.0 " maxVersion="latest"/></requirements>',
    "f": "<broken",
}
ANSWERS = {
    "made": [
        ["10.0  d", "2.10.0  b", "2.9 2.9.5 a", "v2.2 beta  c", "2.0  latest e", " 2 c"],
        ["a", "d"],
        [
            "a descriptions en",
            "a descriptions fr",
            "a names fr",
            "c d topics en",
            "c x triggerSentences en",
        ],
        ["it b b"],
    ],
    "examples": [
        [
            "2.4 3.9 museum-guide",
            "2.4 3.9 office-assistant",
            "2.3 2.9 language-pack-italian",
            "2.1  greeting",
        ],
        ["language-pack-italian"],
        [
            "office-assistant meeting_rooms topics nl_NL",
            "office-assistant rooms/find_room loadingResponses nl_NL",
            "office-assistant rooms/find_room triggerSentences nl_NL",
        ],
        [
            "OfficeCalendar bin/calendar_sync --interval 300 office-assistant",
            "VisitorNotifier bin/visitor_notifier office-assistant",
        ],
    ],
}


def answers(questions: list[str]) -> list[list[str]]:
    """A line for each row; of files only the name, without its end."""
    results = [duckdb.sql(sql) for sql in questions]
    return [
        [re.sub(r"\S*\bstore/(.*?)\.xml", r"\1", " ".join(row)) for row in result.fetchall()]
        for result in results
        if result
    ]


@pytest.mark.parametrize("name", ANSWERS)
def test_answers(name: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(tmp_path)
    if name == "made":
        Path("store").mkdir()
        for file, text in MADE.items():
            Path(f"store/{file}.xml").write_text(f"<package>{text}</package>")
    else:
        shutil.copytree(ROOT / "examples/manifests", "store")
    assert subprocess.run(blocks("sh")[0], shell=True).returncode == (3 if name == "made" else 0)
    assert answers(blocks("sql")) == ANSWERS[name]
