// A clocked block's own variables are written with '='; the block's
// outputs with '<='. A module variable written with '=' is still flagged.
module block_locals (
  input  wire       clk,
  input  wire [7:0] din,
  output reg  [7:0] sum,
  output reg  [7:0] last
);
  always @(posedge clk) begin : accumulate
    reg [7:0] partial;
    partial = din + sum;
    partial[0] = 1'b0;
    sum <= partial;
  end

  reg [7:0] shared;
  always @(posedge clk) begin // expect: blocking-assign
    shared = din;
    last <= shared;
  end
endmodule
