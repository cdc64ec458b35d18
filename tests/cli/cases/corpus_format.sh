# Over the real-world corpus, format --check runs once, in parallel inside
# the tool: nothing crashes and every answer is about a corpus file.
if [ -z "$CORPUS_DIR" ] || [ ! -d "$CORPUS_DIR" ]; then
  echo "skipped: no corpus at '$CORPUS_DIR'"
  exit 77
fi
count_files() {
  local pattern=() ext
  for ext in "$@"; do pattern+=(-o -iname "*.$ext"); done
  find "$CORPUS_DIR" \( -name '.?*' -prune \) -o -type f \( -false "${pattern[@]}" \) -print | wc -l
}
verilog=$(count_files v sv vh svh)
[ "$verilog" -gt 0 ] || fail "no Verilog files in the corpus"

# format --check: every listed file and every warning is a corpus file, and
# nothing but warnings and file errors reaches stderr.
quill format --check "$CORPUS_DIR"
[ "$RC" -le 3 ] || fail "format --check exit $RC"
while IFS= read -r listed; do
  [ -f "$listed" ] || fail "format --check listed '$listed', which is not a file"
done <"$OUT"
[ "$(wc -l <"$OUT")" -le "$verilog" ] || fail "format --check listed more files than there are"
! grep -v -e '^quill: warning: .*: formatting would lose text on line' -e '^quill: error: ' \
  -e '^[0-9]* files\? would be reformatted, [0-9]* unchanged' "$ERR" | grep -q . ||
  fail "unexpected message from format --check"
