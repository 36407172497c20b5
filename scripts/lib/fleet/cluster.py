# SPDX-License-Identifier: Apache-2.0
"""A cluster of Apache Spark's own kind on this machine: a master, and workers with an executor of one core."""

from __future__ import annotations

import os
import re
import signal
import subprocess
import sys
import time
from pathlib import Path
from typing import Any, Self

import pyspark
from pyspark.sql import SparkSession


class Cluster:
    """Its processes end with it. What it writes is in a folder, also a list of the groups of its processes, for
    who has to end them if this process cannot."""

    def __init__(self, folder: Path, workers: int) -> None:
        self.folder = folder
        os.environ.update(
            SPARK_LOCAL_IP="127.0.0.1",
            SPARK_LOCAL_DIRS=str(folder / "local"),
            SPARK_DAEMON_MEMORY="256m",
            PYSPARK_PYTHON=sys.executable,
        )
        self.processes: list[subprocess.Popen[bytes]] = []
        self.start("master", "--port", "0")
        self.url = self.said(folder / "master.log", r"Starting Spark master at (spark://\S+)")
        for number in range(workers):
            self.start(
                f"worker{number}",
                "--cores",
                "1",
                "--memory",
                "1g",
                "--work-dir",
                str(folder / "work"),
                self.url,
            )
        self.spark: SparkSession = self.session(workers)

    def start(self, name: str, *arguments: str) -> None:
        home = Path(pyspark.__file__).parent
        kind = name.rstrip("0123456789")
        with open(self.folder / f"{name}.log", "wb") as log:
            process = subprocess.Popen(
                [
                    home / "bin/spark-class",
                    f"org.apache.spark.deploy.{kind}.{kind.capitalize()}",
                    "--host",
                    "127.0.0.1",
                    "--webui-port",
                    "0",
                    *arguments,
                ],
                env={**os.environ, "SPARK_HOME": str(home)},
                stdout=log,
                stderr=log,
                start_new_session=True,
            )
        self.processes.append(process)
        with open(self.folder / "groups", "a") as groups:
            print(process.pid, file=groups)

    def said(self, log: Path, pattern: str) -> str:
        for _ in range(300):
            if found := re.search(pattern, log.read_text()):
                return found[1]
            time.sleep(0.1)
        raise TimeoutError(log.read_text())

    def session(self, workers: int) -> SparkSession:
        local = {
            "spark.driver.host": "127.0.0.1",
            "spark.driver.bindAddress": "127.0.0.1",
            "spark.ui.enabled": "false",
            "spark.sql.warehouse.dir": self.folder / "warehouse",
        }
        job = {
            "spark.cores.max": workers,
            "spark.executor.memory": "768m",
            "spark.driver.memory": "1g",
            "spark.sql.files.openCostInBytes": "64k",
            "spark.scheduler.minRegisteredResourcesRatio": "1",
            "spark.ui.showConsoleProgress": "false",
            "spark.executorEnv.PYTHONPATH": os.environ["PYTHONPATH"],
        }
        builder: Any = SparkSession.builder
        session: SparkSession = builder.master(self.url).config(map=local | job).getOrCreate()
        session.sparkContext.setLogLevel("OFF")
        return session

    def kill_executor(self) -> None:
        """The first worker starts another one then."""
        children = subprocess.check_output(["pgrep", "-P", str(self.processes[1].pid)], text=True)
        for child in children.split():
            os.kill(int(child), signal.SIGKILL)

    def kill_worker(self) -> None:
        """The first, with its executor, as a machine that goes away."""
        os.killpg(self.processes[1].pid, signal.SIGKILL)

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *_: object) -> None:
        self.spark.stop()
        for process in self.processes:
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
            process.wait()
        (self.folder / "groups").unlink()  # whose numbers may soon be those of others
