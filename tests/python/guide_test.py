# SPDX-License-Identifier: Apache-2.0
"""What the documents show of Python runs as it stands, and the guide leaves out nothing of C++."""

import doctest
import re
import shutil
from pathlib import Path

import pytest

SOURCE = Path(__file__).resolve().parents[2]
EXAMPLES = SOURCE / "examples/manifests"


@pytest.mark.parametrize("document", ["README.md", "docs/python.md"])
def test_document_runs_from_top_to_bottom(document, tmp_path, monkeypatch):
    shutil.copytree(EXAMPLES, tmp_path, dirs_exist_ok=True)
    shutil.copy(EXAMPLES / "museum-guide.xml", tmp_path / "manifest.xml")
    monkeypatch.chdir(tmp_path)
    text = (SOURCE / document).read_text(encoding="utf-8")
    known = {"__name__": "document"}
    failures = []
    for block in re.finditer(r"^```(python|pycon)\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        line = text.count("\n", 0, block.start(2))
        if block[1] == "python":
            exec(compile("\n" * line + block[2], document, "exec"), known)
        else:
            session = doctest.DocTestParser().get_doctest(block[2], known, document, document, line)
            doctest.DocTestRunner(verbose=False).run(
                session, out=failures.append, clear_globs=False
            )
            known.update(session.globs)
    known["veskpackage"].stop_forwarding_log()
    assert not failures, "".join(failures)


def test_guide_names_all_that_cpp_has():
    table = (
        (SOURCE / "docs/python.md")
        .read_text(encoding="utf-8")
        .partition("## From C++ to Python")[2]
    )
    listed = re.search(
        r"^  HEADERS\n(.*?)\)", (SOURCE / "package/CMakeLists.txt").read_text(), re.M | re.S
    )
    for header in listed[1].split():
        text = (SOURCE / "package" / header).read_text(encoding="utf-8")
        code = re.sub(r"//.*|\"[^\"]*\"", "", text)
        functions = set(re.findall(r"[\s&]([a-z]\w+)\([^()]*\)(?: const)?;", code))
        assert functions or header in ("loaderror.hpp", "manifest2/webinfo.hpp")
        missing = {name for name in functions if not re.search(rf"\b{name}\b", table)}
        assert not missing, header
