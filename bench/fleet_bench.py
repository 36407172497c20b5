# SPDX-License-Identifier: Apache-2.0
"""How long reading stores of manifests takes, and how much memory: with the tool, and on clusters of one and two
workers on this machine, which have started already. Prints the rows of the tables in docs/fleet.md, and what a
million would take by the line through the figures. Run by scripts/test-fleet --figures."""

from __future__ import annotations

import os
import re
import subprocess
import sys
import time
from collections.abc import Callable
from pathlib import Path

import duckdb
import numpy
from cluster import Cluster
from manifests import make_store
from pyspark.sql import DataFrame

from veskpackage.spark import read_packages

COUNTS = (10_000, 30_000, 100_000)


# Of one measurement: seconds, and seconds of processors.
Cost = tuple[float, float]


def processes(root: int) -> list[Path]:
    """The process and all that it has started, in /proc."""
    children = subprocess.run(["pgrep", "-P", str(root)], stdout=subprocess.PIPE, text=True).stdout
    below = [process for child in children.split() for process in processes(int(child))]
    return [process for process in [Path(f"/proc/{root}"), *below] if process.exists()]


def busy() -> float:
    """How long processors have worked for this process and all below it, also for those that have ended."""
    fields = [
        (process / "stat").read_text().rpartition(")")[2].split()
        for process in processes(os.getpid())
    ]
    return sum(int(ticks) for field in fields for ticks in field[11:15]) / os.sysconf("SC_CLK_TCK")


def peaks(root: int) -> dict[str, int]:
    """The peak memory in MiB, summed by program."""
    sums: dict[str, int] = {}
    for process in processes(root):
        found = re.search(
            r"^Name:\t(.*)\n(?s:.*)^VmHWM:\s*(\d+)", (process / "status").read_text(), re.MULTILINE
        )
        if found:
            sums[found[1]] = sums.get(found[1], 0) + int(found[2]) // 1024
    return sums


def cost(work: Callable[[], object]) -> Cost:
    began, was_busy = time.monotonic(), busy()
    work()
    return time.monotonic() - began, busy() - was_busy


def shown(count: int, jobs: int) -> list[str]:
    """The tool's command that shows so many packages."""
    listed = ["--files-from", f"{count}.txt"]
    return ["veskpackage", "show", "--format", "json", "--jobs", str(jobs), *listed]


def by_tool(folder: Path, count: int, jobs: int) -> Cost:
    with open(folder / "packages.jsonl", "w") as out:
        return cost(
            lambda: subprocess.run(
                shown(count, jobs), cwd=folder, stdout=out, stderr=subprocess.DEVNULL
            )
        )


def peak_of_tool(folder: Path) -> dict[str, int]:
    """What it has taken when it has printed half of the packages, which does not grow from there."""
    with subprocess.Popen(
        shown(COUNTS[0], 2), cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL
    ) as tool:
        assert tool.stdout
        for _ in range(COUNTS[0] // 2):
            tool.stdout.readline()
        peak = peaks(tool.pid)
        tool.kill()
        return peak


def by_query(folder: Path) -> Cost:
    query = f"""SELECT count(*) FROM read_json('{folder}/packages.jsonl',
        columns = {{names: 'MAP(VARCHAR, VARCHAR)', descriptionLanguages: 'VARCHAR[]'}})
        WHERE len(list_filter(descriptionLanguages, lambda language: language NOT IN map_keys(names))) > 0"""
    return cost(lambda: duckdb.sql(query).fetchall())


def by_spark(files: DataFrame, folder: Path) -> Cost:
    packages = read_packages(files).write.mode("overwrite")
    return cost(lambda: packages.parquet(f"file:{folder}/packages.parquet"))


def report(name: str, costs: list[Cost]) -> None:
    """A row: seconds and seconds of processors for each count, and for a million by the line through them."""
    cells = [f"{seconds:.1f} ({work:.1f})" for seconds, work in costs]
    million = [numpy.polyval(numpy.polyfit(COUNTS, column, 1), 1e6) for column in zip(*costs)]
    print(f"| {name} | {' | '.join(cells)} | {million[0]:,.0f} ({million[1]:,.0f}) |", flush=True)


def main(folder: Path) -> None:
    paths = make_store(folder / "store", max(COUNTS))
    for count in COUNTS:
        (folder / f"{count}.txt").write_text("".join(f"{path}\n" for path in paths[:count]))
    print(f"{sum(path.stat().st_size for path in paths) / len(paths):.0f} bytes a manifest")

    for jobs in (1, 2):
        report(f"the tool, `--jobs {jobs}`", [by_tool(folder, count, jobs) for count in COUNTS])
    print("peak MiB", peak_of_tool(folder))
    print("a query of the last lines", by_query(folder), "peak MiB", peaks(os.getpid()))
    for workers in (1, 2):
        (folder / f"{workers}").mkdir()
        began = time.monotonic()
        with Cluster(folder / f"{workers}", workers) as cluster:

            def listed(count: int) -> DataFrame:
                files = cluster.spark.read.text(f"file:{folder}/{count}.txt")
                return files.withColumnRenamed("value", "path").repartition(4 * workers)

            def with_content(count: int) -> DataFrame:
                folders = [f"file:{folder}/store/{number:03}" for number in range(count // 1000)]
                return cluster.spark.read.format("binaryFile").load(folders)

            by_spark(listed(COUNTS[0]), folder)  # all code is compiled then
            print(f"the first has ended after {time.monotonic() - began:.1f}")
            for name, files in ("paths", listed), ("content", with_content):
                report(
                    f"Spark, {workers} workers, {name}",
                    [by_spark(files(count), folder) for count in COUNTS],
                )
            print("peak MiB of a worker", peaks(cluster.processes[1].pid))


if __name__ == "__main__":
    main(Path(sys.argv[1]))
