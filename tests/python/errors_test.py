# SPDX-License-Identifier: Apache-2.0
"""What is raised for what cannot be read, set or written, and what is logged then."""

import errno
import logging
import os
import pickle
from concurrent.futures import ThreadPoolExecutor

import pytest
import veskpackage
from veskpackage import Behavior, EditError, FieldError, ManifestError, Package, edit

ENDLESS = []
ENDLESS.append(ENDLESS)
DEEP = "<p>" * 300
ENTITIES = f"<!DOCTYPE p [<!ENTITY e '{104857 * 'x'}'>]>\n<p>{11 * '&e;'}</p>"
MALFORMED = [
    # What is read, the line and column of the fault, the message, and if it costs too much.
    ("", 1, 1, "unexpected end of file", False),
    ("no element", 1, 1, "error occurred while parsing element", False),
    ("<a></b>", 1, 7, "tag mismatch", False),
    ("<p>\n  é𐐷<a></b></p>", 2, 12, "tag mismatch", False),
    (DEEP, 1, 770, "more than 256 elements within each other", True),
    (ENTITIES, 2, 36, "more than 1048576 characters brought in by entities", True),
]


@pytest.fixture(autouse=True)
def nothing_is_printed(capfd):
    yield
    assert capfd.readouterr() == ("", "")


def travelled(error):
    """An exception as another process has it."""
    other = pickle.loads(pickle.dumps(error))
    assert type(other) is type(error) and vars(other) == vars(error)
    assert str(other) == str(error) and other.args == error.args
    return other


@pytest.mark.parametrize(
    "text, line, column, message, is_beyond_limits", MALFORMED, ids=[case[3] for case in MALFORMED]
)
def test_malformed_manifests(tmp_path, text, line, column, message, is_beyond_limits):
    path = tmp_path / "é𐐷 manifest.xml"
    path.write_text(text, "utf-8")
    for call, given, source in [
        (veskpackage.loads, text, None),
        (veskpackage.loads, text.encode(), None),
        (veskpackage.loads, bytearray(text.encode("utf-16")), None),
        (edit, text, None),
        (veskpackage.load, path, path),
        (veskpackage.load, os.fsencode(path), path),
    ]:
        with pytest.raises(ManifestError) as raised:
            call(*[given, {"version": "2"}][: 1 + (call is edit)])
        error = travelled(raised.value)
        assert type(error) is ManifestError and error.path == (source and str(source))
        assert (error.line, error.column, error.message) == (line, column, message)
        assert error.is_beyond_limits == is_beyond_limits
        assert str(error) == f"{f'{source}:' if source else ''}{line}:{column}: {message}"
    (loaded,) = veskpackage.load_many([path])
    assert str(loaded.error) == str(error) and loaded.package is None and loaded.path is path
    with pytest.raises(ManifestError):
        loaded.result()
    rule = "beyond-limits" if is_beyond_limits else "not-well-formed"
    assert [found.rule for found in veskpackage.check(path)] == [rule]
    assert veskpackage.fix(path) == veskpackage.Fixed(path.read_bytes(), 0, ())


def test_files_that_cannot_be_read(tmp_path):
    (tmp_path / "loop").symlink_to("loop")
    (tmp_path / "file").write_text("<package/>")
    for path, number in [
        ("missing", errno.ENOENT),
        ("", errno.EISDIR),
        ("file/below", errno.ENOTDIR),
        ("loop", errno.ELOOP),
        ("file\0", errno.ENOENT),
        ("\udcff", errno.ENOENT),
        ("x" * 256, errno.ENAMETOOLONG),
    ]:
        path = f"{tmp_path}/{path}"
        for read in (veskpackage.load, veskpackage.check, veskpackage.fix):
            with pytest.raises(OSError) as raised:
                read(path)
            assert travelled(raised.value).filename == path and raised.value.errno == number
            assert type(raised.value) is type(OSError(number, ""))
        for one in (*veskpackage.load_many([path]), *veskpackage.check_many([path])):
            assert str(one.error) == str(raised.value) and one.path is path


@pytest.mark.parametrize("call, error, message", [
    (lambda: veskpackage.loads(5), TypeError, "bytes or a str"),
    (lambda: veskpackage.loads([60]), TypeError, "bytes or a str"),
    (lambda: veskpackage.loads("\ud800"), UnicodeEncodeError, "surrogates"),
    (lambda: veskpackage.load(None), TypeError, "PathLike"),
    (lambda: veskpackage.check(5), TypeError, "PathLike"),
    (lambda: veskpackage.check(b"", severities={"no": "off"}), ValueError, "^no rule: no$"),
    (lambda: veskpackage.check(b"", package_folder="no"), FileNotFoundError, "'no/'"),
    (lambda: veskpackage.check(b"", package_folder=__file__), NotADirectoryError, "_test.py/"),
    (lambda: veskpackage.fix(b"", severities={"root-name": "bad"}), ValueError, "severity: bad"),
    (lambda: next(veskpackage.load_many([], jobs=-1)), ValueError, "jobs: -1 is less than 1"),
    (lambda: Package.from_dict({"nams": {}}), FieldError, "^nams: .*did you mean names"),
    (lambda: Package.from_dict({"behaviors": [{"tags": {"en": "x"}}]}), FieldError,
     r"^behaviors\[0\].tags.en: takes a JSON array"),
    (lambda: Package.from_dict({"uuid": None}), FieldError, "^uuid: takes a JSON string"),
    (lambda: Behavior.from_dict({"tags": {1: []}}), TypeError, "^a str is wanted, not int"),
    (lambda: Behavior.from_dict({"path": "\ud800"}), UnicodeEncodeError, "surrogates"),
    (lambda: Behavior.from_dict({"path": float("nan")}), ValueError, "JSON"),
    (lambda: Package.from_dict([]), TypeError, "^a dict is wanted, not list"),
    (lambda: edit(5, {}), TypeError, "bytes or a str"),
    (lambda: Package.from_dict({"web": {"path": 1}}), FieldError, r"^web\.path: takes"),
    (lambda: Behavior.from_dict({"path": object()}), TypeError, "JSON"),
    (lambda: Package.from_variant(ENDLESS), RecursionError, "variant"),
    (lambda: Package(nams={}), TypeError, "nams"),
])  # fmt: skip
def test_values_of_no_use(call, error, message):
    with pytest.raises(error, match=message) as raised:
        call()
    assert type(raised.value) is error
    travelled(raised.value)


COMMENTED = "<package version='1'>𐐷<names><!-- -->\n<name lang='en'>a</name></names></package>"


@pytest.mark.parametrize("changes, error, message, place", [
    ({"nams.en": "x"}, FieldError, 'nams.en: the package has no member "nams"', None),
    ({"version": 2}, FieldError, "version: a str is wanted", None),
    ({"names.en": ["x"]}, FieldError, "names.en: a str is wanted", None),
    ({"behaviors[1].path": "x"}, FieldError, r"behaviors\[1\]", None),
    ({"": "x"}, FieldError, "at character 1", None),
    ({"installer": "x"}, EditError, "installer is not part of a manifest", (0, 0)),
    ({"uuid": "\x01"}, EditError, r"uuid: the character U\+0001", (0, 0)),
    ({"names": {"de": "x"}}, EditError, "take this comment for an empty entry", (1, 31)),
    ({("behaviors", -1, "path"): "x"}, FieldError, "expected an index", None),
    ({("behaviors", 0, "no"): "x"}, FieldError, r"^behaviors\[0\]", None),
    ({(): "x"}, FieldError, "one step", None),
    ({"names.de": None}, FieldError, 'no entry "de"', None),
    ({"supportedLanguages": "en"}, FieldError, 'a JSON array, not "en"', None),
    ({"names": {"en": "\ud800"}}, UnicodeEncodeError, "surrogates", None),
    ([("version", "2")], TypeError, "a dict of changes", None),
    ({("names", None): "x"}, TypeError, "a str is wanted, not NoneType", None),
    ({("names", "\ud800"): "x"}, UnicodeEncodeError, "surrogates", None),
    ({1: "x"}, TypeError, "a str is wanted, not int", None),
    ({"version": "\ud800"}, UnicodeEncodeError, "surrogates", None),
    ({"version": b"2"}, TypeError, "JSON", None),
])  # fmt: skip
def test_edits_that_cannot_be_made(changes, error, message, place):
    for text in (COMMENTED, COMMENTED.encode()):
        with pytest.raises(error, match=message) as raised:
            edit(text, changes)
        assert type(raised.value) is error
        travelled(raised.value)
        assert place is None or (raised.value.line, raised.value.column) == place


def test_the_log_is_pythons_when_asked_for(caplog, capfd):
    def read():
        with pytest.raises(ManifestError):
            veskpackage.loads("<a></b>")
        with pytest.raises(FileNotFoundError):
            veskpackage.load("missing")
        with pytest.raises(EditError):
            edit(COMMENTED, {"installer": "x"})
        assert next(veskpackage.load_many([__file__])).error  # on another thread

    def logged():
        read()
        records = [(one.name, one.levelno, one.getMessage()) for one in caplog.records]
        caplog.clear()
        return records

    fault = "error occurred while parsing element"
    missing = f"missing: {os.strerror(errno.ENOENT)}"
    refused = "a manifest: installer is not part of a manifest"
    messages = ["a manifest:1:7: tag mismatch", missing, refused, f"{__file__}:1:1: {fault}"]
    assert logged() == []
    try:
        for logger in (None, logging.getLogger("mine")):  # instead of, not beside, the first
            veskpackage.forward_log(logger)
            category = f"{logger.name}.veskpackage" if logger else "veskpackage"
            assert logged() == [(category, logging.ERROR, message) for message in messages]
        with ThreadPoolExecutor(3) as pool:  # which log while this one starts and stops
            running = [pool.submit(lambda: [read() for _ in range(50)]) for _ in range(3)]
            while not all(one.done() for one in running):
                veskpackage.forward_log()
                veskpackage.stop_forwarding_log()
            assert all(one.result() for one in running)
        capfd.readouterr()  # where a message goes that comes in between is open
        veskpackage.forward_log()
        read()  # and nothing is printed
    finally:
        veskpackage.stop_forwarding_log()
        veskpackage.stop_forwarding_log()
    caplog.clear()
    assert logged() == []
