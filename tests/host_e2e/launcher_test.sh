#!/usr/bin/env bash
# The ./fmhost launcher on first use: it makes a Wine prefix of its own, says so once, and the
# calls after the first find it made (the note does not come back).
# Usage: launcher_test.sh REPO_ROOT WINDOWS_BUILD_DIR
set -uo pipefail
root=$1 windows_build=$2
work=$(mktemp -d)
prefix="$work/windows/wineprefix"
cleanup() {
    WINEPREFIX="$prefix" wineserver -k >/dev/null 2>&1
    rm -rf "$work"
}
trap cleanup EXIT
# A build folder of its own, holding the built programs and no prefix yet.
mkdir -p "$work/windows"
ln -s "$windows_build/bin" "$work/windows/bin"

failures=0
fail() { echo "FAILED: $*"; failures=$((failures + 1)); }
for run in 1 2 3; do
    out=$(VF_BUILD_DIR="$work" "$root/fmhost" --no-plugin -e '1 + 1' 2>"$work/err$run" </dev/null)
    [ "$out" = 2 ] || fail "call $run printed '$out' ($(cat "$work/err$run"))"
done
notes=$(cat "$work/err1" "$work/err2" "$work/err3" | grep -c "creating the Wine prefix")
[ "$notes" = 1 ] || fail "the prefix note showed $notes times, not once"
[ -f "$prefix/system.reg" ] || fail "no registry in the prefix after the first call"

[ $failures -eq 0 ] || exit 1
echo "./fmhost: the prefix was made once, on the first call"
