# --check writes nothing, lists the files that would change and exits 1.
put clean.v '\n'
put script.v 'import os\n'
put unterminated.v 'module m;\nendmodule'
cp unterminated.v unterminated.orig
quill format --check clean.v script.v
expect_rc 0
expect_out_empty
expect_err '0 files would be reformatted, 2 unchanged\n'
quill format --check clean.v unterminated.v script.v
expect_rc 1
expect_out 'unterminated.v\n'
expect_err '1 file would be reformatted, 2 unchanged\n'
same_file unterminated.v unterminated.orig
