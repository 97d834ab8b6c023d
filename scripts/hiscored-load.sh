#!/usr/bin/env bash
# Measures tolva2-hiscored on 127.0.0.1: 10,000 valid submissions from 16 clients, the
# hostile inputs, and a SIGKILL in the middle of a load followed by a restart, after
# which the database must pass integrity_check and hold every submission that had been
# answered 200. Every wait is bounded. Usage: scripts/hiscored-load.sh [BUILD_DIR]
set -euo pipefail
build=${1:-build}
server="$build/game/tolva2-hiscored"
driver="$build/server/tolva2-hiscored-load"
for f in "$server" "$driver"; do
  [ -x "$f" ] || { echo "hiscored-load: $f is not built (cmake --build $build --target tolva2-hiscored tolva2-hiscored-load)"; exit 2; }
done

work=$(mktemp -d)
pid=""
cleanup() {
  [ -n "$pid" ] && kill "$pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# Starts the server on a free port of 127.0.0.1 and waits (at most 10 s) for the line
# that names the port.
start_server() {
  : > "$work/out"
  "$server" --listen 127.0.0.1:0 --db "$work/hiscores.sqlite" > "$work/out" 2> "$work/err" &
  pid=$!
  for _ in $(seq 100); do
    port=$(sed -n 's/.*listening on 127\.0\.0\.1:\([0-9]*\)\/.*/\1/p' "$work/out")
    [ -n "$port" ] && return 0
    sleep 0.1
  done
  echo "hiscored-load: the server did not start: $(cat "$work/err")"
  exit 1
}

status=0
start_server
echo "== load"
"$driver" load "$port" 10000 16 "$work/answered" || status=1
echo "== hostile input"
"$driver" hostile "$port" "$work/hiscores.sqlite" || status=1

echo "== SIGKILL in the middle of a load, then a restart"
"$driver" load "$port" 20000 16 "$work/answered" > "$work/killed-load" 2>&1 &
load=$!
sleep 2
kill -KILL "$pid"
wait "$pid" 2>/dev/null || true
pid=""
wait "$load" || true
echo "(load cut off: $(cat "$work/killed-load"))"
start_server
"$driver" verify "$work/hiscores.sqlite" "$work/answered" || status=1
kill -TERM "$pid"
wait "$pid" && echo "server stopped cleanly on SIGTERM" || { echo "server did not stop cleanly"; status=1; }
pid=""
exit $status
