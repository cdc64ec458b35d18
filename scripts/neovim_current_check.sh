#!/usr/bin/env bash
# Runs the editor test of the README's "Neovim 0.9 or later" set-up in a
# current Neovim: Debian 12 ships only Neovim 0.7, so this debootstraps a
# minimal Debian trixie root (Neovim 0.10) under build/neovim-trixie, installs
# Debian's neovim package there, and runs tests/lsp/run_neovim_navigation_test.sh
# with that set-up inside it. The quill under test is the one built here: it
# is copied into the root with the shared libraries it loads on this machine
# and started through this machine's dynamic loader, so the newer system
# libraries of the root play no part.
# Needs root. Not part of CI: it downloads a Debian base system. The root is
# kept for the next run (delete build/neovim-trixie for a fresh one).
#   scripts/neovim_current_check.sh [QUILL]   (default build/dev/cli/quill)
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$(pwd)
quill=$(realpath "${1:-build/dev/cli/quill}")
root=$repo/build/neovim-trixie
suite=trixie

[ "$(id -u)" -eq 0 ] || { echo "neovim_current_check.sh: needs root (debootstrap, chroot, mount)" >&2; exit 2; }
[ -x "$quill" ] || { echo "neovim_current_check.sh: no quill at $quill (build it first)" >&2; exit 2; }
if grep -q " $root/" /proc/mounts; then
  echo "neovim_current_check.sh: $root still has mounts; unmount them first" >&2
  exit 2
fi

mounted=()
unmount_all() {
  local i
  for ((i = ${#mounted[@]} - 1; i >= 0; i--)); do umount "${mounted[i]}" 2>/dev/null || umount -l "${mounted[i]}" || true; done
}
trap unmount_all EXIT

if [ ! -f "$root/.quill-debootstrapped" ]; then
  command -v debootstrap >/dev/null || {
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends debootstrap >/dev/null
  }
  echo "debootstrap $suite into $root"
  rm -rf "$root"
  mkdir -p "$root"
  debootstrap --variant=minbase "$suite" "$root" http://deb.debian.org/debian >"$root.debootstrap.log" 2>&1 ||
    { tail -n 30 "$root.debootstrap.log"; exit 1; }
  touch "$root/.quill-debootstrapped"
fi
cp /etc/resolv.conf "$root/etc/resolv.conf"

mount -t proc proc "$root/proc"; mounted+=("$root/proc")
mkdir -p "$root/dev/pts"
mount -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"; mounted+=("$root/dev/pts")
mount -t tmpfs tmpfs "$root/tmp"; mounted+=("$root/tmp")

in_root() {
  chroot "$root" /usr/bin/env -i HOME=/root LANG=C.UTF-8 TERM=dumb \
    PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin "$@"
}
if ! in_root sh -c 'command -v nvim' >/dev/null; then
  in_root sh -c 'apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends neovim >/dev/null'
fi
in_root nvim --version | head -n 1

# The quill of this machine, its libraries and its loader.
host=$root/opt/host-quill
rm -rf "$host"
mkdir -p "$host/lib"
cp "$quill" "$host/quill"
ldd "$quill" | awk '/=> \// { print $3 } /^\t\/.*ld-linux/ { print $1 }' | while read -r library; do
  cp -L "$library" "$host/lib/"
done
loader=$(basename "$(ldd "$quill" | awk '/^\t\/.*ld-linux/ { print $1 }')")
printf '#!/bin/sh\nexec /opt/host-quill/lib/%s --library-path /opt/host-quill/lib /opt/host-quill/quill "$@"\n' \
  "$loader" >"$root/usr/local/bin/quill"
chmod +x "$root/usr/local/bin/quill"
in_root quill version

# The README and the editor tests, as they are in the working tree.
rm -rf "$root/work/quill"
mkdir -p "$root/work/quill/tests"
cp README.md "$root/work/quill/"
cp -r tests/lsp "$root/work/quill/tests/"
in_root bash /work/quill/tests/lsp/run_neovim_navigation_test.sh /usr/local/bin/quill '**Neovim 0.9 or later**'
