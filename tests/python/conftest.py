# SPDX-License-Identifier: Apache-2.0
"""What the tests of the Python package share. ctest runs them, by CMakeLists.txt; by hand, with more
examples: HYPOTHESIS=thorough VESKPACKAGE_TOOL=.../veskpackage PYTHONPATH=.../python pytest tests/python"""

import json
import os
import subprocess
from pathlib import Path

import pytest
from hypothesis import HealthCheck, settings

EXAMPLES = sorted((Path(__file__).parents[2] / "examples/manifests").glob("*.xml"))
BROKEN = sorted((Path(__file__).parents[1] / "golden/check").glob("*.xml"))

for name, examples in {"ci": 40, "sanitized": 10, "thorough": 500}.items():
    settings.register_profile(
        name,
        max_examples=examples,
        stateful_step_count=30,
        deadline=None,
        database=None,
        derandomize=name != "thorough",
        suppress_health_check=list(HealthCheck),
    )
settings.load_profile(os.environ.get("HYPOTHESIS", "ci"))


@pytest.fixture
def tool():
    """Runs the command-line tool, and gives what it prints, from JSON where it is that."""
    path = os.environ.get("VESKPACKAGE_TOOL")
    if not path:
        pytest.skip("VESKPACKAGE_TOOL names no tool")

    def run(*arguments):
        # A sanitizer's runtime that is loaded before the interpreter is in the tool already.
        rest = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
        done = subprocess.run([path, *arguments], stdout=subprocess.PIPE, env=rest, check=False)
        return json.loads(done.stdout) if "json" in arguments else done.stdout

    return run
