#!/usr/bin/env bash
# ./fmhost --linux runs the Linux host natively with the arguments as given, loading the built
# Vantafile.fmx unless told otherwise, and says what is missing.
# usage: launcher_linux_test.sh SOURCE_ROOT BIN_DIR (BIN_DIR holds fmhost and HostFixture.fmx)
set -uo pipefail
root="$1"
bin=$(readlink -f "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/build/linux/bin"
ln -s "$bin/fmhost" "$bin/libFMWrapper.so" "$work/build/linux/bin/"
export VF_BUILD_DIR="$work/build"
failures=0

check() {  # NAME WANT GOT
    if [ "$2" != "$3" ]; then
        echo "FAIL $1: got $(printf '%q' "$3"), want $(printf '%q' "$2")"
        failures=$((failures + 1))
    fi
}

# Status and whether the message names what is missing.
run_status() {  # EXPECTED_TEXT ARGS...
    local text="$1" out status
    shift
    out=$("$root/fmhost" "$@" 2>&1)
    status=$?
    grep -qF -- "$text" <<<"$out" && echo "$status named" || echo "$status unnamed: $out"
}
check "no Vantafile.fmx built" "2 named" "$(run_status 'Vantafile.fmx is not built' --linux -e 1)"
check "--no-plugin" "2" "$("$root/fmhost" --linux --no-plugin -e '1 + 1')"
check "options keep their meaning" "77 9 Server 22.0v1 instance-ok" \
    "$("$root/fmhost" --linux --plugin "$bin/HostFixture.fmx" --application-kind 9 \
       -e 'Fx_HostInfo')"
ln -s "$bin/HostFixture.fmx" "$work/build/linux/bin/Vantafile.fmx"
check "the built plug-in by default" "77 7 Server 22.0v1 instance-ok" \
    "$("$root/fmhost" --linux -e 'Fx_HostInfo')"
check "Linux paths as given" "filelinux:/srv/a b.fmp12" \
    "$("$root/fmhost" --linux --no-plugin --file '/srv/a b.fmp12' -e 'Get ( FilePath )')"
rm "$work/build/linux/bin/fmhost"
check "no Linux host built" "2 named" "$(run_status 'scripts/build.sh --linux' --linux -e 1)"

[ $failures -eq 0 ] && echo "all cases passed"
exit $((failures != 0))
