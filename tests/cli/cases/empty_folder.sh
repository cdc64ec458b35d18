# A folder without matching files is an error naming the extensions looked for.
mkdir -p docs sub/deeper
put docs/readme.md 'x'
put sub/deeper/top.v.bak 'x'
quill lint docs
expect_rc 2
expect_out_empty
expect_err_one_line
expect_err_has 'quill: error: docs: folder holds no .v, .sv, .vh or .svh files'
quill format --check sub
expect_rc 2
expect_err_has 'sub: folder holds no .v, .sv, .vh or .svh files'
quill highlight docs
expect_rc 2
expect_err_has 'docs: folder holds no .xdc, .sdc, .tcl, .qsf, .cst, .pcf, .lpf or .ucf files'
