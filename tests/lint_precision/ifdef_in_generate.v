// An `ifdef inside a generate branch, and a branch-local duplicate that is real.
module ifdef_in_generate #(parameter P = 1) (input wire clk, input wire d);
  if (P) begin : g_p
`ifdef SIM
    reg probe;
`else
    reg probe;
`endif
    always @(posedge clk) probe <= d;
  end else begin : g_not_p
    // The linter counts all three declarations and reports the second.
    reg probe; // expect: dupli-define
    reg probe;
  end
endmodule
