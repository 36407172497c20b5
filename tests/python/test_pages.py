# SPDX-License-Identifier: Apache-2.0
"""The pages of veskpackage.pages: what is in them, and that nothing of a stranger gets out of its
place."""

from __future__ import annotations

import itertools
import os
import re
import shutil
import subprocess
import sys
import weakref
from html.parser import HTMLParser
from pathlib import Path

import pytest
import stores

import veskpackage
from veskpackage import pages
from veskpackage.pages import _coverage, _excerpt, _folder, _scales, _store, _text
from veskpackage.pages.__main__ import run

EXAMPLES = Path(__file__).parents[2] / "examples" / "manifests"
HOSTILE = "\u202e</p><script>pwned()</script><img src=x onerror=pwned()>\"' onclick=pwned() {{7*7}}&lt;\u0661\ue000"


class Page(HTMLParser):
    """The elements, attributes and text of a page; it must be well-formed but for void elements."""

    def __init__(self, path: Path) -> None:
        super().__init__()
        self.open: list[str] = []
        self.names: set[str] = set()
        self.attributes: list[tuple[str, str]] = []
        self.text = ""
        self.feed(path.read_text("utf-8"))
        self.close()
        assert not self.open

    def handle_starttag(self, tag: str, attributes: list[tuple[str, str | None]]) -> None:
        self.names.add(tag)
        self.attributes += [(name, value or "") for name, value in attributes]
        if tag not in ("meta", "input", "path", "circle"):
            self.open.append(tag)

    def handle_startendtag(self, tag: str, attributes: list[tuple[str, str | None]]) -> None:
        self.handle_starttag(tag, attributes)

    def handle_endtag(self, tag: str) -> None:
        if tag not in ("meta", "input", "path", "circle"):
            assert self.open.pop() == tag

    def handle_data(self, data: str) -> None:
        if self.open[-1:] not in (["script"], ["style"]):
            self.text += data


def site_of(tmp_path: Path, **manifests: str | bytes) -> Path:
    """The pages of a store with these manifests."""
    store = tmp_path / "store"
    store.mkdir()
    for name, text in manifests.items():
        (store / f"{name}.xml").write_bytes(text if isinstance(text, bytes) else text.encode())
    pages.write([store], tmp_path / "site")
    return tmp_path / "site"


def test_nothing_of_a_stranger_is_markup(tmp_path: Path) -> None:
    numbers = itertools.count()
    texts = (f"text{next(numbers)}.{HOSTILE}" for _ in itertools.count())
    hostile = veskpackage.Package.from_dict(stores.filled(texts)).dumps()
    used = next(numbers)
    # What XML cannot carry, though the readers take it; and a fault that quotes a stranger.
    hostile = hostile.replace("\ue000", "&#1;").replace(
        "</package>", f"<x a='{HOSTILE[9:16]}'/></package>"
    )
    tame = (EXAMPLES / "office-assistant.xml").read_text("utf-8")
    site = site_of(tmp_path, hostile=hostile, broken=hostile[:-9], tame=tame, again=tame)
    every = {path: Page(path) for path in site.rglob("*.html")}
    of_hostile = max(every.values(), key=lambda page: page.text.count("text11."))
    of_tame = next(page for path, page in every.items() if path.name.startswith("b58e2d14"))
    left_out = {"path", "installer", "categories"}  # which no manifest has
    missing = [n for n in range(used) if f"text{n}." not in of_hostile.text]
    assert len(missing) <= len(left_out) + 1, missing
    index = every.pop(site / "index.html")
    assert index.names - of_tame.names <= {
        "form",
        "input",
        "label",
        "select",
        "option",
        "button",
        "script",
        "small",
        "mark",
        "pre",
        "table",
        "path",
    }
    for page in (*every.values(), index):
        assert page.names <= of_tame.names | index.names | {"pre", "mark", "circle"}
        assert not re.search("[\u202e\x01\u2028]", page.text)
        for name, value in page.attributes:
            assert not name.startswith("on") and name not in (
                "src",
                "style",
                "action",
                "srcdoc",
            ), name
            if name == "href":
                assert re.fullmatch(
                    r"#[a-z0-9-]+|(\.\./)?(index\.html|packages/[a-z0-9-]+\.html)", value
                )
            if name in ("id", "class", "lang", "for"):
                assert re.fullmatch(r"[A-Za-z0-9 -]*", value)
    assert (
        "U+202E" in of_hostile.text and "U+0001" in of_hostile.text and "{{7*7}}" in of_hostile.text
    )


@pytest.mark.parametrize(
    "text, expected",
    [
        ("<b>", "&lt;b&gt;"),
        ("a\u202eb\n\tc\0", "a[U+202E]b\n\tc[U+0000]"),
        ("\u200d\udc80\u2028\ufeff", "[U+200D][U+DC80][U+2028][U+FEFF]"),
        ("a\u200bd\u200da", "a[U+200B]d[U+200D]a"),
        ("نمی\u200cخواهم \U0001f469\u200d\U0001f52c", "نمی\u200cخواهم \U0001f469\u200d\U0001f52c"),
    ],
)
def test_what_is_not_seen(text: str, expected: str) -> None:
    spans = re.sub(r"\[(.*?)\]", r'<span class="code">\1</span>', expected)
    assert _text.shown(text) == spans


def test_languages_of_html() -> None:
    tags = {
        "en_US": "en-US",
        "EN": "en",
        "zh-hant_tw": "zh-Hant-TW",
        "nan": "nan",
        "sl_rozaj": "sl-rozaj",
        "English": "",
        "xx": "",
        "qaa": "",
        "x-own": "",
        "": "",
        "en_US ": "",
        "de.UTF-8": "",
        '"><b': "",
    }
    assert {code: _text.language_tag(code) for code in tags} == tags


def test_holes_of_the_matrix() -> None:
    package = veskpackage.load(EXAMPLES / "office-assistant.xml")
    rows = [(row.subject, row.what, row.holes()) for row in _coverage.rows(package) if row.holes()]
    assert rows == [
        ("behavior-1", "Tags", ["nl_NL"]),
        ("behavior-2", "Tags", ["nl_NL"]),
        ("behavior-2", "Trigger sentences", ["nl_NL"]),
        ("behavior-2", "Loading responses", ["nl_NL"]),
        ("behavior-3", "Tags", ["nl_NL"]),
        ("dialog-2", "Topic", ["nl_NL"]),
    ]
    part = veskpackage.Package(
        description_languages=["en", "fr"],
        supported_languages=["de", ""],
        names={"en_US": "A", "it": "B", "fr": " "},
        behaviors=[
            veskpackage.Behavior(
                tags={"de": ["a", "", "b"], "xx": ["c"]}, trigger_sentences={"de": [""]}
            )
        ],
    )
    matrix = _coverage.matrix(part)
    assert matrix.languages == ["en", "fr", "de", "en_US", "it", "xx"]
    kinds = [
        (row.what, [cell.kind[0] + str(cell.count) for cell in cells]) for row, cells in matrix.rows
    ]
    assert kinds == [
        ("Name", ["t1", "h0", "n0", "t1", "u1", "n0"]),
        ("Name", ["h0", "h0", "n0", "n0", "n0", "n0"]),
        ("Tags", ["n0", "n0", "t2", "n0", "n0", "u1"]),
    ]
    coverage = _coverage.Coverage()
    whole = coverage.add(part)
    assert (whole.there, whole.expected) == (2, 5)
    assert {code: (share.there, share.expected) for code, share in coverage.languages.items()} == {
        "en": (1, 2),
        "fr": (0, 2),
        "de": (1, 1),
    }


def test_scales() -> None:
    names = ["2.10", "2.9", "1", "1.0.0", "4.0", "x", "", "1." * 20, "9" * 10, "٣"]
    scale = _scales.Scale(filter(None, map(_scales.version, names)))
    assert scale.labels == ["1", "2.9", "2.10", "4"]
    bars = {
        ("1", "4"): (0, 1),
        ("", "2.9"): (None, 1 / 3),
        ("2.10.0", ""): (2 / 3, None),
        ("", ""): (None, None),
        ("2.10", "2.9"): None,
        ("x", ""): None,
        ("1", "9.x"): None,
        ("4", "4.0"): (1, 1),
    }
    drawn = {pair: scale.bar(_scales.Bounds(*pair)) for pair in bars}
    assert {pair: bar and (bar.begin, bar.end) for pair, bar in drawn.items()} == bars
    assert _scales.Scale([(3,)]).at(0) == 0.5


@pytest.mark.parametrize("encoding", ["utf-8", "utf-8-sig", "iso-8859-1", "utf-16", "koi8-r"])
def test_excerpts_stand_where_the_fault_is(encoding: str) -> None:
    declared = (
        f'<?xml version="1.0" encoding="{encoding}"?>'
        if encoding in ("iso-8859-1", "koi8-r")
        else ""
    )
    letter = "ж" if encoding == "koi8-r" else "é"
    data = f'{declared}<package uuid="{letter}" version="1"><wrong/>\r\n{letter}\t<!--{letter}--><odd\n/></package>'
    data_bytes = data.encode(encoding)
    findings = [each for each in veskpackage.check(data_bytes) if each.rule == "unknown-element"]
    excerpts = [_excerpt.Excerpts(data_bytes, findings).of(finding) for finding in findings]
    assert [each and (each.marked, each.behind) for each in excerpts] == [
        ("wrong", "/>"),
        ("odd", ""),
    ]
    assert excerpts[1] and excerpts[1].before == f"{letter}    <!--{letter}--><"


def test_bytes_are_the_same_wherever_and_whenever(tmp_path: Path) -> None:
    stores.make(tmp_path / "a" / "store", 30)
    shutil.copytree(tmp_path / "a", tmp_path / "other" / "place")
    modules = str(Path(veskpackage.__file__).absolute().parents[1])
    sites = []
    for seed, folder in enumerate([tmp_path / "a", tmp_path / "other" / "place"]):
        site = tmp_path / f"site{seed}"
        subprocess.run(
            [sys.executable, "-m", "veskpackage.pages", "store", "-o", site, "-j", str(seed + 1)],
            cwd=folder,
            env={**os.environ, "PYTHONHASHSEED": str(seed), "PYTHONPATH": modules},
            check=True,
        )
        sites.append(
            {
                path.relative_to(site): path.read_bytes()
                for path in site.rglob("*")
                if path.is_file()
            }
        )
    assert sites[0] == sites[1] and len(sites[0]) == 32
    assert str(tmp_path).encode() not in b"".join(sites[0].values())


def test_names_of_pages_stay_in_the_folder(tmp_path: Path) -> None:
    uuids = [
        "../../up",
        "/etc/passwd",
        "",
        ".",
        "con",
        "a" * 5000,
        "A",
        "a",
        "é<b>",
        "x\ny",
        "a/../../b",
        "same",
        "same",
    ]
    site = site_of(
        tmp_path,
        **{f"m{n}": veskpackage.Package(uuid=uuid).dumps() for n, uuid in enumerate(uuids)},
    )
    names = sorted(path.name for path in (site / "packages").iterdir())
    assert len(names) == len(uuids) and sorted(os.listdir(tmp_path)) == ["site", "store"]
    assert all(re.fullmatch("[a-z0-9-]{1,60}\\.html", name) for name in names)


def test_what_a_folder_holds_is_respected(
    tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    site, outside = tmp_path / "site", tmp_path / "outside.html"
    outside.write_text("mine")
    site.mkdir()
    (site / "notes.txt").write_text("mine")
    two = [str(EXAMPLES / name) for name in ("minimal.xml", "greeting.xml")]
    assert run([*two, "-o", str(site)]) == 1 and os.listdir(site) == ["notes.txt"]
    (site / "index.html").symlink_to(outside)
    assert run([*two, "-o", str(site), "--force"]) == 0
    assert len(os.listdir(site / "packages")) == 2
    with (site / _folder.LIST).open("a") as known:
        known.write("../outside.html\npackages/../../outside.html\nnotes.txt\n")
    (site / "packages" / "mine.html").write_text("mine")
    assert run([two[0], "-o", str(site)]) == 0  # of a single one index.html is the page
    assert (
        os.listdir(site / "packages") == ["mine.html"]
        and "minimal.xml" in (site / "index.html").read_text()
    )
    assert outside.read_text() == (site / "notes.txt").read_text() == "mine"
    (site / "packages" / "mine.html").unlink()
    (site / "packages").rmdir()
    (site / "packages").symlink_to(tmp_path)
    assert run([*two, "-o", str(site)]) == 1
    assert (
        run([str(tmp_path), "-o", str(site)]) == 2
        and run(["missing.xml", "-o", str(tmp_path / "new")]) == 3
    )
    assert "no manifest in" in capsys.readouterr().err
    assert "missing.xml" in (tmp_path / "new" / "index.html").read_text()


def test_which_files_of_a_folder_are_manifests(tmp_path: Path) -> None:
    files = {
        "b/manifest.xml": "<other/>",
        "a.xml": "<package/>",
        "c.xml": "<other/>",
        "d.txt": "<package/>",
        ".e/manifest.xml": "<package/>",
        ".f.xml": "<package/>",
        "g.xml": "<!--" + "g" * 70000 + "--><x/>",
        "h.xml": "no",
        "i.xml": "<x:package xmlns:x='x'/>",
        "B/é.xml": "<package/>",
        "j.XML": "<package/>",
    }
    for name, text in files.items():
        (tmp_path / name).parent.mkdir(exist_ok=True)
        (tmp_path / name).write_text(text)
    (tmp_path / "k").symlink_to(tmp_path / "b")
    (tmp_path / "l.xml").symlink_to(tmp_path / "a.xml")
    rest = "B/é.xml a.xml g.xml h.xml i.xml l.xml"
    found = [source.shown for source in pages._sources.find([tmp_path / "b", tmp_path])]
    assert found == ["b/manifest.xml", *(f"{tmp_path.name}/{name}" for name in rest.split())]


def test_packages_are_not_kept(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    stores.make(tmp_path / "store", 300)
    alive = most = 0

    def gone() -> None:
        nonlocal alive
        alive -= 1

    def watched(*arguments: object, **options: object) -> object:
        nonlocal alive
        for loaded in veskpackage.load_many(*arguments, **options):  # type: ignore[arg-type]
            if loaded.package is not None:
                alive += 1
                weakref.finalize(loaded.package, gone)
            yield loaded

    def write(self: _folder.Folder, name: str, content: object) -> None:
        nonlocal most
        most = max(most, alive)
        written(self, name, content)  # type: ignore[arg-type]

    written = _folder.Folder.write
    monkeypatch.setattr(_store, "load_many", watched)
    monkeypatch.setattr(_folder.Folder, "write", write)
    given = pages.write([tmp_path / "store"], tmp_path / "site", jobs=1)
    assert given.pages == 300 and 1 <= most <= 3
    assert [Path(complaint.path).name for complaint in given.complaints] == [
        "199.xml",
        "299.xml",
        "99.xml",
    ]
