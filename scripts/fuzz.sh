#!/usr/bin/env bash
# Runs every fuzz target of the game for SECONDS each (default 60), one after the other,
# in a clang build with the sanitizers (build-fuzz/). Each target starts from its seeds in
# tests/fuzz/corpus/NAME; afterwards the seeds are merged with what the run found, keeping
# only inputs that add coverage, so that the corpus in the tree stays small.
# Prints the executions per target, and exits non-zero at the first finding (the crash
# input is left in build-fuzz/findings/).
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
jobs=$(nproc 2>/dev/null || echo 2)

cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
  -DTOLVA_CORE_ONLY=ON -DTOLVA_SANITIZE=ON -DTOLVA_BENCHMARKS=OFF >/dev/null
targets=(ini crypter levelset hiscores bmp)
cmake --build build-fuzz -j "$jobs" --target "${targets[@]/#/tolva2_fuzz_}"

declare -A max_len=([ini]=8192 [crypter]=256 [levelset]=300000 [hiscores]=8192 [bmp]=65536)
mkdir -p build-fuzz/findings
summary=""
for t in "${targets[@]}"; do
  seeds="tests/fuzz/corpus/$t"
  found="build-fuzz/fuzz-run/$t"
  mkdir -p "$seeds" "$found"
  log="build-fuzz/fuzz-run/$t.log"
  echo "== $t: ${seconds}s"
  if ! build-fuzz/tests/fuzz/tolva2_fuzz_"$t" -max_total_time="$seconds" -rss_limit_mb=2048 \
      -max_len="${max_len[$t]}" -print_final_stats=1 -artifact_prefix="build-fuzz/findings/$t-" \
      "$found" "$seeds" >"$log" 2>&1; then
    grep -E "==tolva2 fuzz finding==|ERROR: |SUMMARY: " "$log" | head -5 || true
    echo "FINDING in $t: see $log and build-fuzz/findings/"
    exit 1
  fi
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  summary+=$(printf '%-10s %12s executions in %ss' "$t" "${runs:-?}" "$seconds")$'\n'

  # Only inputs that add coverage go back into the tree.
  merged=$(mktemp -d)
  build-fuzz/tests/fuzz/tolva2_fuzz_"$t" -merge=1 -max_len="${max_len[$t]}" "$merged" "$seeds" "$found" \
    >>"$log" 2>&1
  rm -f "$seeds"/*
  cp "$merged"/* "$seeds"/ 2>/dev/null || true
  rm -rf "$merged"
done
printf '%s' "$summary"
