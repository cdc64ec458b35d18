# The content guard: when formatting would lose non-blank text, nothing is
# written or printed for that file, the lines are named and the exit code is
# 3; --force writes or prints anyway. The stand-in formatter drops "LOSE".
put g.v 'module LOSE m;\nkeep\nLOSE\nend\n'
cp g.v g.orig

fake format --in-place g.v
expect_rc 3
expect_out_empty
expect_err_lines 2
expect_err_has '0 files reformatted, 0 unchanged, 1 refused'
expect_err_has 'quill: warning: g.v: formatting would lose text on lines 1, 3; file left unchanged (--force writes it)'
same_file g.v g.orig

fake format g.v
expect_rc 3
expect_out_empty
expect_err_has 'g.v: formatting would lose text on lines 1, 3; not printed (--force prints it)'

fake format --check g.v
expect_rc 3
expect_out 'g.v\n'
expect_err_has 'quill: warning: g.v: formatting would lose text on lines 1, 3'

fake format --diff g.v
expect_rc 3
expect_out_has '-module LOSE m;'
expect_out_has '+module  m;'
expect_err_has 'quill: warning: g.v: formatting would lose text on lines 1, 3'
same_file g.v g.orig

fake format --force g.v
expect_rc 0
expect_out 'module  m;\nkeep\n\nend\n'
expect_err_has 'g.v: formatting would lose text on lines 1, 3 (printed because of --force)'

fake format --check --force g.v
expect_rc 1
expect_err_has 'g.v: formatting would lose text on lines 1, 3'

fake format --in-place --force g.v
expect_rc 0
expect_err_has 'g.v: formatting would lose text on lines 1, 3 (written because of --force)'
put g.expected 'module  m;\nkeep\n\nend\n'
same_file g.v g.expected

# Re-spacing alone never trips the guard.
put s.v 'a   b  \n\n\n  c\t\n'
fake format --in-place s.v
expect_rc 0
expect_err '1 file reformatted, 0 unchanged\n'

# The real formatter drops text outside the connections of a crowded
# connection line: the guard stops it.
put drop.v 'module m;\n  .a(x), .b(y) zzqq\nendmodule\n'
cp drop.v drop.orig
quill format --in-place drop.v
expect_rc 3
expect_err_has 'drop.v: formatting would lose text on line 2'
same_file drop.v drop.orig
