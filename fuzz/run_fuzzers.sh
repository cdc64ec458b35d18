#!/usr/bin/env bash
# Runs each fuzz target for a bounded time, seeded from examples/ and, when
# present, ../shared/corpus. Usage: fuzz/run_fuzzers.sh BUILD_DIR [SECONDS]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?build folder}
seconds=${2:-60}
corpus=../shared/corpus
work="$build/fuzz-work"
mkdir -p "$work"

seed() {  # target, extensions...
  local target=$1; shift
  local dir="$work/seeds-$target"
  rm -rf "$dir"; mkdir -p "$dir"
  for ext in "$@"; do
    find examples -maxdepth 1 -type f -name "*.$ext" -exec cp {} "$dir"/ \;
    if [ -d "$corpus" ]; then
      find "$corpus" -type f -name "*.$ext" -size -64k -print0 | head -z -n 200 |
        while IFS= read -r -d '' f; do cp "$f" "$dir/$(echo "$f" | md5sum | cut -c1-16).$ext"; done || true
    fi
  done
  if [ -d fuzz/regressions/"$target" ]; then cp fuzz/regressions/"$target"/* "$dir"/ 2>/dev/null || true; fi
  echo "$dir"
}

run() {  # target, seed folder
  local target=$1 seeds=$2
  local live="$work/corpus-$target"
  mkdir -p "$live"
  echo "fuzzing $target for ${seconds}s"
  "$build/fuzz/fuzz_$target" "$live" "$seeds" -max_total_time="$seconds" -max_len=65536 \
    -rss_limit_mb=4096 -timeout=20 -print_final_stats=1 -artifact_prefix="$work/$target-" 2>&1 | tail -n 12
}

run format "$(seed format v sv vh svh)"
run lint "$(seed lint v sv vh svh)"
run highlight "$(seed highlight xdc sdc tcl qsf cst pcf lpf ucf)"
echo "fuzzing finished without a contract failure"
