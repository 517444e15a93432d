#!/bin/bash
# Runs in a system root that has the programs' packages, what these depend on, and nothing
# else of the project: each program does what it is for.
#
# usage: programs.sh VERSION
set -euo pipefail
version=$1
here=$(dirname "$0")
export LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
work=$(mktemp -d)
cd "$work"

fail() { echo "$*" >&2; exit 1; }

for program in jqstitch jqscope; do
  path=$(command -v "$program")
  [ "$path" = "/usr/bin/$program" ] || fail "$program is $path"
  said=$("$program" --version)
  [[ $said == "$program $version "* ]] || fail "$program --version: $said"
  [ -s "/usr/share/man/man1/$program.1.gz" ] || fail "$program has no manual page"
done

jqstitch simulate -q -o pass --size 320x240 --count 9 --step 20 --noise 2
jqstitch live pass -o live.png --truth pass/truth.csv --report live.html
jqstitch batch pass -q -o batch.png --background 255,255,255
jqstitch live pass -q -o tiles.dzi  # by the tile library, which is a dependency
for file in live.png live.html batch.png tiles.dzi; do
  [ -s "$file" ] || fail "$file was not written"
done

jqscope --fresh --source pass --run --save window.png --quit
cmp live.png window.png

cd /
python3 - "$work" "$version" <<'PYTHON'
import glob, sys
import jqstitching
work, version = sys.argv[1:]
assert jqstitching.__file__ == '/usr/lib/python3/dist-packages/jqstitching/__init__.py'
assert jqstitching.__version__ == version, jqstitching.__version__
result = jqstitching.stitch_files(sorted(glob.glob(work + '/pass/frame_*.png')))
assert all(verdict.placed for verdict in result.frames)
result.save(work + '/python.png', background=(255, 255, 255))
PYTHON
cmp "$work/batch.png" "$work/python.png"
bash "$here/completions.bash"
zsh -f "$here/completions.zsh"
rm -rf "$work"
echo "the programs work"
