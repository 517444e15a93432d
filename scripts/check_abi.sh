#!/bin/bash
# Checks that the library's binary interface has everything that the versions in
# packaging/abi have, unchanged: exported names, signatures, sizes and members of the
# public classes. Additions are allowed. Installs what is missing.
#
# usage: scripts/check_abi.sh
#        scripts/check_abi.sh --record VERSION COMMIT
#
#   --record  writes packaging/abi/VERSION.abi from the sources of COMMIT
set -euo pipefail
cd "$(dirname "$0")/.."

record=
case "${1:-}" in
  '') ;;
  --record) record=${2:?a version}; commit=${3:?a commit} ;;
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
  *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
esac
scripts/install_dependencies.sh --abi

# build_library SOURCE BUILD: the interface needs debug information and no speed, and one
# vector level stands for all.
build_library() {
  local options=(-DCMAKE_BUILD_TYPE=Interface -DCMAKE_CXX_FLAGS_INTERFACE="-O0 -g"
    -DCMAKE_CXX_FLAGS=-DHWY_COMPILE_ONLY_STATIC -DCMAKE_UNITY_BUILD=ON
    -DJQ_BUILD_APPS=OFF -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF)
  if command -v ccache >/dev/null; then
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
  cmake -S "$1" -B "$2" -G Ninja "${options[@]}" >"$2.log" &&
    cmake --build "$2" --target JQImageStitching >>"$2.log" || { cat "$2.log"; return 1; }
}

# Only what our own public headers define counts: the classes of the image library and of
# Qt are known by name.
only_ours=(--drop-private-types --suppressions "$PWD/packaging/abi/suppressions.ini")
library=src/libJQImageStitching.so

if [ -n "$record" ]; then
  build=$PWD/build-abi/$record
  rm -rf "$build"
  mkdir -p "$build/source"
  git archive "$commit" | tar -x -C "$build/source"
  build_library "$build/source" "$build/build"
  abidw "${only_ours[@]}" --headers-dir "$build/source/include" --no-corpus-path \
    --no-comp-dir-path --no-show-locs --out-file "packaging/abi/$record.abi" \
    "$build/build/$library"
  exit 0
fi

mkdir -p build-abi
build_library . build-abi/now
changed=0
for version in packaging/abi/*.abi; do
  echo "== against $(basename "$version" .abi)"
  abidiff "${only_ours[@]}" --headers-dir2 include --no-added-syms "$version" \
    "build-abi/now/$library" || changed=1
done
exit "$changed"
