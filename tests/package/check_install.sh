#!/usr/bin/env bash
# Installs the built tree into a scratch prefix, builds a C client against it
# through pkg-config and through find_package(quill), and runs the installed
# tool from the prefix with nothing but its own run path to find the library.
#   check_install.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=${1:?build folder}
source_dir=${2:?source folder}
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix="$scratch/prefix"

cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(dirname "$(find "$prefix" -name 'libquill.so' | head -n 1)")
test -f "$prefix/include/quill.h"
readelf -d "$libdir/libquill.so" | grep -q 'SONAME.*libquill.so.1'

export PKG_CONFIG_PATH="$libdir/pkgconfig"
# shellcheck disable=SC2046
cc -std=c99 -Wall -Werror "$here/client/client.c" $(pkg-config --cflags --libs quill) -o "$scratch/client-pc"
LD_LIBRARY_PATH="$libdir" "$scratch/client-pc"

cmake -S "$here/client" -B "$scratch/client-build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$scratch/client-build" >/dev/null
LD_LIBRARY_PATH="$libdir" "$scratch/client-build/client"
echo "installed library works through pkg-config and find_package"

# The tool, when it was built: it starts from the prefix and formats as the
# build tree's program does; its manual page and completions are in place.
if [ -x "$build/cli/quill" ]; then
  # The prefix is moved first: the run path must not name where it was installed.
  mv "$prefix" "$scratch/moved"
  prefix="$scratch/moved"
  env -u LD_LIBRARY_PATH "$prefix/bin/quill" version | grep -q 'core_engine v1.25'
  env -u LD_LIBRARY_PATH "$prefix/bin/quill" format "$source_dir/examples/uart_tx.v" >"$scratch/installed.v"
  "$build/cli/quill" format "$source_dir/examples/uart_tx.v" >"$scratch/built.v"
  cmp "$scratch/installed.v" "$scratch/built.v"
  for file in share/man/man1/quill.1.gz share/bash-completion/completions/quill \
              share/zsh/vendor-completions/_quill share/fish/vendor_completions.d/quill.fish; do
    test -f "$prefix/$file" || { echo "not installed: $file"; exit 1; }
  done
  echo "installed tool starts from its prefix, with its manual page and completions"
fi
