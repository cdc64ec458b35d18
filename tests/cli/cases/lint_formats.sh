# Output for CI: GitHub annotations (one-based lines, escaped), one JSON
# document, the engine's raw arrays, and the summary line on stderr.
put a.v 'x\n// FINDING warning latch 50% done, a:b\n'
put 'b,c:d.v' '// FINDING error reg-assign reg\n'
put clean.v 'x\n'
fake lint --format=github a.v 'b,c:d.v' clean.v
expect_rc 1
expect_err_empty
expect_out '::warning file=a.v,line=2,title=latch::50%25 done, a:b\n::error file=b%2Cc%3Ad.v,line=1,title=reg-assign::reg\n'

fake lint --format=json a.v 'b,c:d.v' clean.v
expect_rc 1
expect_err_empty
expect_out '[\n  {"path":"a.v","line":2,"check":"latch","severity":"warning","message":"50% done, a:b"},\n  {"path":"b,c:d.v","line":1,"check":"reg-assign","severity":"error","message":"reg"}\n]\n'
python3 -c 'import json,sys; json.load(open(sys.argv[1]))' "$OUT" || fail "not one JSON document"
fake lint --format=json clean.v
expect_rc 0
expect_out '[]\n'

fake lint --format=raw a.v clean.v
expect_out '[{"severity":"warning","line":1,"check":"latch","message":"50% done, a:b"}]\n[]\n'

fake lint a.v 'b,c:d.v' clean.v
expect_err_has '2 findings in 2 files (1 warning, 1 error)'
expect_err_lines 1
fake lint clean.v
expect_err_has 'No findings.'
expect_err_lines 1

# lint --help lists the checks from the check table.
quill lint --help
expect_rc 0
for check in latch multi-driver width-mismatch blocking-assign dupli-define repeated-assig used-bef-declare comb-loop \
  dupli-inst reg-assign wire-always; do
  expect_out_has "  $check "
done
