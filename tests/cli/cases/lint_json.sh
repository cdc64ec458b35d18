# Raw output: the engine's array unchanged (zero-based lines), one per file,
# in input order.
put a.v 'x\n// FINDING warning latch one "quoted" \\ back\n'
put b.v 'clean\n'
put c.v '// FINDING error multi-driver two\n'
fake lint --format=raw a.v b.v c.v
expect_rc 1
expect_err_empty
expect_out '[{"severity":"warning","line":1,"check":"latch","message":"one \\"quoted\\" \\\\ back"}]\n[]\n[{"severity":"error","line":0,"check":"multi-driver","message":"two"}]\n'
