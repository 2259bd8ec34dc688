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
# What completing the word after the command ($word, empty unless given) offers, one a line, sorted,
# compared with the expected.
offers() {
    COMP_WORDS=(zentoria-report "$1" "${word:-}")
    COMP_CWORD=2
    _zentoria_report
    got=$(printf '%s\n' "${COMPREPLY[@]}" | sort)
    expected=$(printf '%s\n' "${@:2}" | sort)
    if [ "$got" != "$expected" ]; then
        printf '%s completion offered:\n%s\nexpected:\n%s\n' "$1" "$got" "$expected" >&2
        exit 1
    fi
}
offers check B.TXT a.vzt sub
# A check of the collection takes folders only.
offers scan sub
word=--f offers recheck --follow
echo "completion offers each report and folder once, folders alone to scan, and recheck's options"
