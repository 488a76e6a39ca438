#!/usr/bin/env bash
# tests/debian13/stage.sh [CTEST ARGS...]
#
# The Debian 13 stage of the suite: GNOME Shell 48, GTK 4.18, Qt 6.8 and KDE Frameworks 6,
# LibreOffice 25.2, Firefox and Thunderbird of that release. Makes (or reuses) the Debian 13 root
# (root.sh), and inside it does what `./run tests` does on a bare Debian 13: installs the
# packages, builds in build-debian13/ and runs the suite there, with CTEST ARGS if given.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
if [ "$(id -u)" != 0 ]; then
  echo "The Debian 13 stage needs root (debootstrap, chroot): skipped." >&2
  exit 0
fi
echo "== The Debian 13 stage =="
exec "$here/root.sh" run env GLIMMO_BUILD=build-debian13 ./run tests here "$@"
