// Signals of the same name in separate named generate blocks are separate
// objects; two blocks driving one outer signal are a real conflict.
module named_blocks (
  input  wire clk,
  input  wire a,
  input  wire b,
  output reg  shared
);
  begin : g_first
    reg local_q;
    always @(posedge clk) local_q <= a;
  end
  begin : g_second
    reg local_q;
    always @(posedge clk) local_q <= b;
  end

  begin : g_third
    always @(posedge clk) shared <= a; // expect: multi-driver
  end
  begin : g_fourth
    always @(posedge clk) shared <= b;
  end
endmodule
