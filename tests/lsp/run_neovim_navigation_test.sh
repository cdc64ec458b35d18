#!/usr/bin/env bash
# Headless Neovim with one of the README's Neovim set-ups (the one under the
# given heading; the 0.7 one by default), taken from the README as written:
# .v and .xdc buffers attach; outline, definition across two files, hover,
# references, folding and a code action. Skips (77) without nvim.
# With --corpus DIR instead of a heading: the same checks on the olofk-serv
# project of the corpus (read only; skipped when the corpus is absent).
# Usage: run_neovim_navigation_test.sh QUILL [HEADING | --corpus DIR]
set -euo pipefail
quill=${1:?path to quill}
here=$(cd "$(dirname "$0")" && pwd)
corpus=
if [ "${2:-}" = "--corpus" ]; then
  corpus=${3:?corpus folder}/olofk-serv
  [ -d "$corpus/rtl" ] || { echo "corpus project $corpus absent: skipped"; exit 77; }
  corpus=$(cd "$corpus" && pwd)
  set -- "$1"
fi
command -v nvim >/dev/null || { echo "nvim not installed: skipped"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$here/workspace_files.sh" "$work/ws"
heading=${2:-'**Neovim 0.7**'}
bash "$here/readme_snippet.sh" "$here/../../README.md" "$heading" lua >"$work/init.lua"
grep -q 'quill' "$work/init.lua" || { echo "README has no set-up under $heading"; exit 1; }
mkdir -p "$work/bin"
ln -s "$(cd "$(dirname "$quill")" && pwd)/$(basename "$quill")" "$work/bin/quill"
if [ -n "$corpus" ]; then
  cd "$corpus"
  PATH="$work/bin:$PATH" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_STATE_HOME="$work/state" \
    timeout 120 nvim --headless -i NONE -n -u "$work/init.lua" -c "luafile $here/neovim_corpus_test.lua"
  exit
fi
cd "$work/ws"
PATH="$work/bin:$PATH" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_STATE_HOME="$work/state" \
  timeout 120 nvim --headless -i NONE -n -u "$work/init.lua" -c "luafile $here/neovim_navigation_test.lua"
