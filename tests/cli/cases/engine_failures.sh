# Engine failures are one-line errors with exit 2, never crashes.
put f.v 'FAIL_FORMAT\n'
fake format f.v
expect_rc 2
expect_out_empty
expect_err_one_line
expect_err_has 'f.v: the formatter could not process this file'

put n.v 'LINT_NULL\n'
fake lint n.v
expect_rc 2
expect_err_one_line
expect_err_has 'n.v: the linter could not process this file'

put r.v 'LINT_RAW not json\n'
fake lint r.v
expect_rc 2
expect_err_one_line
expect_err_has 'r.v: the linter returned a report that is not an array of findings'

# The engine's exception fallback, unescaped quote and all.
put x.v 'LINT_RAW [{"severity":"error","line":0,"check":"cpp-exception","message":"bad "x""}]\n'
fake lint x.v
expect_rc 1
expect_out 'x.v:1:1: error: bad "x" [cpp-exception]\n'
fake lint --format=raw x.v
expect_out '[{"severity":"error","line":0,"check":"cpp-exception","message":"bad "x""}]\n'

# A result larger than the first buffer is fetched with the size asked for.
put e.v 'EXPAND\n'
fake format e.v
expect_rc 0
[ "$(wc -c <"$OUT")" -eq 10007 ] || fail "expanded result has the wrong size"
