"""Runs as the tests of many runs need them, and what their results are compared by."""

import hashlib

from scenes import scene, write_frames

HEIGHT, WIDTH, STEP = 130, 190, 26


def make_runs(folder, count, frames=4):
    """Folders of small frames that overlap by six sevenths, each of another scene."""
    paths = []
    for i in range(count):
        picture = scene(HEIGHT, WIDTH + STEP * (frames - 1), seed=100 + i)
        views = [picture[:, STEP * k : STEP * k + WIDTH] for k in range(frames)]
        paths.append(folder / f"well_{i:03}")
        write_frames(paths[-1], views)
    return paths


def digests(outcomes):
    return [(o["key"], o["picture_sha256"], o["report_sha256"]) for o in outcomes]


def tree_digest(out, names="*"):
    """Of every result, without the pages for people, which tell how long a run took."""
    digest = hashlib.sha256()
    for path in sorted(out.glob(f"{names}/*")):
        if path.name != "report.html":
            digest.update(f"{path.relative_to(out)}\n".encode())
            digest.update(path.read_bytes())
    return digest.hexdigest()
