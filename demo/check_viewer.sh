#!/usr/bin/env bash
# Checks the viewer end to end on a virtual X display: zel-demo --window opens on the home
# screen, a real X pointer click (xdotool, through the X server to SDL) on the Player tile
# must change the screen, and Esc must leave the viewer, which then writes tour.log and the
# last screen. Usage: demo/check_viewer.sh [path/to/zel-demo]
set -euo pipefail
cd "$(dirname "$0")/.."
demo=$(realpath "${1:-build/dev/demo/zel-demo}")
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT

xvfb-run -a -s "-screen 0 1024x768x24" bash -c '
  set -e
  "$0" --window --out "$1" 2>"$1/stderr.log" &
  pid=$!
  wid=$(xdotool search --sync --onlyvisible --name "ZEL controls" | head -n 1)
  sleep 1
  xdotool mousemove --window "$wid" 140 271 click 1   # the Player tile
  sleep 1
  xdotool key Escape
  wait "$pid"
' "$demo" "$out"

if grep -qx -- "-- screen player" "$out/tour.log" && [ -s "$out/player-last.png" ]; then
  echo "check_viewer: the viewer opened, the tap went to the Player screen, Esc left it"
else
  echo "check_viewer: FAILED; the host heard:" >&2
  cat "$out/tour.log" "$out/stderr.log" >&2 || true
  exit 1
fi
