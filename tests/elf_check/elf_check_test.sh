#!/usr/bin/env bash
# The Linux plug-in's binary check must pass a plug-in built as the server needs it and name
# each fault of one that is not, for the machine this build compiles for. Each case links a
# small shared object with this build's compiler, then runs the check on it.
#   elf_check_test.sh CHECK C_COMPILER READELF OBJDUMP MACHINE OTHER_MACHINE
set -euo pipefail
check=$1 cc=$2 readelf=$3 objdump=$4 machine=$5 other_machine=$6
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# The host's library as the plug-in links against it: its soname is the bare name.
echo 'void FMX_Stub(void) {}' >host.c
"$cc" -shared -fPIC -o libFMWrapper.so -Wl,-soname,libFMWrapper.so host.c
mkdir pathed && "$cc" -shared -fPIC -o pathed/libFMWrapper.so host.c

cat >entry.c <<'C'
extern void FMX_Stub(void);
__attribute__((visibility("default"))) void FMExternCallProc(void* p) { if (p) FMX_Stub(); }
C
cat >extra.c <<'C'
__attribute__((visibility("default"))) int vf_leaked_helper(void) { return 1; }
C
cat >newer_glibc.c <<'C'
#include <stdlib.h>
__attribute__((visibility("default"))) unsigned vf_random(void) { return arc4random(); }
C
cat >cxx.cpp <<'C'
#include <string>
__attribute__((visibility("default"))) std::size_t vf_length(const char* s) { return std::string(s).size(); }
C
cat >exports.map <<'C'
{ global: FMExternCallProc; local: *; };
C

# name | extra sources | link options | expected fault ("" = passes)
good_options="-Wl,-soname,9.1.0 -Wl,--version-script=exports.map"
cases=(
    "good||$good_options -L. -lFMWrapper|"
    "extra export|extra.c|-Wl,-soname,9.1.0 -L. -lFMWrapper|exports: FMExternCallProc, vf_leaked_helper"
    "wrong soname||-Wl,-soname,Vantafile.fmx -Wl,--version-script=exports.map -L. -lFMWrapper|soname: Vantafile.fmx, expected 9.1.0"
    "no soname||-Wl,--version-script=exports.map -L. -lFMWrapper|soname: none, expected 9.1.0"
    "host by path||$good_options pathed/libFMWrapper.so|needed: pathed/libFMWrapper.so"
    "no host||-Wl,-soname,9.1.0 -Wl,--version-script=exports.map -Wl,--unresolved-symbols=ignore-all|needed: no bare libFMWrapper.so"
    "search path||$good_options -L. -lFMWrapper -Wl,-rpath,/build/tree|path: /build/tree"
    "glibc 2.36|newer_glibc.c|$good_options -L. -lFMWrapper -Wl,--undefined=vf_random|glibc: needs GLIBC_2.36, newer than 2.35"
    "shared C++ runtime|cxx.cpp|$good_options -L. -lFMWrapper -lstdc++|needed: libstdc++.so.6"
)
failures=0
run_case() {
    local name=$1 sources=$2 options=$3 expected=$4 wanted_machine=${5:-$machine}
    # shellcheck disable=SC2086 # the table's words are the compiler's arguments
    if ! "$cc" -shared -fPIC -o plugin.fmx entry.c $sources $options 2>build.log; then
        echo "FAILED: $name: the fixture does not link"; cat build.log; failures=$((failures + 1)); return
    fi
    local output status=0
    output=$(python3 "$check" --machine "$wanted_machine" --soname 9.1.0 --readelf "$readelf" \
                     --objdump "$objdump" plugin.fmx) || status=$?
    if [ -z "$expected" ]; then
        [ $status -eq 0 ] && return
        echo "FAILED: $name: should pass, the check says:"; echo "$output"
    else
        [ $status -ne 0 ] && grep -qF "$expected" <<<"$output" && return
        echo "FAILED: $name: expected a fault naming \"$expected\", the check says:"; echo "$output"
    fi
    failures=$((failures + 1))
}
for row in "${cases[@]}"; do
    IFS='|' read -r name sources options expected <<<"$row"
    run_case "$name" "$sources" "$options" "$expected"
done
# The other machine's check must refuse this machine's build.
run_case "other machine" "" "$good_options -L. -lFMWrapper" "machine:" "$other_machine"

echo "elf check on $machine: ${#cases[@]} + 1 cases, $failures failed"
[ $failures -eq 0 ]
