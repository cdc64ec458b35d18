# "-" reads standard input, named <stdin> unless --stdin-name says otherwise.
put a.v 'module m;\nendmodule'
quill format a.v
cp "$OUT" from_file.out
feed a.v quill format -
expect_rc 0
expect_out_file from_file.out

put f.v 'x\n// FINDING warning latch message\n'
feed f.v fake lint -
expect_rc 1
expect_out '<stdin>:2:1: warning: message [latch]\n'
feed f.v fake lint --stdin-name rtl/top.v -
expect_out 'rtl/top.v:2:1: warning: message [latch]\n'
feed f.v fake lint --format=sarif --stdin-name rtl/top.v -
expect_out_has '"uri": "rtl/top.v"'

put t.v 'x  \n'
feed t.v fake format --check -
expect_rc 1
expect_out '<stdin>\n'
feed t.v fake format --diff --stdin-name=t.v -
expect_out '--- t.v\n+++ t.v\n@@ -1 +1 @@\n-x  \n+x\n'

put p.xdc 'abc\n'
feed p.xdc fake highlight --format=json -
expect_out_has '"file":"<stdin>"'
