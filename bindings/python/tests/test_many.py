"""Many runs on this machine: results, what is kept, lists, and what goes wrong."""

import csv
import json
import os
import subprocess
import sys

import pytest
from plates import HEIGHT, WIDTH, digests, make_runs, tree_digest

from jqstitching import InputError, stitch_files
from jqstitching.many import Options, Run, find_runs, stitch_many
from jqstitching.many.__main__ import main
from jqstitching.many.memory import WORKER_BYTES, fitting_workers, run_bytes


def test_results_summary_and_restart(tmp_path, capsys, monkeypatch):
    folders = make_runs(tmp_path / "plate", 3)
    (folders[2] / "frame_004.ppm").unlink()
    out = tmp_path / "out"
    assert main([*map(str, folders), "-o", str(out), "--workers", "2"]) == 0
    told = capsys.readouterr().out
    assert "3/3 well_00" in told and "3 runs: 3 finished" in told
    with open(out / "summary.csv", newline="") as file:
        rows = list(csv.DictReader(file))
    assert [row["folder"] for row in rows] == [str(folder) for folder in folders]
    assert [row["placed"] for row in rows] == ["4", "4", "3"]
    page = (out / "index.html").read_text()
    for row, folder in zip(rows, folders):
        result = out / row["result"]
        alone = stitch_files(folder)
        alone.save(tmp_path / "alone.png")
        assert (int(row["height"]), int(row["width"]), 3) == alone.image.shape
        assert (result / "picture.png").read_bytes() == (tmp_path / "alone.png").read_bytes()
        report = json.loads((result / "report.json").read_text())
        assert [frame["name"] for frame in report["list"]][:2] == ["frame_001.ppm", "frame_002.ppm"]
        assert str(tmp_path) not in (result / "report.json").read_text()
        assert "seconds" not in (result / "report.json").read_text()
        for name in ("thumbnail.jpg", "report.html", "picture.png"):
            assert (result / name).exists() and f"{row['result']}/{name}" in page
    assert {path.name for path in out.iterdir()} == {
        *(row["result"] for row in rows), "summary.csv", "index.html", ".partial"}
    assert not list((out / ".partial").iterdir())

    # Everything is kept, wherever the folders are by now; what has changed is done anew.
    before = {path: path.stat().st_mtime_ns for path in out.glob("*/*")}
    moved = [folder.rename(tmp_path / folder.name) for folder in folders]
    again = stitch_many(moved, out, workers=1)
    assert [o["state"] for o in again] == ["kept"] * 3
    assert {path: path.stat().st_mtime_ns for path in out.glob("*/*")} == before
    (moved[0] / "frame_004.ppm").unlink()
    changed = stitch_many(moved, out, workers=1, options=Options())
    assert [o["state"] for o in changed] == ["finished", "kept", "kept"]
    assert changed[0]["placed"] == 3 and changed[0]["key"] != again[0]["key"]
    # One sample of one file is enough.
    last = moved[1] / "frame_004.ppm"
    last.write_bytes(last.read_bytes()[:-1] + b"\x51")
    (touched,) = stitch_many(moved[1], out, workers=1)
    assert touched["state"] == "finished" and touched["key"] != again[1]["key"]
    monkeypatch.chdir(tmp_path)
    (named,) = stitch_many([Run("well_001/")], "out", workers=1)
    assert (named["state"], named["key"]) == ("kept", touched["key"])
    other = stitch_many(moved[:1], out, workers=1, options=Options(background=(255, 255, 255)))
    assert other[0]["state"] == "finished" and other[0]["key"] != changed[0]["key"]


def test_half_written_results_do_not_count(tmp_path):
    folders = make_runs(tmp_path / "plate", 1)
    out = tmp_path / "out"
    expected = digests(stitch_many(folders, out, workers=1))
    result = next(out.glob("well_*"))
    whole = tree_digest(out)
    # As a crash of the machine might leave it, were the folder not renamed when it is whole.
    (result / "run.json").unlink()
    (result / "picture.png").write_bytes(b"half")
    (outcome,) = stitch_many(folders, out, workers=1)
    assert outcome["state"] == "failed" and "well_000" in outcome["why"]
    for path in result.iterdir():
        path.unlink()
    assert digests(stitch_many(folders, out, workers=1)) == expected
    assert tree_digest(out) == whole


def test_a_run_that_fails_does_not_stop_the_others(tmp_path, capsys):
    folders = make_runs(tmp_path / "plate", 4)
    (folders[1] / "frame_002.ppm").write_bytes(b"P6\n190 130\n255\nshort")
    for path in folders[2].iterdir():
        path.unlink()
    out = tmp_path / "out"
    assert main([*map(str, folders), "-o", str(out), "--workers", "1", "--quiet"]) == 3
    with open(out / "summary.csv", newline="") as file:
        rows = list(csv.DictReader(file))
    assert [row["state"] for row in rows] == ["finished", "failed", "failed", "finished"]
    assert "frame_002.ppm: it cannot be read" in rows[1]["why"] and rows[2]["why"]
    assert "frame_002.ppm" in (out / "index.html").read_text()
    # The same once more, of a list: bad files are left out of one run.
    folders[0].rename(tmp_path / "plate" / "\udcff <0>")
    (folders[1] / "frame_005.ppm").symlink_to("/nowhere")
    os.mkfifo(folders[1] / "frame_006.ppm")
    listed = tmp_path / "list.csv"
    listed.write_text("folder,skip_bad,format\nplate/well_001,yes,ppm\nplate/well_003,,\n")
    assert capsys.readouterr().out == ""
    command = [sys.executable, "-m", "jqstitching.many", str(listed),
               os.fsencode(tmp_path / "plate" / "\udcff <0>"), "-o", str(out), "--workers", "1"]
    done = subprocess.run(command, capture_output=True, text=True,
                          env={**os.environ, "PYTHONIOENCODING": "ascii:strict"})
    # Names that are no UTF-8 are refused by the readers of pictures.
    assert done.returncode == 3 and "\\udcff <0>: failed" in done.stdout, done.stdout
    assert "not valid UTF-8" in done.stdout
    with open(out / "summary.csv", newline="", errors="surrogateescape") as file:
        rows = list(csv.DictReader(file))
    assert [(row["state"], row["placed"], row["left_out"]) for row in rows] == [
        ("finished", "3", "3"), ("kept", "4", "0"), ("failed", "", "")]
    assert (out / rows[0]["result"] / "picture.ppm").exists()
    assert b"\xff &lt;0&gt;" in (out / "index.html").read_bytes()


def test_lists_and_their_errors(tmp_path):
    make_runs(tmp_path, 1)
    listed = tmp_path / "list.csv"
    listed.write_text("pixel_size,folder,background\n0.5,well_000,\"1,2,3\"\n,/elsewhere,\n")
    first, second = find_runs([listed], Options(format="tif"))
    assert first.folder == str(tmp_path / "well_000") and second.folder == "/elsewhere"
    assert first.options == Options(format="tif", pixel_size=0.5, background=(1, 2, 3))
    assert second.options == Options(format="tif")
    for text, error in [
        ("", "folder"),
        ("folders\nx\n", "folders"),
        ("folder,colour\nx,y\n", "colour"),
        ("folder,skip_bad\nx,maybe\n", "line 2: 'maybe'"),
        ("folder,format\nx,gif\n", "gif"),
        ("folder,pixel_size\nx,0\n", "line 2"),
        ("folder,background\nx,300 0 0\n", "300 0 0"),
        ("folder,format\nx\n", "2 cells"),
        ("folder\nx,y\n", "1 cells"),
        ("folder,format\n,png\n", "folder is missing"),
        ("folder\n", "no run"),
    ]:
        listed.write_text(text)
        with pytest.raises(InputError, match=error):
            find_runs([listed])
    with pytest.raises(InputError, match="neither"):
        find_runs([tmp_path / "nothing"])
    assert main([str(tmp_path / "nothing"), "-o", str(tmp_path / "out")]) == 1
    with pytest.raises(SystemExit, match="2"):
        main([str(tmp_path), "-o", "out", "--timeout", "0"])


def test_as_many_workers_as_memory_allows(tmp_path, monkeypatch):
    runs = find_runs(make_runs(tmp_path, 2, frames=3))
    assert run_bytes(runs[0]) == WORKER_BYTES + 2 * 3 * WIDTH * HEIGHT * 3
    for free, workers in [(None, 8), (0, 1), (run_bytes(runs[0]), 1), (1 << 40, 8),
                          (3 * run_bytes(runs[0]) + 5, 3)]:
        monkeypatch.setattr("jqstitching.many.memory.free_bytes", lambda free=free: free)
        assert fitting_workers(runs, 8) == workers
