#!/usr/bin/env bash
# Checks the viewer end to end on a virtual X display: zel-demo --window opens on the home
# screen, a real X pointer click (xdotool, through the X server to SDL) on the Player tile
# must change the screen, an edit of the skin must rebuild that screen with the skin read
# again, and Esc must leave the viewer, which then writes tour.log and the last screen.
# Usage: demo/check_viewer.sh [path/to/zel-demo]
set -euo pipefail
cd "$(dirname "$0")/.."
demo=$(realpath "${1:-build/dev/demo/zel-demo}")
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
skin="$out/skin-copy"
mkdir -p "$skin"
for f in default.rc resource.h dialogs.rc2 dialogs.h skin; do cp -r "$(dirname "$demo")/$f" "$skin/"; done

xvfb-run -a -s "-screen 0 1024x768x24" bash -c '
  set -e
  "$0" --window --out "$1" --skin "$1/skin-copy" >"$1/stdout.log" 2>"$1/stderr.log" &
  pid=$!
  wid=$(xdotool search --sync --onlyvisible --name "ZEL controls" | head -n 1)
  sleep 1
  xdotool mousemove --window "$wid" 140 271 click 1   # the Player tile
  sleep 1
  touch "$1/skin-copy/skin/button_next_normal.bmp"     # a designer saves a piece
  sleep 1
  xdotool key Escape
  wait "$pid"
' "$demo" "$out"

if [ "$(grep -cx -- "-- screen player" "$out/tour.log")" = 2 ] && grep -qx "zel-demo: skin reloaded" "$out/stdout.log" &&
  [ -s "$out/player-last.png" ]; then
  echo "check_viewer: the viewer opened, the tap went to the Player screen, the edited skin rebuilt it, Esc left it"
else
  echo "check_viewer: FAILED; the host heard:" >&2
  cat "$out/tour.log" "$out/stdout.log" "$out/stderr.log" >&2 || true
  exit 1
fi
