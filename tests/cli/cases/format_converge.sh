# Formatting repeats until the text stops changing (at most 5 rounds), so
# --check after --in-place passes. The stand-in formatter spaces out one
# "~~" per round: "~~~~" settles after three changes, "~~~~~~~~" does not.
put slow.v 'a ~~~~\n'
fake format slow.v
expect_rc 0
expect_out 'a ~ ~ ~ ~\n'

fake format --in-place slow.v
expect_rc 0
expect_err '1 file reformatted, 0 unchanged\n'
put slow.expected 'a ~ ~ ~ ~\n'
same_file slow.v slow.expected
fake format --check slow.v
expect_rc 0
expect_out_empty
expect_err '0 files would be reformatted, 1 unchanged\n'

# A text that still changes after 5 rounds is an error for that file, which
# is left alone; the other files go on.
put restless.v '~~~~~~~~\n'
cp restless.v restless.orig
put ok.v 'ok  \n'
fake format --in-place restless.v ok.v
expect_rc 2
expect_err_has 'quill: error: restless.v: formatting still changes the text after 5 rounds; file left unchanged'
expect_err_has '1 file reformatted, 0 unchanged, 1 failed'
same_file restless.v restless.orig
put ok.expected 'ok\n'
same_file ok.v ok.expected

for mode in '' --check --diff; do
  fake format $mode restless.v
  expect_rc 2
  expect_out_empty
  expect_err_has 'restless.v: formatting still changes the text after 5 rounds'
done
