#!/bin/bash
# Runs clang-tidy, with the checks of .clang-tidy, over the library, the platform
# stand-ins, the host library and the programs; fails on any finding.
#
# usage: scripts/check_tidy.sh [PATTERN]
#
#   PATTERN  only compiled files whose path matches this regular expression
set -euo pipefail
cd "$(dirname "$0")/.."
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
esac
scripts/install_dependencies.sh --clang --tidy --libvips

# Reading the headers of the libraries costs far more than reading the sources, so
# several sources are read as one file; and one vector level, that of the most usual
# processors, stands for all. clang-tidy is told how clang would compile them.
build=$PWD/build-tidy
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=12 \
  -DCMAKE_CXX_FLAGS="-march=haswell -DHWY_COMPILE_ONLY_STATIC" \
  -DJQ_BUILD_APPS=ON -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF >/dev/null
# The stitcher's source includes its meta-object file, which the build makes.
ninja -C "$build" jqstitching_stitcher_autogen >/dev/null

mapfile -t files < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" |
  grep -v mocs_compilation | grep -E "${1:-.}")
[ ${#files[@]} -gt 0 ] || { echo "no source files found" >&2; exit 1; }

# The sources are included files then: their findings pass the filter for headers, and
# including them is no finding. Headers of src/ are found through links in layers/.
printf '%s\0' "${files[@]}" |
  xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 -p "$build" --quiet --warnings-as-errors='*' \
    --checks=-bugprone-suspicious-include \
    --header-filter="^($PWD/(include|src|platform|host|apps)/.*\.(h|cpp)|$build/layers/.*\.h)\$" \
    2> >(grep -vE '^[0-9]+ warnings? (generated|treated)|^Suppressed|^Use -header' >&2)
echo "${#files[@]} compiled files are tidy"
