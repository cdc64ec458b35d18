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
endmodule
