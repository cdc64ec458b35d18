// Names read in a net's initializer are not declared there.
module initializer_names (clk, d, q, busy);
  input        clk;
  input  [3:0] d;
  output       q;
  output       busy;
  reg          q;
  reg          busy;
  wire   [3:0] mix = {d[2:0], q};
  wire         idle = ~busy;
  wire   [3:0] twice;
  wire   [3:0] twice; // expect: dupli-define
  // An initializer over several lines: the linter reads its pieces as names.
  reg    [3:0] flags;
  wire   [3:0] reversed = d[0] ?
    {flags[0], flags[1],
     flags[2], flags[3]} : flags;

  always @(posedge clk) begin
    q <= d[0];
    busy <= idle & d[1];
  end
endmodule
