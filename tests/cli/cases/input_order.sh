# Files are answered in the order given, one error does not stop the others,
# and errors appear in their place.
put a.v 'a \n'
put b.v 'b\n'
put c.v 'c \n'
fake format --check c.v missing.v a.v b.v
expect_rc 2
expect_out 'c.v\na.v\n'
expect_err 'quill: error: missing.v: No such file or directory\n2 files would be reformatted, 1 unchanged, 1 failed\n'

# Each file's stderr comes right after its stdout.
put l1.v '// FINDING warning latch first\n'
put l2.v '// FINDING warning latch second\n'
"$QUILL_FAKE" lint -j 3 l1.v nope.v l2.v >mixed.txt 2>&1
printf '%s\n' 'l1.v:1:1: warning: first [latch]' 'quill: error: nope.v: No such file or directory' \
  'l2.v:1:1: warning: second [latch]' '2 findings in 2 files (2 warnings, 0 errors)' >expected.txt
same_file mixed.txt expected.txt
