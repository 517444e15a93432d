#!/bin/bash
# Builds the tests of tests/threads with ThreadSanitizer and runs each of them in a
# process of its own.
#
# usage: scripts/test_threads.sh
set -euo pipefail
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
esac
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh

build=build-threads
options=(-DJQ_SANITIZE=thread -DCMAKE_BUILD_TYPE=Sanitize -DCMAKE_CXX_FLAGS_SANITIZE=-O1
  -DJQ_BUILD_APPS=OFF -DJQ_BUILD_BENCH=OFF -DJQ_BUILD_TESTS=ON)
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${options[@]}"
cmake --build "$build" --target threads_test

# Nothing is suppressed: the frames are small enough for the image library to stay on
# the thread that called it.
export TSAN_OPTIONS=${TSAN_OPTIONS:-halt_on_error=1}
tests=$("$build/tests/threads/threads_test" --gtest_list_tests | sed -n 's/^  *\([^ ]*\).*/\1/p')
[ -n "$tests" ] || { echo "no tests found" >&2; exit 1; }
for name in $tests; do
  "$build/tests/threads/threads_test" --gtest_filter="*.$name" --gtest_brief=1
done
