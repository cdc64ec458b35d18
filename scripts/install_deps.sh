#!/usr/bin/env bash
# Installs the Debian packages quill needs to build and test, if any is missing.
set -euo pipefail

packages=(
  cmake ninja-build make g++ clang pkg-config binutils
  libpcre2-dev libgtest-dev libgmock-dev libbenchmark-dev
  libcli11-dev nlohmann-json3-dev libtomlplusplus-dev libgit2-dev git hyperfine
  libclang-rt-14-dev
  neovim python3
  # npm fetches the client test's packages over TLS.
  ca-certificates
  # The package tests: CPack's Debian packages (dpkg-shlibdeps, file), the
  # manual page, the shell completions and the pre-commit hooks.
  dpkg-dev file groff-base man-db zsh fish pre-commit python3-yaml
  emacs-nox elpa-eglot
)
# Node.js runs the language-server client test; any installed Node will do.
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
  packages+=(nodejs npm)
fi
if [ "${QUILL_DEPS_EXTRA:-}" != "" ]; then
  read -r -a extra <<<"$QUILL_DEPS_EXTRA"
  packages+=("${extra[@]}")
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  sudo_cmd=()
  [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
