#!/usr/bin/env bash
# Runs one test case of the quill command-line tool.
#   run_case.sh CASE_SCRIPT QUILL QUILL_FAKE [CORPUS_DIR]
# The case runs in a fresh scratch folder with these helpers; it fails on the
# first unmet expectation and may exit 77 to be reported as skipped.
#   quill ARGS...            run the real program; stdout, stderr, exit code
#   fake ARGS...             the same program on the stand-in engine
#   feed FILE quill|fake ... the same with FILE on standard input
#   expect_rc N              the last run's exit code
#   expect_out TEXT          stdout is exactly TEXT (printf %b escapes)
#   expect_out_file FILE     stdout equals FILE byte for byte
#   expect_out_has TEXT      stdout contains the line fragment TEXT
#   expect_out_lacks TEXT    stdout does not contain TEXT
#   expect_out_lines N       stdout has N lines
#   expect_out_empty / expect_err_empty
#   expect_err TEXT          stderr is exactly TEXT (printf %b escapes)
#   expect_err_has TEXT / expect_err_lacks TEXT / expect_err_lines N
#   expect_err_one_line      stderr is one line starting with "quill: "
#   put FILE TEXT            writes TEXT (printf %b escapes) to FILE
#   same_file A B            A and B are byte for byte equal
set -u

case_script=$1
QUILL=$2
QUILL_FAKE=$3
CORPUS_DIR=${4:-}
export QUILL QUILL_FAKE CORPUS_DIR
CASE_NAME=$(basename "$case_script" .sh)

SCRATCH=$(mktemp -d "${TMPDIR:-/tmp}/quill-cli-$CASE_NAME.XXXXXX")
trap 'chmod -R u+rwX "$SCRATCH" 2>/dev/null; rm -rf "$SCRATCH"' EXIT
cd "$SCRATCH" || exit 1
OUT=$SCRATCH/.stdout
ERR=$SCRATCH/.stderr
RC=0
LAST=""
: >"$OUT"
: >"$ERR"

fail() {
  echo "FAIL [$CASE_NAME]: $*" >&2
  echo "  last run: $LAST (exit $RC)" >&2
  echo "  --- stdout (first 40 lines)" >&2
  head -n 40 "$OUT" | cat -v >&2
  echo "  --- stderr (first 40 lines)" >&2
  head -n 40 "$ERR" | cat -v >&2
  exit 1
}

run_program() {
  local input=$1
  shift
  LAST="$*"
  "$@" <"$input" >"$OUT" 2>"$ERR"
  RC=$?
  if [ "$RC" -ge 124 ]; then fail "the program could not run, crashed or was killed (exit $RC)"; fi
  if grep -q 'internal error' "$ERR"; then fail "internal error reported"; fi
}
quill() { run_program /dev/null "$QUILL" "$@"; }
fake() { run_program /dev/null "$QUILL_FAKE" "$@"; }
feed() {
  local input=$1 which=$2
  shift 2
  case "$which" in
    quill) run_program "$input" "$QUILL" "$@" ;;
    fake) run_program "$input" "$QUILL_FAKE" "$@" ;;
    *) fail "feed: unknown program $which" ;;
  esac
}

put() { printf '%b' "$2" >"$1"; }
expect_rc() { [ "$RC" -eq "$1" ] || fail "expected exit code $1, got $RC"; }
expect_out() {
  printf '%b' "$1" >"$SCRATCH/.expected"
  cmp -s "$SCRATCH/.expected" "$OUT" || fail "stdout differs from: $(printf '%b' "$1" | cat -v)"
}
expect_err() {
  printf '%b' "$1" >"$SCRATCH/.expected"
  cmp -s "$SCRATCH/.expected" "$ERR" || fail "stderr differs from: $(printf '%b' "$1" | cat -v)"
}
expect_out_file() { cmp -s "$1" "$OUT" || fail "stdout differs from file $1"; }
expect_out_has() { grep -qF -- "$1" "$OUT" || fail "stdout lacks: $1"; }
expect_out_lacks() { ! grep -qF -- "$1" "$OUT" || fail "stdout has: $1"; }
expect_out_lines() {
  local n
  n=$(wc -l <"$OUT")
  [ "$n" -eq "$1" ] || fail "expected $1 stdout lines, got $n"
}
expect_out_empty() { [ ! -s "$OUT" ] || fail "stdout is not empty"; }
expect_err_empty() { [ ! -s "$ERR" ] || fail "stderr is not empty"; }
expect_err_has() { grep -qF -- "$1" "$ERR" || fail "stderr lacks: $1"; }
expect_err_lacks() { ! grep -qF -- "$1" "$ERR" || fail "stderr has: $1"; }
expect_err_lines() {
  local n
  n=$(wc -l <"$ERR")
  [ "$n" -eq "$1" ] || fail "expected $1 stderr lines, got $n"
}
expect_err_one_line() {
  expect_err_lines 1
  grep -q '^quill: ' "$ERR" || fail "stderr does not start with 'quill: '"
}
same_file() { cmp -s "$1" "$2" || fail "$1 and $2 differ"; }

# shellcheck source=/dev/null
source "$case_script"
exit 0
