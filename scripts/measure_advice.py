#!/usr/bin/env python3
"""Does the program's advice help? For each fault, passes over the built-in slide and over the
pictures named on the command line, with the fault in them; then the same passes with what was
advised taken literally. Prints a table: per fault, verdict and advice, how many frames were
given it, how many of them each remedy placed or tracked (in a pass of other steps: those of the
same number), and how many frames of the whole remedied passes.

  scripts/measure_advice.py [--seeds 3] [--frames 16] [--fault WORD] [PICTURE...]

jqstitch is taken from $JQSTITCH or the PATH.
"""
import argparse, json, os, re, shutil, subprocess, sys, tempfile
from collections import Counter

JQSTITCH = os.environ.get('JQSTITCH', 'jqstitch')
# What every camera does; an effect of a fault takes the place of its own kind.
USUAL = {'--noise': 3, '--vignetting': 15, '--exposure-jitter': 5}
# A frame that has not moved far enough shows what frames beside it show.
HELD = ('placed', 'tracked')


def run(*words):
    return subprocess.run([JQSTITCH, *map(str, words)], capture_output=True, text=True)


class TooSmall(Exception):
    """A picture has no room for the pass."""


def simulate(folder, source, frames, step, effects):
    """The files of a pass; the way depends on the source and the step alone."""
    way = (('--path', 'random', '--seed', source) if isinstance(source, int) else
           ('--path', 'spiral', '--image', source))
    made = run('simulate', '-o', folder, '--force', '-q', '--size', '400x300', '-n', frames, *way,
               '--step', step,
               *(word for effect in {**USUAL, **effects}.items() for word in effect))
    if made.returncode != 0:
        if isinstance(source, int):
            sys.exit(made.stderr)
        raise TooSmall
    return sorted(os.path.join(folder, name) for name in os.listdir(folder)
                  if name.endswith(('.png', '.jpg')))


def stitch(work, files, command, *options):
    """name -> (state, verdict, advice)"""
    report = os.path.join(work, 'report.json')
    listing = os.path.join(work, 'list.txt')
    with open(listing, 'w') as out:
        out.write('\n'.join(files) + '\n')
    if os.path.exists(report):
        os.remove(report)
    run(command, '--list', listing, '-o', os.path.join(work, 'mosaic.png'), '--report', report,
        '-q', *options)
    with open(report) as told:
        frames = json.load(told)['list']
    return {os.path.basename(f['name']):
            (f['state'], f['verdict'], f.get('advice', '')) for f in frames}


def kind(advice):
    """Advice without the numbers of the frame it was given for."""
    return re.sub(r' \([^)]*\)', '', advice) or 'none'


class Pass:
    """One pass with one fault, kept in a folder of its own."""

    def __init__(self, work, source, frames):
        self.work, self.source, self.frames = work, source, frames

    def folder(self, name):
        return os.path.join(self.work, name)

    def files(self, step, effects={}, name='faulty'):
        return simulate(self.folder(name), self.source, self.frames, step, effects)

    def stretch(self, step, effects):
        """Clean frames, but a third in the middle has the effects."""
        clean = self.files(step, name='clean')
        bad = self.files(step, effects)
        low, high = len(clean) // 3, 2 * len(clean) // 3
        mixed = self.folder('mixed')
        os.makedirs(mixed, exist_ok=True)
        return [shutil.copy((bad if low <= i < high else clean)[i], mixed)
                for i in range(len(clean))]


def jitter(step, percent):
    return lambda p: p.files(step, {'--exposure-jitter': percent})


def defocus(step, pixels):
    return lambda p: p.stretch(step, {'--blur': pixels})


def noise(step, level):
    return lambda p: p.files(step, {'--noise': level})


def faultless(step):
    return lambda p, files, lost: p.files(step, name='faultless')


def same(p, files, lost):
    return files


def without(p, files, lost):
    return [f for f in files if os.path.basename(f) not in lost]


# Fault, command, options, frames of the faulty pass, {remedy: (command, options, frames)}; the
# frames are functions of the pass, those of a remedy also of the files and the lost ones.
FAULTS = []
for step in (8, 15, 30, 50, 80):
    FAULTS.append((f'live, steps of {step} %', 'live', (), lambda p, s=step: p.files(s),
                   {'batch': ('batch', (), same), 'steps of 3 %': ('live', (), faultless(3))}))
for step in (30, 50, 70, 80, 95):
    FAULTS.append((f'batch, steps of {step} %', 'batch', (), lambda p, s=step: p.files(s),
                   {'steps of 15 %': ('batch', (), faultless(15))}))
for step in (4, 8):
    FAULTS.append((f'batch, steps of {step} %', 'batch', (), lambda p, s=step: p.files(s),
                   {'left out': ('batch', (), without)}))
for percent in (30, 60):
    FAULTS.append((f'live, exposure up to {percent} %', 'live', (), jitter(3, percent),
                   {'steady': ('live', (), faultless(3)), 'batch': ('batch', (), same)}))
for pixels in (1.5, 3):
    FAULTS.append((f'live, defocus of {pixels} px', 'live', (), defocus(3, pixels),
                   {'steady': ('live', (), faultless(3)), 'batch': ('batch', (), same)}))
for pixels in (1.5, 3):
    FAULTS.append((f'batch, defocus of {pixels} px', 'batch', (), defocus(15, pixels),
                   {'in focus': ('batch', (), faultless(15)),
                    'steps of 10.5 %': ('batch', (), lambda p, f, l, d=pixels: p.files(
                        10.5, {'--blur': d}, name='closer'))}))
for level in (10, 25):
    FAULTS.append((f'live, noise of {level}', 'live', (), noise(3, level),
                   {'less noise': ('live', (), faultless(3)), 'batch': ('batch', (), same)}))
    FAULTS.append((f'batch, noise of {level}', 'batch', (), noise(20, level),
                   {'less noise': ('batch', (), faultless(20)),
                    'steps of 12 %': ('batch', (), lambda p, f, l, n=level: p.files(
                        12, {'--noise': n}, name='closer'))}))
for step in (3, 8, 20):
    FAULTS.append((f'live, motion test, steps of {step} %', 'live', ('--overlap-mode', '1'),
                   lambda p, s=step: p.files(s),
                   {'mode 0': ('live', (), same)}))


def measure(p, command, options, frames, remedies, counts):
    """Adds one pass to the counts: lost, advised, held of those advised, held of all."""
    files = frames(p)
    before = stitch(p.work, files, command, *options)
    kept = HELD if command == 'live' else ('placed',)
    lost = {name: (verdict, kind(advice))
            for name, (state, verdict, advice) in before.items() if state not in kept}
    after = {remedy: stitch(p.work, changed(p, files, lost), other, *more)
             for remedy, (other, more, changed) in remedies.items()}
    counts['all'] += len(before)
    counts['lost'] += len(lost)
    for name, given in lost.items():
        counts['given', given] += 1
        for remedy, results in after.items():
            counts['held', given, remedy] += results.get(name, ('',))[0] in HELD
    for remedy, results in after.items():
        counts['whole', remedy] += sum(
            state in HELD for state, _, _ in results.values())
        counts['wholeOf', remedy] += len(results)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--seeds', type=int, default=3)
    parser.add_argument('--frames', type=int, default=16)
    parser.add_argument('--fault', default='', help='only faults with this word')
    parser.add_argument('pictures', nargs='*')
    options = parser.parse_args()
    sources = [*range(1, options.seeds + 1), *options.pictures]
    print('| fault | lost | verdict: advice | given | held, and of the whole passes |')
    print('|---|---|---|---|---|')
    for fault, command, more, frames, remedies in FAULTS:
        if options.fault not in fault:
            continue
        counts = Counter()
        for source in sources:
            with tempfile.TemporaryDirectory() as work:
                try:
                    measure(Pass(work, source, options.frames), command, more, frames, remedies,
                            counts)
                except TooSmall:
                    pass
        row = f'| {fault} | {counts["lost"]} of {counts["all"]} |'
        given = sorted({key[1] for key in counts if key[0] == 'given'})
        for verdict, advice in given:
            count = counts['given', (verdict, advice)]
            held = '; '.join(
                f"{remedy}: {counts['held', (verdict, advice), remedy]} of {count} "
                f"({counts['whole', remedy]} of {counts['wholeOf', remedy]})"
                for remedy in remedies)
            print(f'{row} {verdict}: {advice} | {count} | {held} |', flush=True)
        if not given:
            print(f'{row} | | |', flush=True)


if __name__ == '__main__':
    main()
