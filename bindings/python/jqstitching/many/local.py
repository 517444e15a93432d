"""Worker processes on this machine."""

import collections
import os
import queue
import threading

from .process import WorkerProcess, do_surely


class LocalPool:
    """Does requests on so many worker processes; yields (index, outcome) as they are done."""

    def __init__(self, requests, workers, timeout):
        self._waiting = collections.deque(enumerate(requests))
        self._timeout = timeout
        self._done = queue.SimpleQueue()
        self._stopped = False
        self._workers = [WorkerProcess() for _ in range(workers)]
        # Each waits for one process; what takes time is done there.
        self._threads = [
            threading.Thread(target=self._serve, args=(worker,), daemon=True)
            for worker in self._workers
        ]

    def _serve(self, worker):
        while True:
            try:
                index, request = self._waiting.popleft()
            except IndexError:
                break
            try:
                outcome = do_surely(worker, request, self._timeout, lambda: not self._stopped)
            except Exception as error:  # no memory for another process, for example
                outcome = {"state": "failed", "why": str(error), "attempts": 1}
            if not self._stopped:
                self._done.put((index, outcome))
        worker.close()

    def __iter__(self):
        total = len(self._waiting)
        for thread in self._threads:
            thread.start()
        for _ in range(total):
            yield self._done.get()
        self._join()

    def _join(self):
        for thread in self._threads:
            if thread.is_alive():
                thread.join()

    def stop(self):
        """Ends the workers at once; what they were doing comes to nothing."""
        self._stopped = True
        self._waiting.clear()
        for worker in self._workers:
            worker.end()
        self._join()


def processors():
    return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count()
