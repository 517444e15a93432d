"""What `jqstitching.many` costs beside a plain loop over the same runs.

    PYTHONPATH=build-python/bindings/python python3 bench/python/many_bench.py [RUNS] [FRAMES]

200 runs of 12 frames of 320 x 240 pixels when not told otherwise. The loop calls `stitch_files`
and saves the picture and the reports; `many` does that in worker processes, hashes the files,
flushes the results to the disk and keeps the summary. One thread each.
"""

import os
import shutil
import sys
import tempfile
import time
from pathlib import Path

import numpy as np

import jqstitching
from jqstitching.many import stitch_many

HEIGHT, WIDTH, STEP = 240, 320, 64


def make_runs(folder, runs, frames):
    for i in range(runs):
        rng = np.random.default_rng(i)
        width = WIDTH + STEP * (frames - 1)
        blocks = rng.integers(70, 190, (HEIGHT // 8, width // 8 + 1, 3)).astype(np.uint8)
        scene = blocks.repeat(8, axis=0).repeat(8, axis=1)
        path = folder / f"run_{i:04}"
        path.mkdir(parents=True)
        for k in range(frames):
            frame = np.ascontiguousarray(scene[:, STEP * k : STEP * k + WIDTH])
            header = b"P6\n%d %d\n255\n" % (WIDTH, HEIGHT)
            (path / f"{k:03}.ppm").write_bytes(header + frame.tobytes())
    return sorted(folder.iterdir())


def plain_loop(folders, out):
    for folder in folders:
        target = out / folder.name
        target.mkdir(parents=True)
        result = jqstitching.stitch_files(folder)
        result.save(target / "picture.png")
        result.save_report(target / "report.json")
        result.save_report(target / "report.html")
        (target / "thumbnail.jpg").write_bytes(result.thumbnail())
        assert result.outcome == "all placed", result


def timed(work):
    start = time.monotonic()
    work()
    return time.monotonic() - start


def main(runs=200, frames=12):
    jqstitching.set_threads(1)
    with tempfile.TemporaryDirectory() as name:
        base = Path(name)
        folders = make_runs(base / "in", runs, frames)
        plain_loop(folders[:2], base / "warm")
        loop = timed(lambda: plain_loop(folders, base / "loop"))
        print(f"{runs} runs of {frames} frames of {WIDTH} x {HEIGHT}, {os.cpu_count()} processors")
        print(f"plain loop  {loop:7.2f} s  {1000 * loop / runs:6.1f} ms a run")
        for workers in (1, 2):
            out = base / f"many_{workers}"
            took = timed(lambda: stitch_many(folders, out, workers=workers))
            beside = loop / workers
            print(f"{workers} worker{'s' if workers > 1 else ' '}   {took:7.2f} s  "
                  f"{1000 * took / runs:6.1f} ms a run  {100 * (took / beside - 1):+5.1f} % beside "
                  f"the loop{f' on {workers} processors' if workers > 1 else ''}")
        again = timed(lambda: stitch_many(folders, out, workers=1))
        print(f"all kept    {again:7.2f} s")
        shutil.rmtree(out)


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
