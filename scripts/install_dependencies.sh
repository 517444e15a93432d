#!/bin/bash
# Installs what building and testing needs on Debian 12, and nothing when all of it
# is there. Packages for one major version of Qt are enough to build against it.
#
# usage: scripts/install_dependencies.sh [--qt 5|6] [--format]
set -euo pipefail

qt=5
packages=(g++ cmake ninja-build pkg-config libopencv-dev libhwy-dev libgtest-dev
  libbenchmark-dev libcli11-dev nlohmann-json3-dev)
while [ $# -gt 0 ]; do
  case "$1" in
    --qt) qt=$2; shift 2 ;;
    --format) packages+=(clang-format git); shift ;;
    *) echo "unknown option: $1" >&2; exit 2 ;;
  esac
done
case "$qt" in
  5) packages+=(qtbase5-dev) ;;
  6) packages+=(qt6-base-dev) ;;
  *) echo "--qt takes 5 or 6, not '$qt'" >&2; exit 2 ;;
esac

missing=()
for package in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "installing: ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -qy --no-install-recommends "${missing[@]}"
