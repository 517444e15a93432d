#!/bin/bash
# Shows what the command line does: installs what is missing, builds, lets a
# simulated camera pass over the built-in slide, stitches its frames live and as a
# batch, and tells how far every frame is from its true place.
#
# usage: scripts/demo.sh [FRAMES...]
#
# Given pictures, a folder or a video, it stitches those instead.
set -euo pipefail
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
esac

here=$(pwd)
cd "$(dirname "$0")/.."
root=$(pwd)
build=$root/build-demo
out=$build/demo

echo "== Building (in $build)"
scripts/install_dependencies.sh
# Several sources are compiled as one: reading the headers takes longer than the sources.
options=(-DCMAKE_BUILD_TYPE=Release -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF
  -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=10)
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${options[@]}" >/dev/null
cmake --build "$build" --target jqstitch
jqstitch=$build/apps/jqstitch/jqstitch
mkdir -p "$out"
cd "$here"

# Frames left out (3) or none placed (4) are results, not failures of the demo.
worst=0
stitch() {
  local code=0
  "$jqstitch" "$@" || code=$?
  [ "$code" -le "$worst" ] || worst=$code
  case "$code" in
    0|3|4) ;;
    *) exit "$code" ;;
  esac
}

truth=()
if [ $# -eq 0 ]; then
  echo
  echo "== A camera passes over the built-in slide: 24 frames, 19 % steps, noise"
  "$jqstitch" simulate -o "$out/frames" --force --size 1280x960 --count 24 --step 19 --noise 3
  truth=(--truth "$out/frames/truth.csv")
  set -- "$out/frames"
fi

echo
echo "== Live, frame by frame"
stitch live "$@" -o "$out/live.png" --report "$out/live.html" "${truth[@]}"

pictures=("$out/live.png" "$out/live.html")
if [ $# -eq 1 ] && [ -f "$1" ]; then
  echo
  echo "== No batch: it needs more than one file"
else
  echo
  echo "== Batch, all files in one go"
  stitch batch "$@" -o "$out/batch.png" --report "$out/batch.html" "${truth[@]}"
  pictures+=("$out/batch.png" "$out/batch.html")
fi

echo
echo "== Look at"
printf '  %s\n' "${pictures[@]}"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo
  echo "== The live window, on a simulated microscope: F5 starts, arrow keys move the stage"
  cmake --build "$build" --target jqscope
  "$build/apps/jqscope/jqscope" --source microscope --fresh
fi
exit "$worst"
