# SPDX-License-Identifier: Apache-2.0
from __future__ import annotations

import os
import time
from collections import deque
from collections.abc import Callable, Generator, Iterable, Iterator
from concurrent.futures import Future
from itertools import islice
from queue import SimpleQueue
from threading import Thread
from typing import Any

from . import _core
from ._files import Path

# Files are worked on in batches, so that threads seldom wait for the interpreter's lock. They are as large
# as is done in a short while, so that all threads have work, and nobody waits for long.
MOST_FILES = 32
SECONDS = 0.01

Results = list[tuple[Path, Any]]
Timed = Future[tuple[Results, float]]
Tasks = SimpleQueue[tuple[Timed, list[Path]] | None]
Work = Callable[[list[bytes], _core.Stop], list[Any]]


def checked_jobs(paths: Iterable[Path], jobs: int | None) -> int:
    """How many threads are wanted. Raises for what would fail late or in pieces."""
    if isinstance(paths, (str, bytes)):
        raise TypeError(f"paths are wanted, not {type(paths).__name__}")
    iter(paths)
    return len(os.sched_getaffinity(0)) if jobs is None else checked_count("jobs", jobs)


def checked_count(name: str, count: int) -> int:
    """The count, if it is one from 1 on."""
    if not isinstance(count, int):
        raise TypeError(f"{name}: an int is wanted, not {type(count).__name__}")
    if count < 1:
        raise ValueError(f"{name}: {count} is less than 1")
    return count


def in_order(
    work: Work, paths: Iterable[Path], jobs: int
) -> Generator[tuple[Path, Any], None, None]:
    """Gives each path with what `work` gives for it, or with the exception that it is no path or cannot be
    read. Works on several threads, but not much further than what has been asked for. What the paths raise
    is raised when all paths before it are done."""
    stop = _core.Stop()
    batches = _Batches(paths)
    tasks: Tasks = SimpleQueue()
    threads: list[Thread] = []
    running: deque[Timed] = deque()
    try:
        while True:
            while len(running) < 2 * jobs and (batch := batches.next()):
                running.append(Future())
                tasks.put((running[-1], batch))
                if len(threads) < jobs:
                    threads.append(_started(work, tasks, stop))
            if not running:
                break
            results, seconds = running.popleft().result()
            batches.adapt(len(results), seconds)
            for path, result in results:
                yield path, result.exception() if isinstance(result, _core.Failure) else result
    finally:
        stop.set()
        for _ in threads:
            tasks.put(None)
    for thread in threads:
        thread.join()
    if batches.failure:
        raise batches.failure


def _started(work: Work, tasks: Tasks, stop: _core.Stop) -> Thread:
    """A thread that may be left alone while it waits for a file. For those of a ThreadPoolExecutor, the end
    of the program waits."""

    def run() -> None:
        while task := tasks.get():
            future, batch = task
            try:
                future.set_result(_timed(work, batch, stop))
            except BaseException as error:
                future.set_exception(error)
            del task, future, batch  # and so the results, while there is nothing to do

    thread = Thread(target=run, name="veskpackage", daemon=True)
    thread.start()
    return thread


class _Batches:
    def __init__(self, paths: Iterable[Path]) -> None:
        self.rest = iter(paths)
        self.size = 1
        self.failure: Exception | None = None

    def next(self) -> list[Path]:
        batch: list[Path] = []
        try:
            batch.extend(islice(self.rest, self.size))
        except Exception as failure:
            self.failure = failure
            self.rest = iter(())
        return batch

    def adapt(self, files: int, seconds: float) -> None:
        wanted = int(files * SECONDS / max(seconds, 1e-6))
        self.size = max(1, min(wanted, 2 * self.size, MOST_FILES))


def _timed(work: Work, batch: list[Path], stop: _core.Stop) -> tuple[Results, float]:
    begin = time.perf_counter()
    encoded = [_encoded(path) for path in batch]
    done: Iterator[Any] = iter(work([path for path in encoded if isinstance(path, bytes)], stop))
    results = [next(done, None) if isinstance(path, bytes) else path for path in encoded]
    return list(zip(batch, results)), time.perf_counter() - begin


def _encoded(path: Path) -> bytes | Exception:
    try:
        return os.fsencode(path)
    except Exception as error:
        return error
