// A concatenation target written over several lines names no signal on the
// "assign {" line; no finding may name the empty signal.
module concatenation_target (
  input  wire [1:0] c,
  output wire       hi,
  output wire       lo
);
  assign {
    hi,
    lo } = c;
endmodule
