// Only one branch of an `ifdef is compiled: its other branch declares and
// drives the same names without a conflict.
module ifdef_branches (
  input  wire       clk,
  input  wire [3:0] a,
  output wire [3:0] y
);
`ifdef FAST
  wire [3:0] t;
  assign t = a;
`else
  wire [3:0] t;
  assign t = ~a;
`endif
  assign y = t;

`ifdef USE_A
  reg mode;
`elsif USE_B
  reg mode;
`elsif USE_C
  reg mode;
`else
  reg mode;
`endif
  always @(posedge clk) mode <= a[0];

  wire w;
  wire w; // expect: dupli-define
endmodule
