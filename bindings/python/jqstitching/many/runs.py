"""What is to be stitched: runs, their options, and the lists that name them."""

import csv
import dataclasses
import os
from typing import Iterable, List, Optional, Tuple, Union

from .. import InputError

FORMATS = ("png", "tif", "ome.tif", "jpg", "bmp", "ppm")


@dataclasses.dataclass(frozen=True)
class Options:
    """How a run is stitched and saved; what they mean stands at `stitch_files` and `save`."""

    skip_bad: bool = False
    format: str = "png"
    pixel_size: Optional[float] = None
    background: Optional[Tuple[int, int, int]] = None


@dataclasses.dataclass(frozen=True)
class Run:
    """A folder of pictures, which gives one picture."""

    folder: str
    options: Options = Options()

    @property
    def name(self):
        return os.path.basename(self.folder)


def parse_flag(text):
    words = {"1": True, "yes": True, "true": True, "0": False, "no": False, "false": False}
    if text.lower() not in words:
        raise ValueError(f"'{text}' is neither yes nor no")
    return words[text.lower()]


def parse_format(text):
    if text not in FORMATS:
        raise ValueError(f"'{text}' is none of {', '.join(FORMATS)}")
    return text


def parse_pixel_size(text):
    size = float(text)
    if not 1e-5 <= size <= 1e5:
        raise ValueError(f"'{text}' is not from 0.00001 to 100000 micrometres")
    return size


def parse_background(text):
    colour = tuple(int(part) for part in text.replace(" ", ",").split(","))
    if len(colour) != 3 or not all(0 <= value <= 255 for value in colour):
        raise ValueError(f"'{text}' is not R,G,B of 0 to 255 each")
    return colour


PARSERS = {
    "skip_bad": parse_flag,
    "format": parse_format,
    "pixel_size": parse_pixel_size,
    "background": parse_background,
}


def read_list(path, options):
    """The runs of a CSV: a column `folder`, seen from the CSV's own folder, and columns named
    as options. An empty cell leaves the option as it is."""
    base = os.path.dirname(os.path.abspath(path))
    with open(path, newline="", encoding="utf-8-sig", errors="surrogateescape") as file:
        rows = csv.DictReader(file)
        columns = rows.fieldnames or []
        unknown = [name for name in columns if name != "folder" and name not in PARSERS]
        if "folder" not in columns or unknown:
            raise InputError(
                f"'{path}': the first line names the columns: folder, and any of "
                f"{', '.join(PARSERS)}; not {', '.join(columns) or 'nothing'}"
            )
        for row in rows:
            if None in row or None in row.values():
                raise InputError(f"'{path}', line {rows.line_num}: {len(columns)} cells are needed")
            if not row["folder"]:
                raise InputError(f"'{path}', line {rows.line_num}: the folder is missing")
            given = {name: row[name].strip() for name in columns if name != "folder"}
            try:
                changes = {name: PARSERS[name](text) for name, text in given.items() if text}
            except ValueError as error:
                raise InputError(f"'{path}', line {rows.line_num}: {error}") from None
            folder = os.path.abspath(os.path.join(base, row["folder"]))
            yield Run(folder, dataclasses.replace(options, **changes))


def find_runs(
    paths: Iterable[Union[str, "os.PathLike[str]"]], options: Options = Options()
) -> List[Run]:
    """The runs that these folders and CSV files name, in their order."""
    runs = []
    for path in map(os.fspath, paths):
        if os.path.isdir(path):
            runs.append(Run(os.path.abspath(path), options))
        elif os.path.isfile(path):
            runs.extend(read_list(path, options))
        else:
            raise InputError(f"'{path}' is neither a folder nor a CSV file")
    if not runs:
        raise InputError("there is no run to stitch")
    return runs
