"""`python3 -m jqstitching.many`, the command line of many runs."""

import argparse
import sys

from .. import InputError, __version__
from . import runs as parsers
from .runs import Options, find_runs
from .stitch import stitch_many
from .summary import counts, line

EXIT_CODES = """exit codes: 0 every frame of every run was placed, 1 wrong input, 2 wrong usage,
3 a run failed, or frames were left out or placed doubtfully, 130 Ctrl-C"""


def option(parse):
    def checked(text):
        try:
            return parse(text)
        except ValueError as error:
            raise argparse.ArgumentTypeError(error) from None

    return checked


def positive(kind):
    def parse(text):
        value = kind(text)
        if not value > 0:
            raise ValueError(f"'{text}' is not above 0")
        return value

    return option(parse)


def parse_arguments(arguments):
    parser = argparse.ArgumentParser(
        prog="python3 -m jqstitching.many", description="Stitches many runs.", epilog=EXIT_CODES
    )
    parser.add_argument(
        "runs", nargs="+", metavar="RUN",
        help="a folder of pictures, or a CSV with a column 'folder' and columns for options: "
        + ", ".join(parsers.PARSERS),
    )
    parser.add_argument("-o", "--output", required=True, metavar="OUT",
                        help="folder of the results; finished ones are kept")
    parser.add_argument("--workers", type=positive(int), metavar="N",
                        help="processes on this machine (one a processor, as memory allows)")
    parser.add_argument("--scheduler", metavar="ADDRESS",
                        help="of a Dask cluster that does the runs, such as tcp://host:8786")
    parser.add_argument("--timeout", type=positive(float), metavar="SECONDS",
                        help="a run that takes longer is ended and reported")
    parser.add_argument("--skip-bad", action="store_true",
                        help="leave out unreadable files and those of another size than most")
    parser.add_argument("--format", type=option(parsers.parse_format), default="png",
                        help="of the pictures: " + ", ".join(parsers.FORMATS) + " (png)")
    parser.add_argument("--pixel-size", type=option(parsers.parse_pixel_size), metavar="UM",
                        help="side of a pixel in micrometres")
    parser.add_argument("--background", type=option(parsers.parse_background), metavar="R,G,B",
                        help="colour of what no frame covers (black)")
    parser.add_argument("--quiet", action="store_true", help="tell nothing but errors")
    parser.add_argument("--version", action="version", version=__version__)
    return parser.parse_args(arguments)


def stitch(arguments, client):
    options = Options(arguments.skip_bad, arguments.format, arguments.pixel_size,
                      arguments.background)

    def tell(done, total, run, outcome):
        if not arguments.quiet:
            print(f"{done:{len(str(total))}}/{total} {run.name}: {line(outcome)}", flush=True)

    outcomes = stitch_many(
        find_runs(arguments.runs, options), arguments.output, client=client,
        workers=arguments.workers, timeout=arguments.timeout, progress=tell,
    )
    if not arguments.quiet:
        print(f"{len(outcomes)} runs: {counts(outcomes)}")
    return 0 if all(o.get("outcome") == "all placed" for o in outcomes) else 3


def main(arguments=None):
    arguments = parse_arguments(arguments)
    try:
        if arguments.scheduler is None:
            return stitch(arguments, None)
        from distributed import Client

        with Client(arguments.scheduler, set_as_default=False) as client:
            return stitch(arguments, client)
    except KeyboardInterrupt:
        print("stopped by Ctrl-C; what is finished is kept", file=sys.stderr)
        return 130
    except (InputError, OSError) as error:
        print(f"error: {error}", file=sys.stderr)
        return 1


if __name__ == "__main__":
    # A name that the terminal cannot show must not end the runs.
    sys.stdout.reconfigure(errors="backslashreplace")
    sys.exit(main())
