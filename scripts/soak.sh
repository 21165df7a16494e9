#!/usr/bin/env bash
# scripts/soak.sh CALLS SEED [BATCH]: the random-call soak at any length under Wine. It builds
# the plug-in, fmhost and the soak runner, then runs CALLS generated calls (BATCH per fmhost
# process, 10000 unless given) in a scratch folder and prints, per process, the growth of
# handles and private bytes; it fails on a crash, a hang, an unanswered call, a write outside
# the scratch folder or growth past its bounds. The same seed replays the same calls:
# `soak_runner.exe --print CALLS SEED` prints them as an fmhost script.
set -euo pipefail
if [ $# -lt 2 ]; then
    echo "usage: $0 CALLS SEED [BATCH]" >&2
    exit 2
fi
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VF_BUILD_DIR:-$root/build}"

if [ ! -f "$build/windows/CMakeCache.txt" ]; then
    "$root/scripts/build.sh"
fi
cmake --build "$build/windows" --target soak_runner -j"$(nproc)" >/dev/null

# shellcheck source=wine-env.sh
source "$root/scripts/wine-env.sh"
vf_wine_start "$build/windows"
trap vf_wine_stop EXIT
wine "$build/windows/bin/soak_runner.exe" "$@"
