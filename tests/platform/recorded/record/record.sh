#!/usr/bin/env bash
# Records expected/<group>.txt for every case file of tests/platform/recorded: builds the
# cases for Windows with MinGW and runs them under Wine (headless, null graphics driver,
# with fonts-wine's Tahoma in the prefix). Needs wine, wine64, mingw-w64 and fonts-wine;
# only the machine that records needs them, the recorded files are plain text.
#
#   tests/platform/recorded/record/record.sh [GROUP...]
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
cases="$(dirname "$here")"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
export WINEPREFIX="${ZEL_RECORD_WINEPREFIX:-$HOME/.wine-zel-record}"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY WAYLAND_DISPLAY
if ! grep -qs '"Graphics"="null"' "$WINEPREFIX/user.reg"; then
  wineboot -i >/dev/null 2>&1 || true
  wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1
  wineserver -w
fi
fonts="$WINEPREFIX/drive_c/windows/Fonts"
if [ ! -f "$fonts/tahoma.ttf" ]; then
  cp /usr/share/wine/fonts/tahoma.ttf /usr/share/wine/fonts/tahomabd.ttf "$fonts/"
  wineserver -k 2>/dev/null || true
fi
groups=("$@")
if [ "${#groups[@]}" -eq 0 ]; then
  for src in "$cases"/*.cpp; do
    name="$(basename "$src" .cpp)"
    [ "$name" = recorded_test ] || groups+=("$name")
  done
fi
for group in "${groups[@]}"; do
  x86_64-w64-mingw32-g++ -std=c++20 -O1 -static -static-libgcc -static-libstdc++ \
    -o "$work/$group.exe" "$here/main.cpp" "$cases/$group.cpp" -lgdi32 -luser32
  (cd "$work" && wine "$group.exe" "$group" </dev/null) | tr -d '\r' >"$cases/expected/$group.txt"
  echo "$group: $(wc -l <"$cases/expected/$group.txt") cases" >&2
done
