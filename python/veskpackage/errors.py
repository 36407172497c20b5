# SPDX-License-Identifier: Apache-2.0
"""What is raised for bad manifests, bad fields and changes that cannot be made."""

from __future__ import annotations

from typing import Optional

__all__ = ["EditError", "FieldError", "ManifestError"]


class ManifestError(Exception):
    """A manifest that cannot be read, and where the fault is.

    A file that the system does not give is no ManifestError but an OSError, such as FileNotFoundError.

    Attributes:
        path: of the file; None for a manifest that came from bytes or a text
        message: one line, without the path and the place
        line: from 1; 0 where no line is to blame
        column: from 1, in UTF-16 code units; 0 where the line is 0
        is_beyond_limits: whether the manifest would cost too much to parse, rather than being malformed
    """

    path: Optional[str]
    message: str
    line: int
    column: int
    is_beyond_limits: bool

    def __init__(
        self,
        message: str,
        path: Optional[str] = None,
        line: int = 0,
        column: int = 0,
        is_beyond_limits: bool = False,
    ) -> None:
        super().__init__(message, path, line, column, is_beyond_limits)
        self.message = message
        self.path = path
        self.line = line
        self.column = column
        self.is_beyond_limits = is_beyond_limits

    def __str__(self) -> str:
        place = [self.path] if self.path else []
        place += [f"{self.line}:{self.column}"] if self.line else []
        return ": ".join([":".join(place), self.message] if place else [self.message])


class EditError(ManifestError):
    """A change that cannot be made without more of the manifest being changed.

    Line and column are those of the text that is in the way, and 0 where it is none.
    """


class FieldError(ValueError):
    """A path that leads to no field, or a value that is none for the field.

    The message starts with the path and names what could have been written instead.
    """
