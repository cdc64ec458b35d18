# SARIF output: one 2.1.0 log for the whole run, a rule per check name,
# one-based lines, relative paths as relative URIs.
mkdir -p rtl
put rtl/a.v 'x\nx\n// FINDING warning latch case without default\n'
put 'rtl/b c.v' '// FINDING error reg-assign reg driven\n'
fake lint --format=sarif rtl
expect_rc 1
expect_err_empty
expect_out_has '"$schema": "https://json.schemastore.org/sarif-2.1.0.json"'
expect_out_has '"version": "2.1.0"'
expect_out_has '"name": "quill"'
expect_out_has '"version": "0"'
expect_out_has '"informationUri": "https://'
expect_out_has '"helpUri": "https://'
expect_out_has '"fullDescription": {'
expect_out_has '"text": "case without default."'
for check in latch multi-driver width-mismatch blocking-assign dupli-define repeated-assig used-bef-declare comb-loop \
  dupli-inst reg-assign wire-always; do
  expect_out_has "\"id\": \"$check\""
done
expect_out_has '"ruleId": "latch"'
expect_out_has '"ruleId": "reg-assign"'
expect_out_has '"level": "warning"'
expect_out_has '"level": "error"'
expect_out_has '"uri": "rtl/a.v"'
expect_out_has '"uri": "rtl/b%20c.v"'
expect_out_has '"startLine": 3'
expect_out_has '"startLine": 1'

[ "$(grep -c '"\$schema"' "$OUT")" -eq 1 ] || fail "more than one log"
[ "$(grep -c '"ruleId"' "$OUT")" -eq 2 ] || fail "expected two results"
