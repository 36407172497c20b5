# SPDX-License-Identifier: Apache-2.0
"""The pages of veskpackage.pages: what is in them, and that nothing of a stranger gets out."""

from __future__ import annotations

import itertools
import os
import re
import shutil
import subprocess
import sys
import weakref
from collections import Counter
from html.parser import HTMLParser
from pathlib import Path

import pytest
import stores

import veskpackage
from veskpackage import pages
from veskpackage.pages import (
    _coverage,
    _excerpt,
    _folder,
    _scales,
    _sources,
    _store,
    _templates,
    _text,
)
from veskpackage.pages.__main__ import run

EXAMPLES = Path(__file__).parents[2] / "examples" / "manifests"
HOSTILE = (
    "\u202e</p><script>pwned()</script><img src=x onerror=pwned()>\"' onclick=pwned() {{7*7}}&lt;"
    "\u0661\ue000"
)


class Page(HTMLParser):
    """The elements, attributes and text of a page; all that is opened must be closed."""

    def __init__(self, path: Path) -> None:
        super().__init__()
        self.open: list[str] = []
        self.names: Counter[str] = Counter()
        self.attributes: list[tuple[str, str]] = []
        self.text = ""
        self.feed(path.read_text("utf-8"))
        self.close()
        assert not self.open

    def handle_starttag(self, tag: str, attributes: list[tuple[str, str | None]]) -> None:
        self.names[tag] += 1
        self.attributes += [(name, value or "") for name, value in attributes]
        self.open += [tag] if tag not in ("meta", "input") else []

    def handle_endtag(self, tag: str) -> None:
        assert self.open.pop() == tag

    def handle_data(self, data: str) -> None:
        self.text += data if self.open[-1:] not in (["script"], ["style"]) else ""


def site_of(folder: Path, **manifests: str) -> Path:
    """The pages of a store with these manifests."""
    (folder / "store").mkdir()
    for name, text in manifests.items():
        (folder / "store" / f"{name}.xml").write_text(text, "utf-8")
    pages.write([folder / "store"], folder / "site")
    return folder / "site"


def test_nothing_of_a_stranger_is_markup(tmp_path: Path) -> None:
    count = itertools.count()
    texts = (f"text{number}.{HOSTILE}" for number in count)
    hostile = veskpackage.Package.from_dict(stores.filled(texts)).dumps()
    # What XML cannot carry, though the readers take it; and a fault that quotes a stranger.
    hostile = hostile.replace("\ue000", "&#1;")
    hostile = hostile.replace("</package>", f"<x a='{HOSTILE[9:16]}'/></package>")
    tame = (EXAMPLES / "office-assistant.xml").read_text("utf-8")
    site = site_of(tmp_path, hostile=hostile, broken=hostile[:-9], tame=tame, again=tame)
    every = {path: Page(path) for path in site.rglob("*.html")}
    of_hostile = max(every.values(), key=lambda page: page.text.count("text11."))
    of_tame = next(page for path, page in every.items() if path.name.startswith("b58e2d14"))
    shown = [f"text{n}.U+202E</p><script>" in of_hostile.text for n in range(next(count))]
    assert shown.count(False) == 4  # path and installer of the package, categories of two behaviors
    assert "U+0001" in of_hostile.text and "{{7*7}}" in of_hostile.text
    own = {*of_tame.names, *"form input datalist label select option button small".split()}
    for path, page in every.items():
        is_index = path.name == "index.html"
        assert set(page.names) <= own | {"script" if is_index else "pre", "mark"}
        assert page.names["script"] == is_index
        assert not re.search("[\u202e\x01\u2028]", page.text)
        for name, value in page.attributes:
            assert not re.match("on|src|style|action|formaction", name)
            if name == "href":
                assert re.fullmatch(r"#[a-z-]+\d*|(\.\./)?(index|packages/[a-z0-9-]+)\.html", value)
            if name in ("id", "class", "lang", "for"):
                assert re.fullmatch("[A-Za-z0-9 -]*", value)


def test_what_is_not_seen_stands_as_its_code() -> None:
    shown = {
        "<b>": "&lt;b&gt;",
        "a\u202eb\n\tc\0": "a[U+202E]b\n\tc[U+0000]",
        "\u200d\udc80\u2028\ufeff": "[U+200D][U+DC80][U+2028][U+FEFF]",
        "a\u200bd\u200da": "a[U+200B]d[U+200D]a",
        "\u3164": "[U+3164]",
        "a\ufe0f\u0ba4\ufe0f\ufe0f": "a[U+FE0F]\u0ba4\ufe0f[U+FE0F]",
    }
    joined = (
        "\u0646\u200c\u062e \U0001f469\u200d\U0001f52c \u2764\ufe0f\u200d\U0001f525 1\ufe0f\u20e3"
    )
    assert len(_templates.shown("\u202e" * 1_000_000)) < 400_000  # badges do not grow without bound
    for text, expected in {**shown, joined: joined}.items():
        assert _templates.shown(text) == re.sub(
            r"\[(.*?)]", r'<span class="code">\1</span>', expected
        )


def test_languages_of_html() -> None:
    tags = {"en_US": "en-US", "EN": "en", "zh-hant_tw": "zh-Hant-TW", "nan": "nan", "x-own": "",
            "sl_rozaj": "sl-rozaj", "English": "", "xx": "", "qaa": "", "": "", "en_US ": "",
            "de.UTF-8": "", '"><b': ""}  # fmt: skip
    assert {code: _text.language_tag(code) for code in tags} == tags
    names = {" en\u3000": "␣en<U+3000>", "a b": "a b", "": "no language"}
    assert {code: _text.language_name(code) for code in names} == names


def test_holes_of_the_matrix() -> None:
    package = veskpackage.load(EXAMPLES / "office-assistant.xml")
    rows = [(row.subject, row.what) for row in _coverage.rows(package) if row.holes() == ["nl_NL"]]
    assert rows == [
        ("behavior-1", "Tags"),
        *(("behavior-2", what) for what in ("Tags", "Trigger sentences", "Loading responses")),
        ("behavior-3", "Tags"),
        ("dialog-2", "Topic"),
    ]
    behavior = veskpackage.Behavior(
        tags={"de": ["a", "", "b"], "xx": ["c"]}, trigger_sentences={"de": [""]}
    )
    part = veskpackage.Package(
        description_languages=["en", "fr"], supported_languages=["de", ""], behaviors=[behavior],
        names={"en_US": "A", "it": "B", "fr": " "},
    )  # fmt: skip
    matrix = _coverage.matrix(part)
    assert matrix.languages == ["en", "fr", "de", "en_US", "it", "xx"]
    assert {
        (row.subject, row.what): " ".join(f"{cell.kind[0]}{cell.count}" for cell in cells)
        for row, cells in matrix.rows
    } == {
        ("", "Name"): "t1 h0 n0 t1 u1 n0",
        ("behavior-1", "Name"): "h0 h0 n0 n0 n0 n0",
        ("behavior-1", "Tags"): "n0 n0 t2 n0 n0 u1",
    }
    coverage = _coverage.Coverage()
    shares = {"": coverage.add(part), **coverage.languages}
    there = {code: (share.there, share.expected) for code, share in shares.items()}
    assert there == {"": (2, 5), "en": (1, 2), "fr": (0, 2), "de": (1, 1)}


def test_scales() -> None:
    texts = ["2.10", "2.9", "1", "1.0.0", "4.00", "4.0", "x", "", "1." * 20, "9" * 10, "\u0663"]
    scale = _scales.Scale(texts)
    assert scale.labels == ["1", "2.9", "2.10", "4.0"] and _scales.Scale(["3"]).at(0) == 0.5
    many = _scales.Scale(map(str, [*range(1000), "9" * 9 + ".123456789"]))
    assert len(many.marks) == 2
    labelled = {("400", "700"): ["400", "700", "0"], ("400", "402"): ["400 – 402", "0"],
                ("", ""): ["0", "999999999.1…"]}  # fmt: skip
    for pair, labels in labelled.items():
        bar = many.bar(_scales.Bounds(*pair))
        assert bar and [label.text for label in bar.labels] == labels
    bars = {("1", "4"): (0, 1), ("", "2.9"): (None, 1 / 3), ("2.10.0", ""): (2 / 3, None),
            ("", ""): (None, None), ("4", "4.0"): (1, 1), ("2.10", "2.9"): None, ("x", ""): None,
            ("1", "9.x"): None}  # fmt: skip
    drawn = {pair: scale.bar(_scales.Bounds(*pair)) for pair in bars}
    assert {pair: bar and (bar.begin, bar.end) for pair, bar in drawn.items()} == bars


@pytest.mark.parametrize(
    "encoding",
    ["utf-8", "utf-8-sig", "iso-8859-1", "utf-16", "koi8-r",
     "idna", "punycode", "undefined", "unicode_escape", "none"],
)  # fmt: skip
def test_excerpts_stand_where_the_fault_is(encoding: str) -> None:
    text = "" if encoding.startswith("utf") else f'<?xml version="1.0" encoding="{encoding}"?>'
    letter = "\u0436" if encoding == "koi8-r" else "\u00e9"
    text += f'<package uuid="{letter}"><wrong/>\r\n{letter}\t<!--{letter}--><odd\n/></package>'
    is_known = encoding in ("iso-8859-1", "koi8-r") or not text.startswith("<?")
    data = text.encode(encoding if is_known else "utf-8")  # as readers take what nobody knows
    found = [finding for finding in veskpackage.check(data) if finding.rule == "unknown-element"]
    excerpts = [_excerpt.Excerpts(data, found).of(finding) for finding in found]
    assert excerpts[0] and excerpts[1] and excerpts[1].before == f"{letter}    <!--{letter}--><"
    places = [(each.marked, each.behind) for each in excerpts if each]
    assert places == [("wrong", "/>"), ("odd", "")]


def test_bytes_are_the_same_wherever_and_whenever(tmp_path: Path) -> None:
    stores.make(tmp_path / "a" / "store", 30)
    shutil.copytree(tmp_path / "a", tmp_path / "other" / "place")
    modules = str(Path(veskpackage.__file__).absolute().parents[1])
    sites = []
    for seed, folder in enumerate([tmp_path / "a", tmp_path / "other" / "place"]):
        site = tmp_path / f"site{seed}"
        command = [sys.executable, "-m", "veskpackage.pages", "store", f"-o{site}", f"-j{seed + 1}"]
        variables = {**os.environ, "PYTHONHASHSEED": str(seed), "PYTHONPATH": modules}
        subprocess.run(command, cwd=folder, env=variables, check=True)
        files = filter(Path.is_file, site.rglob("*"))
        sites.append({path.relative_to(site): path.read_bytes() for path in files})
    assert sites[0] == sites[1] and len(sites[0]) == 32
    assert str(tmp_path).encode() not in b"".join(sites[0].values())


def test_the_package_needs_no_jinja() -> None:
    command = (
        "import sys, veskpackage, veskpackage.pages.__main__ as tool; assert 'jinja2' not in sys.modules;"
        "sys.modules['jinja2'] = None; sys.exit(tool.run(['missing', '-o', 'none']))"
    )
    modules = str(Path(veskpackage.__file__).absolute().parents[1])
    variables = {**os.environ, "PYTHONPATH": modules}
    given = subprocess.run([sys.executable, "-c", command], env=variables, stderr=subprocess.PIPE)
    assert (
        given.returncode == 2
        and given.stderr.count(b"\n") == 1
        and b"python3-jinja2" in given.stderr
    )


def test_an_index_of_much(tmp_path: Path) -> None:
    names = "".join(f'<name lang="{code}">{code * 50}</name>' for code in ("de", "en", "fr", "it"))
    manifest = '<package uuid="{0}"><names><name lang="en">{0}</name></names></package>'
    order = ["Ärger", "Øre", "page 2", "Page 10", "Zoo"]
    many = f'<package author="Maker"><names>{names}</names>{"<bogus/>" * 120}</package>'
    site = site_of(tmp_path, a=many, **{name: manifest.format(name) for name in order})
    index = (site / "index.html").read_text("utf-8")
    titles = re.findall('<th scope="row"><a [^>]*>([^<]*)', index)
    assert titles == [order[0], "de" * 50, *order[1:]]
    assert 'data-q=" Maker dede' in index and ">122 warnings<" in index
    page = next(path.read_text() for path in site.glob("*/package-*"))
    assert ">120 times<" in page and page.count("excerpt") < 100 and ">122 warnings<" in page
    pages.write([tmp_path / "store" / "a.xml"], site)
    assert not (site / "packages").exists()


def test_names_of_pages_stay_in_the_folder(tmp_path: Path) -> None:
    uuids = ["../../up", "/etc/passwd", "", ".", "con", "a" * 5000, "A", "a", "\u00e9<b>", "x\ny",
             "a/../../b", "same", "same"]  # fmt: skip
    texts = [veskpackage.Package(uuid=uuid).dumps() for uuid in uuids]
    site = site_of(tmp_path, **{f"m{number}": text for number, text in enumerate(texts)})
    names = os.listdir(site / "packages")
    assert len(names) == len(uuids) and sorted(os.listdir(tmp_path)) == ["site", "store"]
    assert all(re.fullmatch("[a-z0-9-]{1,60}.html", name) for name in names)


def test_files_of_others_stay(tmp_path: Path, capsys: pytest.CaptureFixture[str]) -> None:
    site, outside, notes = tmp_path / "site", tmp_path / "outside.html", tmp_path / "site" / "notes"
    site.mkdir()
    outside.write_text("mine")
    notes.write_text("mine")
    two = [str(EXAMPLES / name) for name in ("minimal.xml", "greeting.xml")]
    assert run([*two, "-o", str(site)]) == 1 and os.listdir(site) == ["notes"]
    (site / "index.html").symlink_to(outside)
    assert run([*two, "-o", str(site), "--force"]) == 0
    assert len(os.listdir(site / "packages")) == 2
    with (site / _folder.LIST).open("a") as known:
        known.write("../outside.html\npackages/../../outside.html\nnotes\n")
    (site / "packages" / "mine.html").write_text("mine")
    assert run([two[0], "-o", str(site)]) == 0  # of a single one index.html is the page
    assert os.listdir(site / "packages") == ["mine.html"]
    assert "minimal.xml" in (site / "index.html").read_text()
    assert outside.read_text() == notes.read_text() == "mine"
    shutil.move(site / "packages", tmp_path / "moved")
    (site / "packages").symlink_to(tmp_path / "moved")
    assert run([*two, "-o", str(site)]) == 1 and os.listdir(tmp_path / "moved") == ["mine.html"]
    before = (site / _folder.LIST).read_text()
    (tmp_path / "none").mkdir()
    capsys.readouterr()
    for none, why in {"none": "looked for manifest.xml, and for .xml files whose root is package",
                      "missing": "No such file or directory",
                      "/dev/null": "neither a file nor a folder"}.items():  # fmt: skip
        assert run([two[0], str(tmp_path / none), "-o", str(site)]) == 2
        assert capsys.readouterr().err == f"no manifest in {tmp_path / none}: {why}\n"
    with pytest.raises(TypeError):
        pages.write(two[0], site)
    assert (site / _folder.LIST).read_text() == before


def test_which_files_of_a_folder_are_manifests(tmp_path: Path) -> None:
    files = {"b/manifest.xml": "<other/>", "a.xml": "<package/>", "c.xml": "<other/>",
             "h.xml": "no", "d.txt": "<package/>", ".e/manifest.xml": "<package/>",
             ".f.xml": "<package/>",
             "g.xml": f"<!--{'g' * 70000}--><x/>", "i.xml": "<x:package xmlns:x='x'/>",
             "B/j.xml": "<package/>", "k.XML": "<package/>",
             f"{'n/' * 1200}manifest.xml": "<package/>"}  # fmt: skip
    subprocess.run(["mkdir", "-p", tmp_path / ("n/" * 1200)], check=True)
    for name, text in files.items():
        (tmp_path / name).parent.mkdir(exist_ok=True)
        (tmp_path / name).write_text(text)
    (tmp_path / "l").symlink_to(tmp_path / "b")
    (tmp_path / "m.xml").symlink_to(tmp_path / "a.xml")
    (tmp_path / "o.xml").symlink_to("o.xml")
    rest = ["B/j.xml", "a.xml", "g.xml", "h.xml", "i.xml", "m.xml", f"{'n/' * 1200}manifest.xml"]
    several = [source.shown for source in _sources.find([tmp_path / "b", tmp_path])]
    assert several == ["b/manifest.xml", *(f"{tmp_path.name}/{name}" for name in rest)]
    alone = [source.shown for source in _sources.find([tmp_path])]
    assert alone == [*rest[:2], "b/manifest.xml", *rest[2:]]
    subprocess.run(["rm", "-r", tmp_path / "n"], check=True)  # too deep for others


def test_packages_are_not_kept(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    stores.make(tmp_path / "store", 300)
    alive = most = 0

    def gone() -> None:
        nonlocal alive
        alive -= 1

    def watched(*arguments: object, **options: object) -> object:
        nonlocal alive, most
        for loaded in veskpackage.load_many(*arguments, **options):  # type: ignore[arg-type]
            if loaded.package is not None:
                alive += 1
                most = max(most, alive)
                weakref.finalize(loaded.package, gone)
            yield loaded

    monkeypatch.setattr(_store, "load_many", watched)
    given = pages.write([tmp_path / "store"], tmp_path / "site", jobs=1)
    assert given.pages == 300 and 1 <= most <= 3
    broken = [Path(complaint.path).name for complaint in given.complaints]
    assert broken == ["199.xml", "299.xml", "99.xml"]
