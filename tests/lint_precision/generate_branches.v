// The same names declared, instantiated and driven in the branches of a
// generate if/else and of a generate case: different objects.
module generate_branches #(parameter WIDE = 1, parameter MODE = 0) (
  input  wire       clk,
  input  wire [7:0] d,
  output wire [7:0] q
);
  if (WIDE) begin : g_wide
    reg [7:0] r;
    always @(posedge clk) r <= d;
    assign q = r;
  end else begin : g_narrow
    reg [7:0] r;
    always @(posedge clk) r <= {4'd0, d[3:0]};
    assign q = r;
  end

  case (MODE)
    0: begin : g_zero
      sub u_sub (.a(d[0]));
    end
    default: begin : g_other
      sub u_sub (.a(d[1]));
    end
  endcase

  generate
    if (WIDE)
      wire spare;
    else
      wire spare;
  endgenerate

  wire twice;
  wire twice; // expect: dupli-define
endmodule
