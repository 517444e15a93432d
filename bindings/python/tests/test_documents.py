"""The examples run, and what the documents show is Python."""

import ast
import pathlib
import re
import subprocess
import sys

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
