"""Workers that are lost, that take too long, and that are stopped: nothing of it shows in the
results."""

import os
import pathlib
import random
import signal
import subprocess
import sys
import threading
import time

import pytest
from plates import digests, make_runs, tree_digest

from jqstitching.many import process, stitch_many
from jqstitching.many.local import LocalPool

# Answers at once, but for folders whose name tells what it does instead.
STUB = """
import json, os, sys, time
for line in sys.stdin:
    folder = json.loads(line)["folder"]
    if folder == "slow": time.sleep(60)
    if folder == "deadly": os._exit(1)
    print(json.dumps({"state": "finished", "folder": folder, "pid": os.getpid()}), flush=True)
"""


@pytest.fixture
def stub_workers(monkeypatch):
    def start():
        return subprocess.Popen([sys.executable, "-SE", "-c", STUB], stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE)

    monkeypatch.setattr(process, "start_process", start)


def all_children():
    found = set()
    for task in pathlib.Path("/proc/self/task").iterdir():
        try:
            found.update(map(int, (task / "children").read_text().split()))
        except OSError:
            pass  # a thread that has just ended
    return found


@pytest.fixture
def children():
    """Tells the processes that were started since the test began."""
    before = all_children()
    return lambda: sorted(all_children() - before)


def test_slow_and_deadly_runs_leave_the_others_alone(stub_workers, children):
    names = ["a", "slow", "b", "deadly", "c", "slow", "d"]
    pool = LocalPool([{"folder": name} for name in names], 2, timeout=0.5)
    outcomes = dict(pool)
    for index, name in enumerate(names):
        outcome = outcomes[index]
        if name == "slow":
            assert outcome["state"] == "timed out" and "0.5 seconds" in outcome["why"]
        elif name == "deadly":
            assert outcome["state"] == "failed" and outcome["attempts"] == 3
            assert outcome["why"] == "its worker was lost 3 times"
        else:
            assert outcome["state"] == "finished" and outcome["folder"] == name
    assert not children()


def test_a_stopped_pool_leaves_no_process(stub_workers, children):
    pool = LocalPool([{"folder": name} for name in ["a", "slow", "slow", "b"]], 2, timeout=None)
    seen = iter(pool)
    assert next(seen)[0] == 0
    start = time.monotonic()
    pool.stop()
    assert not children()
    assert time.monotonic() - start < 30, "the slow ones, which take a minute, were waited for"


def test_results_do_not_depend_on_workers_that_are_killed(tmp_path, monkeypatch, children):
    folders = make_runs(tmp_path / "plate", 16)
    one = stitch_many(folders, tmp_path / "one", workers=1)
    expected = digests(one)
    assert [o["state"] for o in one] == ["finished"] * 16

    monkeypatch.setattr(process, "ATTEMPTS", 1000)
    seed = random.randrange(1 << 30)
    print(f"seed {seed}")
    choice = random.Random(seed)
    killed, done = [], threading.Event()

    def kill_now_and_then():
        while not done.wait(choice.uniform(0.02, 0.4)):
            victims = children()
            if victims and len(killed) < 10:
                killed.append(choice.choice(victims))
                try:
                    os.kill(killed[-1], signal.SIGKILL)
                except ProcessLookupError:
                    killed.pop()

    for workers in (2, 3):
        killed.clear()
        done.clear()
        out = tmp_path / f"killed_{workers}"
        killer = threading.Thread(target=kill_now_and_then)
        killer.start()
        try:
            outcomes = stitch_many(folders, out, workers=workers)
        finally:
            done.set()
            killer.join()
        assert killed and sum(o["attempts"] for o in outcomes) > 16, seed
        assert digests(outcomes) == expected, seed
        assert tree_digest(out) == tree_digest(tmp_path / "one"), seed
        assert not list((out / ".partial").iterdir())


def start_many(folders, out):
    """The program with two workers, their processes, and what it told first."""
    program = subprocess.Popen(
        [sys.executable, "-m", "jqstitching.many", *map(str, folders), "-o", str(out),
         "--workers", "2"],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    first = program.stdout.readline()
    tasks = list(pathlib.Path(f"/proc/{program.pid}/task").iterdir())
    workers = [int(pid) for task in tasks for pid in (task / "children").read_text().split()]
    return program, workers, first


def wait_until_ended(workers):
    deadline = time.monotonic() + 60
    while any(os.path.exists(f"/proc/{pid}") for pid in workers):
        assert time.monotonic() < deadline, "workers go on without anybody to work for"
        time.sleep(0.05)


def test_ctrl_c_and_a_crash_keep_what_is_finished(tmp_path):
    folders = make_runs(tmp_path / "plate", 24)
    out = tmp_path / "out"
    program, workers, first = start_many(folders, out)
    program.send_signal(signal.SIGINT)
    rest, errors = program.communicate(timeout=60)
    assert program.returncode == 130, rest + errors
    assert " 1/24 well_" in first and "what is finished is kept" in errors
    assert "Traceback" not in errors
    assert len(workers) == 2 and not any(os.path.exists(f"/proc/{pid}") for pid in workers)
    summary = (out / "summary.csv").read_text()
    finished = summary.count(",finished,")
    assert finished >= 1 and summary.count(",not reached,") == 24 - finished > 0
    assert finished <= len(list(out.glob("well_*/run.json"))) < 24
    assert not list((out / ".partial").iterdir())

    # Killed, it can tidy nothing up.
    program, workers, _ = start_many(folders[12:], out)
    program.kill()
    program.communicate(timeout=60)
    wait_until_ended(workers)
    kept = len(list(out.glob("well_*/run.json")))
    assert kept < 24
    outcomes = stitch_many(folders, out, workers=2)
    assert [o["state"] for o in outcomes].count("kept") == kept
    assert digests(outcomes) == digests(stitch_many(folders, tmp_path / "one", workers=1))
    assert tree_digest(out, "well_*") == tree_digest(tmp_path / "one", "well_*")


def test_progress_that_raises_ends_the_workers(tmp_path, children):
    folders = make_runs(tmp_path / "plate", 6)

    def stop(done, total, run, outcome):
        raise RuntimeError(f"{done} of {total}")

    with pytest.raises(RuntimeError, match="1 of 6"):
        stitch_many(folders, tmp_path / "out", workers=1, progress=stop)
    assert not children()
    assert (tmp_path / "out" / "summary.csv").read_text().count("not reached") == 5
