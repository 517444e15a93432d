"""Passes whose truth is known."""
import csv, os, subprocess
from dataclasses import dataclass

TOOL = os.environ.get('JQBENCH_ASSEMBLY', 'jqbench_assembly')


class TooSmall(Exception):
    """A picture has no room for frames of this size."""


@dataclass
class Taken:
    """One frame of a pass, as it was taken."""
    path: str
    kind: str  # good, defocused, black or foreign
    x: int
    y: int
    number: int  # in the order in which they were taken

    @property
    def has_place(self):
        return self.kind in ('good', 'defocused')


def size_of(options):
    width, height = options[options.index('--size') + 1].split('x')
    return int(width), int(height)


def make(folder, source, options):
    """The frames of a pass over a painted scene or a picture, in the order of the files."""
    painted = not os.path.exists(source)
    name = source.rstrip('*')
    other = 'fibres' if name == 'slide' else 'slide'
    words = [TOOL, 'pass', '-o', folder, '--scene' if painted else '--picture', name,
             '--other', other, *options]
    made = subprocess.run(list(map(str, words)), capture_output=True, text=True)
    if made.returncode != 0:
        raise TooSmall(made.stderr.strip())
    width, height = size_of(options)
    with open(os.path.join(folder, 'frames.csv')) as table:
        taken = [Taken(os.path.join(folder, line['file']), line['kind'], int(line['x']),
                       int(line['y']), int(line['taken'])) for line in csv.DictReader(table)]
    for frame in taken:
        frame.width, frame.height = width, height
    return taken
