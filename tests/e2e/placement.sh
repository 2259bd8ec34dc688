#!/usr/bin/env bash
# The real program under a real window manager (Xvfb and openbox, driven with xdotool): where the user
# leaves the window and the tree, the next start puts them, to the pixel; a logout (SIGTERM) keeps them
# too. Skipped (exit 77) where the tools are missing: scripts/bootstrap installs them.
set -euo pipefail
zentoria=$1
report=$2
for tool in xvfb-run openbox xdotool xwininfo xprop; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "SKIP: $tool is missing (scripts/bootstrap installs it)"
        exit 77
    fi
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_CONFIG_HOME="$work/config"
export XDG_RUNTIME_DIR="$work/runtime"
mkdir -p "$XDG_RUNTIME_DIR" && chmod 700 "$XDG_RUNTIME_DIR"
unset QT_QPA_PLATFORM

cat >"$work/inner.sh" <<'INNER'
set -euo pipefail
zentoria=$1
report=$2
settings="$XDG_CONFIG_HOME/zentoria.conf"
fail() { echo "FAIL: $*" >&2; exit 1; }
trap 'echo "FAIL: line $LINENO: $BASH_COMMAND"' ERR

openbox >/dev/null 2>&1 &
for _ in $(seq 50); do xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q window && break; sleep 0.1; done

# The window's outer rectangle, frame included, as "x y width height".
frame_of() {
    local x y w h l r t b extents=""
    # The window manager frames a window a little after it maps, later on a slow machine.
    for _ in $(seq 50); do
        extents=$(xprop -id "$1" _NET_FRAME_EXTENTS 2>/dev/null | grep ' = ' || true)
        [ -n "$extents" ] && break
        sleep 0.2
    done
    [ -n "$extents" ] || fail "the window manager gave the window no frame"
    x=$(xwininfo -id "$1" | awk '/Absolute upper-left X/ {print $4}')
    y=$(xwininfo -id "$1" | awk '/Absolute upper-left Y/ {print $4}')
    w=$(xwininfo -id "$1" | awk '/^  Width/ {print $2}')
    h=$(xwininfo -id "$1" | awk '/^  Height/ {print $2}')
    read -r l r t b < <(sed 's/.*= //; s/,//g' <<<"$extents")
    echo "$((x - l)) $((y - t)) $((w + l + r)) $((h + t + b))"
}
setting() { sed -n "s/^$1=//p" "$settings" | head -n 1; }
start() {
    "$zentoria" "$report" >/dev/null 2>&1 &
    pid=$!
    # Looked up until the same window has stood for a second: start-up shows the window and may replace
    # it, later on a slow (instrumented, busy) machine, and a window gone is an X error.
    window=""
    local found
    for _ in $(seq 60); do
        found=$(xdotool search --onlyvisible --name "Melvadex's Zentoria" 2>/dev/null | tail -n 1 || true)
        if [ -n "$found" ] && [ "$found" = "$window" ] && xwininfo -id "$found" >/dev/null 2>&1; then
            return
        fi
        window=$found
        sleep 1
    done
    fail "no window stood still for a second"
}

start
xdotool windowmove --sync "$window" 120 90
xdotool windowsize --sync "$window" 720 470
sleep 0.5
# Drag the separator 60 pixels right: it starts at the tree's default width, 200 pixels.
eval "$(xdotool getwindowgeometry --shell "$window")"
row=$((Y + 250))
xdotool mousemove $((X + 201)) $row mousedown 1
xdotool mousemove $((X + 231)) $row
xdotool mousemove $((X + 261)) $row mouseup 1
sleep 0.5
before=$(frame_of "$window")
xdotool windowactivate --sync "$window" key ctrl+q
wait "$pid" || fail "File > Quit ended the program with status $?"
tree=$(setting 'Initial\\ TV\\ Width\|Initial%20TV%20Width')
[ -n "$tree" ] && [ "$tree" != 3000 ] || fail "the dragged tree width was not kept ($tree)"

start
after=$(frame_of "$window")
[ "$after" = "$before" ] || fail "the window came back at $after instead of $before"
[ "$(setting 'Initial\\ TV\\ Width\|Initial%20TV%20Width')" = "$tree" ] || fail "the tree width came back changed"

# A logout keeps the window as Quit does.
xdotool windowsize --sync "$window" 650 430
sleep 0.5
read -r _ _ width _ < <(frame_of "$window")
kill -TERM "$pid"
wait "$pid" || fail "SIGTERM ended the program with status $?"
[ "$(setting Width)" = "$((width * 15))" ] || fail "SIGTERM kept width $(setting Width), not $((width * 15))"
echo "placement kept: $before; tree width $tree twips; SIGTERM kept width $((width * 15))"
INNER
xvfb-run -a -s "-screen 0 1280x1024x24" bash "$work/inner.sh" "$zentoria" "$report"
