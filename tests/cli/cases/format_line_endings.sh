# A file whose lines all end in CR LF is printed, written, diffed and
# checked with CR LF; a file with mixed line ends gets LF.
put crlf.v 'module m(input a,\r\n output b);\r\nassign b = a;\r\nendmodule\r\n'
put lf.v 'module m(input a,\n output b);\nassign b = a;\nendmodule\n'
quill format lf.v
expect_rc 0
cp "$OUT" lf.formatted
sed 's/$/\r/' lf.formatted >crlf.formatted

quill format crlf.v
expect_rc 0
expect_out_file crlf.formatted

quill format --diff crlf.v
expect_rc 1
expect_out_has "$(printf ' assign b = a;\r')"

quill format --in-place crlf.v
expect_rc 0
expect_err '1 file reformatted, 0 unchanged\n'
same_file crlf.v crlf.formatted
quill format --check crlf.v
expect_rc 0
expect_out_empty

# Mixed: LF throughout.
put mixed.v 'module m(input a,\r\n output b);\nassign b = a;\r\nendmodule\r\n'
quill format mixed.v
expect_rc 0
expect_out_file lf.formatted

# Standard input keeps CR LF too.
feed crlf.v quill format -
expect_rc 0
expect_out_file crlf.formatted

# Exact bytes with the stand-in engine.
put t.v 'a  \r\nb\r\n'
fake format t.v
expect_out 'a\r\nb\r\n'
