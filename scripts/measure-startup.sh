#!/usr/bin/env bash
# Measures how long the game takes from launch until its main window is mapped, and the
# resident memory of the running game, over several runs; prints the medians.
# Runs under its own Xvfb (xvfb-run) unless a DISPLAY is already set; needs xdotool.
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-7}
game=build/game/tolva2
[ -x "$game" ] || bash scripts/build.sh >/dev/null
command -v xdotool >/dev/null || { echo "measure-startup: install xdotool" >&2; exit 2; }
if [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi
# xvfb-run does not always wait until its server takes clients.
for _ in $(seq 200); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.05; done

# A copy of the game folder past its first start: the credits of a first start wait for
# the player and would be measured instead of the start-up.
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp -r build/game/. "$folder/"
printf "[main]\r\nnotfirstuse=yes\r\n${TOLVA_MEASURE_INI:-}" >"$folder/tolva2.ini"
game="$folder/tolva2"

times=(); rss=()
for ((i = 0; i < runs; i++)); do
  # Xvfb now and then refuses a client while it is being polled; such a launch is tried
  # again rather than counted.
  for attempt in 1 2 3; do
    start=$(date +%s%N)
    "$game" >/dev/null 2>&1 &
    pid=$!
    # The main window's title begins with the game's name and the set's name.
    while ! xdotool search --onlyvisible --name "TOLVA II  -" >/dev/null 2>&1; do
      kill -0 "$pid" 2>/dev/null || break
      sleep 0.02
    done
    end=$(date +%s%N)
    kill -0 "$pid" 2>/dev/null && break
    wait "$pid" 2>/dev/null || true
    [ "$attempt" = 3 ] && { echo "measure-startup: the game did not start" >&2; exit 1; }
  done
  times+=($(( (end - start) / 1000000 )))
  sleep 1   # let it settle before reading its memory
  rss+=($(awk '/VmRSS/ {print $2}' /proc/$pid/status))
  libs=$(awk '$6 ~ /\.so/ {print $6}' /proc/$pid/maps | sort -u | wc -l)
  kill "$pid"; wait "$pid" 2>/dev/null || true
done
median() { printf '%s\n' "$@" | sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
echo "start-up to window shown: median $(median "${times[@]}") ms over $runs runs (${times[*]})"
echo "resident memory: median $(( $(median "${rss[@]}") / 1024 )) MB"
echo "shared libraries mapped: $libs"
