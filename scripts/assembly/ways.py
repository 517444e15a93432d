"""The ways to place frames. Each takes a folder to work in and the frames, and returns the
places by path and what they cost."""
import json, os, subprocess, time
from dataclasses import dataclass

from . import passes

JQSTITCH = os.environ.get('JQSTITCH', 'jqstitch')


@dataclass
class Cost:
    seconds: float  # that passed
    processor: float  # seconds of all threads
    megabytes: float  # resident at most


def run(words, output=subprocess.DEVNULL):
    """The cost of one program."""
    start = time.monotonic()
    child = subprocess.Popen(list(map(str, words)), stdout=output, stderr=subprocess.DEVNULL)
    _, _, usage = os.wait4(child.pid, 0)
    child.returncode = 0  # it was waited for
    return Cost(time.monotonic() - start, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024)


def jqstitch(command, work, taken, *options):
    report, listing = os.path.join(work, 'report.json'), os.path.join(work, 'list.txt')
    with open(listing, 'w') as out:
        out.write(''.join(frame.path + '\n' for frame in taken))
    if os.path.exists(report):
        os.remove(report)
    cost = run([JQSTITCH, command, '--list', listing, '-o', os.path.join(work, 'mosaic.png'),
                '--report', report, '-q', *options])
    places = {}
    if os.path.exists(report):
        with open(report) as told:
            for frame in json.load(told)['list']:
                if frame['placed']:
                    places[frame['name']] = (frame['position']['x'], frame['position']['y'])
    return places, cost


def other(way, work, taken):
    table = os.path.join(work, 'places.csv')
    with open(table, 'w') as out:
        cost = run([passes.TOOL, way, *(frame.path for frame in taken)], out)
    places = {}
    with open(table) as told:
        for line in told:
            path, x, y = line.rsplit(',', 2)
            places[path] = (float(x), float(y))
    return places, cost


def as_taken(taken):
    return sorted(taken, key=lambda frame: frame.number)


WAYS = {
    'assemble': lambda work, taken: jqstitch('assemble', work, taken),
    'assemble 1': lambda work, taken: jqstitch('assemble', work, taken, '--threads', 1),
    'assemble 2': lambda work, taken: jqstitch('assemble', work, taken, '--threads', 2),
    'batch': lambda work, taken: jqstitch('batch', work, taken),
    'batch as taken': lambda work, taken: jqstitch('batch', work, as_taken(taken)),
    'scans': lambda work, taken: other('scans', work, taken),
    'sift': lambda work, taken: other('sift', work, taken),
}
