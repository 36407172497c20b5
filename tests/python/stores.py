# SPDX-License-Identifier: Apache-2.0
"""Stores of made packages, for tests of what works on many."""

from __future__ import annotations

from collections.abc import Iterator
from pathlib import Path
from typing import Any

from veskpackage import (
    Behavior,
    Dialog,
    MirelRequirement,
    Package,
    RobotRequirement,
    Service,
    _core,
)

_SUBJECTS = ["Lobby", "Museum", "Kitchen", "Garden", "Library", "Night", "Lesson", "Story"]
_KINDS = ["guide", "helper", "games", "songs", "watch"]
_WORDS = {
    "en_US": "{} {}",
    "de_DE": "{}-{}",
    "ar_EG": "دليل {} {}",
    "ja_JP": "{}の{}",
    "he_IL": "מדריך {} {}",
}


def package(number: int) -> Package:
    """One of any number, each another; every 50th has the same uuid."""
    kind = _KINDS[number % 5]
    codes = list(_WORDS)[number % 3 : number % 3 + 1 + number % 4]
    names = {code: f"{_WORDS[code].format(_SUBJECTS[number % 8], kind)} {number}" for code in codes}
    behaviors = [
        Behavior(
            path=f"{kind}/{part}", nature="interactive", user_requestable=part == 0, names=names,
            trigger_sentences={code: [f"{names[code]}, go", "go"] for code in codes[part % 2 :]},
            conditions={"start": ["people.count > 0"]}, permissions=["canStandUp"],
        )
        for part in range(number % 4)
    ]  # fmt: skip
    highest = "" if number % 2 else "3.9"
    return Package(
        uuid=f"made-{number if number % 50 else 0}", version=f"{number % 7}.{number % 11}",
        channel=["stable", "beta", ""][number % 3], author=f"Team {number % 13}", names=names,
        supported_languages=codes, description_languages=codes, behaviors=behaviors,
        dialogs=[Dialog(topic_name=kind, topics={code: f"dialogs/{code}" for code in codes[1:]})],
        services=[Service(name=kind, exec_start=f"bin/{kind}", auto_run=number % 9 == 0)],
        robot_requirements=[
            RobotRequirement(model=["tall", "small"][number % 2], min_head_version=str(number % 4))
        ],
        mirel_requirements=[MirelRequirement(min_version=f"2.{number % 12}", max_version=highest)],
    )  # fmt: skip


def make(folder: Path, count: int) -> None:
    """Writes a store of packages, each 20th with a fault and each 100th broken."""
    for number in range(count):
        text = package(number).dumps()
        if number % 20 == 19:
            text = text.replace("<requirements>", "<requirments/><requirements>")
        if number % 100 == 99:
            text = text.replace("</package>", "")
        place = folder / f"{number % 100:02}"
        place.mkdir(parents=True, exist_ok=True)
        (place / f"{number}.xml").write_text(text, "utf-8")


def filled(texts: Iterator[str], type_name: str = "Package") -> dict[str, Any]:
    """The fields of a record in which every text, also in lists and as key, is the next one."""

    def value(kind: str) -> Any:
        if kind == "str":
            return next(texts)
        if kind == "bool":
            return True
        if kind.startswith("dict[str, "):
            return {next(texts): value(kind[10:-1]) for _ in range(2)}
        if kind.startswith("list["):
            return [value(kind[5:-1]) for _ in range(2)]
        return filled(texts, kind.removesuffix(" | None"))

    members = _core.record_types()[type_name]
    fields = {name: value(kind) for name, kind in members if name != "permissions"}
    return fields | ({"permissions": ["canStandUp"]} if type_name == "Behavior" else {})
