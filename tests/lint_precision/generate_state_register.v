// A state register declared and driven in each branch of a generate if/else,
// read by the next-state logic beside each driver: the linter counts the
// readers as drivers too, so the drivers are not pairwise apart unless the
// readers are left out. The two always_ff blocks are never elaborated
// together.
module generate_state_register #(parameter bit FAST = 1'b0) (
  input  logic       clk,
  input  logic       rst_n,
  input  logic       go,
  output logic       busy
);
  typedef enum logic [1:0] {IDLE, RUN, DONE} state_e;

  if (FAST) begin : g_fast
    state_e state_q, state_d;

    always_comb begin
      state_d = state_q;
      unique case (state_q)
        IDLE: if (go) state_d = DONE;
        default: state_d = IDLE;
      endcase
    end

    always_ff @(posedge clk or negedge rst_n) begin
      if (!rst_n) state_q <= IDLE;
      else state_q <= state_d;
    end

    assign busy = state_q != IDLE;
  end else begin : g_slow
    state_e state_q, state_d;

    always_comb begin
      state_d = state_q;
      unique case (state_q)
        IDLE: if (go) state_d = RUN;
        RUN: state_d = DONE;
        default: state_d = IDLE;
      endcase
    end

    always_ff @(posedge clk or negedge rst_n) begin
      if (!rst_n) state_q <= IDLE;
      else state_q <= state_d;
    end

    assign busy = state_q != IDLE;

    // Two drivers in one branch stay a multi-driver.
    logic flag;
    always_ff @(posedge clk) flag <= go; // expect: multi-driver
    always_ff @(posedge clk) flag <= 1'b0;
  end
endmodule
