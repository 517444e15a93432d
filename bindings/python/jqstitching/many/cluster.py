"""Workers of a Dask cluster, on other machines as a rule."""

import threading
import uuid

from .process import WorkerProcess, do_surely

_of_thread = threading.local()


def do_there(request, timeout):
    """Runs on a Dask worker. Each of its threads keeps a process of its own, which can be
    ended when it takes too long, and whose end is not the worker's."""
    if not hasattr(_of_thread, "worker"):
        _of_thread.worker = WorkerProcess()
    return do_surely(_of_thread.worker, request, timeout)


class ClusterPool:
    """Does requests on the workers of a client; yields (index, outcome) as they are done. The
    scheduler gives the work of a lost worker to another one."""

    def __init__(self, client, requests, timeout):
        self._client = client
        # Keys of their own: what this program skips is found by what is on the disk.
        self._futures = {
            client.submit(do_there, request, timeout, key=f"stitch-{uuid.uuid4()}"): index
            for index, request in enumerate(requests)
        }

    def __iter__(self):
        from distributed import as_completed

        # It asks for the client of the day, which need not be this one.
        with self._client.as_current():
            completed = as_completed(list(self._futures))
        for future in completed:
            index = self._futures[future]
            try:
                outcome = future.result()
            except Exception as error:  # its workers were lost again and again, for example
                outcome = {"state": "failed", "why": str(error) or type(error).__name__}
            future.release()
            yield index, outcome

    def stop(self):
        self._client.cancel(list(self._futures))
