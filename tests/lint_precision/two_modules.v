// Two modules in one file: each declares its own names.
module first (input wire a, output wire y);
  wire t;
  assign t = a;
  assign y = t;
  sub u0 (.a(t));
endmodule

module second (input wire a, output wire y);
  wire t;
  assign t = ~a;
  assign y = t;
  sub u0 (.a(t));
  wire t; // expect: dupli-define
endmodule

// A non-ANSI port declared by its direction, then by its type.
module third (q, d, clk);
  output [3:0] q;
  input  [3:0] d;
  input        clk;
  reg    [3:0] q;
  reg    [3:0] q_next;
  reg    [3:0] q_next; // expect: dupli-define
  always @(posedge clk) q <= d;
endmodule
