# An unknown or misspelt command names the nearest command and lists them
# all, exit 2, nothing on stdout.
put a.v 'module m;\nendmodule\n'
quill lnt a.v
expect_rc 2
expect_out_empty
expect_err_has "quill: error: unknown command 'lnt'; did you mean 'lint'?"
expect_err_has 'Commands:'
for command in format lint highlight version lsp; do expect_err_has "  $command "; done

quill fromat a.v
expect_rc 2
expect_err_has "unknown command 'fromat'; did you mean 'format'?"

quill frobnicate a.v
expect_rc 2
expect_err_has "quill: error: unknown command 'frobnicate'"
expect_err_lacks 'did you mean'

# No command at all.
quill
expect_rc 2
expect_out_empty
expect_err_has 'quill: error: a command is required'
expect_err_has '  lint '
