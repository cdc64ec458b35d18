#!/usr/bin/env bash
# Prints the first fenced code block of the given language that follows the
# README line starting with the given heading text. Usage:
#   readme_snippet.sh README.md '**Neovim 0.7**' lua
set -euo pipefail
awk -v heading="$2" -v fence="\`\`\`$3" '
  index($0, heading) == 1 { found = 1; next }
  found && !inside && $0 == fence { inside = 1; next }
  inside && $0 == "```" { exit }
  inside { print }
' "$1"
