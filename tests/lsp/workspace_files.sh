#!/usr/bin/env bash
# Writes the small workspace the editor tests open: two Verilog files that
# refer to each other and a constraint file. Usage: workspace_files.sh DIR
set -euo pipefail
dir=${1:?folder}
mkdir -p "$dir/rtl"
cat >"$dir/top.v" <<'VERILOG'
module top(input clk, output [3:0] q);
  wire [3:0] count;
  counter #(.W(4)) u_count (.clk(clk), .q(count));
  assign q = count;
endmodule
VERILOG
cat >"$dir/rtl/counter.v" <<'VERILOG'
// counts clock edges
// on every rising edge
module counter #(parameter W = 8) (
  input clk,
  output reg [W-1:0] q
);
  always @(posedge clk) begin
    q = q + 1;
  end
endmodule
VERILOG
cat >"$dir/pins.xdc" <<'XDC'
set_property PACKAGE_PIN W5 [get_ports clk]
XDC
