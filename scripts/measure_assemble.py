#!/usr/bin/env python3
"""How well are frames in any order put together? Passes whose truth is known, shuffled, over
painted scenes and over the pictures named on the command line, placed by jqstitch assemble, by
jqstitch batch (the files as they come, and once more in the order in which they were taken), by
the image library's scan stitcher, and by SIFT pairs under the graph of jqstitch assemble. Prints
Markdown tables: right, wrong and missing frames, time and memory.

  scripts/measure_assemble.py [--table passes|serpentine|large] [--scenes NAME,NAME]
      [--cameras clean,dirty,poor] [--ways assemble,batch,...] [--frames 24] [--size 640x480]
      [--seed 1] [--keep FOLDER] [PICTURE_OR_FOLDER...]

jqstitch is taken from $JQSTITCH or the PATH, jqbench_assembly from $JQBENCH_ASSEMBLY or the PATH.
"""
import argparse, contextlib, os, shutil, sys, tempfile
sys.dont_write_bytecode = True
from assembly import passes, ways
from assembly.score import Score

# The scenes of the bench of the doubt, and the built-in slide; a star where a part of a scene
# looks like another part.
SCENES = ['slide', 'board', 'strokes', 'cells', 'dim points', 'ground', 'grains', 'raster board',
          'page', 'fibres', 'dim blobs', 'metal', 'bubbles', 'squared paper', 'grating*',
          'chequer*', 'weave*', 'gates*', 'memory board*', 'fringes*', 'honeycomb*', 'twill*',
          'bricks*']
COUNTS = (20, 30, 42, 60)  # frames of a pass, by turns
SUFFIXES = ('.png', '.jpg', '.jpeg', '.tif', '.tiff', '.bmp')

# What the camera does to the frames, and how many pixels a frame may then be off.
CAMERAS = {
    'clean': ((), 3),
    'dirty': (('--bad', 0.05, '--noise', 3, '--vignetting', 15, '--exposure', 5), 3),
    'poor': (('--noise', 8, '--vignetting', 15, '--exposure', 5, '--blur', 1.5), 5),
}


def pictures_of(paths):
    for path in paths:
        if os.path.isdir(path):
            yield from sorted(os.path.join(path, name) for name in os.listdir(path)
                              if name.lower().endswith(SUFFIXES))
        else:
            yield path


@contextlib.contextmanager
def folder(keep, name):
    """A folder of its own for one pass; stays when the user names a place for it."""
    if keep:
        path = os.path.join(keep, name.replace(' ', '_').replace('*', ''))
        os.makedirs(path, exist_ok=True)
        yield path
    else:
        with tempfile.TemporaryDirectory() as path:
            yield path


def measure(work, source, options, tolerance, names, totals):
    """Makes one pass, places it in every way, and returns the cells of its row."""
    taken = passes.make(work, source, options)
    cells = [len(taken)]
    for name in names:
        places, cost = ways.WAYS[name](work, taken)
        score = Score(taken, places, tolerance)
        totals[name].append((score, cost))
        cells.append(score.text())
    return cells


def row(cells):
    print('| ' + ' | '.join(map(str, cells)) + ' |', flush=True)


def head(cells):
    row(cells)
    print('|' + '---|' * len(cells), flush=True)


def print_totals(title, totals):
    print(f'\n{title}\n')
    head(['way', 'right', 'wrong', 'missing', 'placed of those that overlap by a fifth',
          'largest error of a right one', 'seconds', 'processor seconds', 'most memory'])
    for name, runs in totals.items():
        if not runs:
            continue
        scores = [score for score, _ in runs]
        costs = [cost for _, cost in runs]
        held, of = sum(s.held for s in scores), sum(s.overlapping for s in scores)
        row([name, sum(s.right for s in scores), sum(s.wrong for s in scores),
             sum(s.missing for s in scores), f'{100 * held / max(1, of):.1f} %',
             f'{max(s.largest for s in scores):.1f} px',
             f'{sum(cost.seconds for cost in costs):.1f}',
             f'{sum(cost.processor for cost in costs):.1f}',
             f'{max(cost.megabytes for cost in costs):.0f} MB'])


def table_of_passes(o):
    sources = [name for name in SCENES
               if not o.scenes or name.rstrip('*') in o.scenes.split(',')]
    sources = [] if o.scenes == 'none' else sources
    sources += list(pictures_of(o.pictures))
    totals = {name: [] for name in o.ways}
    head(['scene', 'camera', 'frames', *o.ways])
    for number, source in enumerate(sources):
        for camera in o.cameras.split(','):
            effects, tolerance = CAMERAS[camera]
            count = o.frames or COUNTS[number % len(COUNTS)]
            options = ['-n', count, '--size', o.size, '--seed', o.seed + number, *effects]
            label = os.path.basename(source)
            with folder(o.keep, f'{label} {camera}') as work:
                try:
                    cells = measure(work, source, options, tolerance, o.ways, totals)
                except passes.TooSmall as error:
                    cells = [error]
            row([label, camera, *cells])
    print_totals('All passes:', totals)
    return totals


def table_of_serpentine(o):
    """200 frames, line by line, there and back, which touch frames of the line before."""
    options = ['-n', o.frames or 200, '--columns', 20, '--size', o.size, '--seed', o.seed,
               '--overlap', 0.25, '--jitter', 0.03, '--noise', 3, '--in-order']
    totals = {name: [] for name in o.ways}
    with folder(o.keep, 'serpentine') as work:
        measure(work, 'slide', options, 2, o.ways, totals)
    print_totals('A serpentine:', totals)
    return totals


def table_of_large(o):
    """Many large frames in the order they were taken: batch beside assemble."""
    options = ['-n', o.frames or 100, '--columns', 10, '--size', o.size, '--seed', o.seed,
               '--overlap', 0.25, '--jitter', 0.02, '--noise', 3, '--in-order']
    names = ['batch', 'assemble 1', 'assemble 2']
    totals = {name: [] for name in names}
    with folder(o.keep, 'large') as work:
        measure(work, 'slide', options, 3, names, totals)
    print_totals(f'Frames of {o.size}, by the number of threads:', totals)
    return totals


TABLES = {'passes': (table_of_passes, '640x480'), 'serpentine': (table_of_serpentine, '640x480'),
          'large': (table_of_large, '2592x1944')}


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--table', choices=TABLES, default='passes')
    parser.add_argument('--scenes', default='', help='painted scenes; "none": only the pictures')
    parser.add_argument('--cameras', default=','.join(CAMERAS))
    parser.add_argument('--ways', default='assemble,batch,batch as taken,scans,sift')
    parser.add_argument('--frames', type=int, default=0)
    parser.add_argument('--size', default='')
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--keep', default='', help='folder in which the passes stay')
    parser.add_argument('pictures', nargs='*')
    o = parser.parse_args()
    for program in (ways.JQSTITCH, passes.TOOL):
        if shutil.which(program) is None:
            sys.exit(f'{program} is not there: build it and name it in $JQSTITCH, $JQBENCH_ASSEMBLY')
    table, size = TABLES[o.table]
    o.size = o.size or size
    o.ways = o.ways.split(',')
    for name in o.ways:
        if name not in ways.WAYS:
            parser.error(f'--ways: {name} is none of {", ".join(ways.WAYS)}')
    scores = [score for name, runs in table(o).items() if name.startswith('assemble')
              for score, _ in runs]
    if any(score.wrong > 0 or score.right == 0 for score in scores):
        sys.exit(1)


if __name__ == '__main__':
    main()
