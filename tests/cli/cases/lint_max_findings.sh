# --max-findings caps the findings printed in the whole run; the exit code
# still counts them all; a note on stderr tells how many were not shown.
put a.v '// FINDING warning c1 one\n// FINDING warning c2 two\n'
put b.v '// FINDING warning c3 three\n'
fake lint --max-findings 2 a.v b.v
expect_rc 1
expect_out 'a.v:1:1: warning: one [c1]\na.v:2:1: warning: two [c2]\n'
expect_err_lines 2
expect_err_has 'quill: 1 more finding not shown (--max-findings 2)'

fake lint --max-findings=0 a.v b.v
expect_rc 1
expect_out_empty
expect_err_has '3 more findings not shown (--max-findings 0)'

fake lint --max-findings 1 --format=raw a.v b.v
expect_rc 1
expect_out '[{"severity":"warning","line":0,"check":"c1","message":"one"}]\n[]\n'

fake lint --max-findings 2 --format=sarif a.v b.v
expect_rc 1
[ "$(grep -c '"ruleId"' "$OUT")" -eq 2 ] || fail "expected two results"

fake lint --max-findings 3 a.v b.v
expect_rc 1
expect_out_lines 3
expect_err_has '3 findings in 2 files (3 warnings, 0 errors)'
expect_err_lines 1
