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

"$jqstitch" simulate -q -o pass --path random --size 800x600 --count 24 --step 28 --noise 3 \
  --vignetting 12 --exposure-jitter 2 --seed 3
"$jqstitch" live pass -q -o whole.png --background 255,255,255 --preview mosaic.png
"$jqstitch" inspect -q pass/frame_0001.png pass/frame_0002.png --width 1000 --lines 25 -o pair.png

# A camera that takes one frame of the whole picture writes it as a smaller JPEG.
for name in mosaic pair; do
  read -r width height < <(od -An -tu4 --endian=big -j16 -N8 "$name.png")
  "$jqstitch" simulate -q -o "$name" --image "$name.png" --count 1 --size "${width}x$height" \
    --jpeg-quality 82
  cp "$name/frame_0001.jpg" "$docs/$name.jpg"
done
ls -l "$docs"/*.jpg
