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
