#!/usr/bin/env bash
# Sets up a fresh machine, builds everything and runs every test: first the whole
# project, then the solver on every level of both shipped sets, then the core,
# tolva2-cli and the core tests again under AddressSanitizer and
# UndefinedBehaviorSanitizer, with each fuzz target run for a few seconds (the tests
# labelled fuzz; scripts/fuzz.sh runs them for longer).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs=$(nproc 2>/dev/null || echo 2)

bash scripts/build.sh
export QT_QPA_PLATFORM=offscreen

# A private PulseAudio with a null sink, so that the audio tests hear what the game plays
# (parec records the sink's monitor). It has a runtime folder of its own, since the shared
# one is refused to root, lives at most an hour, and is stopped when this script ends.
pulse_dir=$(mktemp -d)
pulse_pid=""
stop_pulse() {
  if [ -n "$pulse_pid" ]; then kill "$pulse_pid" 2>/dev/null || true; wait "$pulse_pid" 2>/dev/null || true; fi
  rm -rf "$pulse_dir"
}
trap stop_pulse EXIT
if command -v pulseaudio >/dev/null 2>&1; then
  mkdir -p "$pulse_dir/pulse"
  XDG_RUNTIME_DIR="$pulse_dir" HOME="$pulse_dir" timeout 3600 pulseaudio --daemonize=no --exit-idle-time=-1 \
    --disallow-exit -n --load="module-null-sink sink_name=tolva_null" --load=module-native-protocol-unix \
    >"$pulse_dir/pulseaudio.log" 2>&1 &
  pulse_pid=$!
  export XDG_RUNTIME_DIR="$pulse_dir" PULSE_SERVER="unix:$pulse_dir/pulse/native"
  for _ in $(seq 50); do pactl info >/dev/null 2>&1 && break; sleep 0.1; done
fi
ctest --test-dir build --output-on-failure -j "$jobs"

# The Debian package, installed into a throwaway root and played there as an ordinary
# user: lintian, the desktop validators, and where the installed game writes.
bash scripts/test-package.sh

# `tolva2-cli levels solve` must clear every shipped level within its 60 s on one core.
# Each level is one the solver's first passes clear within 4 million boards (the level
# maker ships no other), a few seconds each, so both sets take about two minutes.
sh scripts/solve-all.sh build 60

cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_COMPILER=clang++ \
  -DTOLVA_CORE_ONLY=ON -DTOLVA_SANITIZE=ON -DTOLVA_BENCHMARKS=OFF >/dev/null
cmake --build build-asan -j "$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build-asan --output-on-failure -j "$jobs"
