#!/usr/bin/env bash
# Measures tolva2-hiscored on 127.0.0.1, on both stores. Every wait is bounded; the
# whole run takes a few minutes, so it is not part of the test suite.
#  1. 1,000 slow clients from as many loopback addresses, sending a request head one
#     byte a second, while a normal request is timed every 100 ms.
#  2. SQLite: 16 clients send 20,000 valid submissions to one server; half-way through
#     it is killed with SIGKILL and started again on the same port. Every submission
#     answered 200 must then be in the database exactly once. Then the hostile inputs.
#  3. PostgreSQL (a private one, in a temporary folder): the same load spread over two
#     servers sharing the database; one is killed half-way, the other must answer
#     every request it gets, and every answered submission must be stored exactly once.
# Usage: scripts/hiscored-load.sh [BUILD_DIR]
set -euo pipefail
build=${1:-build}
server="$build/game/tolva2-hiscored"
driver="$build/server/tolva2-hiscored-load"
for f in "$server" "$driver"; do
  [ -x "$f" ] || { echo "hiscored-load: $f is not built (cmake --build $build --target tolva2-hiscored tolva2-hiscored-load)"; exit 2; }
done

work=$(mktemp -d)
chmod 755 "$work"
pids=()
as_pg=""
[ "$(id -u)" -eq 0 ] && as_pg="runuser -u nobody --"
pgbin=""
cleanup() {
  for p in "${pids[@]}"; do kill -KILL "$p" 2>/dev/null || true; done
  [ -n "$pgbin" ] && timeout 60 $as_pg "$pgbin/pg_ctl" -D "$work/pg/data" -m fast -w -t 30 stop >/dev/null 2>&1 || true
  rm -rf "$work"
}
trap cleanup EXIT

# start_server NAME LISTEN DB [OPTIONS...]: starts a server and waits (at most 10 s) for
# the line that names its port, which goes into the variable port_NAME.
start_server() {
  local name=$1 listen=$2 db=$3
  shift 3
  "$server" --listen "$listen" --db "$db" "$@" > "$work/$name.out" 2>> "$work/$name.err" &
  local pid=$!
  pids+=("$pid")
  eval "pid_$name=$pid"
  for _ in $(seq 100); do
    local port
    port=$(sed -n 's/.*listening on 127\.0\.0\.1:\([0-9]*\)\/.*/\1/p' "$work/$name.out")
    if [ -n "$port" ]; then eval "port_$name=$port"; return 0; fi
    sleep 0.1
  done
  echo "hiscored-load: the server $name did not start: $(cat "$work/$name.err")"
  exit 1
}

# wait_answered FILE COUNT: until FILE has COUNT lines, at most 300 s.
wait_answered() {
  for _ in $(seq 3000); do
    [ "$(wc -l < "$1" 2>/dev/null || echo 0)" -ge "$2" ] && return 0
    sleep 0.1
  done
}

status=0
count=20000

echo "== 1,000 slow clients beside normal requests"
start_server slow 127.0.0.1:0 "$work/slow.sqlite"
"$driver" slow "$port_slow" 1000 8 || status=1
echo "(closures logged by the server: $(grep -c 'no whole request' "$work/slow.err"))"
kill -TERM "$pid_slow"; wait "$pid_slow" || status=1

echo "== SQLite: $count submissions from 16 clients, SIGKILL and restart half-way"
db="$work/hiscores.sqlite"
start_server sqlite 127.0.0.1:0 "$db" --max-submissions-per-minute 0
: > "$work/answered-sqlite"
"$driver" load "$port_sqlite" "$count" 16 "$work/answered-sqlite" > "$work/load-sqlite" 2>&1 &
load=$!
wait_answered "$work/answered-sqlite" $((count / 2))
kill -KILL "$pid_sqlite"; wait "$pid_sqlite" 2>/dev/null || true
echo "killed the server after $(wc -l < "$work/answered-sqlite") answered submissions"
start_server sqlite "127.0.0.1:$port_sqlite" "$db" --max-submissions-per-minute 0
wait "$load" || true
cat "$work/load-sqlite"
"$driver" page "$port_sqlite" 500 || status=1
"$driver" verify "$db" "$work/answered-sqlite" || status=1
echo "== SQLite: hostile input"
"$driver" hostile "$port_sqlite" "$db" || status=1
kill -TERM "$pid_sqlite"
wait "$pid_sqlite" && echo "server stopped cleanly on SIGTERM" || { echo "server did not stop cleanly"; status=1; }

echo "== PostgreSQL: $count submissions from 16 clients over two servers, SIGKILL one half-way"
pgbin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
if [ -z "$pgbin" ]; then
  echo "hiscored-load: PostgreSQL is not installed (scripts/setup.sh installs it)"
  exit 1
fi
mkdir "$work/pg"
[ -n "$as_pg" ] && chown nobody "$work/pg"
timeout 60 $as_pg "$pgbin/initdb" -D "$work/pg/data" -A trust -U tolva -E UTF8 > "$work/pg-setup.log" 2>&1 ||
  { echo "initdb failed: $(tail -5 "$work/pg-setup.log")"; pgbin=""; exit 1; }
timeout 60 $as_pg "$pgbin/pg_ctl" -D "$work/pg/data" -l "$work/pg/server.log" -w -t 30 \
  -o "-k $work/pg -c listen_addresses= -p 5432 -c max_connections=100" start >> "$work/pg-setup.log" 2>&1 ||
  { echo "PostgreSQL did not start: $(tail -5 "$work/pg-setup.log")"; exit 1; }
uri="postgresql://tolva@/postgres?host=$work/pg&port=5432"
start_server pga 127.0.0.1:0 "$uri" --max-submissions-per-minute 0
start_server pgb 127.0.0.1:0 "$uri" --max-submissions-per-minute 0
: > "$work/answered-pg"
"$driver" load "$port_pga,$port_pgb" "$count" 16 "$work/answered-pg" > "$work/load-pg" 2>&1 &
load=$!
wait_answered "$work/answered-pg" $((count / 2))
kill -KILL "$pid_pga"; wait "$pid_pga" 2>/dev/null || true
echo "killed the server on port $port_pga after $(wc -l < "$work/answered-pg") answered submissions"
wait "$load" || true
cat "$work/load-pg"
if grep -q "port $port_pgb: 0 failed" "$work/load-pg"; then
  echo "the surviving server (port $port_pgb) answered every request it got"
else
  echo "the surviving server (port $port_pgb) failed requests"; status=1
fi
"$driver" page "$port_pgb" 500 || status=1
"$driver" verify "$uri" "$work/answered-pg" || status=1
kill -TERM "$pid_pgb"
wait "$pid_pgb" && echo "server stopped cleanly on SIGTERM" || { echo "server did not stop cleanly"; status=1; }
exit $status
