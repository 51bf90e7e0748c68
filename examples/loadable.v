// A 4-bit counter: reset at any time, a value to load, and a carry for the next counter.
module loadable(input clk, rst_n, load, en, input [3:0] d, output reg [3:0] q, output carry);
  always @(posedge clk or negedge rst_n)
    if (!rst_n) q <= 0;
    else if (load) q <= d;
    else if (en) q <= q + 1;
  assign carry = en & (&q);
endmodule
