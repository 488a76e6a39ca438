#!/usr/bin/env bash
# build.sh OUT_DIR [CACHE_DIR]
# Pages with real rich-text editors (ProseMirror, Quill, Lexical, Slate, CKEditor 5, TinyMCE),
# for the end-to-end tests that run Glimmo against them in Chromium and Firefox:
# OUT_DIR/<editor>.html, each one self-contained. The editors' npm packages are installed into
# CACHE_DIR (default OUT_DIR/.npm-work) and kept there until package.json or package-lock.json
# changes, so that a build with nothing changed takes seconds.
set -euo pipefail

if [ $# -lt 1 ]; then
  echo "usage: $0 OUT_DIR [CACHE_DIR]" >&2
  exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
out=$(cd "$1" && pwd)
cache=${2:-$out/.npm-work}
mkdir -p "$cache"
cache=$(cd "$cache" && pwd)

fail() { echo "editors: $*" >&2; exit 1; }
command -v node >/dev/null || fail "node is not installed (Debian package nodejs)"
command -v npm >/dev/null || fail "npm is not installed (Debian package npm)"

stamp=$(cat "$here/package.json" "$here/package-lock.json" "$here/.npmrc" | sha256sum | cut -d' ' -f1)
if [ "$(cat "$cache/stamp" 2>/dev/null)" != "$stamp" ] || [ ! -d "$cache/node_modules" ]; then
  rm -f "$cache/stamp"
  cp "$here/package.json" "$here/package-lock.json" "$here/.npmrc" "$cache/"
  # A registry out of reach fails within a minute or two rather than npm's five.
  if ! (cd "$cache" && npm ci --no-audit --no-fund --prefer-offline --fetch-retries=1 \
          --fetch-timeout=60000 >npm.log 2>&1); then
    if grep -Eq 'ENOTFOUND|EAI_AGAIN|ECONNREFUSED|ECONNRESET|ETIMEDOUT|ENETUNREACH|network' "$cache/npm.log"; then
      fail "npm could not reach the registry to install the editors (see $cache/npm.log)"
    fi
    fail "npm ci failed (see $cache/npm.log)"
  fi
  echo "$stamp" >"$cache/stamp"
fi

node "$here/bundle.mjs" "$out" "$cache/node_modules" || fail "bundling failed (esbuild's message above)"
