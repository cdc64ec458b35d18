#!/usr/bin/env bash
# Headless Neovim with the README's Neovim 0.7 set-up, taken from the README
# as written: .v and .xdc buffers attach; outline, definition across two
# files, hover, references, folding and a code action. Skips (77) without nvim.
set -euo pipefail
quill=${1:?path to quill}
here=$(cd "$(dirname "$0")" && pwd)
command -v nvim >/dev/null || { echo "nvim not installed: skipped"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
bash "$here/workspace_files.sh" "$work/ws"
bash "$here/readme_snippet.sh" "$here/../../README.md" '**Neovim 0.7**' lua >"$work/init.lua"
grep -q start_client "$work/init.lua" || { echo "README has no Neovim 0.7 set-up"; exit 1; }
mkdir -p "$work/bin"
ln -s "$(cd "$(dirname "$quill")" && pwd)/$(basename "$quill")" "$work/bin/quill"
cd "$work/ws"
PATH="$work/bin:$PATH" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_STATE_HOME="$work/state" \
  timeout 120 nvim --headless -i NONE -n -u "$work/init.lua" -c "luafile $here/neovim_navigation_test.lua"
