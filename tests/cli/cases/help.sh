# quill --help documents every command, option and exit code.
quill --help
expect_rc 0
expect_err_empty
for word in format lint highlight version --in-place --check --diff --force --format --max-findings --error-on \
  --color --jobs --stdin-name --version text json sarif always never auto warning error 'Exit codes'; do
  expect_out_has "$word"
done
for code in 0 1 2 3; do grep -q "^  $code  " "$OUT" || fail "exit code $code is not documented"; done

for command in format lint highlight; do
  quill "$command" --help
  expect_rc 0
  expect_out_has "quill $command"
done
