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
  expect_out_has 'Exit codes:'
done

# Each command's help lists the exit codes it can return, and only those.
codes_of() {
  quill "$1" --help
  sed -n '/^Exit codes:/,$p' "$OUT" | grep -oE '^  [0-9]  ' | tr -d ' ' | tr '\n' ' '
}
[ "$(codes_of format)" = '0 1 2 3 ' ] || fail "format --help lists codes $(codes_of format)"
[ "$(codes_of lint)" = '0 1 2 ' ] || fail "lint --help lists codes $(codes_of lint)"
[ "$(codes_of highlight)" = '0 2 ' ] || fail "highlight --help lists codes $(codes_of highlight)"
