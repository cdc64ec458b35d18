# --exact gives the library's whole-file report; --no-filter turns one
# filter off; --statistics counts what each filter dropped; -D and quill.toml
# defines choose `ifdef branches; unbalanced directives are linted as written.
put m.v 'module m;\nif (P) begin : a\n  wire x;\nend else begin : b\n  wire x;\nend\nendmodule\n'
quill lint --isolated --color=never m.v
expect_rc 0
expect_out_empty
quill lint --isolated --color=never --exact m.v
expect_rc 1
expect_out 'm.v:5:1: warning: signal '"'"'x'"'"' defined 2 times [dupli-define]\n'
quill lint --isolated --color=never --no-filter generate-scope m.v
expect_rc 1
expect_out_has "[dupli-define]"
quill lint --isolated --color=never --statistics m.v
expect_rc 0
expect_err_has "generate-scope"
expect_err_has "dupli-define"
expect_err_has "total 1"
quill lint --isolated --no-filter nonesuch m.v
expect_rc 2
expect_err_has "unknown filter 'nonesuch'"

put d.v 'module d;\n`ifdef FAST\nwire [7:0] t;\n`else\nwire [3:0] t;\n`endif\nassign t = 1'"'"'b1;\nendmodule\n'
quill lint --isolated --color=never d.v
expect_rc 1
expect_out 'd.v:7:1: warning: assign '"'"'t'"'"' LHS=4bit RHS=1bit [width-mismatch]\n'
quill lint --isolated --color=never -D FAST d.v
expect_out 'd.v:7:1: warning: assign '"'"'t'"'"' LHS=8bit RHS=1bit [width-mismatch]\n'
quill lint --isolated --color=never -D FAST -U FAST d.v
expect_out_has "LHS=4bit"
put quill.toml '[lint]\ndefines = ["FAST=1"]\n'
quill lint --color=never d.v
expect_out_has "LHS=8bit"
put quill.toml '[lint]\ndefines = ["9bad"]\n'
quill lint --color=never d.v
expect_rc 2
expect_err_has "not NAME or NAME=VALUE"
put quill.toml '[lint]\nfilters = ["empty-name"]\n'
quill lint --color=never m.v
expect_rc 1
expect_out_has "[dupli-define]"
rm quill.toml

put u.v 'module u;\n`ifdef A\nwire t;\nendmodule\n'
quill lint --isolated --color=never u.v
expect_err_has "u.v:2: \`ifdef without \`endif; \`ifdef branches not evaluated"
