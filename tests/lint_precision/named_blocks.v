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

  // A net's initializer that reads the name is no third declaration.
  genvar i, j;
  for (i = 0; i < 2; i = i + 1) begin : g_reader
    reg [3:0] ptr = 4'd0, ptr_next;
    wire empty = ptr == 4'd0;
  end
  for (j = 0; j < 2; j = j + 1) begin : g_writer
    reg [3:0] ptr = 4'd0, ptr_next;
  end

  begin : g_third
    always @(posedge clk) shared <= a; // expect: multi-driver
  end
  begin : g_fourth
    always @(posedge clk) shared <= b;
  end
endmodule
