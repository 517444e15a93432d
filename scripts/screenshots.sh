#!/bin/bash
# Makes the pictures of the live window for the documentation, on a display in memory: at
# the size of a small laptop and of a 4K screen, light and dark.
#
# usage: scripts/screenshots.sh [FOLDER]
#
#   FOLDER  where they go, build-screenshots/pictures when not given
set -euo pipefail
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
esac
root=$(cd "$(dirname "$0")/.." && pwd)
build=${JQ_SCREENSHOT_BUILD_DIR:-$root/build-screenshots}
pictures=${1:-$build/pictures}

"$root/scripts/install_dependencies.sh" --display
options=(-DCMAKE_BUILD_TYPE=Release -DJQ_BUILD_TESTS=ON -DJQ_TEST_ROOMS=scope -DJQ_BUILD_BENCH=OFF)
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S "$root" -B "$build" -G Ninja "${options[@]}" >/dev/null
cmake --build "$build" --target scope_screenshots

for theme in light dark; do
  xvfb-run -a -s "-screen 0 1366x768x24" \
    "$build/tests/scope/scope_screenshots" "$pictures" 1366x768 "$theme"
  # Half as many points, twice as many pixels each, as such screens are set up.
  QT_SCALE_FACTOR=2 xvfb-run -a -s "-screen 0 3840x2160x24" \
    "$build/tests/scope/scope_screenshots" "$pictures" 1920x1080 "$theme"
done
