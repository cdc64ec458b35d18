#!/usr/bin/env bash
# Builds quill if needed and runs its three services on the bundled examples.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install_deps.sh
cmake --preset dev >/dev/null
cmake --build --preset dev -j "$(nproc)" --target quill_cli >/dev/null
quill=build/dev/cli/quill
echo "== quill format examples/uart_tx.v"
"$quill" format examples/uart_tx.v
echo "== quill lint examples/uart_tx.v"
"$quill" lint examples/uart_tx.v || true
echo "== quill highlight examples/arty_pins.xdc"
"$quill" highlight examples/arty_pins.xdc || true
