# The precision suite: each file of tests/lint_precision marks the findings
# it must give with "// expect: CHECK[, CHECK...]" on their line; quill lint
# must give exactly those, true ones kept and disproved ones gone.
suite=$(cd "$(dirname "$case_script")/../../lint_precision" && pwd)
checked=0
for file in "$suite"/*.v; do
  name=$(basename "$file")
  cp "$file" "$name"
  quill lint --isolated --color=never "$name"
  expected=$(grep -n '// expect: ' "$name" | sed -E 's|^([0-9]+):.*// expect: (.*)$|\1 \2|' |
    while read -r line checks; do for check in ${checks//,/ }; do echo "$line $check"; done; done | sort)
  actual=$(sed -nE 's/^[^:]+:([0-9]+):[0-9]+: [a-z]+: .* \[([a-z-]+)\]$/\1 \2/p' "$OUT" | sort)
  [ "$expected" = "$actual" ] || fail "$name: expected (line check):
$expected
got:
$actual"
  checked=$((checked + 1))
done
[ "$checked" -ge 10 ] || fail "only $checked precision files"
