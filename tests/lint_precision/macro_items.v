// A macro call without its ";" is one item: the generate if after it still
// has two exclusive branches.
module macro_items #(parameter WIDE = 1) (
  input  wire       a,
  output wire [1:0] y,
  output wire       z
);
  `CHECK_ALWAYS(a_known, !$isunknown(a))

  if (WIDE) begin : gen_wide
    assign y = {a, a};
  end else begin : gen_narrow
    assign y = {1'b0, a};
  end

  assign z = a; // expect: repeated-assig
  assign z = ~a;
endmodule
