"""Stitches many runs, each a folder of pictures, on one machine or on many.

`python3 -m jqstitching.many RUNS... -o OUT` from the command line, `stitch_many` from Python.
A run is a function of its files, its options and the version alone, so what is finished is
kept, and it does not matter who does a run, how often, and beside which others.
"""

from .runs import Options, Run, find_runs
from .stitch import stitch_many

__all__ = ["Options", "Run", "find_runs", "stitch_many"]
