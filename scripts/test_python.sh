#!/bin/bash
# Builds the Python module and the command line that it is compared with, and runs the
# module's tests with Debian's Python.
#
# usage: scripts/test_python.sh [--build DIR] [-- PYTEST-OPTIONS]
#
#   --build  build folder, build-python when not given; one that scripts/test.sh has built is
#            gone on with
set -euo pipefail
cd "$(dirname "$0")/.."

build=build-python
while [ $# -gt 0 ]; do
  case "$1" in
    --build) build=$2; shift 2 ;;
    --) shift; break ;;
    -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
  esac
done
scripts/install_dependencies.sh --python

# A folder that is there already keeps its own settings.
options=(-DJQ_BUILD_PYTHON=ON -DPython3_EXECUTABLE=/usr/bin/python3)
if [ ! -e "$build/CMakeCache.txt" ]; then
  options+=(-DCMAKE_BUILD_TYPE=Release -DJQ_WARNINGS_AS_ERRORS=ON -DJQ_BUILD_SCOPE=OFF
    -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF)
  if command -v ccache >/dev/null; then
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
fi
cmake -S . -B "$build" -G Ninja "${options[@]}"
cmake --build "$build" --target jqpython jqstitch

build=$(realpath "$build")
mkdir -p "$build/test-results"
PYTHONPATH="$build/bindings/python" JQSTITCH="$build/apps/jqstitch/jqstitch" \
  /usr/bin/python3 -B -m pytest -q -p no:cacheprovider \
  -W error::pytest.PytestUnhandledThreadExceptionWarning -W ignore::DeprecationWarning:tornado.ioloop \
  --junitxml="$build/test-results/python.xml" bindings/python/tests "$@"
