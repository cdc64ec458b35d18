# Suppression comments: every form, "all", block comments, reasons, unknown
# names (a warning with file and one-based line), unused ones on request.
put s.v 'x\nx FINDING warning latch a // quill: disable-line latch\n// quill: disable-next-line latch, comb-loop\n// FINDING warning latch b\n// FINDING warning comb-loop c\n// FINDING warning latch d\n'
fake lint s.v
expect_rc 1
expect_out 's.v:5:1: warning: c [comb-loop]\ns.v:6:1: warning: d [latch]\n'
expect_err_has '2 findings in 1 file (2 warnings, 0 errors)'

# A suppression names the check: another check on the line stays.
put other.v 'x FINDING warning latch a // quill: disable-line comb-loop\n'
fake lint other.v
expect_out 'other.v:1:1: warning: a // quill: disable-line comb-loop [latch]\n'

# Regions, closed by enable; "all"; a block comment; a reason after " -- ".
put r.v '/* quill: disable latch -- legacy code */\n// FINDING warning latch in\n// FINDING warning comb-loop kept\n// quill: enable latch\n// FINDING warning latch after\n// quill: disable all\n// FINDING error reg-assign quiet\n/* quill: enable all */\n// FINDING error reg-assign loud\n'
fake lint r.v
expect_out 'r.v:3:1: warning: kept [comb-loop]\nr.v:5:1: warning: after [latch]\nr.v:9:1: error: loud [reg-assign]\n'
expect_err_has '3 findings in 1 file (2 warnings, 1 error)'

# A region without enable runs to the end of the file; disable-file covers
# all of it, wherever the comment is.
put f.v '// FINDING warning latch one\n// FINDING error multi-driver two\n// quill: disable-file latch\n// quill: disable multi-driver\n// FINDING error multi-driver three\n'
fake lint f.v
expect_out 'f.v:2:1: error: two [multi-driver]\n'

# Unknown check names and directives are warnings naming file and line; the
# valid names in the same comment still work.
put u.v 'x\nx FINDING warning latch a // quill: disable-line lach, latch\n// quill: disabel latch\n// quill: disable-line\n'
fake lint u.v
expect_rc 0
expect_out_empty
expect_err_has "quill: warning: u.v:2: unknown check 'lach' in suppression comment"
expect_err_has "quill: warning: u.v:3: unknown suppression directive 'disabel'"
expect_err_has "quill: warning: u.v:4: suppression comment 'disable-line' names no check"
expect_err_has 'No findings.'

# enable without a disable is reported.
put e.v '// quill: enable latch\n'
fake lint e.v
expect_err_has "quill: warning: e.v:1: 'enable latch' without an open 'disable latch'"

# --report-unused-suppressions lists the ones that quieted nothing.
put n.v 'x FINDING warning latch a // quill: disable-line latch\n// quill: disable-next-line comb-loop\nclean\n/* quill: disable-file all */\n'
fake lint --report-unused-suppressions n.v
expect_rc 0
expect_err_has "quill: warning: n.v:2: suppression 'disable-next-line comb-loop' quieted nothing"
expect_err_lacks "n.v:1:"
fake lint n.v
expect_err_lacks 'quieted nothing'

# Comments inside strings are not comments.
put q.v '// FINDING warning latch a\nx = "// quill: disable-file latch";\n'
fake lint q.v
expect_out 'q.v:1:1: warning: a [latch]\n'
