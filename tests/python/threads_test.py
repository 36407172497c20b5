# SPDX-License-Identifier: Apache-2.0
"""Many files at once, and Python's threads beside them."""

import faulthandler
import gc
import os
import signal
import subprocess
import sys
import threading
from concurrent.futures import ThreadPoolExecutor
from itertools import chain, count, islice, repeat

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
@pytest.mark.parametrize("jobs", [None, 1, 7])
def test_results_come_in_the_order_of_the_paths(many, jobs, tmp_path):
    paths = [*EXAMPLES, tmp_path, *BROKEN, str(tmp_path / "missing"), os.fsencode(EXAMPLES[0])] * 9
    results = list(many(iter(paths), jobs=jobs))
    alone = {path: outcome(next(many([path]))) for path in set(paths)}
    assert [outcome(one) for one in results] == [alone[path] for path in paths]
    malformed = {ManifestError} if many is load_many else set()
    assert {type(one.error) for one in results} == malformed | {
        type(None),
        IsADirectoryError,
        FileNotFoundError,
    }
    assert list(many([], jobs=jobs)) == []


def pool_threads():
    """Those that do not end by themselves."""
    threads = [thread for thread in threading.enumerate() if thread.name == "veskpackage"]
    return [thread for thread in threads if thread.join(60) or thread.is_alive()]


@MANY
def test_paths_are_asked_for_as_they_are_needed(many):
    asked = count()
    results = many((EXAMPLES[next(asked) % len(EXAMPLES)] for _ in repeat(None)), jobs=2)
    assert next(asked) == 0  # not before the first result is wanted
    for number, one in enumerate(islice(results, 500), 1):
        assert one.path is EXAMPLES[number % len(EXAMPLES)]
    assert next(asked) < 1000
    results.close()
    assert list(results) == [] and not pool_threads()


@MANY
def test_what_is_no_path_has_an_error_and_no_wrong_argument_waits(many):
    odd = [None, "a\ud800", "a\0b"]
    results = list(many(chain(EXAMPLES, odd, EXAMPLES)))
    assert [type(one.error) for one in results if one.error] == [
        TypeError,
        UnicodeEncodeError,
        FileNotFoundError,
    ]
    assert len(results) == 2 * len(EXAMPLES) + len(odd)
    for paths, jobs, error in [
        ("name", 1, TypeError),
        (5, 1, TypeError),
        ([], 0, ValueError),
        ([], 1.5, TypeError),
    ]:
        with pytest.raises(error):
            many(paths, jobs=jobs)


@MANY
def test_an_end_in_the_middle_leaves_no_thread(many):
    given = []
    with pytest.raises(ZeroDivisionError):
        for one in many(chain(EXAMPLES * 50, (1 // zero for zero in [0]))):
            given.append(one)
    assert len(given) == len(EXAMPLES) * 50  # all that came before
    results = many(EXAMPLES * 100)
    next(results)
    del results
    gc.collect()
    assert not pool_threads()


@pytest.mark.parametrize(
    "read",
    [
        load,
        veskpackage.check,
        veskpackage.fix,
        lambda path: next(load_many([path])),
        lambda path: next(check_many([path])),
    ],
)
def test_others_run_while_a_file_is_read(read, tmp_path):
    """A pipe gives nothing until another thread has written to it."""
    faulthandler.dump_traceback_later(60, exit=True)
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    reader = threading.Thread(target=read, args=[pipe])
    reader.start()
    with open(pipe, "wb") as end:  # opens when the reader is there, too
        end.write(b"<package")
        end.flush()
        assert reader.is_alive()
        end.write(b"/>")
    reader.join()
    faulthandler.cancel_dump_traceback_later()


@MANY
def test_an_interrupt_waits_for_no_file(many, tmp_path):
    os.mkfifo(tmp_path / "pipe")
    program = f"""import os, signal, threading, veskpackage
threading.Timer(0.3, os.kill, [os.getpid(), signal.SIGINT]).start()
next(veskpackage.{many.__name__}(["pipe"]))"""
    done = subprocess.run(
        [sys.executable, "-c", program], cwd=tmp_path, timeout=60, stderr=subprocess.PIPE
    )
    assert done.returncode == -signal.SIGINT and b"KeyboardInterrupt" in done.stderr


def test_several_threads_read_one_package():
    """What is Python's from the first reading on is the same for all."""
    expected = load(EXAMPLES[-1])
    for _ in range(30):
        package = load(EXAMPLES[-1])
        start = threading.Barrier(8)

        def read(number):
            start.wait()
            assert number % 2 or package.dumps() == expected.dumps()
            parts = [
                getattr(one, field.name)
                for one in (package, *package.behaviors)
                for field in one._all_fields
            ]
            assert package == expected and package.copy() == expected
            return parts

        with ThreadPoolExecutor(8) as pool:
            for parts in zip(*pool.map(read, range(8)), strict=True):
                assert all(one is parts[0] or isinstance(one, str) for one in parts)


def test_one_thread_compares_what_another_reads_for_the_first_time():
    package = load(EXAMPLES[-1])

    class ReadInBetween(Package):
        __slots__ = ()

        def _whole(self):  # where the interpreter may turn to the other thread
            assert package.names and package.behaviors
            return super()._whole()

    assert Package.__eq__(package, ReadInBetween.from_dict(package.to_dict()))


def test_threads_work_with_packages_of_their_own(tmp_path):
    def work(path):
        for example in EXAMPLES:
            package = load(example)
            package.names["de"] = path.name
            package.save(path)
            assert load(path) == loads(package.dumps()) == package == package.copy()
            text = veskpackage.edit(path.read_text("utf-8"), {"names.de": "edited"})
            assert loads(text).names["de"] == "edited" and not veskpackage.fix(path).count

    with ThreadPoolExecutor(6) as pool:
        list(pool.map(work, [tmp_path / str(number) for number in range(24)]))


DAEMONS = f"""import threading, time, veskpackage as v
data = open({str(EXAMPLES[-1])!r}, "rb").read()
def work():
    while True: v.loads(data), v.check(data), v.edit(data, {{'version': '2'}})
for _ in range(4): threading.Thread(target=work, daemon=True).start()
time.sleep(0.1)"""
LOGGED_SLOWLY = """import logging, time, veskpackage as v
logging.getLogger("veskpackage").addFilter(lambda record: time.sleep(0.02) or True)
v.forward_log()
kept = [{i: [i]} for i in range(300_000)]  # takes a while to end
results = v.load_many(["missing"] * 100, jobs=4)
next(results)"""


@pytest.mark.parametrize("program", [DAEMONS, LOGGED_SLOWLY])
def test_the_end_of_the_interpreter_is_the_end_of_daemons(program):
    for _ in range(4):
        subprocess.run([sys.executable, "-c", program], check=True, timeout=60)


@pytest.mark.parametrize("first", ["", "import veskpackage"])
def test_another_interpreter_is_refused_at_once(first):
    program = f"""{first}
try: import _interpreters as others
except ImportError: import _xxsubinterpreters as others
others.run_string(others.create(), '''if True:
    try: import veskpackage
    except ImportError as error: print("refused", flush=True)''')"""
    done = subprocess.run(
        [sys.executable, "-c", program], check=True, timeout=60, stdout=subprocess.PIPE
    )
    assert done.stdout == b"refused\n"
