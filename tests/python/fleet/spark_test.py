# SPDX-License-Identifier: Apache-2.0
"""Packages and findings from a cluster of two workers are those of the tool, also when a worker is killed."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from threading import Thread
from typing import Any

import pyspark
import pytest
from cluster import Cluster
from document import ROOT, blocks
from duckdb_test import ANSWERS, answers
from manifests import make_store
from pyspark.sql import DataFrame
from pyspark.sql.functions import to_json

from veskpackage.spark import check_packages, read_packages

COUNT = int(os.environ["FLEET_MANIFESTS"])
TASKS = 24


@pytest.fixture(scope="module")
def store(tmp_path_factory: pytest.TempPathFactory) -> Path:
    folder = tmp_path_factory.mktemp("store")
    paths = [*make_store(folder, COUNT), folder / "missing.xml", folder / "000"]
    (folder / "list").write_text("".join(f"{path}\n" for path in paths))
    return folder


@pytest.fixture(scope="module")
def cluster(tmp_path_factory: pytest.TempPathFactory) -> Iterator[Cluster]:
    with Cluster(tmp_path_factory.mktemp("cluster"), workers=2) as cluster:
        yield cluster


def tool(
    verb: str, store: Path, pattern: str = "*/*.xml"
) -> tuple[list[dict[str, Any]], list[str]]:
    """What it prints as JSON of the files that are there, and its complaints."""
    files = "".join(f"{path}\n" for path in sorted(store.glob(pattern)))
    done = subprocess.run(
        ["veskpackage", verb, "--format", "json", "--jobs", "2", "--files-from", "-"],
        input=files,
        capture_output=True,
        text=True,
    )
    # Lines end with line feeds only: texts have other characters that end lines.
    return [json.loads(line) for line in done.stdout.split("\n")[:-1]], done.stderr.split("\n")[:-1]


@pytest.fixture(scope="module")
def shown(store: Path) -> tuple[dict[str, str], set[str]]:
    """The text of each package in JSON by its file, and the complaints."""
    packages, complaints = tool("show", store)
    return {package.pop("file"): json.dumps(package) for package in packages}, set(complaints)


def listed(cluster: Cluster, store: Path) -> DataFrame:
    paths = cluster.spark.read.text(f"file:{store}/list").withColumnRenamed("value", "path")
    return paths.repartition(TASKS)


def assert_shown(
    packages: DataFrame, shown: tuple[dict[str, str], set[str]], unreadable: int = 0
) -> set[str]:
    """Gives the complaints of files that have no row."""
    expected, complaints = dict(shown[0]), set(shown[1])
    # The members of the columns stand in the order of the tool, and are all there.
    text = to_json("package", {"ignoreNullFields": "false"}).alias("text")
    for row in packages.select("file", text, "error").toLocalIterator(prefetchPartitions=True):
        file = row.file.removeprefix("file:")
        if row.error is None:
            assert json.dumps(json.loads(row.text)) == expected.pop(file)
        elif row.error.line:
            assert row.text is None
            complaints.remove(
                f"{file}:{row.error.line}:{row.error.column}: error: {row.error.message}"
            )
        else:
            assert row.error.message in ("No such file or directory", "Is a directory")
            unreadable -= 1
    assert not expected and not unreadable
    return complaints


def test_packages_with_their_content(cluster: Cluster, store: Path, shown: Any) -> None:
    files = (
        cluster.spark.read.format("binaryFile").option("pathGlobFilter", "*.xml").load(f"{store}/*")
    )
    missing = assert_shown(read_packages(files), shown)
    assert all(
        os.path.getsize(complaint.split(":")[0]) == 0 for complaint in missing
    )  # Spark passes these over
    assert COUNT * 0.9 < len(shown[0]) < COUNT


def test_findings(cluster: Cluster, store: Path) -> None:
    """Of the first 10,000: all of 100,000 are more than Python should hold."""
    first = listed(cluster, store).where("path NOT RLIKE '/0[1-9][0-9]/'")
    rows: dict[str, list[Any]] = {}
    found = check_packages(first, severities={"unknown-element": "off"})
    for row in found.toLocalIterator(prefetchPartitions=True):
        places = [*row.begin[:2], *row.end[:2], row.place]
        rows.setdefault(row.file, []).append(
            [row.severity, row.rule, row.message, *places, row.mend and row.mend.title]
        )
    for name in "missing.xml", "000":
        assert [finding[:2] for finding in rows.pop(f"{store}/{name}")] == [["error", "unreadable"]]
    for checked in tool("check", store, "00?/*.xml")[0]:
        findings = [
            [*finding.values()][:8] + [finding.get("mend", {}).get("title")]
            for finding in checked["findings"]
            if finding["tag"] != "unknown-element"
        ]
        assert rows.pop(checked["file"], []) == findings
    assert not rows
    with pytest.raises(ValueError, match="no rule: mistaken"):
        check_packages(first, severities={"mistaken": "off"})


def test_odd_rows(cluster: Cluster) -> None:
    odd = (b"\xff", b"<package uuid='\xff'/>")
    rows = [odd, (b"/\xff", None), (None, None), (b"/tmp", None), (b"a", b"")]
    files = cluster.spark.createDataFrame(rows, "path binary, content binary")
    found = [
        (row.file, row.package and row.package.uuid, row.error and row.error.message)
        for row in read_packages(files).collect()
    ]
    missing = "No such file or directory"
    assert found == [
        ("\ufffd", "\ufffd", None),
        ("/\ufffd", None, missing),
        (None, None, missing),
        ("/tmp", None, "Is a directory"),
        ("a", None, "unexpected end of file"),
    ]
    assert read_packages(files.limit(0)).collect() == []
    other_case = read_packages(files.withColumnsRenamed({"path": "Path", "content": "CONTENT"}))
    assert [row.package is not None for row in other_case.collect()] == [True] + 4 * [False]
    with pytest.raises(TypeError, match="content: binary is wanted, not string"):
        read_packages(files.withColumn("content", files.content.cast("string")))


@pytest.mark.parametrize("kill", [Cluster.kill_executor, Cluster.kill_worker])
def test_a_job_goes_on(
    cluster: Cluster, store: Path, shown: Any, tmp_path: Path, kill: Callable[[Cluster], None]
) -> None:
    packages = read_packages(listed(cluster, store))
    job = Thread(target=lambda: packages.write.parquet(f"file:{tmp_path}/packages"))
    job.start()
    tracker = cluster.spark.sparkContext.statusTracker()
    while job.is_alive():
        stages = [tracker.getStageInfo(stage) for stage in tracker.getActiveStageIds()]
        if any(
            stage and stage.numTasks == TASKS and stage.numCompletedTasks > 2 for stage in stages
        ):
            break
        time.sleep(0.01)
    assert job.is_alive()
    kill(cluster)
    assert job.is_alive()
    job.join()
    packages = cluster.spark.read.parquet(f"file:{tmp_path}/packages")
    assert not assert_shown(packages, shown, unreadable=2)


def test_the_document_runs(cluster: Cluster) -> None:
    shutil.copytree(
        ROOT / "examples/manifests", "store"
    )  # in the folder in which Spark has started
    known: dict[str, Any] = {}
    exec("\n".join(blocks("python")), known)
    assert known["packages"].count() == 5
    # What Spark has written answers the questions about one machine as well.
    assert answers(blocks("sql")[1:]) == ANSWERS["examples"]


def test_the_document_names_the_module_for_this_spark() -> None:
    [api] = Path(pyspark.__file__).parent.glob("jars/hadoop-client-api-*.jar")
    version = api.stem.removeprefix("hadoop-client-api-")
    assert f"org.apache.hadoop:hadoop-aws:{version}\n" in blocks("properties")[0]
