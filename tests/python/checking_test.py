# SPDX-License-Identifier: Apache-2.0
"""Checking, mending, editing and trimming do what the tool does."""

import re
from collections import Counter

import pytest
import veskpackage
from conftest import BROKEN, EXAMPLES
from hypothesis import given
from hypothesis import strategies as st
from veskpackage import Behavior, Package, Position, check, check_many, edit
from veskpackage import Fixed, fix, load, load_many, loads

MANIFESTS = pytest.mark.parametrize("path", EXAMPLES + BROKEN, ids=lambda path: path.stem)


def position(text, offset):
    before = text.encode()[:offset].decode().replace("\r\n", "\n").replace("\r", "\n")
    line = before[before.rfind("\n") + 1 :]
    units = len(line.encode("utf-16-le")) // 2
    return Position(before.count("\n") + 1, len(line) + 1, units + 1, offset)


def as_the_tool_says(finding, text):
    def span(begin, end):
        return {
            "line": begin.line,
            "column": begin.column,
            "endLine": end.line,
            "endColumn": end.column,
        }

    said = {
        "severity": finding.severity,
        "tag": finding.rule,
        "message": finding.message,
        **span(finding.begin, finding.end),
        "place": finding.place,
    }
    if finding.mend:
        said["mend"] = {
            "title": finding.mend.title,
            "edits": [
                {**span(position(text, one.begin), position(text, one.end)), "text": one.text}
                for one in finding.mend.edits
            ],
        }
    return said


@MANIFESTS
@pytest.mark.parametrize("options, arguments", [
    ({}, []),
    ({"severities": {"description-languages": "hint", "unknown-element": "off"}},
     ["--override", "description-languages=hint", "--override", "unknown-element=off"]),
    ({}, ["--files"]),
], ids=["plain", "severities", "files"])  # fmt: skip
def test_findings_are_those_of_the_tool(path, options, arguments, tool, monkeypatch):
    monkeypatch.chdir(path.parent)
    for_many = {**options, "look_up_files": "--files" in arguments}
    if for_many["look_up_files"]:
        options = {"package_folder": path.parent}
    data = path.read_bytes()
    text = data.decode("utf-8-sig", "replace")
    found = check(path, **options)
    said = tool("check", "--strict", "--format", "json", *arguments, path)["findings"]
    assert [as_the_tool_says(finding, text) for finding in found] == said
    assert check(data, **options) == check(memoryview(data), **options) == found
    assert {one.rule for one in check(data, most_of_a_rule=1, **options)} == {
        one.rule for one in found
    }
    (loaded,) = load_many([path])
    assert loaded.error or loaded.result() is loaded.package
    alone = list(check_many([path.name, path], **for_many))
    for one, given in zip(alone, [path.name, path], strict=True):
        assert one == veskpackage.Checked(given, tuple(found), getattr(loaded.package, "uuid", ""))
    for place in (place for one in found for place in (one.begin, one.end) if place.offset):
        assert place == position(text, place.offset)
    severities = {rule.tag: rule.severity for rule in veskpackage.rules()}
    assert options or all(severities[one.rule] == one.severity for one in found)


@MANIFESTS
def test_what_is_mended_stays_mended(path, tool, tmp_path):
    fixed = fix(path)
    assert fixed == fix(path.read_bytes()) and fix(fixed.data) == Fixed(fixed.data, 0, ())
    assert not any(finding.mend for finding in check(fixed.data))
    assert all(finding.mend for finding in fixed.mended) and len(fixed.mended) == fixed.count
    assert (fixed.count == 0) == (fixed.data == path.read_bytes())
    off = {finding.rule: "off" for finding in fixed.mended}
    assert fix(path, severities=off).data == path.read_bytes()
    copy = tmp_path / "manifest.xml"
    copy.write_bytes(path.read_bytes())
    tool("check", "--fix", copy)
    assert copy.read_bytes() == fixed.data


@pytest.mark.parametrize("path", EXAMPLES, ids=lambda path: path.stem)
@pytest.mark.parametrize("encoding", ["utf-8", "utf-8-sig", "utf-16", "iso-8859-1", "windows-1252"])
def test_edits_keep_all_else(path, encoding):
    text = path.read_text("utf-8").replace("\n", "\r\n")
    name = {"utf-8-sig": "utf-8"}.get(encoding, encoding)
    text = text.replace('encoding="UTF-8"', f'encoding="{name}"', 1)
    data = text.encode(encoding, "xmlcharrefreplace")
    changes = {"version": "9é", "names.en_US": "Ж & é", "descriptionLanguages": None}
    edited = edit(data, changes)
    package = loads(data)
    package.version, package.names["en_US"], package.description_languages = "9é", "Ж & é", []
    assert loads(edited) == package
    assert edit(edited, changes) == edited and edit(data, {}) == data
    gone = Counter(data.decode(encoding).split("\n")) - Counter(edited.decode(encoding).split("\n"))
    touched = '<package |<name lang="en_US">|</?descriptionLanguages>|<language>'
    assert all(re.search(touched, line) for line in gone)
    if name == "utf-8":
        text = data.decode()
        assert edit(text, changes) == edited.decode()
    else:
        with pytest.raises(ValueError, match="another encoding than UTF-8"):
            edit(text, changes)


@pytest.mark.parametrize("key", ["fr", "a.b", 'a "b" = [c]', "", "\\\n\x7f é𐐷"])
def test_steps_of_paths_hold_any_character(key):
    text = "<package><names><name lang='en'>a</name></names></package>"
    assert loads(edit(text, {("names", key): "b"})).names == {"en": "a", key: "b"}


def test_a_comment_among_entries_stays_when_asked_for():
    text = "<package><names><!-- --><name lang='en'>a</name></names></package>"
    with pytest.raises(veskpackage.EditError):
        edit(text, {"names": {"de": "b"}})
    kept = edit(text, {"names": {"de": "b"}}, keep_comments=True)
    assert "<!-- -->" in kept and loads(kept).names == {"": "", "de": "b"}


LANGUAGES = st.sampled_from(["en", "en_US", "fr", "fr_FR", "de", ""])
TEXTS = st.dictionaries(LANGUAGES, st.just("text"))
LISTS = st.dictionaries(LANGUAGES, st.just(["text"]))


@given(
    described=st.lists(LANGUAGES),
    supported=st.lists(LANGUAGES),
    texts=TEXTS,
    lists=LISTS,
    read=st.sets(st.sampled_from(["names", "tags", "behaviors", "description_languages", "web"])),
)
def test_trimming_keeps_what_begins_with_a_language(described, supported, texts, lists, read):
    def kept(texts, languages):
        return {
            language: text
            for language, text in texts.items()
            if any(language.startswith(one) for one in languages)
        }

    def package(keep):
        names = keep(texts, described)
        lists_kept = keep(lists, supported)
        behavior = Behavior(
            path="b",
            names=names,
            descriptions=names,
            tags=lists_kept,
            conditions=lists,
            trigger_sentences=lists_kept,
            loading_responses=lists_kept,
        )
        return Package(
            uuid="u",
            names=names,
            descriptions=names,
            behaviors=[behavior] * 2,
            supported_languages=supported,
            description_languages=described,
        )

    made = Package.from_dict(package(lambda texts, _: texts).to_dict())
    held = [getattr(one, field, None) for one in (made, *made.behaviors) for field in read]
    made.trim()
    assert made == package(kept)
    fields = [getattr(one, field, None) for one in (made, *made.behaviors) for field in read]
    assert all(one is other for one, other in zip(held, fields))


def test_trimming_is_that_of_the_tool(tool, tmp_path):
    for path in EXAMPLES:
        package = load(path)
        package.description_languages = package.supported_languages = [*package.names][:1] or ["en"]
        package.save(tmp_path / "manifest.xml")
        tool("trim", "--in-place", tmp_path / "manifest.xml")
        package.trim()
        assert load(tmp_path / "manifest.xml") == package
