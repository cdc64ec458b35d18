# A missing file is a one-line error and exit 2, for every command.
for command in format lint highlight; do
  quill "$command" nope.v
  expect_rc 2
  expect_out_empty
  expect_err_one_line
  expect_err_has 'quill: error: nope.v: No such file or directory'
done
