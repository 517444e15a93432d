"""How many runs fit into memory side by side."""

from .. import InputError, header_size, list_pictures

# What a worker takes before it has read anything, with the image library's readers.
WORKER_BYTES = 150 << 20


def free_bytes():
    """What programs can still take; None where the system does not tell."""
    try:
        with open("/proc/meminfo", encoding="ascii") as file:
            for line in file:
                if line.startswith("MemAvailable:"):
                    return int(line.split()[1]) << 10
    except OSError:
        pass
    return None


def run_bytes(run):
    """An estimate: the mosaic with its border and the picture at hand take up to twice the
    pixels of all frames together. A walk along a diagonal can take more."""
    try:
        files = list_pictures(run.folder)
        size = header_size(files[0])
    except (InputError, OSError):
        return WORKER_BYTES
    pixels = size[0] * size[1] if size else 0
    return WORKER_BYTES + 2 * 3 * pixels * len(files)


def fitting_workers(runs, most):
    """As many as memory allows, each with the largest run, and at least one."""
    free = free_bytes()
    if free is None or most <= 1:
        return most
    return max(1, min(most, free // max(run_bytes(run) for run in runs)))
