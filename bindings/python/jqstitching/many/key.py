"""The name under which a run's result is kept: a hash of all that decides it."""

import dataclasses
import hashlib
import json
import os
import stat

from .. import __version__

# Part of the key, so that results of another layout are not taken for these.
LAYOUT = 1


# A file that cannot be read is None to both: what speaks against it is told when the run is
# stitched, or it is left out.


def file_stamp(path):
    """What changes when somebody writes the file while it is being used."""
    try:
        status = os.stat(path)
    except OSError:
        return None
    return status.st_size, status.st_mtime_ns, status.st_ino


def file_hash(path):
    try:
        # A pipe would be waited for.
        if not stat.S_ISREG(os.stat(path).st_mode):
            return None
        with open(path, "rb") as file:
            return hashlib.file_digest(file, "sha256").hexdigest()
    except OSError:
        return None


def run_key(run, files):
    """Depends on the names and contents of the files, their order, the options and the
    version, and not on where the folder lies."""
    inputs = {
        "layout": LAYOUT,
        "version": __version__,
        "options": dataclasses.asdict(run.options),
        "files": [[os.path.basename(path), file_hash(path)] for path in files],
    }
    return hashlib.sha256(json.dumps(inputs, sort_keys=True).encode()).hexdigest()
