#!/bin/bash
# Builds Debian packages of what is committed, for the Debian that this machine runs.
# Installs what building needs.
#
# usage: scripts/package.sh [--dir DIR] [--install]
#
#   --dir      where the packages go; build-packages when not given
#   --install  installs them here as well
#
# Debug symbols, in packages of their own, are made with DEB_BUILD_OPTIONS= in the
# environment; without that variable they are left out, which halves the time.
set -euo pipefail
cd "$(dirname "$0")/.."

dir=build-packages
install=
while [ $# -gt 0 ]; do
  case "$1" in
    --dir) dir=$2; shift 2 ;;
    --install) install=1; shift ;;
    -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
  esac
done
scripts/install_dependencies.sh --packages

version=$(sed -n 's/^project(JQImageStitching VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
[ -n "$version" ] || { echo "CMakeLists.txt names no version" >&2; exit 1; }
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
date=$(git log -1 --format=%cD)

# Packages of an earlier run must not be taken for those of this one.
mkdir -p "$dir"
dir=$(cd "$dir" && pwd)
source=$dir/source
rm -rf "$source" "$dir"/*.deb "$dir"/*.buildinfo "$dir"/*.changes
mkdir "$source"
git archive HEAD | tar -x -C "$source"
cd "$source"
cp -r packaging/debian debian
sed "s/@VERSION@/$version/; s/@SUITE@/$suite/; s/@DATE@/$date/" debian/changelog.in >debian/changelog

if command -v ccache >/dev/null; then
  # The build runs with another home.
  CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
  export CCACHE_DIR CCACHE_BASEDIR=$source
fi
export DEB_BUILD_OPTIONS=${DEB_BUILD_OPTIONS-noddebs}
dpkg-buildpackage --build=binary --unsigned-changes --unsigned-buildinfo >"$dir/build.log" 2>&1 ||
  { tail -60 "$dir/build.log"; exit 1; }

cd "$dir"
ls -sh --block-size=K ./*.deb
[ -n "$install" ] || exit 0
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
mapfile -t packages < <(find "$dir" -name '*.deb' ! -name '*-dbgsym_*')
"${as_root[@]}" apt-get install -qy --no-install-recommends "${packages[@]}"
