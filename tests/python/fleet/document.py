# SPDX-License-Identifier: Apache-2.0
"""The blocks of code in docs/fleet.md."""

from __future__ import annotations

import re
from pathlib import Path

ROOT = Path(__file__).parents[3]


def blocks(language: str) -> list[str]:
    """In their order. Those of languages that no test asks for are configuration."""
    text = (ROOT / "docs/fleet.md").read_text()
    return re.findall(rf"^```{language}\n(.*?)^```$", text, re.DOTALL | re.MULTILINE)
