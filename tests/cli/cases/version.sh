# The version comes from the engine, by the command and by the flag.
quill version
expect_rc 0
expect_out 'core_engine v1.25\n'
quill --version
expect_rc 0
expect_out 'core_engine v1.25\n'
fake version
expect_out 'fake_engine v0\n'

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
