"""The stubs name what the compiled module has, and everything has a docstring."""

import ast
import pathlib

import jqstitching
from jqstitching import _native


def members(thing):
    return {name for name in vars(thing) if not name.startswith("_")}


def test_stubs_and_module_agree():
    stub = pathlib.Path(jqstitching.__file__).with_name("_native.pyi")
    assert stub.with_name("py.typed").exists()
    aliases = {"Frame", "Order", "Path", "Point", "Box", "Colour"}
    stubbed, classes = set(), {}
    for node in ast.parse(stub.read_text()).body:
        if isinstance(node, ast.ClassDef):
            inner = [n.name for n in node.body if isinstance(n, ast.FunctionDef)]
            classes[node.name] = {name for name in inner if not name.startswith("_")}
            stubbed.add(node.name)
        elif isinstance(node, ast.FunctionDef):
            stubbed.add(node.name)
    assert stubbed == members(_native) and not stubbed & aliases
    for name, inner in classes.items():
        thing = getattr(_native, name)
        assert inner == members(thing), name
        assert thing.__doc__, name
        for member in inner:
            assert getattr(thing, member).__doc__, f"{name}.{member}"
    assert set(jqstitching.__all__) == stubbed | {"__version__"}


def test_signatures_are_the_promised_ones():
    signature = _native.Stitcher.__init__.__doc__.splitlines()[0]
    for part in ["overlap_mode: str = 'quality'", "detect_level: int = 1", "corner_budget: int = 8",
                 "undo_depth: int = 0", "memory_limit: int = 0"]:
        assert part in signature
    assert "progress: object = None, skip_bad: bool = False" in _native.stitch_files.__doc__
    assert "trim: bool = True" in _native.Stitcher.save.__doc__
