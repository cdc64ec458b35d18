# Text output: the file itself, with one ANSI colour per token class when
# colours are on; without colours, the file byte for byte.
put pins.xdc 'set_property PACKAGE_PIN W5 [get_ports clk] ; # clock\nset_property IOSTANDARD LVCMOS33 [get_ports {led[0]}]\n'
quill highlight --color=never pins.xdc
expect_rc 0
expect_err_empty
expect_out_file pins.xdc
quill highlight pins.xdc
expect_out_file pins.xdc

quill highlight --color=always pins.xdc
expect_rc 0
esc=$(printf '\033')
grep -qF "$esc[" "$OUT" || fail "no colour with --color=always"
# Without its colour codes the rendering is the file again.
shopt -s extglob
rendered=$(cat "$OUT"; printf .)
plain=${rendered//$esc\[*([0-9;])m/}
printf '%s' "${plain%.}" >stripped.txt
same_file stripped.txt pins.xdc

# The stand-in classifier: a..k are classes 0..10, one colour each.
put c.tcl 'abk\n'
fake highlight --color=always c.tcl
expect_out 'a\033[90mb\033[0m\033[94mk\033[0m\n'
fake highlight --color=never c.tcl
expect_out 'abk\n'

# Empty file: empty output.
put e.tcl ''
quill highlight --color=always e.tcl
expect_rc 0
expect_out_empty

# Several files get a header each.
put a.sdc 'x\n'
put b.ucf 'y\n'
quill highlight --color=never a.sdc b.ucf
expect_out '==> a.sdc <==\nx\n\n==> b.ucf <==\ny\n'
