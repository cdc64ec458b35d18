// Struct members and function locals live in scopes of their own, and
// assigns to disjoint members of one signal do not repeat each other.
package pkt_pkg;
  typedef struct packed {
    logic [3:0] opcode;
    logic       valid;
  } cmd_t;
  typedef struct packed {
    logic [3:0] opcode;
    logic       error;
  } rsp_t;
  localparam cmd_t kIdle = '{opcode: 4'h0, valid: 1'b0};
  function automatic logic [3:0] swap(input logic [3:0] v);
    logic [3:0] error;
    error = {v[1:0], v[3:2]};
    return error;
  endfunction : swap
  function automatic logic [3:0] twice(input logic [3:0] v);
    logic [3:0] error;
    error = v + v;
    return error;
  endfunction : twice
endpackage

module member_scopes (
  input  wire [7:0] a,
  output wire [7:0] bus,
  output wire [1:0] q
);
  assign bus.lo.data = a[3:0];
  assign bus.hi.data = a[7:4];
  assign bus.hi.flag = a[0];

  assign pkt.opcode = a[3:0];
  assign pkt.data[7:0] = a;
  assign pkt.valid = a[4];

  assign q.x = a[1]; // expect: repeated-assig
  assign q.x = a[2];
endmodule
