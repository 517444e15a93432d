#!/bin/bash
# Runs in a system root that has the packages for authors of hosts: builds a host by the
# CMake package and one by pkg-config, and runs both.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
cd "$work"

fail() { echo "$*" >&2; exit 1; }

# The example that the package brings.
cp -r /usr/share/doc/libjqimagestitching-dev/examples/host example
cmake -S example -B build -DCMAKE_BUILD_TYPE=Release >cmake.log || { cat cmake.log; exit 1; }
cmake --build build >cmake.log || { cat cmake.log; exit 1; }
jqstitch simulate -q -o pass --size 320x240 --path row --count 4 --step 25
build/example_host pass/frame_*.png >said.txt
[ "$(grep -c ': placed$' said.txt)" = 4 ] || fail "the example host said: $(cat said.txt)"
[ -s mosaic.png ] || fail "the example host wrote no mosaic"

read -ra flags < <(pkg-config --cflags --libs jqimagestitching jqimageconvert)
g++ -std=c++17 "$here/../consumer/consumer.cpp" -o consumer "${flags[@]}"
[ "$(./consumer)" = stitched ] || fail "the host by pkg-config does not stitch"
rm -rf "$work"
echo "hosts build and run"
