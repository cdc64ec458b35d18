#!/usr/bin/env bash
# Times `quill lint` over the corpus beside the repository with and without
# suppression comments and a quill.toml (hyperfine). Two copies of the
# corpus's Verilog files are made in a scratch folder: a plain one, linted
# with --isolated, and one with a suppression comment every 20 lines, a
# disable/enable region per file and a quill.toml using every key.
#   bash scripts/bench_lint_tool.sh [QUILL] [CORPUS]
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
quill=${1:-$here/build/dev/cli/quill}
corpus=${2:-$here/../shared/corpus}
[ -d "$corpus" ] || { echo "no corpus at $corpus; nothing to measure"; exit 0; }
command -v hyperfine >/dev/null || { echo "hyperfine is not installed (scripts/install_deps.sh)"; exit 1; }

scratch=$(mktemp -d "${TMPDIR:-/tmp}/quill-bench-lint.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/plain" "$scratch/suppressed"
find "$corpus" -type f \( -iname '*.v' -o -iname '*.sv' -o -iname '*.vh' -o -iname '*.svh' \) -print0 |
  while IFS= read -r -d '' file; do
    name=$(printf '%s' "${file#"$corpus"/}" | tr '/' '_')
    cp "$file" "$scratch/plain/$name"
    awk 'NR % 20 == 0 { print "// quill: disable-next-line latch, multi-driver -- measured" }
         NR == 10 { print "/* quill: disable dupli-define */" }
         NR == 60 { print "// quill: enable dupli-define" }
         { print }' "$file" >"$scratch/suppressed/$name"
  done
cat >"$scratch/suppressed/quill.toml" <<'TOML'
[files]
extend-exclude = ["never_*/", "gen/**"]

[format]
exclude = ["vendor/"]

[lint]
select = ["all"]
ignore = ["used-bef-declare"]
severity = { latch = "error", multi-driver = "warning" }

[lint.per-file-ignores]
"*_tb.v" = ["all"]
"**/picorv32*" = ["blocking-assign"]
TOML

echo "files: $(ls "$scratch/plain" | wc -l)"
hyperfine --warmup 2 --min-runs 10 -N --ignore-failure \
  --export-markdown "$scratch/result.md" \
  -n plain "$quill lint --isolated --format=raw -j 1 $scratch/plain" \
  -n "suppressions+config" "$quill lint --format=raw -j 1 $scratch/suppressed"
cat "$scratch/result.md"
