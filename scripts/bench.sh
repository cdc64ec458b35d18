#!/usr/bin/env bash
# Builds the release preset and runs the benchmarks; extra arguments go to
# Google Benchmark (e.g. --benchmark_filter=Format).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install_deps.sh
cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc)" --target quill_bench >/dev/null
exec build/release/bench/quill_bench "$@"
