// A combinational block that assigns a variable whole before reading it
// updates its own value: no loop. A part select before the whole assignment,
// or an assignment that reads the variable itself, keeps the finding.
module assigned_first (
  input  wire [7:0] a,
  input  wire [7:0] b,
  input  wire       s,
  output reg  [8:0] sum,
  output reg  [7:0] flags,
  output reg  [7:0] acc,
  output reg  [7:0] late
);
  always @(*) begin
    flags = a;
    sum = {1'b0, b};
    if (s)
      sum = sum + 9'd6;
    flags[0] = flags[1];
  end

  always @(*) begin
    acc = acc + a; // expect: comb-loop
  end

  always @(*) begin
    late[0] = s;
    late = late ^ a; // expect: comb-loop
  end
endmodule
