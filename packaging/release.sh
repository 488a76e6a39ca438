#!/usr/bin/env bash
# packaging/release.sh [OUT_DIR]   the Debian package and the release image, into OUT_DIR
#                                  (default: dist/ in the source folder)
# Builds in build-release-<release>/ (program only, Release; build-release-bookworm on Debian
# 12), or in an existing build folder given as GLIMMO_BUILD_DIR (the tests do that). The
# package depends on the libraries of the release it is built on: build it on each release it
# is for (Debian 13 from here: tests/debian13/root.sh run packaging/release.sh dist/debian13).
# Needs dpkg-dev and xorriso.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-$repo/dist}
mkdir -p "$out"
out=$(cd "$out" && pwd)

if [ -n "${GLIMMO_BUILD_DIR:-}" ]; then
    build=$GLIMMO_BUILD_DIR
else
    release=$(. /etc/os-release && echo "${VERSION_CODENAME:-$ID}")
    build=$repo/build-release-$release
    cmake -S "$repo" -B "$build" -DCMAKE_BUILD_TYPE=Release -DGLIMMO_TESTS=OFF >/dev/null
fi
cmake --build "$build" -j2 --target glimmo >/dev/null

version=$(sed -n 's/^#define GLIMMO_VERSION "\(.*\)"$/\1/p' "$build/generated/main/Version.h")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The package: CPack from the build folder's install rules, under /usr.
(cd "$build" && cpack -G DEB -B "$work/cpack" >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log" >&2; exit 1; }
mv "$work"/cpack/glimmo_*.deb "$out/"

# The release image: volume "Glimmo" holding the bundle folder Glimmo/.
cmake --install "$build" --prefix "$work/image/Glimmo" --strip >/dev/null
xorriso -as mkisofs -quiet -V Glimmo -R -J -o "$out/Glimmo-$version.iso" "$work/image" 2>"$work/xorriso.log" ||
    { cat "$work/xorriso.log" >&2; exit 1; }

ls -1 "$out"/glimmo_*.deb "$out/Glimmo-$version.iso"
