#!/usr/bin/env bash
# A long local fuzzing campaign: every fuzz target for SECONDS_PER_TARGET
# (default an hour), two at a time at low priority, keeping what they find in
# build/fuzz-campaign/ (outside git, kept between campaigns so each one starts
# where the last stopped). Prints executions, coverage and new inputs per
# target, then replays the kept inputs through the library and the Python
# models (tools/crosscheck/replay.py) and fails on any disagreement.
# Usage: scripts/fuzz-campaign.sh [SECONDS_PER_TARGET]
#   QUILL_CAMPAIGN_DIR  where the kept inputs live (default build/fuzz-campaign)
#   QUILL_BUILD_LOCK    a lock file the builds take first (a machine shared by
#                       several builds runs one at a time)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-3600}
work=${QUILL_CAMPAIGN_DIR:-build/fuzz-campaign}
mkdir -p "$work"

build() {  # preset, targets...
  local preset=$1; shift
  local lock=()
  [ -n "${QUILL_BUILD_LOCK:-}" ] && lock=(flock "$QUILL_BUILD_LOCK")
  cmake --preset "$preset" >/dev/null
  "${lock[@]}" cmake --build --preset "$preset" -j "$(nproc)" --target "$@"
}

bash scripts/install_deps.sh
build fuzz fuzz_format fuzz_lint fuzz_highlight fuzz_lsp

started=$(date +%s)
# Two lanes of two targets each: never more than two fuzzers at once.
status=0
QUILL_FUZZ_WORK="$work" nice bash fuzz/run_fuzzers.sh build/fuzz "$seconds" format highlight \
  >"$work/lane-1.log" 2>&1 &
lane1=$!
QUILL_FUZZ_WORK="$work" nice bash fuzz/run_fuzzers.sh build/fuzz "$seconds" lint lsp \
  >"$work/lane-2.log" 2>&1 &
lane2=$!
wait "$lane1" || status=1
wait "$lane2" || status=1

echo "campaign of ${seconds}s per target, $(( $(date +%s) - started ))s in all; kept in $work"
grep -h '^summary' "$work/lane-1.log" "$work/lane-2.log" || true
if [ "$status" != 0 ]; then
  grep -h -A3 'ERROR\|contract broken\|language server:\|failed' "$work/lane-1.log" "$work/lane-2.log" || true
  echo "a fuzz target failed; its artifacts are in $work" >&2
fi
ls "$work"/*-crash-* "$work"/*-timeout-* "$work"/*-leak-* "$work"/*-oom-* 2>/dev/null || true

echo "differential replay of the kept inputs"
build dev quill
python3 tools/crosscheck/replay.py --lib build/dev/core_engine/libquill.so --keep "$work/disagreements" \
  --fuzz-corpus "$work/corpus-format" --fuzz-corpus "$work/corpus-lint" \
  --fuzz-corpus "$work/corpus-highlight" || status=1
exit "$status"
