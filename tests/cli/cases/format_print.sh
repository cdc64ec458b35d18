# quill format prints the formatted text: one final LF; blank text is "\n";
# foreign (Python) text comes back byte for byte.
put a.v 'module m(input a, output b);\nassign b = a;\nendmodule\n\n\n'
quill format a.v
expect_rc 0
expect_err_empty
[ "$(tail -c 1 "$OUT" | od -An -c | tr -d ' ')" = '\n' ] || fail "output does not end in LF"
[ "$(tail -c 2 "$OUT" | od -An -c | tr -d ' ')" != '\n\n' ] || fail "output ends in two LFs"

put blank.v '  \n\t\r\n'
quill format blank.v
expect_rc 0
expect_out '\n'

put empty.v ''
quill format empty.v
expect_out '\n'

put script.v 'import os\nprint(os.name)'
quill format script.v
expect_rc 0
expect_out_file script.v

# Several files: their results one after the other, each after a header
# line as head(1) prints several files.
quill format blank.v script.v empty.v
expect_out '==> blank.v <==\n\n\n==> script.v <==\nimport os\nprint(os.name)\n==> empty.v <==\n\n'

# One file found in a folder: no header.
mkdir one
cp script.v one/
quill format one
expect_out_file script.v

# Exact text with the stand-in engine.
put t.v 'a  \nb\t\n'
fake format t.v
expect_out 'a\nb\n'
fake format --force t.v
expect_out 'a\nb\n'
