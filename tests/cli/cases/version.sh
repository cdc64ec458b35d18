# The tool's version (the project's) and the engine's, by the command and by
# the flag.
quill version
expect_rc 0
expect_out_has 'engine: core_engine v1.25'
grep -qE '^quill [0-9]+\.[0-9]+\.[0-9]+$' "$OUT" || fail "no tool version line"
expect_out_lines 2
cp "$OUT" version.txt
quill --version
expect_rc 0
expect_out_file version.txt
fake version
expect_out_has 'engine: fake_engine v0'
quill version --help
expect_rc 0
expect_out_has 'Exit codes:'

# Output that cannot be written is an error, not a silent success.
if [ -w /dev/full ]; then
  "$QUILL" version >/dev/full 2>err.txt
  rc=$?
  [ "$rc" -eq 2 ] || fail "writing to a full device gave exit $rc"
  grep -qF 'quill: error: cannot write to standard output' err.txt || fail "no error for a full device"
  put a.v 'module m;\nendmodule\n'
  "$QUILL" format a.v >/dev/full 2>err.txt
  [ $? -eq 2 ] || fail "format to a full device did not fail"
fi
