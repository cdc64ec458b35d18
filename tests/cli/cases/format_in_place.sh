# --in-place rewrites the files that change and leaves the others untouched.
put a.v 'a  \nb\n'
put b.v 'b\n'
touch -d '2001-01-01 00:00:00' b.v
before=$(stat -c %Y b.v)
fake format --in-place a.v b.v
expect_rc 0
expect_out_empty
expect_err '1 file reformatted, 1 unchanged\n'
put a.expected 'a\nb\n'
same_file a.v a.expected
[ "$(stat -c %Y b.v)" = "$before" ] || fail "an unchanged file was rewritten"

# -i is the short form; permissions are kept.
put c.v 'c \n'
chmod 640 c.v
fake format -i c.v
expect_rc 0
put c.expected 'c\n'
same_file c.v c.expected
[ "$(stat -c %a c.v)" = 640 ] || fail "permissions changed"

# The real engine: the result is what format prints.
put m.v 'module m(input a, output b);\nassign b = a;\nendmodule'
quill format m.v
cp "$OUT" m.expected
quill format --in-place m.v
expect_rc 0
same_file m.v m.expected

# A folder is rewritten file by file.
mkdir -p rtl/sub
put rtl/x.v 'x \n'
put rtl/sub/y.sv 'y \n'
fake format --in-place rtl
expect_rc 0
expect_err '2 files reformatted, 0 unchanged\n'
put x.expected 'x\n'
same_file rtl/x.v x.expected
put y.expected 'y\n'
same_file rtl/sub/y.sv y.expected

# A file that cannot be written is an error.
if [ "$(id -u)" -ne 0 ]; then
  put ro.v 'r \n'
  chmod 444 ro.v
  fake format --in-place ro.v
  expect_rc 2
  expect_err_has 'ro.v: cannot write'
fi
