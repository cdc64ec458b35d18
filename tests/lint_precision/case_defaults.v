// A case without default after a default assignment is latch-free; a block
// whose branch target has no default keeps its latch finding.
module case_defaults (
  input  wire [1:0] state,
  input  wire       go,
  output reg  [1:0] next,
  output reg        busy,
  output reg  [1:0] other
);
  always @(*) begin
    next = state;
    busy = 1'b0;
    case (state)
      2'd0: if (go) next = 2'd1;
      2'd1: begin next = 2'd2; busy = 1'b1; end
    endcase
  end

  reg [1:0] seen;
  always @(*) begin // expect: latch
    seen = 2'd0;
    if (go) other = 2'd1;
  end
endmodule
