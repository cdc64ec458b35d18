#!/usr/bin/env bash
# Builds the three Debian packages with CPack, checks their names, contents
# and dependencies, unpacks them into a scratch root with dpkg-deb, and runs
# the tool and a C client from there.
#   check_debian_packages.sh BUILD_DIR SOURCE_DIR QUILL
set -euo pipefail
build=${1:?build folder}
source_dir=${2:?source folder}
quill=${3:?path to the built quill}
here=$(cd "$(dirname "$0")" && pwd)
for tool in cpack dpkg-deb dpkg-shlibdeps; do
  command -v "$tool" >/dev/null || { echo "$tool not installed: skipped"; exit 77; }
done
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() { echo "FAIL: $*" >&2; exit 1; }

cpack --config "$build/CPackConfig.cmake" -G DEB -B "$scratch/out" >"$scratch/cpack.log" 2>&1 ||
  { cat "$scratch/cpack.log"; fail "cpack failed"; }
version=$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")$/\1/p' "$build/CPackConfig.cmake")
[ -n "$version" ] || fail "no package version in CPackConfig.cmake"

deb_of() {  # package name -> its file
  local found
  found=$(find "$scratch/out" -maxdepth 1 -name "$1_${version}_*.deb")
  [ -n "$found" ] || fail "no package $1 ($(ls "$scratch/out"))"
  echo "$found"
}
library=$(deb_of libquill1)
development=$(deb_of libquill-dev)
tool=$(deb_of quill)

expect_field() {  # deb, field, fragment
  local value
  value=$(dpkg-deb -f "$1" "$2")
  [[ "$value" == *"$3"* ]] || fail "$(basename "$1"): $2 is '$value', lacks '$3'"
}
expect_field "$library" Package libquill1
expect_field "$library" Version "$version"
expect_field "$library" Depends libpcre2-8-0
expect_field "$library" Depends libc6
expect_field "$development" Depends "libquill1 (= $version)"
expect_field "$tool" Depends "libquill1 (= $version)"
expect_field "$tool" Depends libc6

expect_files() {  # deb, files (glob patterns) the package holds
  local deb=$1 listing
  shift
  listing=$(dpkg-deb -c "$deb" | awk '{ print $6 }')
  for pattern in "$@"; do
    grep -qx -- "$pattern" <<<"$listing" || fail "$(basename "$deb") lacks $pattern"
  done
}
expect_files "$library" './usr/lib/.*libquill\.so\.1' './usr/lib/.*libquill\.so\.1\..*'
expect_files "$development" './usr/include/quill\.h' './usr/lib/.*libquill\.so' \
  './usr/lib/.*pkgconfig/quill\.pc' './usr/lib/.*cmake/quill/quillConfig\.cmake'
expect_files "$tool" './usr/bin/quill' './usr/share/man/man1/quill\.1\.gz' \
  './usr/share/bash-completion/completions/quill' './usr/share/zsh/vendor-completions/_quill' \
  './usr/share/fish/vendor_completions.d/quill\.fish'
if dpkg-deb -c "$library" | grep -q 'libquill\.so$'; then fail "libquill1 holds the development link"; fi

root="$scratch/root"
for deb in "$library" "$development" "$tool"; do dpkg-deb -x "$deb" "$root"; done

# The tool runs from the unpacked root, finding the library by its run path.
env -u LD_LIBRARY_PATH "$root/usr/bin/quill" version | grep -q 'core_engine v1.25' || fail "quill version"
env -u LD_LIBRARY_PATH "$root/usr/bin/quill" format "$source_dir/examples/uart_tx.v" >"$scratch/unpacked.v"
"$quill" format "$source_dir/examples/uart_tx.v" >"$scratch/built.v"
cmp "$scratch/unpacked.v" "$scratch/built.v" || fail "the packaged quill formats differently"

# A C client compiles against the unpacked header and library, directly and
# through the packaged pkg-config file.
libdir=$(dirname "$(find "$root/usr/lib" -name libquill.so | head -n 1)")
cc -std=c99 -Wall -Werror -I "$root/usr/include" "$here/client/client.c" -L "$libdir" -lquill \
  -o "$scratch/client"
LD_LIBRARY_PATH="$libdir" "$scratch/client"
# shellcheck disable=SC2046
cc -std=c99 -Wall -Werror "$here/client/client.c" \
  $(PKG_CONFIG_PATH="$libdir/pkgconfig" pkg-config --cflags --libs quill) -o "$scratch/client-pc"
LD_LIBRARY_PATH="$libdir" "$scratch/client-pc"
echo "the Debian packages $(cd "$scratch/out" && ls ./*.deb | tr '\n' ' ')install and run"
