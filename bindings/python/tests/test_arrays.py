"""What goes in as an array, and what comes out."""

import gc

import numpy as np
import pytest
from scenes import HEIGHT, WIDTH, scene, walk

from jqstitching import Stitcher, register


def stitch(frames, order="rgb"):
    stitcher = Stitcher(order=order)
    for frame in frames:
        stitcher.add(frame)
    return stitcher.mosaic


def test_strides_of_every_kind_give_the_same_mosaic():
    frames, _, _ = walk(3)
    expected = stitch(frames)

    def laid_out(change):
        return [change(frame) for frame in frames]

    def spread(frame):
        wide = np.zeros((2 * HEIGHT, 3 * WIDTH, 5), np.uint8)
        wide[::2, ::3, 1:4] = frame
        return wide[::2, ::3, 1:4]

    def read_only(frame):
        frame = frame.copy()
        frame.flags.writeable = False
        return frame

    layouts = {
        "packed": np.ascontiguousarray,
        "columns first": np.asfortranarray,
        "spread": spread,
        "backwards": lambda f: np.ascontiguousarray(f[::-1, ::-1, ::-1])[::-1, ::-1, ::-1],
        "transposed": lambda f: np.ascontiguousarray(f.transpose(1, 0, 2)).transpose(1, 0, 2),
        "read-only": read_only,
        "with alpha": lambda f: np.dstack([f, np.zeros((HEIGHT, WIDTH), np.uint8)]),
        "a subclass": lambda f: f.view(np.recarray),
    }
    for name, change in layouts.items():
        before = laid_out(change)
        kept = [frame.copy() for frame in before]
        assert np.array_equal(stitch(before), expected), name
        assert all(np.array_equal(a, b) for a, b in zip(before, kept)), name

    swapped = stitch([frame[..., ::-1] for frame in frames], order="bgr")
    assert np.array_equal(swapped[..., ::-1], expected)
    grey = [frame[..., 1] for frame in frames]
    assert np.array_equal(stitch(grey), stitch([np.dstack([g, g, g]) for g in grey]))
    broadcast = [np.broadcast_to(g[..., None], (HEIGHT, WIDTH, 3)) for g in grey]
    assert np.array_equal(stitch(broadcast), stitch(grey))


WRONG = {
    "a list": ([[1, 2], [3, 4]], TypeError, "list"),
    "None": (None, TypeError, "NoneType"),
    "floats": (np.zeros((9, 8)), TypeError, r"float64.*\(9, 8\)"),
    "16 bits": (np.zeros((9, 8, 3), np.uint16), TypeError, r"uint16.*\(9, 8, 3\)"),
    "signed": (np.zeros((9, 8), np.int8), TypeError, r"int8.*\(9, 8\)"),
    "truths": (np.zeros((9, 8), bool), TypeError, r"bool.*\(9, 8\)"),
    "texts": (np.zeros((9, 8), "S1"), TypeError, r"\(9, 8\)"),
    "a point": (np.zeros((), np.uint8), ValueError, r"\(\)"),
    "a line": (np.zeros(9, np.uint8), ValueError, r"\(9,\)"),
    "two channels": (np.zeros((9, 8, 2), np.uint8), ValueError, r"\(9, 8, 2\)"),
    "one channel": (np.zeros((9, 8, 1), np.uint8), ValueError, r"\(9, 8, 1\)"),
    "a stack": (np.zeros((2, 9, 8, 3), np.uint8), ValueError, r"\(2, 9, 8, 3\)"),
    "no rows": (np.zeros((0, 8, 3), np.uint8), ValueError, r"\(0, 8, 3\)"),
    "no columns": (np.zeros((9, 0), np.uint8), ValueError, r"\(9, 0\)"),
    "too wide": (np.broadcast_to(np.uint8(1), (2, 65536)), ValueError, r"\(2, 65536\)"),
    "too high": (np.broadcast_to(np.uint8(1), (1 << 40, 2)), ValueError, "1099511627776"),
}


@pytest.mark.parametrize("name", WRONG)
def test_wrong_arrays_are_refused_and_change_nothing(name):
    frame, error, text = WRONG[name]
    frames, _, _ = walk(3)
    stitcher = Stitcher()
    with pytest.raises(error, match=text):
        stitcher.add(frame)
    assert stitcher.mosaic is None
    for good in frames[:2]:
        stitcher.add(good)
    with pytest.raises(error, match=text):
        stitcher.add(frame)
    with pytest.raises(error, match=text):
        register(frames[0], frame)
    stitcher.add(frames[2])
    assert np.array_equal(stitcher.mosaic, stitch(frames))


def test_a_frame_of_another_size_is_refused():
    frames, _, _ = walk(2)
    stitcher = Stitcher()
    stitcher.add(frames[0])
    with pytest.raises(ValueError, match=r"\(149, 200\).*\(150, 200\)"):
        stitcher.add(frames[1][1:])
    with pytest.raises(ValueError, match="detect_level=7"):
        Stitcher(detect_level=7).add(np.zeros((6, 90), np.uint8))
    with pytest.raises(ValueError, match=r"\(150, 200\).*\(150, 199\)"):
        register(frames[0], frames[1][:, 1:])


def test_the_mosaic_is_a_copy_of_its_own():
    frames, _, _ = walk(3)
    stitcher = Stitcher()
    for frame in frames:
        stitcher.add(frame)
    mosaic = stitcher.mosaic
    assert mosaic.dtype == np.uint8 and mosaic.flags.c_contiguous and mosaic.flags.writeable
    expected = mosaic.copy()
    mosaic[:] = 0
    assert np.array_equal(stitcher.mosaic, expected)
    del stitcher
    assert not mosaic.any()


@pytest.mark.parametrize("order", ["rgb", "bgr"])
def test_a_view_stays_valid_whatever_happens(order):
    # Small steps first, within the first mosaic, and then a walk that makes it grow.
    frames, _, _ = walk(14)
    stitcher = Stitcher(order=order, undo_depth=14)
    shown, grown = [], 0
    for frame in frames:
        stitcher.add(frame)
        now = stitcher.mosaic
        for view, content in shown:
            if view.shape == now.shape:
                # Not grown: the view shows the newest call.
                content[:] = now
            assert np.array_equal(view, content)
        if now is None:
            continue
        grown += bool(shown) and shown[-1][0].shape != now.shape
        view = stitcher.mosaic_view()
        assert np.array_equal(view, now)
        assert not view.flags.owndata and not view.flags.writeable
        shown.append((view, now))
    assert grown >= 2, "the walk is meant to make the mosaic grow"

    view, _ = shown[-1]
    with pytest.raises(ValueError):
        view[0, 0, 0] = 1
    with pytest.raises(ValueError):
        view.setflags(write=True)
    # Back again, which shrinks the mosaic. A view of the same size shows what is undone.
    while stitcher.undo():
        now = stitcher.mosaic
        if now is None:
            break
        for view, content in shown:
            assert view.shape == content.shape and view.sum() >= 0
        assert np.array_equal(stitcher.mosaic_view(), now)
    largest, content = shown[-1]
    middle = largest[10:-10:3, 5:-5:2, 1]
    seen = middle.copy()
    state = Stitcher(order=order).save_state()
    stitcher.restore_state(state)
    del stitcher, shown, largest, view
    gc.collect()
    filler = [np.full(content.nbytes, 7, np.uint8) for _ in range(4)]
    assert np.array_equal(middle, seen) and len(filler) == 4


def test_register_finds_the_shift():
    picture = scene(300, 400, seed=5)
    a = picture[50 : 50 + HEIGHT, 60 : 60 + WIDTH]
    for dx, dy in [(40, 0), (-31, 17), (0, -40), (24, 30)]:
        b = picture[50 + dy : 50 + dy + HEIGHT, 60 + dx : 60 + dx + WIDTH]
        shift = register(a, b)
        # Matches agree with each other within 4 pixels.
        assert np.hypot(shift.offset[0] - dx, shift.offset[1] - dy) <= 4, (dx, dy, shift)
        assert shift.found and shift.matches >= 11
        assert register(a[..., ::-1], b[..., ::-1], order="bgr").matches == shift.matches
    nothing = register(a, np.full_like(a, 128))
    assert (nothing.offset, nothing.matches, nothing.found) == ((0, 0), 0, False)
