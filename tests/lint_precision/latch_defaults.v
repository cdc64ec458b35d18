// Combinational blocks that give every target a default before the if or
// case are latch-free; blocks that leave a target without one are not.
module latch_defaults (
  input  wire       en,
  input  wire [1:0] sel,
  input  wire [3:0] a,
  input  wire [3:0] b,
  output reg  [3:0] y,
  output reg  [3:0] z,
  output reg  [3:0] n,
  output reg  [3:0] l
);
  always @(*) begin
    y = 4'd0;
    z = 4'd0;
    if (en) begin
      y = a;
      z = b;
    end
  end

  always @(*) begin
    n = a;
    case (sel)
      2'd0: n = b;
      2'd1: if (en) n = ~b;
    endcase
  end

  always @(*) begin // expect: latch
    if (en) l = a;
  end
endmodule
