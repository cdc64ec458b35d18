#!/usr/bin/env bash
# Checks the shell completions: each script loads in its shell, completing
# works in bash and fish, and each names every command and option that
# `quill --help` lists.
#   check_completions.sh SOURCE_DIR QUILL
set -euo pipefail
source_dir=${1:?source folder}
quill=${2:?path to the built quill}
completions="$source_dir/completions"
here=$(cd "$(dirname "$0")" && pwd)
failed=0
fail() { echo "FAIL: $*"; failed=1; }

# bash: completing "quill li" gives "lint", and the values of an option.
bash -n "$completions/quill.bash" || fail "quill.bash does not parse"
complete_bash() {  # the words of a command line, the last one being completed
  bash -c 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _quill; echo "${COMPREPLY[*]}"' \
    bash "$completions/quill.bash" "$@"
}
expect_bash() {  # expected completions, command line words
  local expected=$1 got
  shift
  got=$(complete_bash "$@")
  [ "$got" = "$expected" ] || fail "bash completes '$*' to '$got', not '$expected'"
}
expect_bash "lint" quill li
expect_bash "format" quill for
expect_bash "--in-place" quill format --in
expect_bash "--report-unused-suppressions" quill lint --rep
expect_bash "text json sarif github raw" quill lint --format ""
expect_bash "json" quill lint --format = j
expect_bash "text json" quill highlight --format ""
expect_bash "warning error" quill lint --error-on ""
expect_bash "auto always never" quill highlight --color ""
expect_bash "--isolated" quill config --is
expect_bash "generate-scope" quill lint --no-filter gen

# zsh and fish: the scripts parse; fish completes as bash does.
if command -v zsh >/dev/null; then
  zsh -n "$completions/_quill" || fail "_quill does not parse"
else
  echo "zsh not installed: its script is not checked"
fi
if command -v fish >/dev/null; then
  fish -n "$completions/quill.fish" || fail "quill.fish does not parse"
  got=$(fish -c "source '$completions/quill.fish'; complete -C 'quill li'" | cut -f1)
  [ "$got" = "lint" ] || fail "fish completes 'quill li' to '$got'"
  got=$(fish -c "source '$completions/quill.fish'; complete -C 'quill lint --error-on='" | cut -f1 | tr '\n' ' ')
  [ "$got" = "--error-on=error --error-on=warning " ] || fail "fish completes '--error-on=' to '$got'"
else
  echo "fish not installed: its script is not checked"
fi

# Every command and option of the tool is in every script (fish writes
# options as "-l in-place" and "-s i").
words=$(bash "$here/list_help_words.sh" "$quill")
while IFS= read -r word; do
  for script in quill.bash _quill quill.fish; do
    pattern=$word
    if [ "$script" = quill.fish ]; then
      case "$word" in
        --*) pattern="-l ${word#--}" ;;
        -*) pattern="-s ${word#-}" ;;
      esac
    fi
    grep -qE -- "(^|[^a-zA-Z-])$pattern([^a-zA-Z-]|\$)" "$completions/$script" || fail "$script lacks $word"
  done
done <<<"$words"

# Every lint filter `quill lint --help` names is a value of --no-filter.
filters=$("$quill" lint --help | sed -n 's/.*Turn off one lint filter (\(.*\)).*/\1/p' | tr ',' '\n' | tr -d ' ')
[ -n "$filters" ] || fail "no filter names found in quill lint --help"
while IFS= read -r filter; do
  for script in quill.bash _quill quill.fish; do
    grep -qE -- "(^|[^a-zA-Z-])$filter([^a-zA-Z-]|\$)" "$completions/$script" || fail "$script lacks the filter $filter"
  done
done <<<"$filters"

[ "$failed" = 0 ] || exit 1
echo "the bash, zsh and fish completions load and name every command, option and lint filter"
