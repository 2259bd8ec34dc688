#!/usr/bin/env bash
# Peak memory (maximum resident set, by GNU time) and run time of "zentoria-report list --json" and
# "zentoria-report check" on the largest inputs there can be. Makes them in a scratch folder first
# (about 5.5 GB of disk, most of it sparse; removed at the end):
#   no-line-break   2 GiB of NUL bytes without a line break (sparse)
#   endless-header  a report's first seven lines, then 2 GiB without a line break (sparse)
#   overlong-paths  2 GiB of records whose path lines are each 200,000 bytes long: all skipped
#   largest         the largest report that is read whole: 32,766 records, each path 32,767
#                   characters of three UTF-8 bytes (3.2 GB)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/bootstrap"
"$root/scripts/build" default >/dev/null
tool="$root/build/default/src/zentoria-report"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

python3 - "$work" <<'PY'
import os, sys
work = sys.argv[1]
header = b"   This file was created with Melvadex (By Orsolt)\r\n" + b"\r\n" * 6
detail = b"  Melvadex could not get the ID3v2 information\r\n\r\n"
closing = b"Date of creation: 23.11.2026\r\n"
gib2 = 2 << 30

with open(os.path.join(work, "no-line-break.vzt"), "wb") as f:
    f.truncate(gib2)
with open(os.path.join(work, "endless-header.vzt"), "wb") as f:
    f.write(header)
    f.truncate(len(header) + gib2)
with open(os.path.join(work, "overlong-paths.vzt"), "wb") as f:
    f.write(header)
    record = b"C:\\" + b"p" * 200000 + b"\r\n" + detail
    for _ in range(gib2 // len(record)):
        f.write(record)
    f.write(closing)
with open(os.path.join(work, "largest.vzt"), "wb") as f:
    f.write(header)
    path = "\u20ac" * 32767
    for i in range(1, 32767):
        f.write(path.encode() + b"\r\n" + detail)
    f.write(closing)
PY

printf '%-16s %-10s %10s %12s %8s %s\n' input command size "peak (KiB)" seconds outcome
for input in no-line-break endless-header overlong-paths largest; do
    file="$work/$input.vzt"
    for command in "list --json" check; do
        # shellcheck disable=SC2086 # the command is two words on purpose
        /usr/bin/time -f '%M %e' -o "$work/time.txt" "$tool" $command "$file" >"$work/out.txt" \
            2>/dev/null || true
        read -r peak seconds < <(tail -n 1 "$work/time.txt")
        # The JSON's outcome comes after its entries, at the end of one very long line.
        outcome=$(tail -c 300 "$work/out.txt" | grep -o '"outcome":"[A-Za-z]*"' | tail -1 || true)
        [ -n "$outcome" ] || outcome=$(head -c 60 "$work/out.txt")
        printf '%-16s %-10s %10s %12s %8s %s\n' "$input" "${command%% *}" \
            "$(du -h --apparent-size "$file" | cut -f1)" "$peak" "$seconds" "$outcome"
    done
done
