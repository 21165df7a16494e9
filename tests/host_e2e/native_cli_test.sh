#!/usr/bin/env bash
# fmhost on Linux as a user runs it, with the fixture plug-in (HostFixture.fmx): the server's
# defaults, the Linux path syntax, the options that work as on Windows, and exit statuses.
# usage: native_cli_test.sh FMHOST FIXTURE_PLUGIN
# shellcheck disable=SC2016 # the single-quoted texts are calculations, not shell
set -uo pipefail
# A cross build's host runs through its emulator (VF_TEST_EMULATOR, from CTest).
fmhost=(${VF_TEST_EMULATOR:+"$VF_TEST_EMULATOR"} "$(readlink -f "$1")")
fixture=$(readlink -f "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# expect NAME STATUS STDOUT STDERR-PATTERN -- ARGS...: runs fmhost in $work with ARGS.
expect() {
    local name="$1" status="$2" out="$3" err="$4"
    shift 5
    local got_out got_err got_status
    got_out=$(cd "$work" && "${fmhost[@]}" "$@" 2>"$work/err"; echo "status $?")
    got_status=${got_out##*status }
    got_out=${got_out%status *}
    got_out=${got_out%$'\n'}
    got_err=$(cat "$work/err")
    if [ "$got_status" != "$status" ] || [ "$got_out" != "$out" ] ||
        ! grep -qE -- "$err" <<<"$got_err"; then
        echo "FAIL $name: status $got_status (want $status)"
        echo "  out: $(printf '%q' "$got_out") (want $(printf '%q' "$out"))"
        echo "  err: $got_err (want /$err/)"
        failures=$((failures + 1))
    fi
}

P=(--plugin "$fixture")
expect "file path is the Linux form" 0 "filelinux:$work/Untitled.fmp12" "^$" -- \
    -e 'Get ( FilePath )'
expect "an absolute --file" 0 "filelinux:/srv/db/Solution.fmp12" "^$" -- \
    --file /srv/db/Solution.fmp12 -e 'Get ( FilePath )'
expect "a relative --file is made absolute" 0 "filelinux:$work/sub/a.fmp12" "^$" -- \
    --file sub/a.fmp12 -e 'Get ( FilePath )'
expect "dots go by the text" 0 "filelinux:${work%/*}/b/a.fmp12" "^$" -- \
    --file ./sub/../../b/./a.fmp12 -e 'Get ( FilePath )'
expect "above the root is the root" 0 "filelinux:/a.fmp12" "^$" -- \
    --file /../../a.fmp12 -e 'Get ( FilePath )'
expect "network file" 0 "fmnet:/host/Solution.fmp12" "^$" -- \
    --network-file fmp://host/Solution.fmp12 -e 'Get ( FilePath )'
expect "no file" 1 "" "error 100" -- --no-file -e 'Get ( FilePath )'
expect "platform" 0 "8" "^$" -- -e 'Get ( SystemPlatform )'
expect "folders in host syntax" 0 "/tmp/" "^$" -- -e 'Get ( TemporaryPath )'
expect "script engine by default" 0 "77 7 Server 22.0v1 instance-ok" "^$" -- \
    "${P[@]}" -e 'Fx_HostInfo'
expect "web publishing" 0 "77 4 Server 22.0v1 instance-ok" "^$" -- \
    "${P[@]}" --application-kind 4 -e 'Fx_HostInfo'
expect "Data API" 0 "76 9 Server 22.0v1 instance-ok" "^$" -- \
    "${P[@]}" --application-kind 9 --extension-version 76 -e 'Fx_HostInfo'
expect "the server's version text" 0 "Server 22.0v1" "^$" -- -e 'Get ( ApplicationVersion )'
expect "a version text given" 0 $'Server 21.1v3\n77 7 Server 21.1v3 instance-ok' "^$" -- \
    "${P[@]}" --application-version "Server 21.1v3" -e 'Get ( ApplicationVersion )' -e 'Fx_HostInfo'
expect "plug-in functions" 1 $'42\n' "error 1552" -- \
    "${P[@]}" -e 'Fx_Add ( 2 ; 40 )' -e 'Fx_Fail ( 1552 )' -e 'Fx_Evaluate ( "$$x" )'
expect "threads" 0 $'6\n6\n6' "^$" -- "${P[@]}" --threads 3 -e 'Fx_Add ( 2 ; 4 )'
expect "sessions keep their globals" 0 $'\n\n1' "^$" -- \
    -e 'Let ( $$a = 1 ; "" )' --session 2 -e '$$a' --session 1 -e '$$a'
HOST_FIXTURE_OPTIONS=FxTs1nnYnYn expect "ended sessions reach the plug-in" 0 "7:131 7:128 7:129 0:77 9:2 8:2" "" -- \
    "${P[@]}" --session 2 --end-session 2 -e 'Fx_Messages'
expect "fault injection" 0 "0,2,0" "^$" -- "${P[@]}" --fail-call 2 -e 'Fx_Probe'
expect "an import newer than the host" 3 "" "system error 80" -- \
    "${P[@]}" --extension-version 56 -e '1'
expect "a missing plug-in" 3 "" "system error 2" -- --plugin "$work/none.fmx" -e '1'
# Files no loader can take: refused with the system's number, never a crash.
printf 'not a library' >"$work/text.fmx"
head -c 300 "$fixture" >"$work/cut.fmx"
expect "not an ELF file" 3 "" "text.fmx could not be loaded \(system error 80\)" -- \
    --plugin "$work/text.fmx" -e '1'
expect "a cut ELF file" 3 "" "cut.fmx could not be loaded \(system error 80\)" -- \
    --plugin "$work/cut.fmx" -e '1'
# The loader needs no section table; reading the imports must survive a spoilt one.
cp "$fixture" "$work/spoilt.fmx"
table=$(od -An -t u8 -j 40 -N 8 "$fixture" | tr -d ' ')  # e_shoff
size=$(stat -c %s "$work/spoilt.fmx")
head -c $((size - table)) /dev/zero | tr '\0' '\377' |
    dd of="$work/spoilt.fmx" bs=1 seek="$table" conv=notrunc status=none
expect "a spoilt section table" 0 "3" "^$" -- --plugin "$work/spoilt.fmx" -e 'Fx_Add ( 1 ; 2 )'
expect "verbose report" 0 "1" "init \\(extension version 77, application kind 7" -- \
    "${P[@]}" --verbose -e '1'
expect "resources from /proc" 0 "1" "[0-9]+ handles, GDI objects not counted here" -- \
    "${P[@]}" --verbose -e '1'
expect "script file" 0 $'3\n4' "^$" -- --script <(printf '1 + 2\n\n2 * 2\n')

if [ $failures -ne 0 ]; then
    echo "$failures case(s) failed"
    exit 1
fi
echo "all cases passed"
