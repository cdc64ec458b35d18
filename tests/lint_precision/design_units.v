// Each interface, package and program is linted on its own: the same signal
// names in two interfaces of one file are different objects.
interface req_if (input logic clk);
  logic valid;
  logic ready;
  modport master (output valid, input ready);
  modport slave (input valid, output ready);
endinterface

interface resp_if (input logic clk);
  logic valid;
  logic ready;
  modport master (output valid, input ready);
  modport slave (input valid, output ready);
endinterface

package widths_pkg;
  localparam int W = 8;
endpackage

package depths_pkg;
  localparam int W = 16;
endpackage

interface twice_if;
  logic valid;
  logic valid; // expect: dupli-define
endinterface
