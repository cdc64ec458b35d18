#!/usr/bin/env bash
# Checks the manual page: groff and man render it without a warning, and it
# names every command and option that `quill --help` lists.
#   check_man_page.sh SOURCE_DIR QUILL
set -euo pipefail
source_dir=${1:?source folder}
quill=${2:?path to the built quill}
page="$source_dir/docs/quill.1"
command -v groff >/dev/null || { echo "groff not installed: skipped"; exit 77; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

groff -man -ww -z "$page" 2>"$scratch/groff.err"
if [ -s "$scratch/groff.err" ]; then cat "$scratch/groff.err"; echo "FAIL: groff warns"; exit 1; fi
if command -v man >/dev/null; then
  LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" 2>"$scratch/man.err" >"$scratch/man.txt"
  if [ -s "$scratch/man.err" ]; then cat "$scratch/man.err"; echo "FAIL: man warns"; exit 1; fi
fi

# The page's source with roff's escaped hyphens made plain.
sed 's/\\-/-/g' "$page" >"$scratch/page.txt"
bash "$(dirname "$0")/list_help_words.sh" "$quill" >"$scratch/words"
missing=0
while IFS= read -r word; do
  grep -qE -- "(^|[^a-zA-Z-])$word([^a-zA-Z-]|\$)" "$scratch/page.txt" || { echo "the manual page lacks $word"; missing=1; }
done <"$scratch/words"
# Every lint filter that `quill lint --help` names has its entry.
filters=$("$quill" lint --help | sed -n 's/.*Turn off one lint filter (\(.*\)).*/\1/p' | tr ',' '\n' | tr -d ' ')
[ -n "$filters" ] || { echo "no filter names found in quill lint --help"; exit 1; }
while IFS= read -r filter; do
  grep -qx -- ".B $filter" "$scratch/page.txt" || { echo "the manual page lacks the filter $filter"; missing=1; }
done <<<"$filters"
[ "$missing" = 0 ] || exit 1
echo "the manual page renders without warnings and names all $(wc -l <"$scratch/words") commands and options" \
  "and all $(wc -l <<<"$filters") lint filters"
