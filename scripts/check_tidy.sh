#!/bin/bash
# Runs clang-tidy, with the checks of .clang-tidy, over the library, the platform
# stand-ins and the programs; fails on any finding.
#
# usage: scripts/check_tidy.sh [PATTERN]
#
#   PATTERN  only sources whose path matches this regular expression
set -euo pipefail
cd "$(dirname "$0")/.."
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
esac
scripts/install_dependencies.sh --clang --tidy

# clang-tidy reads the sources with clang, so it is told how clang would compile them.
build=$PWD/build-tidy
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_BUILD_TYPE=Release \
  -DJQ_BUILD_APPS=ON -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF >/dev/null
# The sources with a Qt class include their meta-object file, which the build makes.
mapfile -t generated < <(ninja -C "$build" -t targets all | sed -n 's/^\([^ ]*_autogen\): .*/\1/p')
[ ${#generated[@]} -eq 0 ] || ninja -C "$build" "${generated[@]}" >/dev/null

mapfile -t sources < <(git ls-files 'src/*.cpp' 'platform/*.cpp' 'apps/*.cpp' 'host/*.cpp' |
  grep -E "${1:-.}")
[ ${#sources[@]} -gt 0 ] || { echo "no source files found" >&2; exit 1; }
printf '%s\0' "${sources[@]}" |
  xargs -0 -n 4 -P "$(nproc)" clang-tidy-14 -p "$build" --quiet --warnings-as-errors='*' \
    2> >(grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed|^Use -header' >&2)
echo "${#sources[@]} files are tidy"
