#!/bin/bash
# Prints the package sources of a Debian release, one a line, from the mirrors that
# this machine is configured for.
#
# usage: scripts/debian_mirrors.sh SUITE
set -euo pipefail
[ $# -eq 1 ] || { sed -n '2,/^set/{/^#/s/^# \{0,1\}//p}' "$0" >&2; exit 2; }
here=$(. /etc/os-release && echo "$VERSION_CODENAME")
# Name of the release here, as in bookworm-updates, replaced by that of the other.
apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Identifier: Packages' |
  sort -u | awk -v here="$here" -v suite="$1" \
    '$3 == "main" && ($2 == here || index($2, here "-") == 1) {
       sub(here, suite, $2); print "deb", $1, $2, $3 }'
