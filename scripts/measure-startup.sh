#!/usr/bin/env bash
# Measures the game's start-up against the toolkit's floor, in one run: the game and an
# empty Qt window of the same size (bench/startup/EmptyWindow.cpp), launched alternately,
# each timed from its launch until the X server maps its window (the probe listens to the
# server's map events, so no polling goes into the figure). Prints both medians and their
# ratio, and the resident memory and libraries mapped of each, a second after mapping.
#   scripts/measure-startup.sh [RUNS]        (default 9)
# Extra tolva2.ini lines can be given in TOLVA_MEASURE_INI (e.g. 'playmusic=0\r\n'), and
# another game folder to measure (an older build, for a before-and-after) in
# TOLVA_MEASURE_GAME_DIR.
# Runs under its own Xvfb (xvfb-run) unless a DISPLAY is already set.
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-9}
[ -d build ] || bash scripts/build.sh >/dev/null
cmake --build build --target tolva2 tolva2_audio tolva2_empty_window tolva2_startup_probe >/dev/null
probe=build/bench/startup/tolva2_startup_probe
empty=build/bench/startup/tolva2_empty_window
if [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1024x768x24" "$0" "$@"
fi

# A copy of the game folder past its first start: the credits of a first start wait for
# the player and would be measured instead of the start-up.
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cp -r "${TOLVA_MEASURE_GAME_DIR:-build/game}/." "$folder/"
printf "[main]\r\nnotfirstuse=yes\r\n${TOLVA_MEASURE_INI:-}" >"$folder/tolva2.ini"

# One launch: prints "MS RSS_KB LIBS". Xvfb now and then refuses a client at once; such a
# launch is tried again rather than counted.
measure() {
  local out pid ms
  for attempt in 1 2 3; do
    if out=$("$probe" "TOLVA II  -" "$@" 2>/dev/null); then
      read -r ms pid <<<"$out"
      sleep 1   # let it settle before reading its memory
      echo "$ms $(awk '/VmRSS/ {print $2}' /proc/"$pid"/status) $(awk '$6 ~ /\.so/ {print $6}' /proc/"$pid"/maps | sort -u | wc -l)"
      kill "$pid" 2>/dev/null || true
      while kill -0 "$pid" 2>/dev/null; do sleep 0.05; done
      # The X server and the kernel are still tidying up after the program for a while;
      # the next launch waits for that, so that neither program is measured against it.
      sleep 0.5
      return 0
    fi
  done
  echo "measure-startup: $1 did not show its window" >&2
  exit 1
}

median() { printf '%s\n' "$@" | sort -n | awk '{a[NR]=$1} END {print a[int((NR+1)/2)]}'; }
measure "$empty" >/dev/null   # a warm-up of the disk cache and the X server
measure "$folder/tolva2" >/dev/null
game_ms=(); game_kb=(); empty_ms=(); empty_kb=()
for ((i = 0; i < runs; i++)); do
  read -r ms kb empty_libs <<<"$(measure "$empty")"; empty_ms+=("$ms"); empty_kb+=("$kb")
  read -r ms kb game_libs <<<"$(measure "$folder/tolva2")"; game_ms+=("$ms"); game_kb+=("$kb")
done
g=$(median "${game_ms[@]}"); e=$(median "${empty_ms[@]}")
echo "empty window: median $e ms to mapped over $runs runs (${empty_ms[*]}), $(( $(median "${empty_kb[@]}") / 1024 )) MB resident, $empty_libs libraries"
echo "game:         median $g ms to mapped over $runs runs (${game_ms[*]}), $(( $(median "${game_kb[@]}") / 1024 )) MB resident, $game_libs libraries"
awk -v g="$g" -v e="$e" 'BEGIN { printf "ratio game / empty window: %.2f\n", g / e }'
