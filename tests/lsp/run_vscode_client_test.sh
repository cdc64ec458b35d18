#!/usr/bin/env bash
# Installs the pinned protocol libraries from the npm registry into the build
# folder and runs the client test against the built quill; with --corpus
# DIR, the test on the olofk-serv project of the corpus (skipped, 77, when
# the corpus is absent).
# Usage: run_vscode_client_test.sh QUILL SCRATCH [--corpus DIR]
set -euo pipefail
quill=${1:?path to quill}
work=${2:?scratch folder}
here=$(cd "$(dirname "$0")" && pwd)
test=("$here/vscode_client_test.js" "$quill")
if [ "${3:-}" = "--corpus" ]; then
  project=${4:?corpus folder}/olofk-serv
  [ -d "$project/rtl" ] || { echo "corpus project $project absent: skipped"; exit 77; }
  test=("$here/vscode_corpus_test.js" "$quill" "$(cd "$project" && pwd)")
fi
mkdir -p "$work"
cp "$here/package.json" "$here/package-lock.json" "$work/"
if [ ! -d "$work/node_modules/vscode-languageserver-protocol" ]; then
  (cd "$work" && npm ci --no-audit --no-fund --loglevel=error >/dev/null)
fi
NODE_PATH="$work/node_modules" node "${test[@]}"
