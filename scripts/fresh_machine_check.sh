#!/usr/bin/env bash
# Runs the README's test command on a fresh Debian machine, so that a missing
# install step shows: debootstraps a minimal Debian bookworm root under
# build/fresh-machine (from the Debian mirror this machine's apt uses), copies
# the repository into it, mounts ../shared read-only beside it, and runs
# `bash scripts/test.sh --quick` there with chroot (with --ci: `bash .ci/run`,
# the whole CI run: sanitizer builds, fuzzing and the differential replay);
# then installs the build into ~/.local as the README says and starts the
# installed quill.
# Needs root. Not part of CI: it downloads a few hundred packages and builds
# everything from scratch. The root is kept for the next run (delete
# build/fresh-machine for a really fresh one); the copy of the repository is
# renewed every time.
#   scripts/fresh_machine_check.sh [--ci] [--fresh] [ROOT]
# --fresh deletes a root kept from an earlier run first. Certificate
# authorities this machine added itself (/usr/local/share/ca-certificates,
# e.g. a proxy's) are trusted inside the root too, as any machine of the
# same network would be set up; nothing else is carried over.
# With QUILL_BUILD_LOCK=FILE the build and tests in the root run under
# `flock FILE`, as builds on a shared machine do. QUILL_SHARED_DIR names the
# folder of real-world inputs when it is not ../shared (a git worktree).
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$(pwd)
mode=quick fresh=0
while [ $# -gt 0 ]; do
  case "$1" in
    --ci) mode=ci ;;
    --fresh) fresh=1 ;;
    -*) echo "usage: scripts/fresh_machine_check.sh [--ci] [--fresh] [ROOT]" >&2; exit 2 ;;
    *) break ;;
  esac
  shift
done
root=${1:-$repo/build/fresh-machine}
suite=bookworm
shared=${QUILL_SHARED_DIR:-$(cd "$repo/.." && pwd)/shared}

[ "$(id -u)" -eq 0 ] || { echo "fresh_machine_check.sh: needs root (debootstrap, chroot, mount)" >&2; exit 2; }

step() { echo; echo "=== $* ==="; }

# The first Debian mirror apt is configured with, in either source format.
find_mirror() {
  local files=() line
  [ -f /etc/apt/sources.list ] && files+=(/etc/apt/sources.list)
  for file in /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
    [ -f "$file" ] && files+=("$file")
  done
  for file in "${files[@]}"; do
    while IFS= read -r line; do
      case "$line" in
        URIs:*/debian | URIs:*/debian/) echo "${line#URIs:}" | tr -d ' '; return ;;
        "deb "*/debian" $suite "* | "deb "*/debian/" $suite "*)
          read -r -a words <<<"$line"
          for word in "${words[@]}"; do
            case "$word" in http*://* | file:*) echo "$word"; return ;; esac
          done ;;
      esac
    done <"$file"
  done
  echo "http://deb.debian.org/debian"
}

mounted=()
unmount_all() {
  local i
  for ((i = ${#mounted[@]} - 1; i >= 0; i--)); do
    umount "${mounted[i]}" 2>/dev/null || umount -l "${mounted[i]}" || true
  done
  mounted=()
}
trap unmount_all EXIT
mount_in_root() {  # mount arguments..., target last
  mount "$@"
  mounted+=("${!#}")
}

# Left-over mounts from an interrupted run must go before anything is deleted.
if grep -q " $root/" /proc/mounts; then
  echo "fresh_machine_check.sh: $root still has mounts; unmount them first" >&2
  exit 2
fi

[ "$fresh" = 1 ] && rm -rf "$root" "$root.debootstrap.log"
if [ ! -x "$root/usr/bin/apt-get" ] || [ ! -f "$root/.quill-debootstrapped" ]; then
  command -v debootstrap >/dev/null || {
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends debootstrap >/dev/null
  }
  mirror=$(find_mirror)
  step "debootstrap $suite from $mirror into $root"
  rm -rf "$root"
  mkdir -p "$root"
  debootstrap --variant=minbase "$suite" "$root" "$mirror" >"$root.debootstrap.log" 2>&1 ||
    { tail -n 30 "$root.debootstrap.log"; exit 1; }
  # The same suites as the host: updates and security fixes.
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    rm -f "$root/etc/apt/sources.list"
    cp /etc/apt/sources.list.d/debian.sources "$root/etc/apt/sources.list.d/"
  fi
  touch "$root/.quill-debootstrapped"
fi
# debootstrap makes the basic device nodes, except where it runs in a container.
for device in "null 1 3" "zero 1 5" "full 1 7" "random 1 8" "urandom 1 9" "tty 5 0"; do
  read -r name major minor <<<"$device"
  [ -e "$root/dev/$name" ] || { mknod -m 666 "$root/dev/$name" c "$major" "$minor"; }
done

step "copy the repository into the root"
rm -rf "$root/work/quill"
mkdir -p "$root/work/quill" "$root/work/shared"
# Tracked and new files, without build folders and other ignored files.
git ls-files -z --cached --others --exclude-standard | tar -C "$repo" --null -T - -cf - | tar -C "$root/work/quill" -xf -
cp /etc/resolv.conf "$root/etc/resolv.conf"
if compgen -G "/usr/local/share/ca-certificates/*.crt" >/dev/null; then
  mkdir -p "$root/usr/local/share/ca-certificates"
  cp /usr/local/share/ca-certificates/*.crt "$root/usr/local/share/ca-certificates/"
fi
# No service starts inside the root while packages are installed.
printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
chmod +x "$root/usr/sbin/policy-rc.d"

mount_in_root -t proc proc "$root/proc"
mkdir -p "$root/dev/shm"
mount_in_root -t tmpfs tmpfs "$root/dev/shm"
mkdir -p "$root/dev/pts"
mount_in_root -t devpts -o newinstance,ptmxmode=0666 devpts "$root/dev/pts"
mount_in_root -t tmpfs tmpfs "$root/tmp"
if [ -d "$shared" ]; then
  mount_in_root --bind "$shared" "$root/work/shared"
  mount -o remount,bind,ro "$root/work/shared"
fi

# Node reads only its own certificate list unless told of the system's.
root_env=(HOME=/root LANG=C.UTF-8 TERM=dumb PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin)
[ -n "${NODE_EXTRA_CA_CERTS:-}" ] && root_env+=(NODE_EXTRA_CA_CERTS=/etc/ssl/certs/ca-certificates.crt)
in_root() {
  chroot "$root" /usr/bin/env -i "${root_env[@]}" "$@"
}
locked=()
[ -n "${QUILL_BUILD_LOCK:-}" ] && locked=(flock "$QUILL_BUILD_LOCK")

# CI's own command installs what it needs; the quick check installs first.
if [ "$mode" = quick ]; then
  step "install the dependencies inside the root"
  in_root bash -c 'cd /work/quill && bash scripts/install_deps.sh'
fi

# Both checks run whatever the first gives, so that one report shows all.
failed=()
if [ "$mode" = ci ]; then
  step "bash .ci/run inside the root"
  "${locked[@]}" chroot "$root" /usr/bin/env -i "${root_env[@]}" \
    bash -c 'cd /work/quill && bash .ci/run' || failed+=(".ci/run")
else
  step "bash scripts/test.sh --quick inside the root"
  "${locked[@]}" chroot "$root" /usr/bin/env -i "${root_env[@]}" \
    bash -c 'cd /work/quill && bash scripts/test.sh --quick' || failed+=("scripts/test.sh")
fi

step "install into ~/.local and start the installed quill"
in_root bash -c 'cd /work/quill && rm -rf ~/.local && cmake --install build/dev --prefix ~/.local >/dev/null &&
  ~/.local/bin/quill version && ~/.local/bin/quill format examples/uart_tx.v >/dev/null' ||
  failed+=("the installed quill")

echo
if [ ${#failed[@]} -gt 0 ]; then
  echo "on the fresh $suite machine these failed: ${failed[*]}"
  exit 1
fi
echo "the fresh $suite machine passed the README's set-up and test commands"
