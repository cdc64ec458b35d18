# Linting goes module by module: each module and macromodule is its own
# library call, lines are counted in the whole file; the keywords inside
# comments, strings and directives do not cut; --whole-file makes one call.
put two.v 'module a(input x, output y);\nwire w;\nwire w;\nassign y = x;\nendmodule\n\nmodule b(input x, output y);\nwire w;\nassign y = x;\nendmodule\n'
quill lint two.v
expect_rc 1
expect_out 'two.v:3:1: warning: signal '"'"'w'"'"' defined 2 times [dupli-define]\n'
quill lint --whole-file two.v
expect_rc 1
expect_out 'two.v:3:1: warning: signal '"'"'w'"'"' defined 3 times [dupli-define]\ntwo.v:4:1: warning: signal '"'"'y'"'"' assigned 2 times by assign [repeated-assig]\n'

# Line numbers quoted in messages move with their module.
put inst.v 'module top;\nendmodule\nmodule m;\nsub u1();\nsub u1();\nendmodule\n'
quill lint inst.v
expect_out 'inst.v:5:1: error: instance '"'"'u1'"'"' instantiated 2 times (lines: 4, 5) [dupli-inst]\n'

# The stand-in engine reports its FINDING lines per call: the lines come
# back shifted to the file; text before the first module goes with it.
put cut.v '// FINDING warning latch head\nmodule a;\nendmodule\n/* module x */ " module y"\nmacromodule b;\n// FINDING error reg-assign in-b\nendmodule\n`define M module\nmodule c; // FINDING warning comb-loop in-c\nendmodule // FINDING warning latch tail\n'
fake lint --format=raw cut.v
expect_rc 1
expect_out '[{"severity":"warning","line":0,"check":"latch","message":"head"},{"severity":"error","line":5,"check":"reg-assign","message":"in-b"},{"severity":"warning","line":8,"check":"comb-loop","message":"in-c"},{"severity":"warning","line":9,"check":"latch","message":"tail"}]\n'
fake lint --whole-file --format=raw cut.v
expect_out '[{"severity":"warning","line":0,"check":"latch","message":"head"},{"severity":"error","line":5,"check":"reg-assign","message":"in-b"},{"severity":"warning","line":8,"check":"comb-loop","message":"in-c"},{"severity":"warning","line":9,"check":"latch","message":"tail"}]\n'

# "module" as part of a statement (an instance named module_x, a port) does
# not start a module.
put words.v 'module a;\nsubmodule module_x();\nendmodule\n'
quill lint words.v
expect_rc 0
