#!/usr/bin/env bash
# Prints the commands and options that `quill --help` lists, one a line, for
# the tests that check the manual page and the completions against the tool.
#   list_help_words.sh QUILL
set -euo pipefail
quill=${1:?path to the built quill}
help=$("$quill" --help)
# Commands: the unindented words of the "Subcommands:" section.
commands=$(sed -n '/^Subcommands:/,$p' <<<"$help" | grep -E '^[a-z][a-z-]*$' || true)
# Options: the names at the start of the option lines ("-j,--jobs N ...").
options=$(grep -E '^ *-' <<<"$help" | sed -E 's/^ *([-a-zA-Z,]+).*/\1/' | tr ',' '\n' |
  grep -E '^--?[a-zA-Z]' | sort -u || true)
# A help text laid out differently must not make the checks pass on nothing.
grep -qx lint <<<"$commands" || { echo "no commands found in quill --help" >&2; exit 1; }
grep -qx -- --help <<<"$options" || { echo "no options found in quill --help" >&2; exit 1; }
printf '%s\n%s\n' "$commands" "$options"
