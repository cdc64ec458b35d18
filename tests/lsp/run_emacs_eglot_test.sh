#!/usr/bin/env bash
# Emacs in batch mode with eglot and the README's Emacs set-up, taken from the
# README as written: one server started from an .xdc buffer serves the .v
# buffers too. Skips (77) when Emacs or eglot is missing.
set -euo pipefail
quill=${1:?path to quill}
here=$(cd "$(dirname "$0")" && pwd)
command -v emacs >/dev/null || { echo "emacs not installed (Debian: emacs-nox): skipped"; exit 77; }
if ! emacs --batch --eval "(require 'eglot)" >/dev/null 2>&1; then
  echo "eglot not available (Debian: elpa-eglot): skipped"
  exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$here/workspace_files.sh" "$work/ws"
bash "$here/readme_snippet.sh" "$here/../../README.md" '**Emacs 28' elisp >"$work/init.el"
grep -q eglot-server-programs "$work/init.el" || { echo "README has no Emacs set-up"; exit 1; }
mkdir -p "$work/bin"
ln -s "$(cd "$(dirname "$quill")" && pwd)/$(basename "$quill")" "$work/bin/quill"
"$quill" format "$work/ws/top.v" >"$work/expected.v"
printf 'module top(input clk, output [3:0] q);\n  wire [3:0]   count;\nreg    r;\n  counter #(.W(4)) u_count (.clk(clk), .q(count));\n  assign q = count;\nendmodule\n' \
  >"$work/ws/messy.v"
"$quill" format "$work/ws/messy.v" >"$work/messy-expected.v"
cd "$work/ws"
PATH="$work/bin:$PATH" HOME="$work" QUILL_TEST_DIR="$work/ws" QUILL_MESSY_EXPECTED="$work/messy-expected.v" \
  timeout 120 emacs --batch -l "$work/init.el" -l "$here/emacs_eglot_test.el"
