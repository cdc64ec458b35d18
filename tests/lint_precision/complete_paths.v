// Blocks that assign every target on every path infer no latch: a complete
// if/else chain, a complete if/else before an if without else, defaults
// before a for loop, a case with a default or over every value. A path
// that leaves a target unassigned keeps the finding.
module complete_paths (
  input  wire       en,
  input  wire       we,
  input  wire [1:0] sel,
  input  wire [3:0] a,
  input  wire [3:0] b,
  output reg  [3:0] y,
  output reg        tag,
  output reg  [3:0] data,
  output reg  [3:0] z,
  output reg  [2:0] count,
  output reg  [3:0] w,
  output reg  [3:0] m,
  output reg  [3:0] k,
  output reg  [3:0] v,
  output reg  [3:0] f,
  output reg  [3:0] u
);
`define SEL_A 2'd0
  always @(*) begin
    if (en) begin
      if (we & sel[0])
        {tag, data} = {1'b1, a};
      else if (we)
        {tag, data} = {1'b0, b};
      else
        // a read: tag and data cleared
        {tag, data} = 5'd0;
    end else
      {tag, data} = {1'b1, b};
  end

  always @(*) begin
    if (en) y = a;
    else y = b;
    if (we) y = ~a;
  end

  always @(*) begin
    count = '0;
    for (int i = 0; i < 4; i++) begin
      if (a[i]) count = count + 3'd1;
    end
  end

  always @(*) begin
    case (sel)
      2'd0: z = a;
      2'd1: if (en) z = b; else z = a;
      default: z = 4'd0;
    endcase
  end

  always @(*) begin
    case (sel)
      `SEL_A: v = a;
      default: begin
        v = b;
        if (en) v = ~b;
      end
    endcase
  end

  always @(*) begin
    case (sel)
      2'b00: f = a;
      2'b01: f = b;
      2'b10, 2'b11: f = 4'd0;
    endcase
  end

  always @(*) begin // expect: latch
    case (sel)
      2'b00: u = a;
      2'b01: u = b;
    endcase
  end

  always @(*) begin // expect: latch
    if (en) w = a;
    else if (we) w = b;
  end

  always @(*) begin // expect: latch
    for (int i = 0; i < 4; i++) begin
      if (a[i]) m = b;
    end
  end

  always @(*) begin // expect: latch
    if (en) k = a;
    else k[0] = b[0];
    if (we) k = b;
  end

  // An attribute before a statement changes nothing; "full_case" declares
  // the case complete.
  always @(*) begin
    pick = 2'bx;
    (* parallel_case *)
    case (1'b1)
      a[0]: pick = 2'd1;
      a[1]: pick = 2'd2;
    endcase
  end

  always @(*) begin
    (* full_case *)
    case (sel)
      2'd0: chosen = a;
      2'd1: chosen = b;
      2'd2: chosen = ~a;
    endcase
  end

  // A part of a plainly declared vector as the selector, every value named.
  reg [3:0] mode;
  always @(*) begin
    case (mode[1:0])
      2'b00: lane = a[0];
      2'b01: lane = a[1];
      2'b10: lane = a[2];
      2'b11: lane = a[3];
    endcase
  end

  always @(*) begin // expect: latch
    case (mode[1:0])
      2'b00: half = a[0];
      2'b01: half = a[1];
      2'b10: half = a[2];
    endcase
  end

  // A loop index assigned only under an if keeps nothing: it is read only
  // inside the loops that start by assigning it.
  integer i1;
  always @(*) begin
    hit = 1'b0;
    if (en) begin
      for (i1 = 0; i1 < 4; i1 = i1 + 1) begin
        if (a[i1]) hit = 1'b1;
      end
    end
  end

  // Read after its loop, the index holds state between runs of the block.
  integer i2;
  always @(*) begin // expect: latch
    last = 2'd0;
    if (en) begin
      for (i2 = 0; i2 < 4; i2 = i2 + 1) begin
        if (a[i2]) last = b;
      end
    end
    found = i2;
  end
endmodule
