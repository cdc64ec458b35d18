# Over the real-world corpus, lint and highlight run once each, in parallel
# inside the tool: nothing crashes and every file gets an answer.
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
constraints=$(count_files xdc sdc tcl qsf cst pcf lpf ucf)
[ "$verilog" -gt 0 ] || fail "no Verilog files in the corpus"

# lint: one JSON line per file, or one error line for a file it cannot read.
quill lint --format=raw "$CORPUS_DIR"
[ "$RC" -le 2 ] || fail "lint exit $RC"
answers=$(($(wc -l <"$OUT") + $(grep -c '^quill: error: ' "$ERR")))
[ "$answers" -eq "$verilog" ] || fail "lint answered $answers of $verilog files"
grep -v '^\[' "$OUT" | head -n 3 | grep -q . && fail "lint printed a line that is not an array"

# highlight: one JSON line per constraint or Tcl file.
if [ "$constraints" -gt 0 ]; then
  quill highlight --format=json "$CORPUS_DIR"
  [ "$RC" -le 2 ] || fail "highlight exit $RC"
  answers=$(($(wc -l <"$OUT") + $(grep -c '^quill: error: ' "$ERR")))
  [ "$answers" -eq "$constraints" ] || fail "highlight answered $answers of $constraints files"
fi
