#!/usr/bin/env bash
# Builds everything and runs every test: the native sanitizer build, then the Windows build
# under Wine with one persistent wineserver for the whole run.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VF_BUILD_DIR:-$root/build}"

"$root/scripts/install-prereqs.sh"
"$root/scripts/build.sh" --native

status=0
echo "== native tests (ASan/UBSan)"
ctest --test-dir "$build/native" --output-on-failure -j"$(nproc)" || status=1

echo "== Windows tests (Wine)"
# shellcheck source=wine-env.sh
source "$root/scripts/wine-env.sh"
vf_wine_start "$build/windows"
trap vf_wine_stop EXIT
ctest --test-dir "$build/windows" --output-on-failure -j"$(nproc)" || status=1

exit $status
