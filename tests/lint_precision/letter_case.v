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

// An assign to OUT2 and an always block driving out2: two signals.
module letter_case_drivers (
  input  wire clk,
  input  wire d,
  output wire OUT2
);
  reg out2;
  always @(posedge clk) out2 <= d;
  assign OUT2 = out2;
endmodule

// A function named like the variable it feeds: no loop.
module letter_case_function (
  input  wire [3:0] a,
  output reg  [4:0] sum
);
  function [4:0] Sum(input [3:0] x);
    Sum = x + 1'b1;
  endfunction
  reg [4:0] acc;
  always @(a) begin
    sum = Sum(a);
    acc = Sum(a) + acc; // expect: comb-loop
  end
endmodule
