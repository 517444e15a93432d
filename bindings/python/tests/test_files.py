"""Picture files in one go."""

import json

import numpy as np
import pytest
from scenes import WIDTH, read_ppm, walk, write_frames, write_ppm

from jqstitching import InputError, header_size, list_pictures, stitch_files


@pytest.fixture
def folder(tmp_path):
    frames, _, _ = walk(6)
    write_frames(tmp_path / "in", frames)
    return tmp_path / "in"


def test_the_command_line_gives_the_same_picture(tmp_path, folder, command_line):
    command_line("batch", folder, "-o", tmp_path / "theirs.ppm")
    command_line("batch", folder, "-o", tmp_path / "theirs.png", "--no-trim", "--pixel-size", "2um")
    result = stitch_files(folder)
    assert result.outcome == "all placed"
    result.save(tmp_path / "ours.ppm")
    result.save(tmp_path / "ours.png", trim=False, pixel_size=2)
    for name in ("ppm", "png"):
        ours = (tmp_path / f"ours.{name}").read_bytes()
        assert ours == (tmp_path / f"theirs.{name}").read_bytes()
    assert np.array_equal(result.image, read_ppm(tmp_path / "theirs.ppm"))
    swapped = stitch_files([str(path) for path in sorted(folder.iterdir())], order="bgr").image
    assert np.array_equal(swapped[..., ::-1], result.image)


def test_verdicts_and_reports(tmp_path, folder):
    write_ppm(folder / "frame_007.ppm", np.full((150, 200, 3), 77, np.uint8))
    seen = []
    result = stitch_files(folder, progress=lambda *told: seen.append(told))
    assert [(done, total) for done, total, _ in seen] == [(i, 7) for i in range(1, 8)]
    assert [v.name for _, _, v in seen] == list_pictures(folder)
    assert result.outcome == "some left out"
    for i, verdict in enumerate(result.frames[:6]):
        x, y = verdict.position
        assert verdict.placed and np.hypot(x - 40 * i, y - 6 * i) <= 4 * i and not verdict.doubtful
    last = result.frames[6]
    assert (last.cause, last.position, last.doubtful) == ("no corners found", None, None)
    assert last.sentence == "left out: no corners were found in the frame"
    report = result.report()
    assert report["placed"] == 6 and report["picture"] is None
    result.save(tmp_path / "picture.png")
    result.save_report(tmp_path / "report.json")
    result.save_report(tmp_path / "report.html")
    written = json.loads((tmp_path / "report.json").read_text())
    x, y = result.frames[5].position
    assert written["picture"]["size"] == {"width": x + WIDTH, "height": y + 150}
    assert result.image.shape == (y + 150, x + WIDTH, 3)
    assert "frame_007.ppm" in (tmp_path / "report.html").read_text()
    assert result.thumbnail()[:3] == b"\xff\xd8\xff"


class Enough(Exception):
    pass


def bytes_read():
    with open("/proc/self/io") as file:
        return int(file.readline().removeprefix("rchar:"))


def test_a_progress_function_that_raises_stops_the_run(folder):
    stitch_files(folder)
    before = bytes_read()
    stitch_files(folder)
    whole = bytes_read() - before
    seen = []

    def progress(done, total, verdict):
        seen.append(done)
        if done == 2:
            raise Enough("two are enough")

    with pytest.raises(Enough, match="two are enough"):
        stitch_files(folder, progress=progress)
    assert seen == [1, 2]
    # At least two of the six files of 90 kB were not read by the stitcher any more.
    assert bytes_read() - before - whole < whole - 2 * 90000
    with pytest.raises(TypeError):
        stitch_files(folder, progress=lambda: None)


def test_bad_files_refuse_the_run_or_are_left_out(folder):
    (folder / "frame_003.ppm").write_bytes(b"P6\n200 150\n255\nshort")
    write_ppm(folder / "frame_005.ppm", np.full((20, 30, 3), 9, np.uint8))
    with pytest.raises(InputError) as refused:
        stitch_files(folder)
    assert "frame_003.ppm: it cannot be read" in str(refused.value)
    assert "frame_005.ppm: its size differs: 30 x 20 pixels instead of 200 x 150" in str(
        refused.value
    )
    result = stitch_files(folder, skip_bad=True)
    causes = [v.cause for v in result.frames]
    assert causes == ["placed", "placed", "unreadable", "placed", "size differs", "placed"]


def test_paths_that_cannot_be_used(tmp_path):
    for paths in [tmp_path, tmp_path / "nothing", [], b"\xff.png"]:
        with pytest.raises(InputError):
            stitch_files(paths)
    with pytest.raises(TypeError):
        stitch_files(7)
    with pytest.raises(TypeError):
        stitch_files([3.5])


def test_the_size_in_a_header(tmp_path, folder):
    assert header_size(folder / "frame_001.ppm") == (200, 150)
    (tmp_path / "text.ppm").write_text("no picture")
    assert header_size(tmp_path / "text.ppm") is None
    assert header_size(tmp_path / "nothing.ppm") is None


def test_one_file_is_its_own_picture(folder):
    result = stitch_files(folder / "frame_001.ppm")
    assert np.array_equal(result.image, read_ppm(folder / "frame_001.ppm"))
    assert result.frames[0].position == (0, 0)
