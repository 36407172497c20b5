# SPDX-License-Identifier: Apache-2.0
"""A manifest that is saved is there as a whole, or not at all."""

import errno
import os
import stat
import threading

import pytest
from conftest import EXAMPLES
from veskpackage import load

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


def test_mode_and_links_stay(folder):
    path, link, dangling = (folder(name) / name for name in ("manifest.xml", "link", "dangling"))
    link.symlink_to("manifest.xml")
    dangling.symlink_to("new.xml")
    for mode in (0o600, 0o664, 0o444):
        path.chmod(mode)
        PACKAGE.save(link)
        assert stat.S_IMODE(path.stat().st_mode) == mode and link.is_symlink()
        assert load(path) == PACKAGE
    PACKAGE.save(dangling)
    umask = os.umask(0)
    os.umask(umask)
    assert stat.S_IMODE((folder("new.xml") / "new.xml").stat().st_mode) == 0o666 & ~umask


@pytest.mark.parametrize("fault", ["fsync", "replace"])
@pytest.mark.parametrize("error", [OSError(errno.EIO, "fault"), KeyboardInterrupt()], ids=repr)
def test_after_a_fault_all_is_as_before(folder, monkeypatch, fault, error):
    def fail(*_):
        raise error

    with pytest.raises(type(error)), monkeypatch.context() as patch:
        patch.setattr(os, fault, fail)
        PACKAGE.save(folder() / "manifest.xml")
    assert (folder() / "manifest.xml").read_text() == OLD


def test_what_is_no_file_stays_what_it_is(folder):
    for place, error in [
        ("", IsADirectoryError),
        ("x\0", ValueError),
        ("manifest.xml/x", NotADirectoryError),
        ("x" * 256, OSError),
    ]:
        with pytest.raises(error):
            PACKAGE.save(f"{folder()}/{place}")
    for path, number in ((folder() / "missing/x", errno.ENOENT), ("/dev/full", errno.ENOSPC)):
        with pytest.raises(OSError) as raised:
            PACKAGE.save(path)
        assert (raised.value.errno, raised.value.filename) == (number, str(path))
    pipe = folder("pipe") / "pipe"
    os.mkfifo(pipe)
    writer = threading.Thread(target=PACKAGE.save, args=[pipe])
    writer.start()
    assert load(pipe) == PACKAGE
    writer.join()
    assert stat.S_ISFIFO(pipe.stat().st_mode) and stat.S_ISCHR(os.stat("/dev/full").st_mode)
