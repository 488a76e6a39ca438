#!/usr/bin/env bash
# package_test.sh SOURCE_DIR BUILD_DIR: packaging/release.sh on an existing build, then the
# .deb unpacked and the image read back in a temporary folder, and the .deb installed and
# started on a bare root of this release (tests/debian13/root.sh bare).
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
check "the launcher entry asks KWin for its fake input" \
    grep -q '^X-KDE-Wayland-Interfaces=.*org_kde_kwin_fake_input' "$root/share/applications/glimmo.desktop"
check "the KWin script" test -s "$root/share/glimmo/companion/kwin/companion.js"
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
check "the bundle runs from where the image was read" \
    sh -c "'$out/bundle/bin/glimmo' --version | grep -q 'build $build_number'"

# The package installed through apt, with what it depends on and nothing recommended, on a bare
# root of the release this runs on (a throwaway copy of it), then started there: it runs and
# logs its start. The root sees this clone alone, so the package goes through the build folder.
suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
if [ "$(id -u)" != 0 ] || [ -z "$suite" ]; then
    echo "note: no bare-root install (needs root and a Debian release)"
    [ "${CI:-}" != true ] || failed=$((failed + 1))
else
    inside=$(mktemp -d "$build/package-test.XXXXXX")
    trap 'rm -rf "$out" "$inside"' EXIT
    cp "$deb" "$inside/"
    # shellcheck disable=SC2016
    check "installed through apt on a bare $suite, it starts" \
        "$src/tests/debian13/root.sh" bare "$suite" bash -c '
            apt-get update -qq >/tmp/apt.log 2>&1 &&
              DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
                "$1" >>/tmp/apt.log 2>&1 || { tail -n 20 /tmp/apt.log; exit 1; }
            glimmo --version || exit 1
            export HOME=/tmp/home QT_QPA_PLATFORM=offscreen
            mkdir -p "$HOME"
            timeout 5 glimmo >/tmp/glimmo.out 2>&1
            status=$?
            log=$HOME/.local/share/Glimmo/log.txt
            [ $status = 124 ] && grep -q " started, " "$log" ||
              { echo "exit $status"; cat /tmp/glimmo.out "$log"; exit 1; }' \
        bash "$inside/$(basename "$deb")"
fi

[ $failed -eq 0 ]
