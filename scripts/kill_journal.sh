#!/bin/bash
# Kills a recorded run at random moments, takes it up again each time and compares the mosaics
# bit for bit. Prints a line for each kill.
#
# usage: scripts/kill_journal.sh [KILLS [SEED]]
#
# Needs a build with tests in build/, or in $JQ_BUILD.
set -euo pipefail
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
esac
cd "$(dirname "$0")/.."

export JQ_TEST_ROUNDS=${1:-100}
[ $# -lt 2 ] || export JQ_TEST_SEED=$2
exec "${JQ_BUILD:-build}/tests/jqstitch/jqstitch_journal_kill_test"
