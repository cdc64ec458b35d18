# Colours: always, never, and auto (off when stdout is not a terminal).
put w.v '// FINDING warning latch m\n'
esc=$(printf '\033[')
fake lint --color=always w.v
expect_rc 1
grep -qF "$esc" "$OUT" || fail "no colour with --color=always"
NO_COLOR=1 fake lint --color=always w.v
grep -qF "$esc" "$OUT" || fail "--color=always must win over NO_COLOR"
fake lint --color=never w.v
expect_out 'w.v:1:1: warning: m [latch]\n'
fake lint --color=auto w.v
expect_out 'w.v:1:1: warning: m [latch]\n'
fake lint w.v
expect_out 'w.v:1:1: warning: m [latch]\n'
fake lint --color=always --format=raw w.v
expect_out '[{"severity":"warning","line":0,"check":"latch","message":"m"}]\n'

# On a terminal (through script(1), when present) auto colours, unless
# NO_COLOR is set.
if command -v script >/dev/null 2>&1; then
  TERM=xterm script -qec "\"$QUILL_FAKE\" lint w.v" /dev/null >tty.txt </dev/null
  grep -qF "$esc" tty.txt || fail "no colour on a terminal"
  NO_COLOR=1 TERM=xterm script -qec "\"$QUILL_FAKE\" lint w.v" /dev/null >tty.txt </dev/null
  ! grep -qF "$esc" tty.txt || fail "colour on a terminal despite NO_COLOR"
fi
