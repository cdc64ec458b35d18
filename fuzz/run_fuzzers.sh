#!/usr/bin/env bash
# Runs each fuzz target for a bounded time with its token dictionary and value
# profiling: four fifths of the time on inputs of up to 8 kB (fast, most
# paths), the rest on inputs of up to 64 kB. Seeds are the committed
# fuzz/seeds/<target>/, the regression inputs, examples/ and, when present,
# ../shared/corpus (read at run time only). What a target finds is kept in
# WORK/corpus-<target>; a summary line per target gives executions, coverage
# and new inputs.
# Usage: fuzz/run_fuzzers.sh BUILD_DIR [SECONDS] [TARGET ...]
#   QUILL_FUZZ_WORK  folder for the kept inputs and logs (default BUILD_DIR/fuzz-work)
#   QUILL_CORPUS_DIR real-world seed files, read only (default ../shared/corpus)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:?build folder}
seconds=${2:-60}
shift $(( $# < 2 ? $# : 2 ))
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(format lint highlight lsp tool_format structure)
corpus=${QUILL_CORPUS_DIR:-../shared/corpus}
work=${QUILL_FUZZ_WORK:-$build/fuzz-work}
mkdir -p "$work"

seed() {  # target, extensions...
  local target=$1; shift
  local dir="$work/seeds-$target"
  rm -rf "$dir"; mkdir -p "$dir"
  cp fuzz/seeds/"$target"/* "$dir"/ 2>/dev/null || true
  if [ -d fuzz/regressions/"$target" ]; then cp fuzz/regressions/"$target"/* "$dir"/ 2>/dev/null || true; fi
  for ext in "$@"; do
    find examples -maxdepth 1 -type f -name "*.$ext" -exec cp {} "$dir"/ \;
    if [ -d "$corpus" ]; then
      find "$corpus" -type f -name "*.$ext" -size -64k -print0 | head -z -n 200 |
        while IFS= read -r -d '' f; do cp "$f" "$dir/$(echo "$f" | md5sum | cut -c1-16).$ext"; done || true
    fi
  done
  echo "$dir"
}

# One libFuzzer run; its full output goes to a log beside the kept inputs.
fuzz_once() {  # target, dictionary, seconds, max_len, log, seed folders...
  local target=$1 dict=$2 time=$3 maxlen=$4 log=$5; shift 5
  local dictarg=()
  [ -n "$dict" ] && dictarg=(-dict="$dict")
  "$build/fuzz/fuzz_$target" "$work/corpus-$target" "$@" "${dictarg[@]}" -max_total_time="$time" \
    -max_len="$maxlen" -use_value_profile=1 -rss_limit_mb=4096 -timeout=20 -print_final_stats=1 \
    -artifact_prefix="$work/$target-" >"$log" 2>&1
}

run() {  # target, dictionary, seed folder
  local target=$1 dict=$2 seeds=$3
  local live="$work/corpus-$target"
  mkdir -p "$live"
  local before small large status=0
  before=$(find "$live" -type f | wc -l)
  small=$(( seconds * 4 / 5 )); large=$(( seconds - small ))
  echo "fuzzing $target for ${seconds}s (${small}s up to 8 kB, ${large}s up to 64 kB)"
  fuzz_once "$target" "$dict" "$small" 8192 "$work/$target-small.log" "$seeds" || status=$?
  if [ "$status" = 0 ] && [ "$large" -gt 0 ]; then
    fuzz_once "$target" "$dict" "$large" 65536 "$work/$target-large.log" || status=$?
  fi
  local execs cov ft after
  local logs=("$work/$target-small.log")
  [ -f "$work/$target-large.log" ] && logs+=("$work/$target-large.log")
  execs=$(cat "${logs[@]}" | sed -n 's/^stat::number_of_executed_units: *//p' |
          awk '{ s += $1 } END { print s + 0 }')
  cov=$(grep -ho 'cov: [0-9]* ft: [0-9]*' "${logs[@]}" | tail -n 1)
  after=$(find "$live" -type f | wc -l)
  echo "summary $target: executions $execs, ${cov:-no coverage line}, inputs kept $after (new $(( after - before )))"
  if [ "$status" != 0 ]; then
    tail -n 40 "${logs[@]}"
    echo "fuzz target $target failed (exit $status); artifacts in $work/$target-*" >&2
    return "$status"
  fi
}

for target in "${targets[@]}"; do
  rm -f "$work/$target"-small.log "$work/$target"-large.log
  case "$target" in
    format|lint) run "$target" fuzz/verilog.dict "$(seed "$target" v sv vh svh)" ;;
    highlight) run highlight fuzz/constraint.dict "$(seed highlight xdc sdc tcl qsf cst pcf lpf ucf)" ;;
    lsp) run lsp fuzz/verilog.dict "$(seed lsp)" ;;
    structure) run structure fuzz/verilog.dict "$(seed structure v sv vh svh)" ;;
    tool_format) run tool_format fuzz/verilog.dict "$(seed tool_format v sv vh svh)" ;;
    *) echo "unknown fuzz target: $target" >&2; exit 2 ;;
  esac
done
echo "fuzzing finished without a contract failure"
