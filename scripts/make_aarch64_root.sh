#!/bin/bash
# Makes a Debian arm64 system root, to build against and to run under emulation. The
# packages are unpacked and nothing of them is executed.
#
# usage: scripts/make_aarch64_root.sh FOLDER
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0" >&2; exit 2; }
root=$(realpath -m "$1")
cd "$(dirname "$0")"
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")

# What this machine builds with, less what the cross compiler and the machine provide.
packages=$(./install_dependencies.sh --list |
  grep -vxE 'g\+\+|cmake|ninja-build|pkg-config' | paste -sd,)
mapfile -t mirrors < <(./debian_mirrors.sh "$suite")

# By way of an archive, so that an ordinary user owns the files, and without devices.
rm -rf "$root.part"
mkdir -p "$root.part"
mmdebstrap --variant=extract --architectures=arm64 --include="$packages,libc6-dev" \
  --format=tar "$suite" - "${mirrors[@]}" |
  tar -x -C "$root.part" --no-same-owner --exclude='./dev/*'

# Qt's CMake files name these programs below the root, and the build runs them.
cp /usr/lib/qt5/bin/{moc,rcc,uic} "$root.part/usr/lib/qt5/bin/"
# Links that the packages' own scripts would have made.
for library in blas lapack; do
  ln -s "$library/lib$library.so.3" "$root.part/usr/lib/aarch64-linux-gnu/"
done
mv "$root.part" "$root"
