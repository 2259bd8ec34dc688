#!/usr/bin/env bash
# zentoria-report's bash completion offers folders and reports, each once, with no shell option set.
set -euo pipefail
completion=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
touch a.vzt B.TXT c.mp3
mkdir sub
shopt -u extglob
# shellcheck source=/dev/null
source "$completion"
compopt() { :; } # only a completion that bash itself runs may set options
COMP_WORDS=(zentoria-report check "")
COMP_CWORD=2
_zentoria_report
got=$(printf '%s\n' "${COMPREPLY[@]}" | sort)
expected=$(printf '%s\n' B.TXT a.vzt sub | sort)
if [ "$got" != "$expected" ]; then
    printf 'completion offered:\n%s\nexpected:\n%s\n' "$got" "$expected" >&2
    exit 1
fi
# A check of the collection takes folders only.
COMP_WORDS=(zentoria-report scan "")
_zentoria_report
if [ "${COMPREPLY[*]}" != sub ]; then
    printf 'scan completion offered: %s, expected: sub\n' "${COMPREPLY[*]}" >&2
    exit 1
fi
echo "completion offers each report and folder once, and folders alone to scan"
