// Paths below one instance are different signals, and so is a member of
// another object that bears the target's name; a path that reads its own
// target is a loop.
module hierarchical_paths (input wire clk);
  assign dut.core.err_in = dut.core.alert_out;
  assign dut.bus.req = dut.bus.req | dut.bus.ack; // expect: comb-loop
  wire loop;
  assign loop = loop; // expect: comb-loop
  wire [7:0] code;
  wire ready;
  assign code[7:0] = pkt.code[7:0];
  assign ready = valid & resp.ready;
  assign ready_loop = resp.ready_loop & ready_loop; // expect: comb-loop
  // A tree of stages: each level reads the one below it.
  genvar l;
  for (l = 1; l < 4; l = l + 1) begin : g_level
    assign stage[l] = stage[l-1] & ~mask[l];
    assign again[l] = again[l] | mask[l]; // expect: comb-loop
  end
endmodule
