"""What `jqstitching.many` costs beside a plain loop over the same runs.

    PYTHONPATH=build-python/bindings/python python3 bench/python/many_bench.py [RUNS] [FRAMES]

200 runs of 12 frames of 320 x 240 pixels, as PNG, when not told otherwise. The loop calls
`stitch_files` and saves the picture and the reports; `many` does that in worker processes, hashes the files,
flushes the results to the disk and keeps the summary. One thread each.
"""

import os
import struct
import sys
import tempfile
import time
import zlib
from pathlib import Path

import numpy as np

import jqstitching
from jqstitching.many import stitch_many

HEIGHT, WIDTH, STEP = 240, 320, 64


def png(frame):
    """The bytes of a PNG file, packed as lightly as cameras do."""
    def chunk(kind, data):
        check = struct.pack(">I", zlib.crc32(kind + data))
        return struct.pack(">I", len(data)) + kind + data + check

    # Each row as the difference from the row above, filter 2.
    rows = np.diff(frame.reshape(HEIGHT, -1), axis=0, prepend=np.uint8(0))
    filtered = np.hstack([np.full((HEIGHT, 1), 2, np.uint8), rows]).tobytes()
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    pieces = [(b"IHDR", header), (b"IDAT", zlib.compress(filtered, 1)), (b"IEND", b"")]
    return b"\x89PNG\r\n\x1a\n" + b"".join(chunk(*piece) for piece in pieces)


def make_runs(folder, runs, frames):
    """Passes over blocks of random colour, with the noise of a camera."""
    for i in range(runs):
        rng = np.random.default_rng(i)
        width = WIDTH + STEP * (frames - 1)
        blocks = rng.integers(70, 190, (HEIGHT // 8, width // 8 + 1, 3)).astype(np.uint8)
        scene = blocks.repeat(8, axis=0).repeat(8, axis=1)
        path = folder / f"run_{i:04}"
        path.mkdir(parents=True)
        for k in range(frames):
            view = scene[:, STEP * k : STEP * k + WIDTH]
            noise = rng.integers(0, 8, view.shape, np.uint8)
            (path / f"{k:03}.png").write_bytes(png(view + noise))
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
    """Seconds that went by, and seconds of all processors, ended worker processes included."""
    def spent():
        times = os.times()
        return times.user + times.system + times.children_user + times.children_system

    start, before = time.monotonic(), spent()
    work()
    return time.monotonic() - start, spent() - before


def main(runs=200, frames=12):
    jqstitching.set_threads(1)
    with tempfile.TemporaryDirectory() as name:
        base = Path(name)
        folders = make_runs(base / "in", runs, frames)
        plain_loop(folders[:2], base / "warm")
        print(f"{runs} runs of {frames} frames of {WIDTH} x {HEIGHT}, {os.cpu_count()} processors")
        print("                 seconds   processor seconds      beside the loop")
        loop, loop_work = timed(lambda: plain_loop(folders, base / "loop"))
        print(f"plain loop   {loop:11.2f} {loop_work:12.2f}")
        for workers in (1, 2):
            out = base / f"many_{workers}"
            took, work = timed(lambda: stitch_many(folders, out, workers=workers))
            # On so many processors the loop would take this share of its time at best.
            beside = 100 * (took * workers / loop - 1), 100 * (work / loop_work - 1)
            print(f"{workers} worker(s)  {took:11.2f} {work:12.2f} "
                  f"{beside[0]:+14.1f} % {beside[1]:+6.1f} %")
        again, work = timed(lambda: stitch_many(folders, out, workers=1))
        print(f"all kept     {again:11.2f} {work:12.2f}")


if __name__ == "__main__":
    main(*map(int, sys.argv[1:]))
