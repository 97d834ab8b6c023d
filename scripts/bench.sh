#!/usr/bin/env bash
# Builds and runs the benchmarks, five repetitions each, and prints the medians.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh >/dev/null
build/bench/tolva2_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
  --benchmark_filter="${1:-.}" | grep -E 'median|^Benchmark|^-'
