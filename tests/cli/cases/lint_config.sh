# quill.toml: the nearest one wins; select, ignore, severity,
# per-file-ignores, [files] exclude and extend-exclude, [format] exclude;
# --config and --isolated; quill config prints what is in force.
mkdir -p rtl/gen rtl/vendor sub .hidden
put rtl/a.v '// FINDING warning latch a1\n// FINDING warning comb-loop a2\n// FINDING error reg-assign a3\n'
put rtl/gen/g.v '// FINDING warning latch g1\n'
put rtl/vendor/v.v '// FINDING warning latch v1\n// FINDING warning comb-loop v2\n'
put sub/s.v '// FINDING warning latch s1\n'
put .hidden/h.v '// FINDING warning latch h1\n'
put quill.toml '[files]\nextend-exclude = ["gen/"]\n\n[lint]\nselect = ["latch", "comb-loop", "reg-assign"]\nignore = ["reg-assign"]\nseverity = { latch = "error" }\n\n[lint.per-file-ignores]\n"rtl/vendor/**" = ["comb-loop"]\n'
put sub/quill.toml '[lint]\nignore = ["all"]\n'
fake lint .
expect_rc 1
expect_out './rtl/a.v:1:1: error: a1 [latch]\n./rtl/a.v:2:1: warning: a2 [comb-loop]\n./rtl/vendor/v.v:1:1: error: v1 [latch]\n'
expect_err_has '3 findings in 2 files (1 warning, 2 errors)'

# A file named on the command line is linted even when excluded.
fake lint rtl/gen/g.v
expect_out 'rtl/gen/g.v:1:1: error: g1 [latch]\n'

# --isolated: no config; --config: this one for every file.
fake lint --isolated rtl/a.v sub/s.v
expect_out 'rtl/a.v:1:1: warning: a1 [latch]\nrtl/a.v:2:1: warning: a2 [comb-loop]\nrtl/a.v:3:1: error: a3 [reg-assign]\nsub/s.v:1:1: warning: s1 [latch]\n'
put other.toml '[lint]\nselect = ["reg-assign"]\n'
fake lint --config other.toml rtl/a.v sub/s.v
expect_out 'rtl/a.v:3:1: error: a3 [reg-assign]\n'

# [files] exclude replaces the default (hidden entries); extend-exclude adds.
mkdir -p all/.dot
put all/quill.toml '[files]\nexclude = []\n'
put all/.dot/d.v '// FINDING warning latch d1\n'
fake lint all
expect_out 'all/.dot/d.v:1:1: warning: d1 [latch]\n'

# [format] exclude applies to format's walks only.
mkdir -p fmt/skip
put fmt/quill.toml '[format]\nexclude = ["skip"]\n'
put fmt/skip/k.v 'x  \n'
put fmt/f.v 'y  \n'
fake format --check fmt
expect_rc 1
expect_out 'fmt/f.v\n'
fake lint fmt
expect_rc 0

# quill config prints the settings in force and their file.
fake config rtl/vendor/v.v
expect_rc 0
expect_out_has "# from $PWD/quill.toml"
expect_out_has 'extend-exclude = ["gen/"]'
expect_out_has 'select = ["latch", "comb-loop", "reg-assign"]'
expect_out_has 'latch = "error"'
expect_out_has '"rtl/vendor/**" = ["comb-loop"]'
fake config sub
expect_out_has "# from $PWD/sub/quill.toml"
fake config --isolated rtl
expect_out_has '# built-in defaults (no quill.toml applies)'
expect_out_has 'exclude = [".*"]'

# Bad files: a clear error with file, line and key, exit 2; files under a
# good config still go on.
mkdir -p bad1 bad2 bad3 bad4 bad5
for d in bad1 bad2 bad3 bad4 bad5; do put $d/b.v '// FINDING warning latch b\n'; done
put bad1/quill.toml '[lint]\n\nselct = ["latch"]\n'
put bad2/quill.toml '[lint]\nselect = "latch"\n'
put bad3/quill.toml '[lint]\nignore = ["lach"]\n'
put bad4/quill.toml '[lint\n'
put bad5/quill.toml '[lint]\nseverity = { latch = "fatal" }\n[colors]\n'
fake lint bad1
expect_rc 2
expect_out_empty
expect_err_has "quill: error: bad1/quill.toml:3: [lint] unknown key 'selct'"
fake lint bad2/b.v
expect_rc 2
expect_err_has 'quill: error: bad2/quill.toml:2: [lint] select: expected an array of strings'
fake lint bad3/b.v
expect_err_has "quill: error: bad3/quill.toml:2: [lint] ignore: unknown check 'lach'"
fake lint bad4/b.v
expect_rc 2
expect_err_has 'quill: error: bad4/quill.toml:1: '
fake lint bad5/b.v
expect_err_has 'quill: error: bad5/quill.toml:2: [lint.severity] latch: expected "error" or "warning"'
fake lint bad1 rtl/a.v
expect_rc 2
expect_out 'rtl/a.v:1:1: error: a1 [latch]\nrtl/a.v:2:1: warning: a2 [comb-loop]\n'
[ "$(grep -c 'selct' "$ERR")" -eq 1 ] || fail "a bad config is reported once"
fake config bad1
expect_rc 2
fake format --check bad1
expect_rc 2
expect_err_has "bad1/quill.toml:3: [lint] unknown key 'selct'"
fake lint --config missing.toml rtl/a.v
expect_rc 2
expect_err_has 'missing.toml: cannot read the file'

# Standard input: the settings of the --stdin-name path.
feed rtl/a.v fake lint --stdin-name rtl/vendor/x.v -
expect_out 'rtl/vendor/x.v:1:1: error: a1 [latch]\n'
