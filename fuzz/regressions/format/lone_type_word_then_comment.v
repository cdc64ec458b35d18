fifo
// c
u0 (
.a(b)
);
