"""Work beside the interpreter, and what stays in memory."""

import sys
import threading
import time

import numpy as np
from scenes import walk

from jqstitching import Stitcher, register, stitch_files


def test_threads_with_a_stitcher_each():
    passes = [walk(6, seed=seed)[0] for seed in range(4)]

    def stitch(frames):
        stitcher = Stitcher()
        for frame in frames:
            stitcher.add(frame)
        return stitcher.mosaic

    alone = [stitch(frames) for frames in passes]
    results = [None] * len(passes)

    def work(i):
        results[i] = stitch(passes[i])

    threads = [threading.Thread(target=work, args=(i,)) for i in range(len(passes))]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for expected, result in zip(alone, results):
        assert np.array_equal(result, expected)


def test_threads_on_one_stitcher_wait_for_each_other():
    # The last frame makes the mosaic grow, so that undoing and adding it moves the pixels.
    frames, _, _ = walk(4)
    stitcher = Stitcher(undo_depth=1)
    for frame in frames:
        assert stitcher.add(frame).placed
    grown = stitcher.mosaic
    assert stitcher.undo()
    expected = {m.shape: m for m in (stitcher.mosaic, grown)}
    assert len(expected) == 2
    done, wrong, looks = threading.Event(), [], [0]

    def look():
        while not done.is_set():
            mosaic = stitcher.mosaic
            if not np.array_equal(mosaic, expected.get(mosaic.shape)):
                wrong.append(mosaic.shape)
            stitcher.mosaic_view()
            looks[0] += 1

    threads = [threading.Thread(target=look) for _ in range(2)]
    for thread in threads:
        thread.start()
    for _ in range(60):
        assert stitcher.add(frames[-1]).placed and stitcher.undo()
    done.set()
    for thread in threads:
        thread.join()
    assert looks[0] > 0 and not wrong


def test_python_runs_on_during_work(tmp_path):
    # NumPy lets go of the interpreter as well where it has to pack a frame.
    frames = [np.ascontiguousarray(frame) for frame in walk(2)[0]]
    stitcher = Stitcher()
    stitcher.add(frames[0])
    counted, stop = [0], threading.Event()

    def count():
        while not stop.is_set():
            counted[0] += 1
            time.sleep(0)  # lets go of the interpreter

    interval = sys.getswitchinterval()
    # Nobody is asked to give the interpreter up: the other thread runs where it is let go.
    sys.setswitchinterval(60)
    thread = threading.Thread(target=count)
    try:
        thread.start()
        for work in [lambda: stitcher.add(frames[1]), lambda: register(*frames),
                     lambda: stitcher.save(tmp_path / "x.png"), stitcher.save_state]:
            before = counted[0]
            # A busy machine may not come to the other thread in so short a time.
            for _ in range(500):
                work()
                if counted[0] > before:
                    break
            assert counted[0] > before
    finally:
        sys.setswitchinterval(interval)
        stop.set()
        thread.join()


def resident_bytes():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * 4096


def test_memory_stays_flat():
    frames = [np.ascontiguousarray(f[:110, :140]) for f in walk(2, step=(24, 0))[0]]
    stitcher = Stitcher(undo_depth=1)
    stitcher.add(frames[0])
    start = 0
    # A frame has 46 kB, the mosaic four times as much: one of them lost in every turn would
    # show as 70 MB and more.
    for turn in range(2000):
        verdict = stitcher.add(frames[1])
        assert verdict.placed and stitcher.mosaic_view() is not None
        stitcher.mosaic.sum()
        assert stitcher.undo()
        try:
            stitcher.add(frames[1][1:])
        except ValueError:
            pass
        if turn % 20 == 0:
            stitcher.restore_state(stitcher.save_state())
            register(*frames)
        if turn == 300:
            start = resident_bytes()
    assert resident_bytes() - start < 10e6


def test_memory_of_files_stays_flat(tmp_path):
    from scenes import write_frames

    paths = write_frames(tmp_path, walk(3)[0])
    start = 0
    for turn in range(60):
        result = stitch_files(paths, progress=lambda *_: None)
        assert result.image.any() and len(result.frames) == 3
        if turn == 20:
            start = resident_bytes()
    # A picture has 140 kB.
    assert resident_bytes() - start < 3e6
