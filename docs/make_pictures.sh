#!/bin/bash
# Remakes the pictures of this folder, which the README shows.
#
# usage: docs/make_pictures.sh PATH/TO/jqstitch
set -euo pipefail
docs=$(cd "$(dirname "$0")" && pwd)
jqstitch=$(realpath "${1:?usage: docs/make_pictures.sh PATH/TO/jqstitch}")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
read -ra opencv < <(pkg-config --cflags-only-I opencv4)
"${CXX:-c++}" -std=c++17 -O2 "$docs/small_picture.cpp" -o small_picture "${opencv[@]}" \
  -lopencv_core -lopencv_imgproc -lopencv_imgcodecs

"$jqstitch" simulate -q -o pass --path random --size 800x600 --count 24 --step 28 --noise 3 \
  --vignetting 12 --exposure-jitter 2 --seed 3
# White where no frame is before the picture is made smaller: black that is mixed into
# the frames' edges would stay as an outline that the mosaic does not have.
"$jqstitch" live pass -q -o mosaic.png --background 255,255,255
"$jqstitch" inspect -q pass/frame_0001.png pass/frame_0002.png --width 1000 --lines 25 -o pair.png

for name in mosaic pair; do ./small_picture "$name.png" "$docs/$name.jpg" 1280; done
ls -l "$docs"/*.jpg
