// Blocks that only read a signal do not drive it; two blocks that both
// assign one are a real multi-driver.
module read_only_driver (
  input  logic       clk,
  input  logic       rst_n,
  input  logic       start,
  output logic [3:0] count_o
);
  logic [3:0] count_q, count_d;

  // The linter reads this always_comb block together with the body of the
  // always_ff below: it takes count_q for driven here (read-only-driver
  // drops that) and warns of a '<=' the block does not hold
  // (absent-assignment drops that).
  always_comb begin
    count_d = count_q;
    if (start) count_d = count_q + 4'd1;
  end

  always_ff @(posedge clk or negedge rst_n) begin
    if (!rst_n) count_q <= 4'd0;
    else count_q <= count_d;
  end

  assign count_o = count_q;

  logic flag;
  always @(posedge clk) flag <= 1'b0; // expect: multi-driver
  always @(posedge clk) flag <= 1'b1;
endmodule
