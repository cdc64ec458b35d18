// The name after `undef belongs to the directive: the generate if after it
// keeps its two exclusive branches.
module directive_names #(parameter FAST = 1) (
  input  wire [3:0] a,
  output wire [3:0] y,
  output wire       z
);
`define HALF(v) ((v) >> 1)
  wire [3:0] half = `HALF(a);
`undef HALF

  if (FAST) begin : gen_fast
    assign y = half;
  end else begin : gen_slow
    assign y = a;
  end

  assign z = a[0]; // expect: repeated-assig
  assign z = a[1];
endmodule
