# Exit 1 when a finding is at or above --error-on (default: warning).
put w.v '// FINDING warning latch w\n'
put e.v '// FINDING error reg-assign e\n'
put clean.v 'x\n'
fake lint w.v
expect_rc 1
fake lint --error-on=warning w.v
expect_rc 1
fake lint --error-on=error w.v
expect_rc 0
expect_out 'w.v:1:1: warning: w [latch]\n'
fake lint --error-on error w.v e.v
expect_rc 1
fake lint --error-on=error clean.v
expect_rc 0
fake lint clean.v
expect_rc 0
expect_out_empty
