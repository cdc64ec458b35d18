// Verilog names are case-sensitive: OUT and out are two signals.
module letter_case (
  input  wire in_a,
  output wire OUT
);
  wire out;
  assign out = in_a;
  assign OUT = out;
  wire fb;
  assign fb = fb ^ in_a; // expect: comb-loop
endmodule
