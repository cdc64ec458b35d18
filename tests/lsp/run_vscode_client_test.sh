#!/usr/bin/env bash
# Installs the pinned protocol libraries from the npm registry into the build
# folder and runs the client test against the built quill.
set -euo pipefail
quill=${1:?path to quill}
work=${2:?scratch folder}
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$work"
cp "$here/package.json" "$here/package-lock.json" "$work/"
if [ ! -d "$work/node_modules/vscode-languageserver-protocol" ]; then
  (cd "$work" && npm ci --no-audit --no-fund --loglevel=error >/dev/null)
fi
NODE_PATH="$work/node_modules" node "$here/vscode_client_test.js" "$quill"
