#!/bin/bash
# Checks that the libraries' binary interface has everything that the versions in
# packaging/abi had, unchanged: exported names, and the layout of the public classes.
# Additions are allowed. Installs what is missing.
#
# usage: scripts/check_abi.sh [--build DIR]
#        scripts/check_abi.sh --record VERSION COMMIT
#
#   --build   a build folder whose libraries are looked at; without it they are built
#   --record  writes packaging/abi/VERSION.txt from the sources of COMMIT
set -euo pipefail
cd "$(dirname "$0")/.."

build=
record=
case "${1:-}" in
  '') ;;
  --build) build=${2:?a folder} ;;
  --record) record=${2:?a version}; commit=${3:?a commit} ;;
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
  *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
esac
scripts/install_dependencies.sh --abi
export LC_ALL=C  # for sort and comm

# build_libraries SOURCE BUILD: names need no speed, and one vector level stands for all.
build_libraries() {
  local options=(-DCMAKE_BUILD_TYPE=Interface -DCMAKE_CXX_FLAGS_INTERFACE=-O0
    -DCMAKE_CXX_FLAGS=-DHWY_COMPILE_ONLY_STATIC -DCMAKE_UNITY_BUILD=ON
    -DJQ_BUILD_APPS=OFF -DJQ_BUILD_TESTS=OFF -DJQ_BUILD_BENCH=OFF)
  if command -v ccache >/dev/null; then
    options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  fi
  cmake -S "$1" -B "$2" -G Ninja "${options[@]}" >"$2.log" &&
    cmake --build "$2" --target JQImageStitching >>"$2.log" || { cat "$2.log"; return 1; }
}

# exported_names BUILD: less instantiations of the standard library's templates and the
# methods of a private class, which no host can name.
exported_names() {
  nm -D --defined-only --format=just-symbols "$1/src/libJQImageStitching.so" \
    "$1/platform/jqimageconvert/libJQImageConvert.so" |
    grep -E '^_Z(NK?(16JQImageStitching|20JQStitchingAlgorithm|11jqstitching15WorkspaceHandle)|T[ISV]16JQ|[0-9]+(Convert|IsImage))' |
    grep -v 16JQImageStitching8RunState | sed 's/^/symbol /'
}

# layout SOURCE: of the public types. Debug information of a class with virtual functions
# would otherwise lie where these are compiled.
layout() {
  local scratch flags
  scratch=$(mktemp -d build-abi/layout.XXXXXX)
  read -ra flags < <(pkg-config --cflags opencv4 Qt5Core)
  "${CXX:-g++}" -std=c++17 -O0 -g -femit-class-debug-always -fPIC -shared -I"$1/include" \
    -I"$1/platform/jqglobalclass" -I"$1/platform/jqimageconvert" "${flags[@]}" \
    packaging/abi/public_types.cpp -o "$scratch/types.so"
  abidw --no-corpus-path --no-comp-dir-path --no-show-locs --out-file "$scratch/types.xml" \
    "$scratch/types.so"
  packaging/abi/describe.py "$scratch/types.xml"
  rm -rf "$scratch"
}

mkdir -p build-abi
if [ -n "$record" ]; then
  source=build-abi/$record
  rm -rf "$source"
  mkdir -p "$source"
  git archive "$commit" | tar -x -C "$source"
  build_libraries "$source" "$source/build"
  { exported_names "$source/build"; layout "$source"; } | sort >"packaging/abi/$record.txt"
  exit 0
fi

if [ -z "$build" ]; then
  build=build-abi/now
  build_libraries . "$build"
fi
{ exported_names "$build"; layout .; } | sort >build-abi/now.txt
broken=0
for recorded in packaging/abi/*.txt; do
  version=$(basename "$recorded" .txt)
  # The facts that are recorded and no longer true; new ones do not matter.
  lost=$(comm -23 "$recorded" build-abi/now.txt)
  if [ -n "$lost" ]; then
    echo "$version had, and the libraries no longer have:"
    c++filt <<<"$lost"
    broken=1
  else
    echo "all $(wc -l <"$recorded") facts of $version still hold"
  fi
done
exit "$broken"
