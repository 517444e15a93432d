"""Stitches camera frames into one picture while the camera moves.

`Stitcher` takes frames as arrays, one after another; `stitch_files` takes picture files;
`register` measures the shift between two frames. `python3 -m jqstitching.many` stitches many
folders, on many machines if need be.
"""

from ._native import (
    InputError,
    Result,
    Shift,
    State,
    Stitcher,
    StitchingError,
    Verdict,
    __version__,
    header_size,
    list_pictures,
    register,
    set_threads,
    stitch_files,
)

__all__ = [
    "InputError",
    "Result",
    "Shift",
    "State",
    "Stitcher",
    "StitchingError",
    "Verdict",
    "__version__",
    "header_size",
    "list_pictures",
    "register",
    "set_threads",
    "stitch_files",
]
