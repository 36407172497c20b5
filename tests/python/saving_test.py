# SPDX-License-Identifier: Apache-2.0
"""A manifest that is saved is there as a whole, or not at all."""

import errno
import os
import stat
import subprocess
import sys
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


def test_mode_owner_and_links_stay(folder):
    path, link, dangling = (folder(name) / name for name in ("manifest.xml", "link", "dangling"))
    link.symlink_to("manifest.xml")
    dangling.symlink_to("new.xml")
    if os.getuid() == 0:  # else not permitted
        os.chown(path, 12345, 54321)
    for mode in (0o600, 0o664, 0o444, 0o6640):
        path.chmod(mode)
        before = path.stat()
        PACKAGE.save(link)
        after = path.stat()
        assert stat.S_IMODE(after.st_mode) == mode and link.is_symlink()
        assert (after.st_uid, after.st_gid) == (before.st_uid, before.st_gid)
        assert load(path) == PACKAGE
    PACKAGE.save(dangling)
    umask = os.umask(0)
    os.umask(umask)
    assert stat.S_IMODE((folder("new.xml") / "new.xml").stat().st_mode) == 0o666 & ~umask


@pytest.mark.parametrize("name", ["/dev/stdout", "/dev/fd/1", "/proc/self/fd/1", "link"])
def test_standard_output_goes_on(folder, name):
    """Wherever it is redirected to."""
    (folder("link") / "link").symlink_to("/dev/stdout")
    program = (
        "import sys, veskpackage; print('a', flush=True)\n"
        "veskpackage.replace_file(sys.argv[1], b'b\\n'); print('c')"
    )

    def run(output):
        subprocess.run(
            [sys.executable, "-c", program, name], cwd=folder(), stdout=output, check=True
        )

    with open(folder() / "manifest.xml", "w+") as file:
        run(file)
        file.seek(0)
        assert file.read() == "a\nb\nc\n"
    inlet, outlet = os.pipe()
    with os.fdopen(inlet) as reader, os.fdopen(outlet, "w") as writer:
        run(writer)
        writer.close()
        assert reader.read() == "a\nb\nc\n"


@pytest.mark.parametrize("fault", ["fsync", "replace"])
@pytest.mark.parametrize("error", [OSError(errno.EIO, "fault"), KeyboardInterrupt()], ids=repr)
def test_after_a_fault_all_is_as_before(folder, monkeypatch, fault, error):
    def fail(*_):
        raise error

    with pytest.raises(type(error)), monkeypatch.context() as patch:
        patch.setattr(os, fault, fail)
        PACKAGE.save(folder() / "manifest.xml")
    assert (folder() / "manifest.xml").read_text() == OLD


def test_an_interrupt_after_the_replacement_is_raised(folder, monkeypatch):
    def replaced(*paths, replace=os.replace):
        replace(*paths)
        raise KeyboardInterrupt

    monkeypatch.setattr(os, "replace", replaced)
    with pytest.raises(KeyboardInterrupt):
        PACKAGE.save(folder() / "manifest.xml")


def test_what_is_no_file_stays_what_it_is(folder):
    (folder("loop") / "loop").symlink_to("loop")
    for place, error, number in [
        ("", IsADirectoryError, errno.EISDIR),
        ("missing/x", FileNotFoundError, errno.ENOENT),
        ("missing/../x", FileNotFoundError, errno.ENOENT),
        ("missing/", FileNotFoundError, errno.ENOENT),
        ("manifest.xml/", NotADirectoryError, errno.ENOTDIR),
        ("x" * 256, OSError, errno.ENAMETOOLONG),
        ("loop", OSError, errno.ELOOP),
        ("/dev/full", OSError, errno.ENOSPC),
    ]:
        path = os.path.join(folder(), place)
        with pytest.raises(OSError) as caught:
            PACKAGE.save(path)
        wanted = error(number, os.strerror(number), path)
        assert type(caught.value) is error and str(caught.value) == str(wanted)
    with pytest.raises(ValueError):
        PACKAGE.save("x\0")
    pipe = folder("pipe") / "pipe"
    os.mkfifo(pipe)
    writer = threading.Thread(target=PACKAGE.save, args=[pipe])
    writer.start()
    assert load(pipe) == PACKAGE
    writer.join()
    assert stat.S_ISFIFO(pipe.stat().st_mode) and stat.S_ISCHR(os.stat("/dev/full").st_mode)
