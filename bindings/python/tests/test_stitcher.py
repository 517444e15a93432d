"""Frames one after another: verdicts, mosaic, undo, states, files."""

import numpy as np
import pytest
from scenes import HEIGHT, WIDTH, frame_at, read_ppm, scene, walk, write_frames

from jqstitching import InputError, Stitcher, StitchingError


def stitched(frames, **settings):
    stitcher = Stitcher(**settings)
    return stitcher, [stitcher.add(frame) for frame in frames]


def crop(stitcher):
    x0, y0, x1, y1 = stitcher.placed_bounds
    return stitcher.mosaic[y0:y1, x0:x1]


def test_before_there_is_a_mosaic():
    stitcher = Stitcher()
    first = stitcher.add(walk(1)[0][0])
    assert (first.placed, first.cause, first.offset, first.position) == (True, "placed", None, None)
    assert first.shift_share is None and first.matches == 0
    assert first.sentence == "placed: the picture starts with it"
    assert stitcher.mosaic is None and stitcher.mosaic_view() is None
    assert stitcher.content_box is None and stitcher.placed_bounds is None
    with pytest.raises(StitchingError, match="two frames"):
        stitcher.save("never.png")


def test_the_mosaic_shows_the_scene():
    frames, _, _ = walk(6)
    stitcher, verdicts = stitched(frames)
    assert [v.placed for v in verdicts] == [True] * 6, verdicts
    # The second frame makes the mosaic: twice a frame, the first frame in its middle.
    x, y = WIDTH - WIDTH // 2, HEIGHT - HEIGHT // 2
    left, top = x, y
    for verdict in verdicts[1:]:
        # Matches agree with each other within 4 pixels.
        dx, dy = verdict.offset
        assert np.hypot(dx - 40, dy - 6) <= 4
        # The walk goes down to the right, so growth moves nothing.
        x, y = x + dx, y + dy
        assert verdict.position == (x, y)
        assert verdict.matches >= 11 and verdict.shift_share == pytest.approx(dx / WIDTH)
        assert verdict.sentence == (
            f"placed: {verdict.matches} matches agree on a shift of {100 * dx / WIDTH:.1f} % "
            "of the frame"
        )
    assert stitcher.placed_bounds == (left, top, x + WIDTH, y + HEIGHT)
    assert stitcher.content_box == stitcher.placed_bounds
    covered = crop(stitcher)
    # What one frame alone covers is that frame's.
    assert np.array_equal(covered[:HEIGHT, :30], frames[0][:, :30])
    assert np.array_equal(covered[-HEIGHT:, -30:], frames[-1][:, -30:])
    # And beside the frames there is nothing.
    assert not covered[HEIGHT + 15 :, :30].any() and not stitcher.mosaic[:, :left].any()


def test_a_frame_that_is_left_out_tells_why():
    frames, _, _ = walk(2)
    stitcher, _ = stitched(frames)
    before = stitcher.mosaic
    still = stitcher.add(frames[1])
    assert (still.placed, still.cause, still.position) == (False, "shift too small", None)
    assert still.offset == (0, 0) and still.shift_share == 0.0
    assert still.sentence == "left out: the shift of 0.0 % of the frame is not more than 10 %"
    empty = stitcher.add(np.full((HEIGHT, WIDTH, 3), 130, np.uint8))
    assert (empty.placed, empty.cause, empty.offset) == (False, "no corners found", None)
    elsewhere = stitcher.add(scene(HEIGHT, WIDTH, seed=99))
    assert not elsewhere.placed and elsewhere.matches < 11
    assert np.array_equal(stitcher.mosaic, before)


@pytest.mark.parametrize("level", [1, 2])
@pytest.mark.parametrize("mode", ["quality", "motion"])
def test_the_command_line_gives_the_same_files(tmp_path, command_line, level, mode):
    frames, _, _ = walk(6, step=(60, 10) if level == 2 else (40, 6))
    write_frames(tmp_path / "in", frames)
    stitcher, verdicts = stitched(frames, overlap_mode=mode, detect_level=level, corner_budget=12)
    options = ["--overlap-mode", int(mode == "motion"), "--detect-level", level]
    options += ["--corner-budget", 12]
    # 3: the motion test may leave frames out.
    expect = 0 if all(v.placed for v in verdicts) else 3
    if sum(v.placed for v in verdicts) < 2:
        expect = 4
    for name, given, kept in [
        ("plain.ppm", [], {}),
        ("sized.png", ["--pixel-size", "0.5um", "--background", "9,200,30"],
         {"pixel_size": 0.5, "background": (9, 200, 30)}),
        ("whole.ome.tif", ["--no-trim"], {"trim": False}),
    ]:
        theirs, ours = tmp_path / "theirs" / name, tmp_path / "ours" / name
        theirs.parent.mkdir(exist_ok=True)
        ours.parent.mkdir(exist_ok=True)
        command_line("live", tmp_path / "in", "-o", theirs, *options, *given, expect=expect)
        stitcher.save(ours, **kept)
        assert ours.read_bytes() == theirs.read_bytes(), name
    assert np.array_equal(read_ppm(tmp_path / "theirs" / "plain.ppm"), crop(stitcher))


def test_grey_frames_give_a_grey_file(tmp_path, command_line):
    frames = [np.ascontiguousarray(frame[:, :, 0]) for frame in walk(4)[0]]
    write_frames(tmp_path / "in", frames)
    stitcher, verdicts = stitched(frames)
    assert all(v.placed for v in verdicts)
    command_line("live", tmp_path / "in", "-o", tmp_path / "theirs.png")
    stitcher.save(tmp_path / "ours.png")
    assert (tmp_path / "ours.png").read_bytes() == (tmp_path / "theirs.png").read_bytes()
    mosaic = stitcher.mosaic
    assert np.array_equal(mosaic[..., 0], mosaic[..., 1])


def test_undo_goes_back_step_by_step():
    frames, _, _ = walk(5)
    stitcher = Stitcher(undo_depth=3)
    seen = []
    for frame in frames:
        stitcher.add(frame)
        seen.append((stitcher.mosaic, stitcher.placed_bounds))
    for mosaic, bounds in reversed(seen[1:-1]):
        assert stitcher.undo()
        assert np.array_equal(stitcher.mosaic, mosaic) and stitcher.placed_bounds == bounds
    assert not stitcher.undo()
    again = stitcher.add(frames[2])
    assert again.placed and np.array_equal(stitcher.mosaic, seen[2][0])


def test_a_lost_run_goes_on_elsewhere():
    picture = scene(400, 700)
    stitcher = Stitcher()
    for x in (0, 40, 80, 120, 160):
        assert stitcher.add(frame_at(picture, x, 0)).placed
    x0, y0, _, _ = stitcher.placed_bounds
    assert not stitcher.add(frame_at(picture, 0, 40)).placed
    assert not stitcher.continue_at((x0 - 1, y0))  # black beside the first frame
    assert not stitcher.continue_at((-5, 0))
    assert stitcher.continue_at((x0, y0))
    below = stitcher.add(frame_at(picture, 0, 40))
    assert below.placed and np.hypot(below.offset[0], below.offset[1] - 40) <= 4, below


def test_a_state_goes_on_as_the_run_would_have():
    frames, _, _ = walk(7)
    stitcher, _ = stitched(frames[:3], undo_depth=2)
    state = stitcher.save_state()
    rest = [stitcher.add(frame).sentence for frame in frames[3:]]
    end = stitcher.mosaic
    other = Stitcher("motion", detect_level=2, order="bgr")
    for _ in range(2):
        other.restore_state(state)
        assert [other.add(frame[..., ::-1]).sentence for frame in frames[3:]] == rest
        assert np.array_equal(other.mosaic[..., ::-1], end)
    with pytest.raises(ValueError, match="150, 200"):
        other.add(np.zeros((90, 90), np.uint8))
    other.restore_state(Stitcher().save_state())
    assert other.mosaic is None and other.add(np.ones((90, 90), np.uint8)).placed


def test_beyond_the_memory_limit_the_run_stays(tmp_path):
    frames, _, _ = walk(5)
    twice = 4 * WIDTH * HEIGHT * 3
    stitcher, _ = stitched(frames[:3], memory_limit=twice)
    before = stitcher.mosaic
    with pytest.raises(MemoryError):
        for frame in frames[3:]:
            stitcher.add(frame)
    assert np.array_equal(stitcher.mosaic, before)
    stitcher.save(tmp_path / "kept.png")


def test_settings_and_files_that_cannot_be(tmp_path):
    for wrong in [dict(overlap_mode="x"), dict(detect_level=0), dict(detect_level=8),
                  dict(corner_budget=-1), dict(undo_depth=-1), dict(memory_limit=-1),
                  dict(order="hsv")]:
        with pytest.raises(ValueError, match=next(iter(wrong))):
            Stitcher(**wrong)
    stitcher, _ = stitched(walk(2)[0])
    with pytest.raises(InputError, match="missing/x.png"):
        stitcher.save(tmp_path / "missing" / "x.png")
    with pytest.raises(InputError, match="extension"):
        stitcher.save(tmp_path / "x")
    with pytest.raises(ValueError, match="pixel_size"):
        stitcher.save(tmp_path / "x.png", pixel_size=float("nan"))
    with pytest.raises(ValueError, match="background"):
        stitcher.save(tmp_path / "x.png", background=(0, 0, 256))
    assert not list(tmp_path.iterdir())
