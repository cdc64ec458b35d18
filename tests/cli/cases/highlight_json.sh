# JSON output: one line per file with the runs of equal class, byte offsets.
put c.xdc 'aab k\n'
fake highlight --format=json c.xdc
expect_rc 0
expect_err_empty
expect_out '{"file":"c.xdc","runs":[{"offset":0,"length":2,"class":"plain"},{"offset":2,"length":1,"class":"comment"},{"offset":3,"length":1,"class":"plain"},{"offset":4,"length":1,"class":"flow-command"},{"offset":5,"length":1,"class":"plain"}]}\n'

put d.pcf 'cdefghij'
put e.lpf ''
fake highlight --format=json --color=always d.pcf e.lpf
expect_out '{"file":"d.pcf","runs":[{"offset":0,"length":1,"class":"string"},{"offset":1,"length":1,"class":"keyword"},{"offset":2,"length":1,"class":"property"},{"offset":3,"length":1,"class":"io-standard"},{"offset":4,"length":1,"class":"pin-name"},{"offset":5,"length":1,"class":"port-name"},{"offset":6,"length":1,"class":"brace"},{"offset":7,"length":1,"class":"tool-command"}]}\n{"file":"e.lpf","runs":[]}\n'

# The real classifier: runs cover the file exactly.
put p.xdc 'set_property PACKAGE_PIN W5 [get_ports clk]\n'
quill highlight --format=json p.xdc
expect_rc 0
expect_out_lines 1
expect_out_has '{"file":"p.xdc","runs":[{"offset":0,'
total=0
for length in $(grep -o '"length":[0-9]*' "$OUT" | cut -d: -f2); do total=$((total + length)); done
[ "$total" -eq "$(wc -c <p.xdc)" ] || fail "runs cover $total bytes, the file has $(wc -c <p.xdc)"
