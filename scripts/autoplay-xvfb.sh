#!/usr/bin/env bash
# Lets the real game window play the default set by itself under Xvfb for a while and
# reports how many levels it finished per minute, once with the default settings and once
# with the board closing up at once (anidraw=0). Each run uses a copy of the game folder,
# so the real tolva2.ini and stat.ini stay untouched. Needs xdotool.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
[ -x build/game/tolva2 ] || bash scripts/build.sh >/dev/null
command -v xdotool >/dev/null || { echo "autoplay-xvfb: install xdotool" >&2; exit 2; }
if [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi
# xvfb-run does not always wait until its server takes clients.
for _ in $(seq 200); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.05; done

run() {
  local label=$1 ini=$2 dir
  dir=$(mktemp -d)
  cp -r build/game/data build/game/levels "$dir"/
  printf '[main]\r\nnotfirstuse=yes\r\n%s' "$ini" > "$dir/tolva2.ini"
  build/game/tolva2 --game-dir "$dir" orangekettles >/dev/null 2>&1 &
  local pid=$! wid=""
  for _ in $(seq 100); do
    wid=$(xdotool search --onlyvisible --name "TOLVA II  -" 2>/dev/null | head -1) && [ -n "$wid" ] && break
    sleep 0.1
  done
  [ -n "$wid" ] || { echo "autoplay-xvfb: no window" >&2; kill "$pid"; exit 1; }
  eval "$(xdotool getwindowgeometry --shell "$wid")"
  xdotool windowfocus --sync "$wid" key F2; sleep 1
  # A right click on the OPTIONS button opens the test menu; its third entry is autoplay.
  xdotool mousemove $((X + 630)) $((Y + 487)) click 3; sleep 0.5
  xdotool key Down Down Down Return
  sleep "$seconds"
  if ! kill -0 "$pid" 2>/dev/null; then echo "autoplay-xvfb: the game ended during the run" >&2; exit 1; fi
  kill "$pid"; wait "$pid" 2>/dev/null || true
  local levels
  levels=$(grep -ciE '^played=' "$dir/stat.ini" 2>/dev/null || echo 0)
  echo "$label: $levels levels finished in $seconds s ($(( levels * 60 / seconds )) per minute)"
  rm -rf "$dir"
}

run "default settings" ""
run "anidraw=0" $'anidraw=0\r\n'
