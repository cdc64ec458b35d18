module m;
m2 u (.a(b);
wire b;
endmodule
