// A small UART transmitter, written the way code looks before formatting.
module uart_tx #(
parameter CLKS_PER_BIT = 434,
  parameter [3:0] DATA_BITS=8 // payload width
) (
  input wire clk, input wire rst_n,
input wire [7:0] data,
  input wire  start,
     output reg tx,
  output wire busy
);

/* state encoding
   (one-hot would be faster) */
localparam IDLE = 2'd0;
localparam START=2'd1;
localparam DATA = 2'd2;
  localparam STOP = 2'd3;
reg [1:0] state;
  reg [15:0]   clk_count;
reg [2:0] bit_index;
   reg [7:0] shift;
wire done;
assign busy = (state != IDLE);
assign done = (clk_count == CLKS_PER_BIT - 1);
always @(posedge clk or negedge rst_n) begin
if (!rst_n) begin
state <= IDLE;
tx <= 1'b1;
end else begin
case (state)
IDLE:
if (start) begin
shift <= data;
state <= START;
end
START: begin
tx <= 1'b0;
if (done) state <= DATA;
end
default: state <= IDLE;
endcase
end
end
always @(posedge clk) begin
if (done) clk_count <= 0;
  else clk_count <= clk_count + 1;
end
always @(*)
  bit_index = shift[2:0];
sync_fifo   #(.WIDTH(8))  u_fifo(
.clk(clk),
.din( data ), // write side
  .dout(shift)
);
endmodule
