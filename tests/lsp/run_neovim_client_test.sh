#!/usr/bin/env bash
# Runs the headless Neovim client test against the built quill; skips (77)
# when Neovim is not installed.
set -euo pipefail
quill=${1:?path to quill}
here=$(cd "$(dirname "$0")" && pwd)
command -v nvim >/dev/null || { echo "nvim not installed: skipped"; exit 77; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cat >"$work/top.v" <<'VERILOG'
module top(input clk, output reg [3:0] q);
wire   a;
reg [7:0]  longer_name;
always @(posedge clk) begin
  q = q + 1;
end
endmodule
VERILOG
"$quill" format "$work/top.v" >"$work/expected.v"
QUILL="$quill" QUILL_TEST_FILE="$work/top.v" QUILL_EXPECTED_FILE="$work/expected.v" \
  timeout 60 nvim --headless -u NONE -i NONE -n -c "luafile $here/neovim_client_test.lua"
