// A latch warning on a block with no if of its own: the linter read the
// next block's branches. A real latch is kept.
module absent_branch (
  input  logic       clk,
  input  logic       rst_n,
  input  logic [3:0] a,
  input  logic       s,
  output logic [3:0] y,
  output logic [3:0] q,
  output logic [3:0] l
);
  always_comb begin : decode
    for (int i = 0; i < 4; i++) begin
      y[i] = s ? a[i] : 1'b0;
    end
  end
  always_ff @(posedge clk or negedge rst_n) begin : hold
    if (!rst_n) begin
      q <= '0;
    end else if (s) begin
      q <= a;
    end
  end
  always @(*) begin // expect: latch
    if (s) begin
      l = a;
    end
  end
endmodule
