// A use credited to a block that never names the signal: no use precedes
// the declaration. A real early use is kept.
module absent_use (
  input  wire a,
  input  wire b,
  output reg  y,
  output reg  z,
  output wire w
);
  always @* y = a;

  reg late;
  always @* begin
    if (b) z = late;
    else   z = a;
  end

  assign w = early; // expect: used-bef-declare
  wire early;
  assign early = a;
endmodule
