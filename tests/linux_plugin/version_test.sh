#!/usr/bin/env bash
# VFile_Version through the Linux fmhost and the built Vantafile.fmx: the system it names is
# Linux, whatever the keyword's case, and the other forms keep their Windows answers.
# usage: version_test.sh FMHOST PLUGIN VERSION_SHORT_TEXT
# shellcheck disable=SC2016 # the single-quoted texts are calculations, not shell
set -uo pipefail
fmhost=$1 plugin=$2 short=$3
failures=0

# calculation|expected result
cases=(
    'VFile_Version( "platform" )|Linux'
    'VFile_Version( "PLATFORM" )|Linux'
    'VFile_Version( "platform" ; "long" )|Linux'
    'VFile_Version|'"$short"
    'VFile_Version( "Long" )|Quorvel Vantafile Plug-In '"$short"
)
for case in "${cases[@]}"; do
    calculation=${case%%|*} want=${case#*|}
    got=$("$fmhost" --plugin "$plugin" -e "$calculation" 2>&1)
    if [ "$got" != "$want" ]; then
        echo "FAIL $calculation: $(printf '%q' "$got") (want $(printf '%q' "$want"))"
        failures=$((failures + 1))
    fi
done
if [ $failures -ne 0 ]; then
    echo "$failures case(s) failed"
    exit 1
fi
echo "all cases passed"
