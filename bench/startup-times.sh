#!/usr/bin/env bash
# Start-up times of Zentoria, from main() to the splash's closing timer armed, under a virtual X
# display as a desktop runs it: with the sample report and with the largest report there can be. The
# first start registers the report type with the desktop; later ones find it in place. Later starts
# are timed cold (the page cache dropped first; needs root) and warm (the median of five starts).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/bootstrap"
"$root/scripts/build" default >/dev/null
timer="$root/build/default/bench/bench_startup"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME="$work/config"
export XDG_DATA_HOME="$work/data"
python3 - "$work/largest.vzt" <<'PY'
import sys
b = "   This file was created with Melvadex (By Orsolt)\r\n" + "\r\n" * 6
for i in range(1, 32767):
    kind = "ID3v2" if i <= 16383 else ("ID3v1" if i % 2 == 0 else "any")
    detail = {"ID3v2": "  Melvadex could not get the ID3v2 information",
              "ID3v1": "  Melvadex could not get the ID3v1 information",
              "any": "  Melvadex could not get any information for this file."}[kind]
    b += "C:\\Music\\Artist %d\\%d - Track.mp3\r\n%s\r\n\r\n" % (i % 700, i, detail)
open(sys.argv[1], "w", newline="").write(b + "Date of creation: 23.11.2026\r\n")
PY

measure() {
    xvfb-run -a -s "-screen 0 1280x1024x24" "$timer" "$1"
}
echo "first start (registers the report type): $(measure "$root/examples/sample.vzt") ms"
for report in "$root/examples/sample.vzt" "$work/largest.vzt"; do
    cold="n/a (not root)"
    if [ "$(id -u)" -eq 0 ] && sync && echo 3 >/proc/sys/vm/drop_caches 2>/dev/null; then
        cold="$(measure "$report") ms"
    fi
    warm=$(for _ in 1 2 3 4 5; do measure "$report"; done | sort -n | sed -n 3p)
    echo "$(basename "$report"): cold $cold, warm $warm ms"
done
