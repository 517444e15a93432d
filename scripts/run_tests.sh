#!/bin/bash
# Runs the tests of a build folder and tells how many test cases passed: an entry of
# ctest is half a program, or something else than a test program (a consumer's build).
#
# usage: scripts/run_tests.sh BUILD [CTEST-OPTIONS]
set -euo pipefail
[ $# -gt 0 ] || { echo "usage: scripts/run_tests.sh BUILD [CTEST-OPTIONS]" >&2; exit 2; }
build=$1
shift
rm -rf "$build/test-results"
failed=0
ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)" "$@" || failed=$?
find "$build/test-results" -name '*.xml' -exec grep -h '^<testsuites ' {} + 2>/dev/null |
  awk '{
      for (i = 1; i <= NF; ++i) if (split($i, part, "\"") > 2) sum[part[1]] += part[2]
    } END {
      printf "%d test cases, %d failed\n", sum["tests="], sum["failures="] + sum["errors="]
    }'
exit "$failed"
