# SPDX-License-Identifier: Apache-2.0
"""A manifest that is saved is there as a whole, or not at all."""

import errno
import os
import resource
import signal
import stat
import threading

import pytest
from conftest import EXAMPLES
from veskpackage import Package, load

PACKAGE = load(EXAMPLES[-1])
OLD = "<package uuid='old'/>"


@pytest.fixture
def folder(tmp_path):
    """Has one file; whatever a test does, there are no others in the end but those that it names."""
    (tmp_path / "manifest.xml").write_text(OLD)
    expected = {"manifest.xml"}
    yield lambda *names: (expected.update(names), tmp_path)[1]
    assert {path.name for path in tmp_path.iterdir()} == expected


@pytest.mark.parametrize(
    "name", ["manifest.xml", "new.xml", "é𐐷 ", "\udcff\\n", "x" * 255, "-", ".x"]
)
def test_what_is_saved_is_loaded(folder, name):
    path = folder(name) / name
    for given in (path, str(path), os.fsencode(path)):
        PACKAGE.save(given)
        assert load(given) == PACKAGE and path.read_bytes() == PACKAGE.dumps().encode()


def test_mode_links_and_owner_stay(folder):
    path, link = (
        folder("link", "new.xml", "dangling", "other", "below") / "manifest.xml",
        folder() / "link",
    )
    (folder() / "below").mkdir()
    (folder() / "below/up").symlink_to("../link")
    link.symlink_to("manifest.xml")
    (folder() / "dangling").symlink_to("new.xml")
    os.link(path, folder() / "other")
    for mode in (0o600, 0o664, 0o444):
        path.chmod(mode)
        PACKAGE.save(folder() / "below/up")
        assert stat.S_IMODE(path.stat().st_mode) == mode and link.is_symlink()
        assert load(path) == PACKAGE
    PACKAGE.save(folder() / "dangling")
    umask = os.umask(0o022)
    os.umask(umask)
    assert stat.S_IMODE((folder() / "new.xml").stat().st_mode) == 0o666 & ~umask
    assert (folder() / "other").read_text() == OLD  # replaced, not written into


def test_nobody_sees_a_part(folder):
    path = folder() / "manifest.xml"
    packages = [Package(uuid=str(number), names={"en": "x" * 10**6}) for number in range(2)]
    texts = {package.dumps().encode() for package in packages} | {OLD.encode()}
    seen, done = set(), threading.Event()

    def look():
        while not done.is_set():
            seen.add(path.read_bytes())

    reader = threading.Thread(target=look)
    reader.start()
    for package in packages * 10:
        package.save(path)
    done.set()
    reader.join()
    assert seen <= texts


@pytest.mark.parametrize("fault", ["fsync", "replace"])
@pytest.mark.parametrize("error", [OSError(errno.EIO, "fault"), KeyboardInterrupt()], ids=repr)
def test_after_a_fault_all_is_as_before(folder, monkeypatch, fault, error):
    def fail(*_):
        raise error

    with pytest.raises(type(error)), monkeypatch.context() as patch:
        patch.setattr(os, fault, fail)
        PACKAGE.save(folder() / "manifest.xml")
    assert (folder() / "manifest.xml").read_text() == OLD


def test_a_file_that_cannot_be_written_whole_is_as_before(folder):
    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (1000, before[1]))
    try:
        with pytest.raises(OSError, match="too large"):
            Package(names={"en": "x" * 10**6}).save(folder() / "manifest.xml")
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
    assert (folder() / "manifest.xml").read_text() == OLD


def test_places_where_nothing_can_be_saved(folder):
    for place, error in [("", IsADirectoryError), ("missing/x", FileNotFoundError),
                         ("manifest.xml/x", NotADirectoryError), ("x" * 256, OSError)]:  # fmt: skip
        with pytest.raises(error):
            PACKAGE.save(folder() / place)
    with pytest.raises(ValueError, match="null"):
        PACKAGE.save(f"{folder()}/x\0")
    with pytest.raises(OSError) as raised:
        PACKAGE.save("/dev/full")
    assert raised.value.errno == errno.ENOSPC and stat.S_ISCHR(os.stat("/dev/full").st_mode)


def test_a_pipe_is_written_to(folder):
    pipe = folder("pipe") / "pipe"
    os.mkfifo(pipe)
    writer = threading.Thread(target=PACKAGE.save, args=[pipe])
    writer.start()
    assert load(pipe) == PACKAGE
    writer.join()
    assert stat.S_ISFIFO(pipe.stat().st_mode)
