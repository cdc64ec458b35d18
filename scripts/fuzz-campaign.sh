#!/usr/bin/env bash
# A long local fuzzing campaign: every fuzz target (or the ones named) for
# SECONDS_PER_TARGET (default an hour; TARGET=SECONDS gives one target its
# own time), in two lanes at low priority so that never more than two fuzzers
# run at once, keeping what they find in build/fuzz-campaign/ (outside git,
# kept between campaigns so each one starts where the last stopped). Prints
# executions, coverage and new inputs per target, then replays the kept inputs
# through the library and the Python models (tools/crosscheck/replay.py) and
# fails on any disagreement.
# Usage: scripts/fuzz-campaign.sh [SECONDS_PER_TARGET] [TARGET[=SECONDS] ...]
#   QUILL_CAMPAIGN_DIR  where the kept inputs live (default build/fuzz-campaign)
#   QUILL_BUILD_LOCK    a lock file the builds take first (a machine shared by
#                       several builds runs one at a time)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-3600}
shift $(( $# > 0 ? 1 : 0 ))
items=("$@")
[ ${#items[@]} -gt 0 ] || items=(format lint highlight lsp tool_format structure)
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
# Each target goes to the lane with less time so far, so both end together.
lane_items=("" ""); lane_time=(0 0); fuzz_targets=()
for item in "${items[@]}"; do
  target=${item%%=*}; time=$seconds
  [ "$item" != "$target" ] && time=${item#*=}
  fuzz_targets+=("fuzz_$target")
  lane=0; [ "${lane_time[1]}" -lt "${lane_time[0]}" ] && lane=1
  lane_items[lane]+=" $target=$time"; lane_time[lane]=$(( lane_time[lane] + time ))
done
build fuzz "${fuzz_targets[@]}"

run_lane() {  # log, target=seconds...
  local log=$1 item status=0; shift
  : >"$log"
  for item in "$@"; do
    QUILL_FUZZ_WORK="$work" nice bash fuzz/run_fuzzers.sh build/fuzz "${item#*=}" "${item%%=*}" \
      >>"$log" 2>&1 || status=1
  done
  return "$status"
}

started=$(date +%s)
status=0
# shellcheck disable=SC2086 # the lane lists split into their items on purpose
run_lane "$work/lane-1.log" ${lane_items[0]} &
lane1=$!
# shellcheck disable=SC2086
run_lane "$work/lane-2.log" ${lane_items[1]} &
lane2=$!
wait "$lane1" || status=1
wait "$lane2" || status=1

echo "campaign of ${items[*]} (default ${seconds}s per target), $(( $(date +%s) - started ))s in all; kept in $work"
grep -h '^summary' "$work/lane-1.log" "$work/lane-2.log" || true
if [ "$status" != 0 ]; then
  grep -h -A3 'ERROR\|contract broken\|language server:\|failed' "$work/lane-1.log" "$work/lane-2.log" || true
  echo "a fuzz target failed; its artifacts are in $work" >&2
fi
ls "$work"/*-crash-* "$work"/*-timeout-* "$work"/*-leak-* "$work"/*-oom-* 2>/dev/null || true

echo "differential replay of the kept inputs"
build dev quill
kept=()
for service in format lint highlight; do
  [ -d "$work/corpus-$service" ] && kept+=(--fuzz-corpus "$work/corpus-$service")
done
python3 tools/crosscheck/replay.py --lib build/dev/core_engine/libquill.so --keep "$work/disagreements" \
  "${kept[@]}" || status=1
exit "$status"
