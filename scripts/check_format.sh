#!/bin/bash
# Fails when a source file of the repository is not formatted as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh --format
mapfile -d '' files < <(git ls-files -z '*.h' '*.cpp')
[ ${#files[@]} -gt 0 ] || { echo "no source files found" >&2; exit 1; }
clang-format --dry-run -Werror "${files[@]}"
echo "${#files[@]} files are formatted"
