#!/bin/bash
# Builds the Debian packages, checks them, installs them into a clean Debian and runs a
# demo of each there, where nothing of the build can be seen. Installs what is missing.
#
# usage: scripts/test_packages.sh [--dir DIR] [--built]
#
#   --dir    where the packages go; build-packages when not given
#   --built  takes the packages that are there, such as those of scripts/package.sh
set -euo pipefail
cd "$(dirname "$0")/.."

dir=build-packages
built=
while [ $# -gt 0 ]; do
  case "$1" in
    --dir) dir=$2; shift 2 ;;
    --built) built=1; shift ;;
    -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
    *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
  esac
done
scripts/install_dependencies.sh --package-checks
if [ -z "$built" ]; then
  # Compiled as scripts/test.sh --werror does, not with Debian's flags: where that ran before,
  # all comes out of the compiler cache.
  DEB_CXXFLAGS_SET='' DEB_CPPFLAGS_SET='' JQ_CMAKE_OPTIONS=-DJQ_WARNINGS_AS_ERRORS=ON \
    scripts/package.sh --dir "$dir"
fi
dir=$(cd "$dir" && pwd)
version=$(dpkg-deb -f "$dir"/jqstitch_*.deb Version)
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")

echo "== lintian"
# The one suppressed tag is about packages that enter Debian's own archive.
lintian --allow-root --fail-on error --tag-display-limit 0 \
  --suppress-tags initial-upload-closes-no-bugs "$dir"/*.changes

echo "== desktop entry and metadata"
rm -rf "$dir/unpacked"
dpkg-deb -x "$dir"/jqscope_*.deb "$dir/unpacked"
desktop-file-validate "$dir"/unpacked/usr/share/applications/*.desktop
# The project has no domain whose reversed name the program's id could start with.
appstreamcli validate-tree --no-net --override=cid-desktopapp-is-not-rdns=info "$dir/unpacked"

echo "== a clean $suite"
# The packages as one more source, so that their dependencies are resolved as anywhere.
(cd "$dir" && dpkg-scanpackages --multiversion . >Packages 2>Packages.log) ||
  { cat "$dir/Packages.log"; exit 1; }
mapfile -t mirrors < <(scripts/debian_mirrors.sh "$suite")
# First the programs with nothing but what they depend on; then what a host's author
# installs. The root is thrown away.
mmdebstrap --quiet --variant=essential --dpkgopt=force-unsafe-io \
  --include=jqstitch,jqscope,python3-jqstitching,zsh \
  --customize-hook='copy-in tests/install/packages tests/install/consumer /' \
  --customize-hook="chroot \"\$1\" /packages/programs.sh ${version%-*}" \
  --customize-hook='APT_CONFIG=$MMDEBSTRAP_APT_CONFIG apt-get install -qqy --no-install-recommends \
    -oDPkg::Chroot-Directory="$1" libjqimagestitching-dev g++ cmake make pkg-config >/dev/null' \
  --customize-hook='chroot "$1" /packages/hosts.sh' \
  "$suite" /dev/null "${mirrors[@]}" "deb [trusted=yes] copy:$dir ./"
