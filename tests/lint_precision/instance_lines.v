// The same instance name in both branches of a generate if, each with a
// parameter list before the name.
module instance_lines #(parameter int N = 1) (
  input  logic clk,
  input  logic d,
  output logic q
);
  if (N == 1) begin : gen_single
    stage #(
      .W (1)
    ) i_stage (
      .clk (clk),
      .d   (d),
      .q   (q)
    );
  end else begin : gen_multi
    logic [N-1:0] chain;
    stage #(
      .W (N)
    ) i_stage (
      .clk (clk),
      .d   (d),
      .q   (chain[0])
    );
    assign q = chain[0];
  end
  stage #(.W(1)) i_twice (.clk(clk), .d(d), .q());
  stage #(.W(1)) i_twice (.clk(clk), .d(d), .q()); // expect: dupli-inst
endmodule
