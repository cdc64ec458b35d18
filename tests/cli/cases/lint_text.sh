# Text output: path:LINE:1: severity: message [check], one-based lines.
put a.v 'module m;\n// FINDING warning latch case without default\nx\n// FINDING error reg-assign reg driven by assign\n'
put b.v '// FINDING warning dupli-define x defined twice\n'
fake lint a.v b.v
expect_rc 1
expect_err_has 'findings in'
expect_out 'a.v:2:1: warning: case without default [latch]\na.v:4:1: error: reg driven by assign [reg-assign]\nb.v:1:1: warning: x defined twice [dupli-define]\n'
fake lint --format=text b.v
expect_out 'b.v:1:1: warning: x defined twice [dupli-define]\n'

# Control bytes in a message cannot reach the terminal.
printf '// FINDING warning c a\033[31mb\n' >esc.v
fake lint esc.v
expect_out 'esc.v:1:1: warning: a [31mb [c]\n'
