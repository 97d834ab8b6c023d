#!/usr/bin/env bash
# Builds and runs the benchmarks, five repetitions each, and prints the medians.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh >/dev/null
build/bench/tolva2_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
  --benchmark_filter="${1:-.}" | grep -E 'median|^Benchmark|^-'
# The repaint of the board through the real widget, under the offscreen platform.
QT_QPA_PLATFORM=offscreen build/bench/qt/tolva2_qt_bench --benchmark_repetitions=5 \
  --benchmark_report_aggregates_only=true --benchmark_filter="${1:-.}" | grep -E 'median|^Benchmark|^-'
# The hiscore server's page and submission at 10k, 100k and 1M stored entries; the
# stores are filled once (a minute or two), PostgreSQL only where a private one starts.
build/bench/hiscored/tolva2_hiscored_bench --benchmark_filter="${1:-.}" | grep -E '^Benchmark|^-|^(Page|Submit)'
