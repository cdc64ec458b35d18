#!/usr/bin/env bash
# Runs the README's VS Code set-up in a real VS Code: code-server (VS Code
# served to a browser) with the README's vscode-languageclient snippet as an
# extension, driven through headless Chromium by tests/lsp/vscode_ui_test.js.
# It checks a quill diagnostic in the Problems view, Format Document against
# `quill format`, the outline and the .xdc file's semantic colours.
# Installs code-server, playwright-core and the extension's packages from the
# npm registry into build/vscode-check/ (kept for the next run) and Debian's
# chromium, ripgrep and libkrb5-dev when missing (code-server's native modules
# are built here: their install scripts would download prebuilt binaries).
# Not part of CI. Screenshots and logs stay in build/vscode-check/.
#   scripts/vscode_check.sh [QUILL]   (default build/dev/cli/quill)
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$(pwd)
quill=$(realpath "${1:-build/dev/cli/quill}")
work=$repo/build/vscode-check
tools=$work/tools
extension=$work/extensions/quill.quill-lsp-check-0.0.1
started=$(date +%s)

fail() { echo "vscode_check.sh: $*" >&2; exit 1; }
[ -x "$quill" ] || { echo "vscode_check.sh: no quill at $quill (build it first)" >&2; exit 2; }
node_major=$(node -p 'process.versions.node.split(".")[0]' 2>/dev/null) || fail "node is not installed"
[ "$node_major" = 20 ] || fail "code-server 4.100.3 needs Node 20, this is Node $node_major"

missing=()
for package in chromium ripgrep libkrb5-dev g++ make python3; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  [ "$(id -u)" -eq 0 ] || fail "needs the Debian packages ${missing[*]} (run as root to install them)"
  echo "installing ${missing[*]}"
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null 2>&1 || {
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  }
fi

# code-server, node-gyp and playwright-core. code-server's own install script
# runs `npm install` in lib/vscode, where @vscode/ripgrep downloads a binary:
# instead, install without scripts, build the native modules with node-gyp and
# use Debian's rg.
mkdir -p "$tools"
if ! cmp -s tests/lsp/vscode_ui/package-lock.json "$tools/package-lock.json" || [ ! -f "$tools/.installed" ]; then
  echo "installing code-server into $tools (about a minute)"
  rm -rf "$tools"
  mkdir -p "$tools"
  cp tests/lsp/vscode_ui/package.json tests/lsp/vscode_ui/package-lock.json "$tools/"
  set +e
  (
    set -e
    cd "$tools"
    npm ci --ignore-scripts --no-audit --no-fund --loglevel=error
    gyp=$tools/node_modules/.bin/node-gyp
    # Node's own headers, where this Node has them (node-gyp would download them).
    node_prefix=$(dirname "$(dirname "$(readlink -f "$(command -v node)")")")
    gyp_options=()
    [ -f "$node_prefix/include/node/node.h" ] && gyp_options=(--nodedir="$node_prefix")
    npm_config_build_from_source=true npm rebuild argon2
    cd node_modules/code-server/lib/vscode
    npm install --omit=dev --ignore-scripts --no-audit --no-fund --loglevel=error
    for module in kerberos node-pty @vscode/spdlog native-watchdog @vscode/deviceid; do
      (cd "node_modules/$module" && "$gyp" rebuild "${gyp_options[@]}")
    done
    mkdir -p node_modules/@vscode/ripgrep/bin
    ln -sf "$(command -v rg)" node_modules/@vscode/ripgrep/bin/rg
    ln -sfn node_modules node_modules.asar
    ln -sf code-linux.sh bin/remote-cli/code-server
    ln -sf browser-linux.sh bin/helpers/browser.sh
  ) >"$tools/npm.log" 2>&1
  installed=$?
  set -e
  [ "$installed" -eq 0 ] || { tail -n 30 "$tools/npm.log"; fail "installing code-server failed (log: $tools/npm.log)"; }
  touch "$tools/.installed"
fi
code_server=$tools/node_modules/.bin/code-server
# Its own config folder: even --version writes a default config file.
version=$(XDG_CONFIG_HOME="$tools/xdg" XDG_DATA_HOME="$tools/xdg" "$code_server" --version | head -n 1)

# The extension: its manifest from tests/lsp/vscode_extension, its code the
# README's snippet as it is written there.
mkdir -p "$extension"
if ! cmp -s tests/lsp/vscode_extension/package-lock.json "$extension/package-lock.json"; then
  rm -rf "$extension"
  mkdir -p "$extension"
  cp tests/lsp/vscode_extension/package.json tests/lsp/vscode_extension/package-lock.json "$extension/"
  (cd "$extension" && npm ci --omit=dev --no-audit --no-fund --loglevel=error >/dev/null)
fi
cp tests/lsp/vscode_extension/package.json "$extension/"
bash tests/lsp/readme_snippet.sh README.md '**VS Code**' js >"$extension/extension.js"
[ -s "$extension/extension.js" ] || fail "no VS Code snippet in README.md"

# A fresh workspace, user data folder and quill on the PATH.
rm -rf "$work/workspace" "$work/user-data" "$work/xdg" "$work/bin" "$work"/*.png "$work"/chromium-profile-*
bash tests/lsp/workspace_files.sh "$work/workspace"
printf 'module messy (\n  input  a,\n    output b\n);\nwire   x;\nreg [7:0]  longer_name;\nassign b=a;\nendmodule\n' \
  >"$work/workspace/messy.v"
mkdir -p "$work/user-data/User" "$work/xdg" "$work/bin"
cat >"$work/user-data/User/settings.json" <<'JSON'
{
  "security.workspace.trust.enabled": false,
  "workbench.startupEditor": "none",
  "workbench.tips.enabled": false,
  "workbench.enableExperiments": false,
  "telemetry.telemetryLevel": "off",
  "extensions.autoCheckUpdates": false,
  "extensions.autoUpdate": false,
  "extensions.ignoreRecommendations": true,
  "git.enabled": false,
  "files.autoSave": "off",
  "quill.trace.server": "verbose"
}
JSON
printf 'bind-addr: 127.0.0.1:0\nauth: none\ncert: false\n' >"$work/code-server.yaml"
ln -s "$quill" "$work/bin/quill"

# VSCODE_CLI=1: the extension host keeps this environment, as when code-server
# is started from a terminal, instead of taking the PATH of a login shell
# (where this machine's /etc/profile would drop the quill under test).
# setsid: its own process group, so that the file watcher, the extension host
# and the language server it started end with it.
VSCODE_CLI=1 XDG_CONFIG_HOME=$work/xdg XDG_DATA_HOME=$work/xdg XDG_CACHE_HOME=$work/xdg PATH=$work/bin:$PATH \
  setsid "$code_server" --config "$work/code-server.yaml" --user-data-dir "$work/user-data" \
  --extensions-dir "$work/extensions" --disable-telemetry --disable-update-check \
  --disable-workspace-trust --disable-getting-started-override --log trace "$work/workspace" \
  >"$work/code-server.log" 2>&1 &
server=$!
stop_server() {
  kill -TERM -- "-$server" 2>/dev/null || true
  wait "$server" 2>/dev/null || true
  for _ in $(seq 1 20); do
    pgrep -g "$server" >/dev/null || return 0
    sleep 0.25
  done
  kill -KILL -- "-$server" 2>/dev/null || true
}
trap stop_server EXIT
url=
for _ in $(seq 1 120); do
  url=$(sed -n 's|.*HTTP server listening on \(http://127\.0\.0\.1:[0-9]*\).*|\1|p' "$work/code-server.log" | head -n 1)
  [ -n "$url" ] && break
  kill -0 "$server" 2>/dev/null || { cat "$work/code-server.log"; fail "code-server stopped"; }
  sleep 0.5
done
[ -n "$url" ] || { cat "$work/code-server.log"; fail "code-server did not start"; }
echo "code-server $version at $url, quill $("$quill" version | head -n 1)"

status=0
NODE_PATH=$tools/node_modules node tests/lsp/vscode_ui_test.js "$url" "$work/workspace" "$quill" "$work" \
  "$work/user-data/logs" || status=$?
echo "screenshots and logs: $work ($(($(date +%s) - started)) s)"
[ "$status" -eq 0 ] || fail "VS Code check failed"
