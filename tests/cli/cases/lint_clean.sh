# The real linter on modules with nothing to report.
put empty.v ''
put m.v 'module m;\nendmodule\n'
quill lint empty.v m.v
expect_rc 0
expect_out_empty
expect_err_has 'No findings.'
expect_err_lines 1
quill lint --format=raw empty.v m.v
expect_rc 0
expect_out '[]\n[]\n'
quill lint --format=json empty.v m.v
expect_rc 0
expect_out '[]\n'
quill lint --format=sarif m.v
expect_rc 0
expect_out_has '"version": "2.1.0"'
expect_out_has '"results": []'
