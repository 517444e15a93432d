#!/bin/bash
# Installs what building and testing needs on Debian, and nothing when all of it is
# there. Packages for one major version of Qt are enough to build against it.
#
# usage: scripts/install_dependencies.sh [--qt 5|6] [--clang] [--ccache] [--format] [--tidy]
#                                        [--fuzz] [--libvips] [--readers] [--aarch64]
#                                        [--aravis] [--linguist] [--chroot] [--display]
#                                        [--python] [--packages] [--package-checks] [--abi]
#                                        [--list]
#
#   --clang    clang 14 beside GCC
#   --ccache   the compiler cache, which the other scripts use where it is present
#   --format   clang-format
#   --tidy     clang-tidy
#   --fuzz     clang 14 with its fuzzing library
#   --libvips  libvips, which writes Deep Zoom
#   --aravis   Aravis, which knows GenICam cameras
#   --linguist what collects the texts of the window for translators
#   --readers  other readers of the pictures that the programs write, for the tests
#   --aarch64  the cross compiler, the emulator, and what makes the system root
#   --chroot   what makes a chroot of another Debian
#   --display  a display in memory, for pictures of the window
#   --python   what the Python module is built and tested with
#   --packages what builds the Debian packages
#   --package-checks  what checks them, and installs them into a clean Debian
#   --abi      what compares binary interfaces
#   --list     prints the packages instead of installing them
set -euo pipefail

qt=5
list=
packages=(g++ cmake ninja-build pkg-config libopencv-dev libhwy-dev libgtest-dev
  libbenchmark-dev libcli11-dev libeigen3-dev libpng-dev libtiff-dev nlohmann-json3-dev)
while [ $# -gt 0 ]; do
  case "$1" in
    --qt) qt=${2:-}; shift 2 || shift ;;
    --clang) packages+=(clang-14); shift ;;
    --ccache) packages+=(ccache); shift ;;
    --format) packages+=(clang-format git); shift ;;
    --tidy) packages+=(clang-tidy); shift ;;
    --fuzz) packages+=(clang-14 libclang-rt-14-dev); shift ;;
    --libvips) packages+=(libvips-dev); shift ;;
    # Debian's package leaves out what its pkg-config file asks for.
    --aravis) packages+=(libaravis-dev libusb-1.0-0-dev); shift ;;
    --linguist) packages+=(qttools5-dev-tools); shift ;;
    --readers) packages+=(python3-tifffile openslide-tools); shift ;;
    --aarch64) packages+=(g++-aarch64-linux-gnu qemu-user-static mmdebstrap uidmap); shift ;;
    --chroot) packages+=(mmdebstrap); shift ;;
    --display) packages+=(xvfb xauth); shift ;;
    --python) packages+=(pybind11-dev python3-pybind11 python3-dev python3-numpy python3-pytest
      python3-distributed); shift ;;
    --packages) packages+=(debhelper dh-python dpkg-dev git libaravis-dev libusb-1.0-0-dev
      libvips-dev pybind11-dev python3-dev); shift ;;
    --package-checks)
      packages+=(appstream desktop-file-utils dpkg-dev lintian mmdebstrap); shift ;;
    --abi) packages+=(abigail-tools git); shift ;;
    --list) list=1; shift ;;
    *) echo "unknown option: $1" >&2; exit 2 ;;
  esac
done
case "$qt" in
  5) packages+=(qtbase5-dev) ;;
  6) packages+=(qt6-base-dev) ;;
  *) echo "--qt takes 5 or 6, not '$qt'" >&2; exit 2 ;;
esac
if [ -n "$list" ]; then
  printf '%s\n' "${packages[@]}"
  exit 0
fi

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "installing: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -qy --no-install-recommends "${missing[@]}"
