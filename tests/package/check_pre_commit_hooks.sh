#!/usr/bin/env bash
# Runs the hooks of .pre-commit-hooks.yaml with pre-commit in a throw-away git
# repository: a badly formatted file stops the commit and is rewritten, the
# next commit passes, and a file with a lint finding stops it. The test's
# configuration copies the hook definitions into a "repo: local" entry, so
# that nothing is fetched.
#   check_pre_commit_hooks.sh SOURCE_DIR QUILL
set -euo pipefail
source_dir=${1:?source folder}
quill=${2:?path to the built quill}
for tool in pre-commit git python3; do
  command -v "$tool" >/dev/null || { echo "$tool not installed: skipped"; exit 77; }
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() { echo "FAIL: $*" >&2; cat "$scratch/log" >&2 2>/dev/null || true; exit 1; }

mkdir "$scratch/bin" "$scratch/repo"
ln -s "$quill" "$scratch/bin/quill"
export PATH="$scratch/bin:$PATH"
export PRE_COMMIT_HOME="$scratch/cache" HOME="$scratch"
export GIT_CONFIG_NOSYSTEM=1 GIT_AUTHOR_NAME=test GIT_AUTHOR_EMAIL=test@localhost \
  GIT_COMMITTER_NAME=test GIT_COMMITTER_EMAIL=test@localhost

pre-commit validate-manifest "$source_dir/.pre-commit-hooks.yaml" >"$scratch/log" 2>&1 ||
  fail ".pre-commit-hooks.yaml is not a valid hook manifest"

cd "$scratch/repo"
git init -q .
python3 - "$source_dir/.pre-commit-hooks.yaml" >.pre-commit-config.yaml <<'PY'
import sys
import yaml
hooks = yaml.safe_load(open(sys.argv[1]))
ids = [hook["id"] for hook in hooks]
assert ids == ["quill-format", "quill-lint"], ids
print(yaml.safe_dump({"repos": [{"repo": "local", "hooks": hooks}]}, sort_keys=False))
PY
pre-commit install >"$scratch/log" 2>&1 || fail "pre-commit install"

printf 'module m(input a, output b);\nwire   c;\nreg [7:0]  d;\nassign b = a;\nendmodule\n' >top.v
quill format top.v >"$scratch/expected.v"
cmp -s top.v "$scratch/expected.v" && fail "the example is already formatted"
printf 'not Verilog\n' >notes.txt
git add .pre-commit-config.yaml top.v notes.txt
if git commit -q -m first >"$scratch/log" 2>&1; then fail "the commit of a badly formatted file passed"; fi
grep -q 'quill format' "$scratch/log" || fail "the format hook did not run"
cmp -s top.v "$scratch/expected.v" || fail "the format hook did not rewrite top.v"
git add top.v
git commit -q -m second >"$scratch/log" 2>&1 || fail "the commit of the formatted file failed"

printf 'module n(input clk, input d, output q);\nassign q = d;\nassign q = clk;\nendmodule\n' >two.v
quill format --in-place two.v
if quill lint two.v >/dev/null; then fail "two.v has no lint finding"; fi
git add two.v
if git commit -q -m third >"$scratch/log" 2>&1; then fail "the commit of a file with a finding passed"; fi
grep -q 'quill lint' "$scratch/log" || fail "the lint hook did not run"
echo "the pre-commit hooks format and lint the committed Verilog files"
