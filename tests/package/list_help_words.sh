#!/usr/bin/env bash
# Prints the commands and options that `quill --help` lists, one a line, for
# the tests that check the manual page and the completions against the tool.
#   list_help_words.sh QUILL
set -euo pipefail
quill=${1:?path to the built quill}
help=$("$quill" --help)
# Commands: the unindented words of the "Subcommands:" section.
sed -n '/^Subcommands:/,/^Exit codes:/p' <<<"$help" | grep -E '^[a-z][a-z-]*$' || true
# Options: the names at the start of the option lines ("-j,--jobs N ...").
grep -E '^ *-' <<<"$help" | sed -E 's/^ *([-a-zA-Z,]+).*/\1/' | tr ',' '\n' | grep -E '^--?[a-zA-Z]' | sort -u
