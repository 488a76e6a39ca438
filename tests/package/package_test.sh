#!/usr/bin/env bash
# package_test.sh SOURCE_DIR BUILD_DIR: packaging/release.sh on an existing build, then the
# .deb unpacked and the image read back in a temporary folder.
set -euo pipefail
src=$1
build=$2
for tool in dpkg-deb dpkg-shlibdeps xorriso desktop-file-validate; do
    command -v $tool >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
failed=0
check() {  # check DESCRIPTION COMMAND...
    if "${@:2}"; then echo "ok: $1"; else echo "FAILED: $1"; failed=$((failed + 1)); fi
}

GLIMMO_BUILD_DIR=$build "$src/packaging/release.sh" "$out/dist"
deb=$(ls "$out"/dist/glimmo_*.deb)
iso=$(ls "$out"/dist/Glimmo-*.iso)
build_number=$(sed -n 's/^#define GLIMMO_BUILD \(.*\)$/\1/p' "$build/generated/main/Version.h")

dpkg-deb -x "$deb" "$out/root"
root=$out/root/usr
check "the program in /usr/bin, executable" test -x "$root/bin/glimmo"
check "the icon" test -s "$root/share/icons/hicolor/scalable/apps/glimmo.svg"
check "the build number" test "$(cat "$root/share/glimmo/build")" = "$build_number"
check "the launcher entry validates" desktop-file-validate "$root/share/applications/glimmo.desktop"
check "dependencies computed from the binary" \
    sh -c "dpkg-deb -f '$deb' Depends | grep -q libqt6core6"
check "the package version carries the build" \
    sh -c "dpkg-deb -f '$deb' Version | grep -q -- '-$build_number\$'"
check "nothing outside /usr" test "$(ls "$out/root")" = usr
check "--version of the packaged program" \
    sh -c "'$root/bin/glimmo' --version | grep -q 'build $build_number'"

check "the image's volume is Glimmo" \
    sh -c "xorriso -indev '$iso' -pvd_info 2>/dev/null | grep -q '^Volume Id *: Glimmo\$'"
xorriso -osirrox on -indev "$iso" -extract /Glimmo "$out/bundle" >/dev/null 2>&1
check "the bundle on the image, executable" test -x "$out/bundle/bin/glimmo"
check "the bundle's build number" test "$(cat "$out/bundle/share/glimmo/build")" = "$build_number"

[ $failed -eq 0 ]
