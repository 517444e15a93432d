#!/bin/bash
# How large the steps from frame to frame may be: for each step, passes over the built-in
# slide (six seeds) and over the pictures named on the command line, clean and as a camera
# gives them. Prints a table for live runs and one for batch runs: passes followed to
# their end, frames placed or tracked, and placed frames more than 3 pixels off their
# neighbour.
#
#   scripts/measure_steps.sh [PICTURE...]
#
# jqstitch is taken from $JQSTITCH or the PATH, the size of a frame from $SIZE (400x300).
set -euo pipefail
jqstitch=${JQSTITCH:-jqstitch}
size=${SIZE:-400x300}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
dirty=(--noise 3 --vignetting 15 --exposure-jitter 5)

# measure COMMAND STEP FRAMES: one row.
measure() {
  local command=$1 step=$2 frames=$3 reports=() pass=0
  for source in 1 2 3 4 5 6 "${pictures[@]}"; do
    for effects in clean dirty; do
      local options=(--size "$size" --step "$step" -n "$frames" --force -q)
      if [[ $source =~ ^[0-9]$ ]]; then options+=(--seed "$source" --path random)
      else options+=(--image "$source" --path spiral); fi
      [ $effects = clean ] || options+=("${dirty[@]}")
      # A picture too small for the path is left out.
      "$jqstitch" simulate -o "$work/pass" "${options[@]}" 2> "$work/why" || continue
      pass=$((pass + 1))
      "$jqstitch" "$command" "$work/pass" -o "$work/mosaic.png" --truth "$work/pass/truth.csv" \
        --report "$work/$pass.json" -q 2> "$work/why" || true
      reports+=("$work/$pass.json")
    done
  done
  python3 - "$step" "${reports[@]}" << 'PYTHON'
import json, sys
step, runs = sys.argv[1], [json.load(open(path)) for path in sys.argv[2:]]
frames = [frame for run in runs for frame in run['list']]
whole = sum(run['outcome'] in ('all placed', 'all followed') for run in runs)
held = sum(frame['state'] in ('placed', 'tracked') for frame in frames)
off = sum(frame.get('neighbourError', 0) > 3 for frame in frames)
print(f'| {step} % | {whole} of {len(runs)} | {100 * held / len(frames):.0f} % | {off} |')
PYTHON
}

pictures=("$@")
for command in live batch; do
  echo
  echo "| $command, step | passes to the end | frames placed or tracked | off by more than 3 px |"
  echo "|---|---|---|---|"
  if [ $command = live ]; then steps=(1 3 5 8 12 20); else steps=(8 15 30 45 60 75 85); fi
  for step in "${steps[@]}"; do
    # About the same way for every step of a live run, but at least 20 frames.
    frames=20
    [ $command = batch ] || frames=$((100 / step > 20 ? 100 / step : 20))
    measure "$command" "$step" "$frames"
  done
done
