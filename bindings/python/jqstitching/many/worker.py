"""The program of a worker process: a request a line on standard input, and an outcome a line
on standard output, until the input ends."""

import json
import os
import sys

from .. import set_threads
from .runs import Options, Run
from .work import do_run


def answer(request):
    given = dict(request["options"])
    if given["background"] is not None:
        given["background"] = tuple(given["background"])
    run = Run(request["folder"], Options(**given))
    try:
        return do_run(run, request["out"], request["session"])
    except Exception as error:  # whatever it is, it is this run's alone
        return {"state": "failed", "why": f"{error}" or type(error).__name__}


def main():
    set_threads(1)
    # Nothing that a library prints may come between the answers.
    answers = os.fdopen(os.dup(1), "w", encoding="ascii")
    os.dup2(2, 1)
    try:
        for line in sys.stdin:
            print(json.dumps(answer(json.loads(line))), file=answers, flush=True)
    except BrokenPipeError:
        # Who asked is gone. Its successor finds what was finished.
        os._exit(0)


if __name__ == "__main__":
    main()
