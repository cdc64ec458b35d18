// Nested generate branches: the inner branches exclude each other and the
// outer else; a duplicate inside one inner branch is real.
module nested_generate #(parameter A = 1, parameter B = 0) (input wire clk);
  if (A) begin : g_a
    if (B) begin : g_ab
      wire w;
    end else begin : g_a_not_b
      wire w;
      sub u0 ();
      sub u0 (); // expect: dupli-inst
    end
  end else if (B) begin : g_b
    wire w;
  end else begin : g_none
    wire w;
  end
endmodule
