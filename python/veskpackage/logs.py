# SPDX-License-Identifier: Apache-2.0
"""The log of the robot's runtime, in Python's logging."""

from __future__ import annotations

import atexit
import logging

from . import _core

__all__ = ["forward_log", "stop_forwarding_log"]

# By the runtime's numbers: fatal, error, warning, info, debug.
_LEVELS = {
    1: logging.CRITICAL,
    2: logging.ERROR,
    3: logging.WARNING,
    4: logging.INFO,
    5: logging.DEBUG,
}


def forward_log(logger: logging.Logger | None = None) -> None:
    """Gives what the runtime logs to Python's loggers, instead of standard error: each category to the
    logger of its name, such as "veskpackage", or to a child of the one that is given. From then on files
    and manifests that cannot be read or edited are logged, beside the exception. Messages can come on any
    thread.
    """
    if logger is not None and not isinstance(logger, logging.Logger):
        raise TypeError(f"a Logger is wanted, not {type(logger).__name__}")

    def receive(level: int, category: str, text: str, function: str) -> None:
        target = logger.getChild(category) if logger else logging.getLogger(category)
        target.log(_LEVELS.get(level, logging.DEBUG), "%s", text)

    _core.forward_log(receive)


def stop_forwarding_log() -> None:
    """Gives what the runtime logs to standard error again, as at the start; that is nothing where this
    package reads manifests."""
    _core.stop_forwarding_log()


atexit.register(stop_forwarding_log)  # no message may come when the interpreter is gone
