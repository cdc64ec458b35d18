# On a copy of the real-world corpus, format --check passes right after
# format --in-place: every written file is stable. Files the content guard
# refuses stay untouched and are listed here; they are left out of the check.
if [ -z "$CORPUS_DIR" ] || [ ! -d "$CORPUS_DIR" ]; then
  echo "skipped: no corpus at '$CORPUS_DIR'"
  exit 77
fi
mkdir copy
(cd "$CORPUS_DIR" && find . \( -name '.?*' -prune \) -o -type f \( -iname '*.v' -o -iname '*.sv' -o -iname '*.vh' \
  -o -iname '*.svh' \) -exec cp --parents -t "$SCRATCH/copy" {} +) || fail "cannot copy the corpus"

quill format --in-place -j 2 copy
[ "$RC" -le 3 ] || fail "format --in-place exit $RC"
! grep -q 'quill: error: ' "$ERR" || fail "format --in-place reported errors"
grep -q ' reformatted, ' "$ERR" || fail "no summary line"
sed -n 's/^quill: warning: \(.*\): formatting would .*/\1/p' "$ERR" | sort -u >refused.txt
echo "refused by the guard: $(wc -l <refused.txt) files"
while IFS= read -r file; do
  echo "  $file"
  cmp -s "$file" "$CORPUS_DIR/${file#copy/}" || fail "the refused file $file was changed"
done <refused.txt

find copy -type f -print | sort >all.txt
grep -vxF -f refused.txt all.txt >checked.txt || true
[ -s checked.txt ] || fail "no file left to check"
mapfile -t checked <checked.txt
quill format --check -j 2 "${checked[@]}"
expect_rc 0
expect_out_empty
expect_err_has "0 files would be reformatted, ${#checked[@]} unchanged"
