#!/usr/bin/env bash
# VFile_Version through the Linux fmhost and the built Vantafile.fmx: the system it names is
# Linux, whatever the keyword's case, and the other forms keep their Windows answers.
# usage: version_test.sh FMHOST PLUGIN VERSION_SHORT_TEXT
# shellcheck disable=SC2016 # the single-quoted texts are calculations, not shell
set -uo pipefail
plugin=$2 short=$3
# A cross build's host runs through its emulator (VF_TEST_EMULATOR, from CTest).
fmhost=(${VF_TEST_EMULATOR:+"$VF_TEST_EMULATOR"} "$1")

# calculation|expected result
cases=(
    'VFile_Version( "platform" )|Linux'
    'VFile_Version( "PLATFORM" )|Linux'
    'VFile_Version( "platform" ; "long" )|Linux'
    'VFile_Version|'"$short"
    'VFile_Version( "Long" )|Quorvel Vantafile Plug-In '"$short"
)
# One host run for all of them: a sanitizer build takes seconds to start.
args=() want=()
for case in "${cases[@]}"; do
    args+=(-e "${case%%|*}")
    want+=("${case#*|}")
done
mapfile -t got < <("${fmhost[@]}" --plugin "$plugin" "${args[@]}" 2>&1)
failures=0
for i in "${!cases[@]}"; do
    if [ "${got[$i]-}" != "${want[$i]}" ]; then
        echo "FAIL ${cases[$i]%%|*}: $(printf '%q' "${got[$i]-}") (want $(printf '%q' "${want[$i]}"))"
        failures=$((failures + 1))
    fi
done
if [ "${#got[@]}" -ne "${#cases[@]}" ]; then
    echo "FAIL: ${#got[@]} lines for ${#cases[@]} calculations: ${got[*]:${#cases[@]}}"
    failures=$((failures + 1))
fi
if [ $failures -ne 0 ]; then
    echo "$failures case(s) failed"
    exit 1
fi
echo "all cases passed"
