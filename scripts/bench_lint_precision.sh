#!/usr/bin/env bash
# Times `quill lint` over a folder (default ../shared/corpus) with every lint
# filter and `ifdef evaluation on, against --exact (the library's report,
# one call per file), one worker, CPU time, best of N runs.
# Usage: scripts/bench_lint_precision.sh [QUILL] [FOLDER] [RUNS]
set -euo pipefail
cd "$(dirname "$0")/.."
quill=${1:-build/dev/cli/quill}
folder=${2:-../shared/corpus}
runs=${3:-5}
[ -d "$folder" ] || { echo "no folder $folder"; exit 0; }

timing=$(mktemp)
trap 'rm -f "$timing"' EXIT

best() {  # prints the least user+system seconds of $runs runs
  local least=""
  for _ in $(seq "$runs"); do
    local t
    /usr/bin/time -o "$timing" -f "%U %S" "$quill" lint -j1 --isolated --no-ignore --format=json "$@" "$folder" \
      >/dev/null 2>&1 || true
    t=$(tail -n 1 "$timing" | awk '{print $1 + $2}')
    if [ -z "$least" ] || awk -v a="$t" -v b="$least" 'BEGIN{exit !(a < b)}'; then least=$t; fi
  done
  echo "$least"
}

exact=$(best --exact)
filtered=$(best)
echo "exact:    ${exact} s"
echo "filtered: ${filtered} s"
awk -v f="$filtered" -v e="$exact" 'BEGIN{printf "ratio:    %.2f (limit 1.30)\n", f / e}'
