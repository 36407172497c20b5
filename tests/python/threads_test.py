# SPDX-License-Identifier: Apache-2.0
"""Many files at once, and Python's threads beside them."""

import faulthandler
import gc
import os
import threading
from concurrent.futures import ThreadPoolExecutor
from itertools import count, islice

import pytest
import veskpackage
from conftest import BROKEN, EXAMPLES
from veskpackage import ManifestError, Package, check_many, load, load_many, loads

MANY = pytest.mark.parametrize("many", [load_many, check_many])


def outcome(one):
    """What came of one file, in what can be compared."""
    rest = one.package if isinstance(one, veskpackage.Loaded) else (one.findings, one.uuid)
    return one.path, rest, type(one.error), str(one.error)


@MANY
@pytest.mark.parametrize("jobs", [None, 1, 2, 7])
def test_results_come_in_the_order_of_the_paths(many, jobs, tmp_path):
    paths = [*EXAMPLES, tmp_path, *BROKEN, str(tmp_path / "missing"), os.fsencode(EXAMPLES[0])] * 9
    results = list(many(iter(paths), jobs=jobs))
    assert [one.path for one in results] == paths
    alone = {path: outcome(next(many([path]))) for path in set(paths)}
    assert [outcome(one) for one in results] == [alone[path] for path in paths]
    kinds = {type(one.error) for one in results}
    readers = {ManifestError} if many is load_many else set()
    assert kinds == {type(None), IsADirectoryError, FileNotFoundError} | readers
    assert list(many([], jobs=jobs)) == []


@MANY
def test_paths_are_asked_for_as_they_are_needed(many):
    asked = count()

    def endless():
        while True:
            yield EXAMPLES[next(asked) % len(EXAMPLES)]

    results = many(endless(), jobs=2)
    assert next(asked) == 0  # not before the first result is wanted
    assert [one.path for one in islice(results, 500)] == [
        EXAMPLES[number % len(EXAMPLES)] for number in range(1, 501)]  # fmt: skip
    assert next(asked) < 1000
    results.close()
    assert list(results) == [] and not pool_threads()


def pool_threads():
    return [thread for thread in threading.enumerate() if thread.name.startswith("veskpackage")]


@MANY
def test_an_end_in_the_middle_leaves_no_thread(many):
    def failing():
        yield from EXAMPLES * 50
        raise KeyError("no more paths")

    with pytest.raises(KeyError, match="no more paths"):
        list(many(failing()))
    with pytest.raises(TypeError):
        list(many([*EXAMPLES, None]))
    with pytest.raises(ValueError, match="jobs"):
        list(many([], jobs=-1))
    results = many(EXAMPLES * 100)
    next(results)
    del results
    gc.collect()
    assert not pool_threads()


@pytest.mark.parametrize("read", [
    load, veskpackage.check, veskpackage.fix, lambda path: next(load_many([path], jobs=1)),
    lambda path: next(check_many([path], jobs=1)),
])  # fmt: skip
def test_others_run_while_a_file_is_read(read, tmp_path):
    """A pipe gives nothing until another thread has written to it."""
    faulthandler.dump_traceback_later(60, exit=True)
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    reader = threading.Thread(target=read, args=[pipe], daemon=True)
    reader.start()
    with open(pipe, "wb") as end:  # opens when the reader is there, too
        assert reader.is_alive()
        end.write(EXAMPLES[0].read_bytes()[:100])
        end.flush()
        end.write(EXAMPLES[0].read_bytes()[100:])
    reader.join()
    faulthandler.cancel_dump_traceback_later()


def test_several_threads_read_one_package():
    """What is Python's only from the first reading on is the same for all."""
    expected = load(EXAMPLES[-1])
    texts = expected.dumps(), str(expected), expected.to_dict()
    for _ in range(30):
        package = load(EXAMPLES[-1])
        start = threading.Barrier(8)

        def read(number):
            start.wait()
            if number % 2:
                assert (package.dumps(), str(package), package.to_dict()) == texts
            parts = [getattr(one, field.name)
                     for one in (package, *package.behaviors) for field in one._fields]  # fmt: skip
            assert package == expected and package.copy() == expected
            return parts

        with ThreadPoolExecutor(8) as pool:
            first, *others = pool.map(read, range(8))
        for parts in others:
            for one, other in zip(first, parts, strict=True):
                assert one == other and (one is other or isinstance(one, str))


def test_one_thread_compares_what_another_reads_for_the_first_time():
    package = load(EXAMPLES[-1])

    class ReadInBetween(Package):
        __slots__ = ()

        def _whole(self):  # where the interpreter may turn to the other thread
            assert package.names and package.behaviors
            return super()._whole()

    assert Package.__eq__(package, ReadInBetween.from_dict(package.to_dict()))


def test_threads_read_write_and_check_packages_of_their_own(tmp_path):
    def work(number):
        path = tmp_path / f"{number}.xml"
        for example in EXAMPLES:
            package = load(example)
            package.names["de"] = str(number)
            package.save(path)
            assert load(path) == loads(package.dumps()) == package == package.copy()
            assert not veskpackage.fix(path).count
            text = veskpackage.edit(path.read_text("utf-8"), {"names.de": "edited"})
            assert loads(text).names["de"] == "edited"
        assert Package.from_dict(package.to_dict()) == package
        return load(path).names["de"]

    with ThreadPoolExecutor(6) as pool:
        assert list(pool.map(work, range(24))) == [str(number) for number in range(24)]
