#!/usr/bin/env bash
# Fuzzes one parser natively with libFuzzer under ASan/UBSan: scripts/fuzz.sh TARGET SECONDS.
# fuzz/TARGET.cpp defines LLVMFuzzerTestOneInput and is linked against every portable source of
# the plug-in (the top level of src/foundation, src/archive and src/picture; never their windows/
# folders) and zlib. Never part of the tests or CI.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target=${1:?usage: fuzz.sh TARGET SECONDS}
seconds=${2:-60}
source="$root/fuzz/$target.cpp"
[ -f "$source" ] || { echo "no fuzz target $source" >&2; exit 2; }

shopt -s nullglob
portable=("$root"/src/foundation/*.cpp "$root"/src/archive/*.cpp "$root"/src/picture/*.cpp)
out="$root/build/fuzz"
mkdir -p "$out/corpus/$target"
clang++ -std=c++17 -O1 -g -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
    -I"$root/src" "$source" "${portable[@]}" -lz -o "$out/$target"
"$out/$target" -max_total_time="$seconds" -print_final_stats=1 "$out/corpus/$target"
