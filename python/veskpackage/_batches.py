# SPDX-License-Identifier: Apache-2.0
from __future__ import annotations

import os
import time
from collections import deque
from collections.abc import Callable, Generator, Iterable, Iterator
from concurrent.futures import Future, ThreadPoolExecutor
from itertools import islice
from typing import Any

from . import _core
from ._files import Path

# Files are worked on in batches, so that threads seldom wait for the interpreter's lock. They are as large
# as is done in a short while, so that all threads have work, and nobody waits for long.
MOST_FILES = 32
SECONDS = 0.01

Results = list[tuple[Path, Any]]
Work = Callable[[list[bytes], _core.Stop], list[Any]]


def checked_jobs(paths: Iterable[Path], jobs: int | None) -> int:
    """How many threads are wanted. Raises for what would fail late or in pieces."""
    if isinstance(paths, (str, bytes)):
        raise TypeError(f"paths are wanted, not {type(paths).__name__}")
    iter(paths)
    if jobs is None:
        return len(os.sched_getaffinity(0))
    if not isinstance(jobs, int):
        raise TypeError(f"jobs: an int is wanted, not {type(jobs).__name__}")
    if jobs < 1:
        raise ValueError(f"jobs: {jobs} is less than 1")
    return jobs


def in_order(
    work: Work, paths: Iterable[Path], jobs: int
) -> Generator[tuple[Path, Any], None, None]:
    """Gives each path with what `work` gives for it, or with the exception that it is no path. Works on
    several threads, but not much further than what has been asked for. What the paths raise is raised
    when all paths before it are done."""
    stop = _core.Stop()
    batches = _Batches(paths)
    running: deque[Future[tuple[Results, float]]] = deque()
    with ThreadPoolExecutor(jobs, "veskpackage") as pool:
        try:
            while True:
                while len(running) < 2 * jobs and (batch := batches.next()):
                    running.append(pool.submit(_timed, work, batch, stop))
                if not running:
                    break
                results, seconds = running.popleft().result()
                batches.adapt(len(results), seconds)
                yield from results
        finally:
            stop.set()
            for future in running:
                future.cancel()
    if batches.failure:
        raise batches.failure


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
