#!/usr/bin/env bash
# Emacs in batch mode with eglot and the README's Emacs set-up, taken from the
# README as written: one server started from an .xdc buffer serves the .v
# buffers too. Skips (77) when Emacs or eglot is missing. With --corpus DIR:
# the navigation test on the olofk-serv project of the corpus (read only;
# skipped when the corpus is absent).
# Usage: run_emacs_eglot_test.sh QUILL [--corpus DIR]
set -euo pipefail
quill=${1:?path to quill}
here=$(cd "$(dirname "$0")" && pwd)
corpus=
if [ "${2:-}" = "--corpus" ]; then
  corpus=${3:?corpus folder}/olofk-serv
  [ -d "$corpus/rtl" ] || { echo "corpus project $corpus absent: skipped"; exit 77; }
  corpus=$(cd "$corpus" && pwd)
fi
command -v emacs >/dev/null || { echo "emacs not installed (Debian: emacs-nox): skipped"; exit 77; }
if ! emacs --batch --eval "(require 'eglot)" >/dev/null 2>&1; then
  echo "eglot not available (Debian: elpa-eglot): skipped"
  exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$here/readme_snippet.sh" "$here/../../README.md" '**Emacs 28' elisp >"$work/init.el"
grep -q eglot-server-programs "$work/init.el" || { echo "README has no Emacs set-up"; exit 1; }
mkdir -p "$work/bin"
ln -s "$(cd "$(dirname "$quill")" && pwd)/$(basename "$quill")" "$work/bin/quill"
if [ -n "$corpus" ]; then
  cd "$corpus"
  PATH="$work/bin:$PATH" HOME="$work" QUILL_TEST_DIR="$corpus" \
    timeout 120 emacs --batch -l "$work/init.el" -l "$here/emacs_eglot_corpus_test.el"
  exit
fi
bash "$here/workspace_files.sh" "$work/ws"
"$quill" format "$work/ws/top.v" >"$work/expected.v"
printf 'module top(input clk, output [3:0] q);\n  wire [3:0]   count;\nreg    r;\n  counter #(.W(4)) u_count (.clk(clk), .q(count));\n  assign q = count;\nendmodule\n' \
  >"$work/ws/messy.v"
"$quill" format "$work/ws/messy.v" >"$work/messy-expected.v"
cd "$work/ws"
PATH="$work/bin:$PATH" HOME="$work" QUILL_TEST_DIR="$work/ws" QUILL_MESSY_EXPECTED="$work/messy-expected.v" \
  timeout 120 emacs --batch -l "$work/init.el" -l "$here/emacs_eglot_test.el"
