#!/bin/bash
# Builds the fuzzers with clang, AddressSanitizer and UndefinedBehaviorSanitizer, and
# runs each of them for a while, as many at a time as there are processors. Prints the executions of each; ends with an error when
# one has a finding, whose input it keeps.
#
# usage: scripts/fuzz.sh MINUTES [FUZZER...]
#        scripts/fuzz.sh --seconds N [FUZZER...]
#
# FUZZER is convert, image_size, stitcher or engine, all of them when none is given,
# and each runs for the whole time. With MINUTES, what they learn stays in
# build-fuzz/corpus and is where the next such run starts; with --seconds, which is for
# continuous integration, a run starts from the seeds alone. A finding is repeated with
#   build-fuzz/tests/fuzz/NAME_fuzzer build-fuzz/findings/NAME-...
set -euo pipefail
cd "$(dirname "$0")/.."

usage() { sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; }
case "${1:-}" in
  -h|--help) usage; exit 0 ;;
  --seconds) keep=; time=${2:-}; factor=1; shift ;;
  *) keep=1; time=${1:-}; factor=60 ;;
esac
[[ $time =~ ^[1-9][0-9]*$ ]] || { usage >&2; exit 2; }
shift
seconds=$((time * factor))
fuzzers=("$@")
[ ${#fuzzers[@]} -gt 0 ] || fuzzers=(convert image_size stitcher engine)

scripts/install_dependencies.sh --fuzz

build=$PWD/build-fuzz
options=(-DCMAKE_CXX_COMPILER=clang++-14 -DJQ_BUILD_FUZZERS=ON "-DJQ_SANITIZE=address;undefined"
  # Optimised a little, with lines for the report of a finding, and with assertions.
  -DCMAKE_BUILD_TYPE=Fuzz "-DCMAKE_CXX_FLAGS_FUZZ=-O1 -g1"
  -DJQ_BUILD_APPS=OFF -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF)
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${options[@]}"
cmake --build "$build" --target make_corpus "${fuzzers[@]/%/_fuzzer}"

"$build/tests/fuzz/make_corpus" "$build/seeds"
scratch=$(mktemp -d "$build/scratch.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$build/findings"

# Runs one of them. The image readers tell every damaged file on standard error, hence
# the log.
fuzz() {
  local name=$1 corpus=${keep:+$build/corpus/$1}
  corpus=${corpus:-$scratch/$name}
  mkdir -p "$corpus"
  TMPDIR=$scratch "$build/tests/fuzz/${name}_fuzzer" "$corpus" "$build/seeds/$name" \
    -max_total_time="$seconds" -max_len=1024 -len_control=0 -timeout=20 -rss_limit_mb=3072 \
    -use_value_profile=1 -print_final_stats=1 -artifact_prefix="$build/findings/$name-" \
    >"$build/$name.log" 2>&1 || touch "$scratch/$name.found"
}

echo "== ${fuzzers[*]}: $seconds seconds each, $(nproc) at a time"
running=0
for name in "${fuzzers[@]}"; do
  if [ "$running" -ge "$(nproc)" ]; then
    wait -n
    running=$((running - 1))
  fi
  fuzz "$name" &
  running=$((running + 1))
done
wait

found=0
for name in "${fuzzers[@]}"; do
  log=$build/$name.log
  verdict=sound
  if [ -e "$scratch/$name.found" ]; then
    found=1
    verdict="FINDING, see $log"
    grep -aE -A30 'ERROR|runtime error|does not hold' "$log" | head -60 || true
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  printf '%-11s %9s executions, %s\n' "$name" "${runs:-?}" "$verdict"
done
exit "$found"
