import os
import subprocess

import pytest


@pytest.fixture(scope="session")
def command_line():
    """Runs the command line that was built beside the module."""
    program = os.environ["JQSTITCH"]

    def run(*arguments, expect=0):
        done = subprocess.run([program, *map(str, arguments)], capture_output=True, text=True)
        assert done.returncode == expect, done.stdout + done.stderr

    return run
