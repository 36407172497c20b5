# SPDX-License-Identifier: Apache-2.0
"""The examples in Python do what they say, and are typed."""

import json
import os
import subprocess
import sys
from pathlib import Path

import pytest
import veskpackage

EXAMPLES = Path(__file__).resolve().parents[2] / "examples"
MANIFEST = (EXAMPLES / "manifests/greeting.xml").read_bytes()


PACKAGE = str(Path(veskpackage.__file__).parents[1])


def python(folder, *arguments):
    """The exit code, and all that is printed."""
    done = subprocess.run(
        [sys.executable, *arguments],
        cwd=folder,
        env={
            **os.environ,
            "PYTHONIOENCODING": "utf-8:strict",
            "PYTHONPATH": PACKAGE,
            "MYPYPATH": PACKAGE,
        },
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        encoding="utf-8",
    )
    return done.returncode, done.stdout


def run(folder, name, *arguments):
    return python(folder, EXAMPLES / f"{name}.py", *arguments)


def test_check_store(tmp_path):
    for folder in ("a", "b/\udcff"):
        (tmp_path / folder).mkdir(parents=True)
        (tmp_path / folder / "manifest.xml").write_bytes(MANIFEST)
    for places in ["a"], ["a/manifest.xml"], ["a", "a"]:
        assert run(tmp_path, "check_store", *places) == (0, "")
    assert run(tmp_path, "check_store", "a", "nosuch") == (2, "there is no nosuch\n")
    assert run(tmp_path, "check_store", ".") == (
        1,
        "b/\\udcff/manifest.xml: warning: a/manifest.xml has the same uuid\n",
    )
    (tmp_path / "a/manifest.xml").write_text("<package>")
    (tmp_path / "b/manifest.xml").mkdir()
    code, printed = run(tmp_path, "check_store", ".")
    assert code == 3
    assert "a/manifest.xml:1:10: error: " in printed and "'b/manifest.xml'" in printed
    assert run(tmp_path, "check_store")[0] == 2


def test_translate(tmp_path):
    manifest = tmp_path / "whole.xml"
    manifest.write_bytes(MANIFEST)
    manifest.chmod(0o640)
    (tmp_path / "greeting.xml").symlink_to("whole.xml")
    translations = tmp_path / "french.json"
    translations.write_text(json.dumps({"Friendly Greeting": "Salut", "unused": ""}))
    arguments = ("translate", "greeting.xml", "fr_FR", "french.json")
    assert run(tmp_path, *arguments) == (1, "greeting.xml: no translation of 'Say hello'\n")
    translations.write_text(json.dumps({"Say hello": "Dire bonjour"}))
    assert run(tmp_path, *arguments) == (0, "")
    wanted = veskpackage.loads(MANIFEST)
    wanted.names["fr_FR"] = "Salut"
    wanted.behaviors[0].names["fr_FR"] = "Dire bonjour"
    assert veskpackage.load(manifest) == wanted
    assert b"<!-- Started on request" in manifest.read_bytes()
    assert manifest.stat().st_mode & 0o777 == 0o640
    manifest.write_text("<package>")
    assert run(tmp_path, *arguments) == (3, "greeting.xml: 1:10: unexpected end of file\n")
    for wrong, message in [
        ("3", "no object of texts"),
        ('{"Say hello": 3}', "no object of texts"),
        ("x", "Expecting value: line 1 column 1 (char 0)"),
    ]:
        translations.write_text(wrong)
        assert run(tmp_path, *arguments) == (3, f"french.json: {message}\n")
    assert run(tmp_path, *arguments[:3], "no.json")[1].startswith("[Errno 2] ")
    left = {path.name for path in tmp_path.iterdir()}
    assert left == {"french.json", "greeting.xml", "whole.xml"}


def test_examples_are_typed(tmp_path):
    pytest.importorskip("mypy")
    examples = sorted(EXAMPLES.glob("*.py"))
    code, printed = python(tmp_path, "-m", "mypy", "--strict", *examples)
    assert code == 0, printed
