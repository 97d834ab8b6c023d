#!/usr/bin/env bash
# The long run of the game against itself, under AddressSanitizer and
# UndefinedBehaviorSanitizer: builds the core and tolva2-cli with both sanitizers in
# build-asan-autoplay/, then lets the game play the whole default set by itself in cheat
# mode, from level 1 through level 100 and round to level 1 again. It plays the set twice:
# with the board closing up after its pause, as on screen, and with it closing up at once,
# where every move follows from inside the one before. Any sanitizer report, any fault the
# command finds in the game's counters, or a run that does not get round the set, fails
# the script.
#
# Usage: scripts/autoplay-asan.sh [--seed S]   (other tolva2-cli autoplay options pass on)
# It is too long for the test suite; run it by hand or in a nightly job.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc 2>/dev/null || echo 2)
build=build-asan-autoplay
cxx=$(command -v clang++ || command -v g++)

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER="$cxx" \
  -DTOLVA_CORE_ONLY=ON -DTOLVA_SANITIZE=ON -DTOLVA_BENCHMARKS=OFF >/dev/null
cmake --build "$build" --target tolva2-cli -j "$jobs"

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1:detect_stack_use_after_return=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
cli="$build/game/tolva2-cli"
status=0
for anidraw in on off; do
  echo "== autoplay of the default set, AniDraw $anidraw"
  start=$(date +%s%N)
  if "$cli" autoplay game/levels/default --anidraw "$anidraw" "$@" >"$build/autoplay-$anidraw.log"; then
    result=ok
  else
    result=FAILED
    status=1
  fi
  end=$(date +%s%N)
  grep -E '^(level 100 |fault:|autoplay:)' "$build/autoplay-$anidraw.log" || true
  # Round the whole set: the last line before the summary is level 1 reached again.
  if ! tail -n 2 "$build/autoplay-$anidraw.log" | head -n 1 | grep -q '^level   1 '; then
    echo "the run did not get back to level 1"
    result=FAILED
    status=1
  fi
  ms=$(( (end - start) / 1000000 ))
  printf '%s in %d.%d s (full log: %s)\n' "$result" $((ms / 1000)) $((ms % 1000 / 100)) "$build/autoplay-$anidraw.log"
done
exit "$status"
