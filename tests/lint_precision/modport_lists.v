// A modport list that runs over several lines names signals declared once
// above it; the linter reads the list as a declaration, which is no second
// declaration of any of them.
interface stream_if (input logic clk);
  logic       valid;
  logic       ready;
  logic [7:0] data;
  modport source (output valid, data, input ready);
  modport sink (input valid, data, output ready);
  modport monitor (
    input valid,
          ready,
          data
  );
endinterface

interface twice_declared_if (input logic clk);
  logic valid;
  logic valid; // expect: dupli-define
  modport monitor (
    input valid
  );
endinterface

// A name on a continued declaration line, listed again in two modports.
interface pointers_if (input logic clk);
  logic [3:0] read_ptr,
              write_ptr;
  modport reader (
    output read_ptr, write_ptr,
    input clk);
  modport writer (
    input read_ptr, write_ptr,
    input clk);
endinterface
