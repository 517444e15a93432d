"""The examples run, and what the documents show is Python."""

import ast
import os
import pathlib
import re
import subprocess
import sys

from scenes import walk, write_frames

from jqstitching.many.__main__ import main

ROOT = pathlib.Path(__file__).parents[3]


def test_the_walk_through_runs():
    done = subprocess.run([sys.executable, "-B", ROOT / "examples/python/walk_through.py"],
                          capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    # What its text says of each step.
    for line in ["1 placed", "2 left out: the shift", "4 left out: too few", "went on: True",
                 "taken back: True"]:
        assert line in done.stdout, done.stdout


def test_the_bench_runs():
    done = subprocess.run([sys.executable, "-B", ROOT / "bench/python/many_bench.py", "2", "3"],
                          capture_output=True, text=True)
    assert done.returncode == 0, done.stderr
    for line in ["2 runs of 3 frames", "plain loop", "1 worker", "2 worker", "all kept"]:
        assert line in done.stdout


# What the example asks of napari and of the picture reader that comes with it, without a
# window: the worker runs at once and hands over what it yields.
STAND_INS = {
    "napari/__init__.py": """
class Layer:
    def __init__(self, data): self.data = data
class Viewer:
    def __init__(self, title): self.shown = []
    def add_image(self, picture, rgb, name):
        layer = Layer(picture)
        self.shown.append(layer)
        return layer
    def __setattr__(self, name, value):
        if name == "status": print(value)
        object.__setattr__(self, name, value)
def run(): print("the window opens")
""",
    "napari/qt/__init__.py": "",
    "napari/qt/threading.py": """
def thread_worker(connect):
    def decorate(work):
        def start(*arguments):
            for update in work(*arguments): connect["yielded"](update)
        return start
    return decorate
""",
    "imageio/__init__.py": "",
    "imageio/v3.py": """
from pathlib import Path
from scenes import read_ppm
def imread(path): return read_ppm(Path(path))
""",
}


def test_the_napari_example_with_stand_ins(tmp_path):
    for name, text in STAND_INS.items():
        (tmp_path / name).parent.mkdir(parents=True, exist_ok=True)
        (tmp_path / name).write_text(text)
    write_frames(tmp_path / "in", walk(3)[0])
    paths = [str(tmp_path), str(pathlib.Path(__file__).parent), os.environ["PYTHONPATH"]]
    done = subprocess.run(
        [sys.executable, "-B", ROOT / "examples/python/live_napari.py", tmp_path / "in"],
        capture_output=True, text=True, env={**os.environ, "PYTHONPATH": os.pathsep.join(paths)})
    assert done.returncode == 0, done.stderr
    assert done.stdout.count("placed: ") == 2 and "the window opens" in done.stdout


def test_code_in_documents_and_other_examples_is_python(capsys):
    texts = [(ROOT / "examples/python/live_napari.py").read_text()]
    for name in ["python.md", "scale.md"]:
        texts += re.findall(r"```python\n(.*?)```", (ROOT / "docs" / name).read_text(), re.DOTALL)
    assert len(texts) == 6
    for text in texts:
        ast.parse(text)
    try:
        main(["--help"])
    except SystemExit as ended:
        assert ended.code == 0
    told = capsys.readouterr().out
    options = re.findall(r"--[a-z][a-z-]+", (ROOT / "docs/scale.md").read_text())
    assert len(options) >= 3
    for option in options:
        assert option in told, option
