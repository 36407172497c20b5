# SPDX-License-Identifier: Apache-2.0
from __future__ import annotations

import os
from collections import deque
from collections.abc import Callable, Iterable, Iterator
from concurrent.futures import Future, ThreadPoolExecutor
from itertools import islice
from typing import Any, TypeVar

Path = TypeVar("Path")

# Enough that threads seldom wait for the interpreter's lock, and few enough to spread.
FILES_AT_ONCE = 32


def in_order(
    work: Callable[[list[Path]], list[Any]], paths: Iterable[Path], jobs: int | None
) -> Iterator[tuple[Path, Any]]:
    """Gives each path with what `work` gives for it. Works on several threads, but not much further than
    what has been asked for."""
    jobs = jobs or len(os.sched_getaffinity(0))
    if jobs < 1:
        raise ValueError(f"jobs is {jobs}")
    rest = iter(paths)
    running: deque[tuple[list[Path], Future[list[Any]]]] = deque()
    with ThreadPoolExecutor(jobs, "veskpackage") as pool:
        try:
            while True:
                while len(running) < 2 * jobs and (batch := list(islice(rest, FILES_AT_ONCE))):
                    running.append((batch, pool.submit(work, batch)))
                if not running:
                    return
                batch, future = running.popleft()
                yield from zip(batch, future.result())
        finally:
            for _, future in running:
                future.cancel()
