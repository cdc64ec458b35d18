# A NUL byte in the first 8 kB makes a file binary: skipped with an error.
printf 'module m;\0\nendmodule\n' >bin.v
for command in format lint highlight; do
  quill "$command" bin.v
  expect_rc 2
  expect_out_empty
  expect_err_one_line
  expect_err_has 'bin.v: binary file'
done
feed bin.v quill lint -
expect_rc 2
expect_err_has '<stdin>: binary file'

# A NUL after the first 8 kB is text.
{ printf 'module m;\n'; head -c 9000 /dev/zero | tr '\0' ' '; printf '\0\nendmodule\n'; } >late.v
quill lint --format=raw late.v
expect_rc_ok() { [ "$RC" -eq 0 ] || [ "$RC" -eq 1 ] || fail "expected exit 0 or 1, got $RC"; }
expect_rc_ok
expect_err_empty
expect_out_lines 1
