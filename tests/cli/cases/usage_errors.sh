# Usage errors exit 2 with one line on stderr and nothing on stdout.
put a.v 'module m;\nendmodule\n'
usage_error() {
  quill "$@"
  expect_rc 2
  expect_out_empty
  expect_err_one_line
  expect_err_has 'quill: error:'
}
usage_error lint --bogus a.v
usage_error format
usage_error lint
usage_error highlight
usage_error lint --format=xml a.v
usage_error lint --format xml a.v
usage_error lint --error-on=info a.v
usage_error lint --color=sometimes a.v
usage_error highlight --color=sometimes a.v
usage_error highlight --format=sarif a.v
usage_error lint --max-findings=-1 a.v
usage_error lint --max-findings=many a.v
usage_error lint --jobs=0 a.v
usage_error format --jobs=x a.v
usage_error format --check --diff a.v
usage_error format --in-place --check a.v
usage_error format -i --diff a.v
usage_error format --in-place -
usage_error lint - -
usage_error version extra
