#!/usr/bin/env bash
# Fetches Debian's source package of libdeflate into .cache/libdeflate once, for the Windows build
# to compile (Debian ships the library itself only for Linux). Uses an apt configuration of its
# own with one deb-src line for this machine's suite, so the system's apt sources stay as they are.
# Safe to run again: it does nothing when the source is already there.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cache="$root/.cache/libdeflate"
marker="$cache/source/libdeflate.h"
[ -f "$marker" ] && exit 0

# shellcheck disable=SC1091
. /etc/os-release
suite="${VERSION_CODENAME:?this machine names no Debian suite}"
# The machine's own main mirror: the first URI of a deb822 source or a one-line "deb" entry.
mirror=$(cat /etc/apt/sources.list.d/*.sources /etc/apt/sources.list 2>/dev/null |
    sed -nE 's/^URIs:[[:space:]]*([^[:space:]]+).*/\1/p; s/^deb[[:space:]]+(\[[^]]*\][[:space:]]+)?([^[:space:]]+).*/\2/p' |
    grep -v security | head -n 1 || true)
mirror="${mirror:-http://deb.debian.org/debian}"

rm -rf "$cache"
mkdir -p "$cache/apt/lists/partial" "$cache/apt/cache/archives/partial" "$cache/download"
echo "deb-src $mirror $suite main" >"$cache/apt/sources.list"
apt_options=(-q -o "Dir::Etc::SourceList=$cache/apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o "Dir::State::Lists=$cache/apt/lists" -o "Dir::Cache=$cache/apt/cache" -o APT::Sandbox::User=root)
echo "Fetching libdeflate's Debian source package ($suite)..."
apt-get "${apt_options[@]}" update >/dev/null
(cd "$cache/download" && apt-get "${apt_options[@]}" source libdeflate >/dev/null 2>&1)
source_dir=$(find "$cache/download" -mindepth 1 -maxdepth 1 -type d -name 'libdeflate-*' | head -n 1)
[ -n "$source_dir" ] && [ -f "$source_dir/libdeflate.h" ] || {
    echo "fetch-libdeflate: no source tree was unpacked" >&2
    exit 1
}
mv "$source_dir" "$cache/source"
rm -rf "$cache/download" "$cache/apt"
