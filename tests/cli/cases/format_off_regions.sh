# Lines between "// quill: format off" and "// quill: format on" come out
# byte for byte, markers included, in every mode.
put m.v 'module m(input a, output b);\n  // quill: format off\nassign    b =   a;\n    /* quill: format on */\nwire   c;\nendmodule\n'
quill format m.v
expect_rc 0
expect_out_has '  // quill: format off'
expect_out_has 'assign    b =   a;'
expect_out_has '    /* quill: format on */'
cp "$OUT" m.expected
quill format --in-place m.v
expect_rc 0
same_file m.v m.expected
quill format --check m.v
expect_rc 0
quill format m.v
expect_out_file m.expected

# Alignment around a region: the ports above and below it share one column,
# as if the region were formatted with them.
put p.v 'module p(\ninput a,\n// quill: format off\ninput   [7:0]   wide_bus_name,\n// quill: format on\noutput reg [3:0] q\n);\nendmodule\n'
quill format p.v
expect_rc 0
expect_out_has 'input   [7:0]   wide_bus_name,'
first=$(awk '/^ *input +a / { print index($0, " a ") }' "$OUT")
last=$(awk '/ q$/ { print index($0, " q") }' "$OUT")
[ -n "$first" ] && [ -n "$last" ] || fail "ports not found: $(cat "$OUT")"
[ "$first" -eq "$last" ] || fail "the ports around the region are not aligned: $(cat "$OUT")"

# An off without an on keeps the rest of the file.
put t.v 'a  \n// quill: format off\nb  \nc  \n'
fake format t.v
expect_rc 0
expect_out 'a\n// quill: format off\nb  \nc  \n'

# When the formatter would move text across a region's edge (the stand-in
# joins a line ending in JOIN with the next), the file is refused, with the
# region's lines named, exit 3, unless --force.
put j.v 'x JOIN\n// quill: format off\nb  \n// quill: format on\n'
cp j.v j.orig
fake format --in-place j.v
expect_rc 3
expect_err_has 'quill: warning: j.v: formatting would move text across the format-off region on lines 2 to 4; file left unchanged (--force writes it)'
expect_err_has '0 files reformatted, 0 unchanged, 1 refused'
same_file j.v j.orig
fake format j.v
expect_rc 3
expect_out_empty
expect_err_has 'j.v: formatting would move text across the format-off region on lines 2 to 4; not printed (--force prints it)'
fake format --check j.v
expect_rc 3
expect_err_has '0 files would be reformatted, 0 unchanged, 1 refused'
fake format --diff j.v
expect_rc 3
expect_out_empty
fake format --in-place --force j.v
expect_rc 0
expect_err_has 'lines 2 to 4 (written because of --force)'
put j.expected 'x JOIN // quill: format off\nb\n// quill: format on\n'
same_file j.v j.expected
