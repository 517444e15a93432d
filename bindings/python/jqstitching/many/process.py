"""The other end of a worker process, in the program that gives it work."""

import contextlib
import json
import os
import selectors
import subprocess
import sys
import threading
import time

import jqstitching

# A run whose worker is lost so often has killed it, as far as anybody can tell.
ATTEMPTS = 3


class WorkerLost(Exception):
    """The worker ended before it answered."""


class TimedOut(Exception):
    """The worker did not answer in time."""


def start_process():
    folder = os.path.dirname(os.path.dirname(os.path.abspath(jqstitching.__file__)))
    paths = [folder, *filter(None, [os.environ.get("PYTHONPATH")])]
    return subprocess.Popen(
        [sys.executable, "-m", "jqstitching.many.worker"],
        stdin=subprocess.PIPE,
        stdout=subprocess.PIPE,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(paths)},
        # A Ctrl-C in the terminal is for the program that gives out the work.
        start_new_session=True,
    )


def end_process(process):
    process.kill()
    process.wait()


def close_pipes(process):
    for pipe in (process.stdin, process.stdout):
        # What nobody reads any more is lost.
        with contextlib.suppress(OSError):
            pipe.close()


def read_line(pipe, timeout):
    deadline = None if timeout is None else time.monotonic() + timeout
    line = b""
    with selectors.DefaultSelector() as selector:
        selector.register(pipe, selectors.EVENT_READ)
        while not line.endswith(b"\n"):
            left = None if deadline is None else deadline - time.monotonic()
            if (left is not None and left <= 0) or not selector.select(left):
                raise TimedOut
            piece = os.read(pipe.fileno(), 65536)
            if not piece:
                raise WorkerLost
            line += piece
    return line


class WorkerProcess:
    """Starts its process when there is something to do, and again after it was lost."""

    def __init__(self):
        self._process = None
        self._ended = False
        self._starting = threading.Lock()

    def _running(self):
        with self._starting:
            if self._ended:
                raise WorkerLost
            if self._process is None or self._process.poll() is not None:
                self._process = start_process()
            return self._process

    def do(self, request, timeout=None):
        """The answer to one request. Raises `WorkerLost` or `TimedOut`; the process is gone
        then, and the next request starts another."""
        process = self._running()
        try:
            process.stdin.write(json.dumps(request).encode("ascii") + b"\n")
            process.stdin.flush()
            return json.loads(read_line(process.stdout, timeout))
        except BaseException as error:
            # The answer to a request that was given up must not be taken for the next.
            end_process(process)
            close_pipes(process)
            if isinstance(error, OSError):
                raise WorkerLost from error
            raise

    def end(self):
        """Ends the process at once and for good, whatever it does; on any thread."""
        with self._starting:
            self._ended = True
            if self._process is not None:
                end_process(self._process)

    def close(self):
        """Lets the process end, which has nothing to do."""
        if self._process is not None:
            close_pipes(self._process)
            self._process.wait()


def do_surely(worker, request, timeout, may_go_on=lambda: True):
    """The outcome of a run, which is tried again when its worker is lost."""
    for attempt in range(1, ATTEMPTS + 1):
        try:
            return {**worker.do(request, timeout), "attempts": attempt}
        except TimedOut:
            why = f"it took more than {timeout:g} seconds"
            return {"state": "timed out", "why": why, "attempts": attempt}
        except WorkerLost:
            if not may_go_on():
                break
    return {"state": "failed", "why": f"its worker was lost {attempt} times", "attempts": attempt}
