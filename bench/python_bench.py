#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Packages in Python beside the C++ library and beside Python's own parsers, as tables in Markdown.

usage: python_bench.py [BUILD [BEHAVIORS...]]

BUILD is a release with the Python package and benchmarks, build/release unless it is given. It takes
some five minutes; for figures that can be compared, let nothing else run.
"""

from __future__ import annotations

import json
import subprocess
import sys
import tempfile
from collections.abc import Callable, Iterable
from dataclasses import dataclass, field, fields
from functools import partial
from pathlib import Path
from time import perf_counter_ns
from typing import Any
from xml.etree import ElementTree

import lxml.etree  # type: ignore

SOURCE = Path(__file__).resolve().parents[1]
BUILD = Path(sys.argv[1] if len(sys.argv) > 1 else SOURCE / "build/release")
sys.path.insert(0, str(BUILD / "python"))

import veskpackage  # noqa: E402

EXAMPLE = SOURCE / "examples/manifests/greeting.xml"
BEHAVIORS = [int(count) for count in sys.argv[2:]] or [1, 100, 10_000]
RUNS = 12
SECONDS_A_RUN = 0.25
MANIFESTS_IN_FOLDER = 2_000


# What a program would fill from a parser's tree: the fields of a package that its manifest has, by
# the names that veskpackage has for them.


@dataclass
class Behavior:
    path: str = ""
    nature: str = ""
    user_requestable: bool = False
    names: dict[str, str] = field(default_factory=dict)
    descriptions: dict[str, str] = field(default_factory=dict)
    tags: dict[str, list[str]] = field(default_factory=dict)
    trigger_sentences: dict[str, list[str]] = field(default_factory=dict)
    loading_responses: dict[str, list[str]] = field(default_factory=dict)
    conditions: dict[str, list[str]] = field(default_factory=dict)
    permissions: list[str] = field(default_factory=list)


@dataclass
class MirelRequirement:
    min_version: str = ""
    max_version: str = ""


@dataclass
class Package:
    uuid: str = ""
    version: str = ""
    type_version: str = ""
    author: str = ""
    organization: str = ""
    channel: str = ""
    date: str = ""
    names: dict[str, str] = field(default_factory=dict)
    descriptions: dict[str, str] = field(default_factory=dict)
    supported_languages: list[str] = field(default_factory=list)
    description_languages: list[str] = field(default_factory=list)
    behaviors: list[Behavior] = field(default_factory=list)
    mirel_requirements: list[MirelRequirement] = field(default_factory=list)


def texts(element: Any) -> dict[str, str]:
    return {child.get("lang"): child.text for child in element}


def text_lists(element: Any, key: str = "lang") -> dict[str, list[str]]:
    lists: dict[str, list[str]] = {}
    for child in element:
        lists.setdefault(child.get(key), []).append(child.text)
    return lists


def text_list(element: Any) -> list[str]:
    return [child.text for child in element]


BEHAVIOR_READERS: dict[str, tuple[str, Callable[[Any], Any]]] = {
    "userRequestable": ("user_requestable", lambda element: True),
    "nature": ("nature", lambda element: element.text),
    "names": ("names", texts),
    "descriptions": ("descriptions", texts),
    "tags": ("tags", text_lists),
    "triggerSentences": ("trigger_sentences", text_lists),
    "loadingResponses": ("loading_responses", text_lists),
    "autonomous": ("conditions", lambda element: text_lists(element, "purpose")),
    "permissions": ("permissions", lambda element: [child.tag for child in element]),
}


def behavior_from(element: Any) -> Behavior:
    behavior = Behavior(element.get("path"))
    for child in element:
        name, read = BEHAVIOR_READERS[child.tag]
        setattr(behavior, name, read(child))
    return behavior


def mirel_requirement_from(element: Any) -> MirelRequirement:
    return MirelRequirement(element.get("minVersion", ""), element.get("maxVersion", ""))


SECTION_READERS: dict[str, tuple[str, Callable[[Any], Any]]] = {
    "names": ("names", texts),
    "descriptions": ("descriptions", texts),
    "supportedLanguages": ("supported_languages", text_list),
    "descriptionLanguages": ("description_languages", text_list),
    "contents": ("behaviors", lambda element: [behavior_from(child) for child in element]),
    "requirements": (
        "mirel_requirements",
        lambda element: [mirel_requirement_from(child) for child in element],
    ),
}


ROOT_ATTRIBUTES = ["uuid", "version", "typeVersion", "author", "organization", "channel", "date"]


def package_from(root: Any) -> Package:
    package = Package(*(root.get(name, "") for name in ROOT_ATTRIBUTES))
    for child in root:
        name, read = SECTION_READERS[child.tag]
        setattr(package, name, read(child))
    return package


NAMES = {
    kind.__name__: [field.name for field in fields(kind)]
    for kind in (Package, Behavior, MirelRequirement)
}
LISTS_OF_RECORDS = ("behaviors", "mirel_requirements")


def read_all(record: Any) -> Any:
    """Reads every field that the dataclasses have, down to the last text."""
    for name in NAMES[type(record).__name__]:
        value = getattr(record, name)
        if name in LISTS_OF_RECORDS:
            for part in value:
                read_all(part)
    return record


def require_equal(plain: Any, record: Any) -> None:
    for name in NAMES[type(record).__name__]:
        mine, theirs = getattr(plain, name), getattr(record, name)
        if name in LISTS_OF_RECORDS:
            for pair in zip(mine, theirs, strict=True):
                require_equal(*pair)
        else:
            assert mine == theirs, (name, mine, theirs)


def microseconds(work: Callable[[], Any], seconds: float, is_release_counted: bool) -> float:
    """A call's mean time in one run, with or without that for letting go of the result."""
    taken = calls = 0
    while not calls or taken < seconds * 1e9:
        start = perf_counter_ns()
        result = work()
        if is_release_counted:
            result = None
        taken += perf_counter_ns() - start
        calls += 1
        result = None
    return taken / calls / 1000


def least(
    works: dict[str, Callable[[], Any]],
    seconds: float = SECONDS_A_RUN,
    without_release: Iterable[str] = (),
) -> dict[str, float]:
    """The least of all runs, which take turns, so that what disturbs some disturbs all."""
    best = dict.fromkeys(works, float("inf"))
    for _ in range(RUNS):
        for name, work in works.items():
            best[name] = min(best[name], microseconds(work, seconds, name not in without_release))
    return best


def cpp_figures(benchmarks: list[str]) -> dict[str, float]:
    """By names such as "loadFile/100"."""
    program = str(BUILD / "bench/manifest_bench")
    wanted = f"^({'|'.join(benchmarks)})/({'|'.join(map(str, BEHAVIORS))})/"
    command = [program, "--benchmark_format=json", f"--benchmark_filter={wanted}"]
    output = subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout
    results = json.loads(output)["benchmarks"]
    assert all(result["time_unit"] == "us" for result in results)
    return {
        "/".join(result["name"].split("/")[:2]): result["real_time"]
        for result in results
        if result["aggregate_name"] == "least"
    }


def sample(behaviors: int) -> veskpackage.Package:
    package = veskpackage.load(EXAMPLE)
    behavior = package.behaviors[0]
    package.behaviors.clear()
    for i in range(behaviors):
        package.behaviors.append(behavior.copy())
        package.behaviors[-1].path = f"greeting/hello{i}"  # no two have the same
    return package


def shown(figure: float) -> str:
    return f"{figure:,.0f}" if figure >= 10 else f"{figure:.1f}"


def table(heads: list[str], rows: list[list[str]]) -> None:
    print("| " + " | ".join(heads) + " |")
    print("|---|" + "---:|" * (len(heads) - 1))
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print(flush=True)


#: What a measure in Python stands beside in C++.
BESIDE = {"dumps": "saveString", "dumps, all fields read": "saveString", "save": "saveFile"}


def compare_loading(folder: Path) -> None:
    cpp = cpp_figures(["loadFile", "saveString", "saveFile"])
    rows = []
    for count in BEHAVIORS:
        path = str(folder / f"{count}.xml")
        sample(count).save(path)
        data = Path(path).read_bytes()
        package, read = veskpackage.load(path), read_all(veskpackage.load(path))
        for parser in (ElementTree, lxml.etree):
            require_equal(package_from(parser.parse(path).getroot()), package)
        package = veskpackage.load(path)
        figures = least(
            {
                "load": lambda: veskpackage.load(path),
                "load, without letting go": lambda: veskpackage.load(path),
                "load, all fields read": lambda: read_all(veskpackage.load(path)),
                "loads": lambda: veskpackage.loads(data),
                "ElementTree": lambda: package_from(ElementTree.parse(path).getroot()),
                "lxml": lambda: package_from(lxml.etree.parse(path).getroot()),
                "dumps": package.dumps,
                "dumps, all fields read": read.dumps,
                "save": lambda: package.save(folder / "written.xml"),
            },
            without_release=["load, without letting go"],
        )
        for name, figure in figures.items():
            cpp_figure = cpp[f"{BESIDE.get(name, 'loadFile')}/{count}"]
            ratio = f"{figure / cpp_figure:.2f}"
            rows.append([name, f"{count:,}", shown(figure), shown(cpp_figure), ratio])
    rows.sort(key=lambda row: list(figures).index(row[0]))
    table(["microseconds", "behaviors", "Python", "C++", "ratio"], rows)


def compare_threads(folder: Path) -> None:
    example = EXAMPLE.read_text(encoding="utf-8")
    paths = [str(folder / f"small{i}.xml") for i in range(MANIFESTS_IN_FOLDER)]
    for i, path in enumerate(paths):  # no two have the same uuid
        Path(path).write_text(example.replace('uuid="', f'uuid="{i}'), encoding="utf-8")
    many: dict[str, Callable[..., Iterable[Any]]] = {
        "check_many": veskpackage.check_many,
        "load_many": veskpackage.load_many,
    }

    def exhaust(work: Callable[..., Iterable[Any]], jobs: int) -> None:
        for result in work(paths, jobs=jobs):
            assert result.error is None

    figures = least(
        {
            f"{name}/{jobs}": partial(exhaust, work, jobs)
            for name, work in many.items()
            for jobs in (1, 2)
        },
        seconds=0,
    )
    rows = []
    for measure, figure in figures.items():
        name, jobs = measure.split("/")
        ratio = f"{figures[f'{name}/1'] / figure:.2f}"
        rows.append([name, jobs, shown(figure / 1000), ratio])
    table([f"{MANIFESTS_IN_FOLDER:,} manifests", "jobs", "milliseconds", "times faster"], rows)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as scratch:
        compare_threads(Path(scratch))
        compare_loading(Path(scratch))
