# SPDX-License-Identifier: Apache-2.0
"""Manifests out of pipes, and into what cannot be written."""

import os
import threading

import pytest
import veskpackage


@pytest.mark.parametrize("read", [veskpackage.load, veskpackage.check, veskpackage.fix])
def test_another_thread_can_write_what_is_read(read, tmp_path):
    pipe = tmp_path / "manifest.xml"
    os.mkfifo(pipe)
    writer = threading.Thread(target=pipe.write_bytes, args=[b"<package/>"])
    writer.start()
    assert read(pipe) is not None
    writer.join()


def test_what_cannot_be_written_is_named(tmp_path):
    for path in ("missing/manifest.xml", "/dev/full"):
        with pytest.raises(OSError) as caught:
            veskpackage.Package().save(tmp_path / path)
        assert caught.value.filename == str(tmp_path / path)
