#!/usr/bin/env bash
# tests/debian13/root.sh make            make the Debian 13 root when missing or over a week old
# tests/debian13/root.sh run COMMAND...  run COMMAND as root inside it, in this clone
# tests/debian13/root.sh bare SUITE COMMAND...
#                                        run COMMAND in a throwaway copy of a bare root of the
#                                        Debian release SUITE (bookworm, trixie): what COMMAND
#                                        installs there goes when it ends
#
# The root is a plain Debian 13 ("trixie") made with debootstrap from the same archive this
# machine's own apt uses, kept outside the clone ($GLIMMO_DEBIAN13_ROOT, by default
# /var/tmp/glimmo-debian13) so that later runs reuse it. Everything inside is installed by the
# clone's own ./run, as on a bare machine. COMMAND runs in a private mount namespace: the root
# is bound onto itself and made the namespace's / (as on a real machine, which bwrap and so
# WebKit's sandbox need), with /proc, /sys, /dev, a fresh /tmp, and this clone and its
# ../shared at the same paths as outside; the mounts go when COMMAND ends.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
clone=$(cd "$here/../.." && pwd)
root=${GLIMMO_DEBIAN13_ROOT:-/var/tmp/glimmo-debian13}
suite=trixie
include=ca-certificates,sudo
throwaway=

[ "$(id -u)" = 0 ] || { echo "root.sh: needs root (debootstrap, chroot)" >&2; exit 77; }

# The archive this machine installs from: the first Debian URI of its apt sources.
mirror() {
  local uri
  uri=$(grep -h -E '^URIs:' /etc/apt/sources.list.d/*.sources 2>/dev/null |
        awk '{print $2}' | grep -v -- '-security' | grep '/debian/\?$' | head -n 1 || true)
  [ -n "$uri" ] || uri=$(grep -h -E '^deb ' /etc/apt/sources.list 2>/dev/null |
        awk '{print $2}' | grep '/debian/\?$' | head -n 1 || true)
  [ -n "$uri" ] || { echo "root.sh: no Debian archive in this machine's apt sources" >&2; exit 1; }
  echo "${uri%/}"
}

fresh() {
  [ -f "$root/.glimmo-made" ] && [ -z "$(find "$root/.glimmo-made" -mtime +7)" ]
}

make_root() {
  fresh && return 0
  command -v debootstrap >/dev/null || {
    apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq debootstrap
  }
  local m new=$root.new
  m=$(mirror)
  rm -rf "$new"
  echo "Making the Debian root in $root (debootstrap $suite)..."
  debootstrap --variant=minbase --include="$include" "$suite" "$new" "$m" \
    >"$new.log" 2>&1 || { tail -n 20 "$new.log" >&2; exit 1; }
  cat >"$new/etc/apt/sources.list.d/debian.sources" <<SRC
Types: deb
URIs: $m
Suites: $suite $suite-updates
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg

Types: deb
URIs: $m-security
Suites: $suite-security
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
SRC
  rm -f "$new/etc/apt/sources.list"
  # No documentation or translations in a test root, as in Debian's own container images.
  cat >"$new/etc/dpkg/dpkg.cfg.d/glimmo-lean" <<'CFG'
path-exclude=/usr/share/doc/*
path-include=/usr/share/doc/*/copyright
path-exclude=/usr/share/man/*
path-exclude=/usr/share/locale/*
path-include=/usr/share/locale/locale.alias
CFG
  rm -rf "$root"
  mv "$new" "$root"
  rm -f "$new.log"
  touch "$root/.glimmo-made"
}

# What this machine trusts, the root trusts: its CA bundle and npm's settings.
trust() {
  cp /etc/ssl/certs/ca-certificates.crt "$root/etc/glimmo-host-ca.crt"
  cp /etc/resolv.conf "$root/etc/resolv.conf" 2>/dev/null || true
  if [ -f "$HOME/.npmrc" ]; then mkdir -p "$root/root" && cp "$HOME/.npmrc" "$root/root/.npmrc"; fi
  cp /etc/apt/apt.conf.d/99* "$root/etc/apt/apt.conf.d/" 2>/dev/null || true
}

run_in_root() {
  trust
  local shared
  shared=$(cd "$clone/.." && pwd)/shared
  # shellcheck disable=SC2016
  mkdir -p "$root.top"
  exec unshare --mount --propagation private /bin/bash -c '
    set -e
    root=$1 clone=$2 shared=$3 throwaway=$4; shift 4
    if [ -n "$throwaway" ]; then
      # The root stays as made: changes land in memory, on an overlay gone with the namespace.
      top=$root.top
      mount -t tmpfs tmpfs "$top"
      mkdir "$top/upper" "$top/work" "$top/merged"
      mount -t overlay overlay -o "lowerdir=$root,upperdir=$top/upper,workdir=$top/work" "$top/merged"
      root=$top/merged
    else
      mount --bind "$root" "$root"
    fi
    mount -t proc proc "$root/proc"
    mount --rbind /sys "$root/sys"
    mount --rbind /dev "$root/dev"
    mount -t tmpfs -o mode=1777 tmpfs "$root/tmp"
    mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
    mkdir -p "$root$clone" "$root/run"
    mount -t tmpfs tmpfs "$root/run"
    mount --bind "$clone" "$root$clone"
    if [ -d "$shared" ]; then mkdir -p "$root$shared" && mount --bind -o ro "$shared" "$root$shared"; fi
    # pivot_root, not chroot: the kernel refuses new user namespaces to a chrooted process, and
    # WebKit'"'"'s sandbox (bwrap) needs them.
    mkdir -p "$root/.host"
    cd "$root"
    pivot_root . .host
    cd /
    umount -l /.host
    exec /usr/bin/env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
      TERM="${TERM:-dumb}" LANG=C.UTF-8 CI="${CI:-}" \
      NODE_EXTRA_CA_CERTS=/etc/glimmo-host-ca.crt npm_config_cafile=/etc/glimmo-host-ca.crt \
      /bin/bash -c "cd \"$clone\" && exec \"\$@\"" bash "$@"
  ' bash "$root" "$clone" "$shared" "$throwaway" "$@"
}

case "${1:-}" in
  make) make_root ;;
  run) shift; [ $# -gt 0 ] || set -- /bin/bash; make_root; run_in_root "$@" ;;
  bare)
    [ $# -ge 3 ] || { echo "usage: $0 bare SUITE COMMAND..." >&2; exit 2; }
    suite=$2; shift 2
    root=/var/tmp/glimmo-bare-$suite include=ca-certificates throwaway=1
    make_root; run_in_root "$@" ;;
  *) echo "usage: $0 make | run COMMAND... | bare SUITE COMMAND..." >&2; exit 2 ;;
esac
