"""All runs, from the list to the summary."""

import dataclasses
import os
import shutil
import uuid
from typing import Any, Callable, Dict, Iterable, List, Optional, Union

from .cluster import ClusterPool
from .local import LocalPool, processors
from .memory import fitting_workers
from .runs import Options, Run, find_runs
from .summary import write_summary
from .work import PARTIAL

Path = Union[str, "os.PathLike[str]"]
Runs = Union[Path, Run, Iterable[Union[Path, Run]]]
Outcome = Dict[str, Any]


def as_runs(runs, options):
    found = []
    for run in [runs] if isinstance(runs, (str, os.PathLike, Run)) else runs:
        found.extend([run] if isinstance(run, Run) else find_runs([run], options))
    # Workers may have another folder at hand.
    return [dataclasses.replace(run, folder=os.path.abspath(run.folder)) for run in found]


def request_of(run, out, session):
    """What a worker is asked for, as plain values."""
    return {
        "folder": run.folder,
        "options": dataclasses.asdict(run.options),
        "out": out,
        "session": session,
    }


def stitch_many(
    runs: Runs,
    out: Path,
    *,
    client: Any = None,
    workers: Optional[int] = None,
    timeout: Optional[float] = None,
    options: Options = Options(),
    progress: Optional[Callable[[int, int, Run, Outcome], Any]] = None,
) -> List[Outcome]:
    """Stitches runs, and writes `summary.csv` and `index.html` beside their results.

    runs: folders of pictures, CSV files that name them, and `Run`s.
    out: the folder that gets a folder for each result. What an earlier call finished there
        is kept; what it did not finish does not count.
    client: a client of a Dask cluster, whose workers see the folders and `out` under the same
        names. None for worker processes on this machine.
    workers: how many of these; as many as there are processors and memory allows when None.
    timeout: seconds; a run that takes longer is ended and reported.
    options: of runs that are given as folders, and of CSV files where a cell is empty.
    progress: called as progress(done, total, run, outcome) on this thread.

    Returns an outcome, a dictionary, for each run in their order. `outcome["state"]` is 'finished',
    'kept' (from an earlier call), 'failed' or 'timed out', these two with `why`. A run whose
    worker is lost is done again elsewhere, up to three times. A Ctrl-C, or whatever
    `progress` raises, ends the workers, leaves the runs that were not reached for another call,
    writes the summary and is raised again.
    """
    runs = as_runs(runs, options)
    out = os.path.abspath(out)
    os.makedirs(out, exist_ok=True)
    session = uuid.uuid4().hex
    requests = [request_of(run, out, session) for run in runs]
    if client is not None:
        pool = ClusterPool(client, requests, timeout)
    else:
        most = min(workers or processors(), len(runs))
        pool = LocalPool(requests, most if workers else fitting_workers(runs, most), timeout)
    outcomes = [{"state": "not reached"} for _ in runs]
    try:
        for done, (index, outcome) in enumerate(pool, start=1):
            outcomes[index] = outcome
            if progress is not None:
                progress(done, len(runs), runs[index], outcome)
    except BaseException:
        pool.stop()
        raise
    finally:
        shutil.rmtree(os.path.join(out, PARTIAL, session), ignore_errors=True)
        write_summary(out, runs, outcomes)
    return outcomes
