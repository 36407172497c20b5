# SPDX-License-Identifier: Apache-2.0
"""Manifests out of pipes."""

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
