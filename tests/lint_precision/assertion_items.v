// "assert property" is an assertion, not an instance named property; two
// instances of one name are kept.
module assertion_items (
  input wire clk,
  input wire req,
  input wire ack
);
  always @(posedge clk) begin
    assert property (req |-> ack);
    assert property (ack |-> req);
  end
  buf_cell u_cell (.a(req));
  buf_cell u_cell (.a(ack)); // expect: dupli-inst
endmodule
