# SPDX-License-Identifier: Apache-2.0
"""The templates, with what they have in common: escaping, style and script, and the policy that
lets a browser take nothing else."""

from __future__ import annotations

import base64
import hashlib
import re
from collections.abc import Mapping
from functools import cache
from pathlib import Path
from typing import Any, TypeVar

from jinja2 import Environment, FileSystemLoader, StrictUndefined
from markupsafe import Markup, escape

from ..checking import rules
from ._text import code_of, cut, is_visible, language_name, language_tag, pieces, plain

# Of packages in any folders, which no rule of the checker is about.
_SAME_UUID = (
    "Robots tell packages apart by their uuids: of several with the same one, a robot has only one. "
    "Give a copy a uuid of its own; versions of one package may share it."
)

Text = TypeVar("Text", str, list[str])

# Of one text. A badge takes more room than the character that it stands for.
_MOST = 10_000
_FOLDER = Path(__file__).parent / "templates"


@cache
def environment() -> Environment:
    """Whatever text a template prints is escaped, and what is not seen in it is made visible."""
    made = Environment(
        loader=FileSystemLoader(_FOLDER),
        autoescape=True,
        finalize=shown,
        undefined=StrictUndefined,
        trim_blocks=True,
        lstrip_blocks=True,
        keep_trailing_newline=True,
    )
    made.filters.update(
        plain=plain,
        cut=cut,
        language_name=language_name,
        language_tag=language_tag,
        by_language=_by_language,
        first_language=_first_language,
        edge=lambda rank: "" if rank is None else rank,
    )
    style, script = _part("pages.css"), _part("index.js")
    # A browser does not take "self" for files on a disk, so all is within the page and known by its
    # hash.
    policy = f"default-src 'none'; style-src '{_hash(style)}'; base-uri 'none'; form-action 'none'"
    made.globals.update(
        style=Markup(style),
        script=Markup(script),
        policy=Markup(policy),
        same_uuid=_SAME_UUID,
        explanations={rule.tag: rule.explanation for rule in rules()},
        script_policy=Markup(f"; script-src '{_hash(script)}'"),
    )
    return made


def shown(value: Any) -> Any:
    """What a template prints: of a text markup, in which what is not seen stands as its code."""
    if not isinstance(value, str) or isinstance(value, Markup):
        return value
    if len(value) > _MOST:
        rest = Markup('<span class="muted"> … and {:,} more characters</span>')
        return shown(value[:_MOST]) + rest.format(len(value) - _MOST)
    if is_visible(value):
        return escape(value)
    code = Markup('<span class="code">{}</span>')
    return Markup("").join(
        code.format(code_of(piece)) if is_unseen else piece for piece, is_unseen in pieces(value)
    )


def _by_language(texts: Mapping[str, Text], order: Mapping[str, int]) -> list[tuple[str, Text]]:
    """Texts in the order of their languages, those behind that are not listed."""
    return sorted(texts.items(), key=lambda item: (order.get(item[0], len(order)), item[0]))


def _first_language(texts: Mapping[str, str], order: Mapping[str, int]) -> str | None:
    """The first in which there is a text."""
    return next((language for language, text in _by_language(texts, order) if text.strip()), None)


def _part(name: str) -> str:
    """Without comments and indentation, since it stands in every page."""
    text = re.sub(
        r"/\*.*?\*/|^\s*//.*?$", "", (_FOLDER / name).read_text("utf-8"), flags=re.S | re.M
    )
    return "\n".join(filter(None, map(str.strip, text.split("\n"))))


def _hash(text: str) -> str:
    return "sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode()
