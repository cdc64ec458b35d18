#!/usr/bin/env bash
# Installs the built tree into a scratch prefix and builds a C client against
# it both through pkg-config and through find_package(quill).
set -euo pipefail
build=${1:?build folder}
source_dir=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix="$scratch/prefix"

cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(dirname "$(find "$prefix" -name 'libquill.so' | head -n 1)")
test -f "$prefix/include/quill.h"
readelf -d "$libdir/libquill.so" | grep -q 'SONAME.*libquill.so.1'

export PKG_CONFIG_PATH="$libdir/pkgconfig"
cc -std=c99 -Wall -Werror "$source_dir/client.c" $(pkg-config --cflags --libs quill) -o "$scratch/client-pc"
LD_LIBRARY_PATH="$libdir" "$scratch/client-pc"

cmake -S "$source_dir" -B "$scratch/client-build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$scratch/client-build" >/dev/null
LD_LIBRARY_PATH="$libdir" "$scratch/client-build/client"
echo "installed package works through pkg-config and find_package"
