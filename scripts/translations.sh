#!/bin/bash
# Collects the texts of the live window into the template for translators,
# apps/jqscope/translations/jqscope.ts.
#
# usage: scripts/translations.sh [--check]
#
#   --check  only tells whether the template has all texts as they are now
#
# A translation is a copy of the template named by its language, jqscope_de.ts for one, filled
# in with Qt Linguist; lrelease makes jqscope_de.qm of it, which the window looks for in
# share/jqscope/translations beside the folder of the program.
set -euo pipefail
check=
case "${1:-}" in
  -h|--help) sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
  --check) check=1 ;;
  '') ;;
  *) echo "unknown option: $1 (see --help)" >&2; exit 2 ;;
esac
cd "$(dirname "$0")/../apps/jqscope"
template=translations/jqscope.ts

lupdate=
for candidate in /usr/lib/qt5/bin/lupdate lupdate-qt5 lupdate; do
  if command -v "$candidate" >/dev/null; then lupdate=$candidate; break; fi
done
if [ -z "$lupdate" ]; then
  echo "lupdate is not there (scripts/install_dependencies.sh --linguist)" >&2
  exit 1
fi

# Without lines of the sources, so that the template changes with the texts alone.
fresh=$(mktemp --suffix=.ts)
trap 'rm -f "$fresh"' EXIT
rm "$fresh"
mapfile -t sources < <(find . -name '*.cpp' -o -name '*.h' | LC_ALL=C sort)
"$lupdate" -silent -locations none -source-language en -tr-function-alias QT_TRANSLATE_NOOP+=T \
  -I . "${sources[@]}" -ts "$fresh"

if [ -n "$check" ]; then
  if ! diff -u "$template" "$fresh"; then
    echo "the template is not current: run scripts/translations.sh" >&2
    exit 1
  fi
else
  mkdir -p translations
  cp "$fresh" "$template"
fi
