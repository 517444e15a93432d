#!/bin/bash
# Runs the suite on Debian 13, with its newer compiler, image and vector libraries, in a
# chroot. Warnings are errors. What is committed is tested. Needs root, for the chroot;
# inside it an ordinary user builds and tests, because a read-only folder means nothing
# to root.
#
# usage: scripts/test_debian13.sh [--dir DIR] [-- OPTIONS]
#
#   --dir    where the chroot is made, once; build-debian13 when not given
#   OPTIONS  more options for scripts/test.sh, for example --no-bench
set -euo pipefail
cd "$(dirname "$0")/.."

dir=build-debian13
while [ $# -gt 0 ]; do
  case "$1" in
    --dir) dir=$2; shift 2 ;;
    --) shift; break ;;
    -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
  esac
done
[ "$(id -u)" -eq 0 ] || { echo "only root can enter a chroot" >&2; exit 2; }

scripts/install_dependencies.sh --chroot
mkdir -p "$dir"
dir=$(cd "$dir" && pwd)
root=$dir/root
if [ ! -d "$root" ]; then
  packages=$(scripts/install_dependencies.sh --ccache --readers --list | paste -sd,)
  mapfile -t mirrors < <(scripts/debian_mirrors.sh trixie)
  rm -rf "$root.part"
  mmdebstrap --mode=root --variant=apt --include="$packages" \
    trixie "$root.part" "${mirrors[@]}"
  chroot "$root.part" useradd --create-home builder
  mv "$root.part" "$root"
fi

# The committed state; what a previous run built there stays.
as_builder() { chroot "$root" su - builder -c "$*"; }
as_builder "mkdir -p source && find source -mindepth 1 -maxdepth 1 ! -name 'build*' -exec rm -rf {} +"
git archive HEAD | as_builder "tar -x -C source"

mount -t proc proc "$root/proc"
trap 'umount "$root/proc"' EXIT
# What has come to be needed since the chroot was made, which only root may install.
chroot "$root" sh -c "cd /home/builder/source && scripts/install_dependencies.sh --ccache --readers"
as_builder "cd source && scripts/test.sh --werror --no-libvips $*"
