# A path that cannot be read is a one-line error and exit 2.
put a.v 'module m;\nendmodule\n'
for command in format lint highlight; do
  quill "$command" a.v/b.v
  expect_rc 2
  expect_out_empty
  expect_err_one_line
  expect_err_has 'a.v/b.v: Not a directory'
done
if [ "$(id -u)" -ne 0 ]; then
  put locked.v 'module m;\nendmodule\n'
  chmod 000 locked.v
  quill lint locked.v
  expect_rc 2
  expect_err_one_line
  expect_err_has 'locked.v: Permission denied'
fi
