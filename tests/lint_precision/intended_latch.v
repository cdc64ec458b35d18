// always_latch asks for a latch; an accidental one in always @(*) is kept.
module intended_latch (
  input  wire       en,
  input  wire [3:0] a,
  output reg  [3:0] held,
  output reg  [3:0] slip
);
  always_latch begin
    if (en) begin
      held = a;
    end
  end
  always @(*) begin // expect: latch
    if (en) begin
      slip = a;
    end
  end
endmodule
