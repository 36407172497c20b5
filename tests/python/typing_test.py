# SPDX-License-Identifier: Apache-2.0
"""The types that the package declares, for mypy and as they are."""

import importlib.util
import os
import subprocess
import sys
from pathlib import Path

import pytest
import veskpackage

HERE = Path(__file__).parent
FOLDER = Path(veskpackage.__file__).parents[1]

pytestmark = pytest.mark.skipif(not importlib.util.find_spec("mypy"), reason="there is no mypy")


@pytest.mark.parametrize("command", [
    ["mypy", "--strict", "-p", "veskpackage"],
    ["mypy", "--strict", HERE / "typing_examples.py", *(HERE.parents[1] / "examples").glob("*.py")],
    ["mypy.stubtest", "veskpackage._core", "--allowlist", HERE / "stubtest.allowed"],
], ids=["package", "examples", "stubs"])  # fmt: skip
def test_types(command, tmp_path):
    environment = {**os.environ, "MYPYPATH": str(FOLDER), "MYPY_CACHE_DIR": str(tmp_path.parent)}
    done = subprocess.run(
        [sys.executable, "-m", *command],
        cwd=tmp_path,
        env=environment,
        capture_output=True,
        text=True,
        check=False,
    )
    assert done.returncode == 0, done.stdout + done.stderr
