#!/usr/bin/env bash
# Fuzzes one parser natively: scripts/fuzz.sh TARGET SECONDS builds fuzz/TARGET.cpp with clang's
# libFuzzer under ASan/UBSan against the portable sources (src/foundation, src/archive,
# src/picture; no windows/ folders), then runs it for SECONDS on the corpus in
# build/fuzz/TARGET-corpus. Never part of the tests.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target="${1:?usage: fuzz.sh TARGET SECONDS}"
seconds="${2:?usage: fuzz.sh TARGET SECONDS}"
source_file="$root/fuzz/$target.cpp"
[ -f "$source_file" ] || { echo "fuzz.sh: no $source_file" >&2; exit 2; }

shopt -s nullglob
portable=("$root"/src/foundation/*.cpp "$root"/src/archive/*.cpp "$root"/src/picture/*.cpp)
out="${VF_BUILD_DIR:-$root/build}/fuzz"
mkdir -p "$out/$target-corpus"
clang++ -std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=undefined \
    -I"$root/src" "$source_file" "${portable[@]}" -lz -o "$out/$target"
"$out/$target" -max_total_time="$seconds" -print_final_stats=1 "$out/$target-corpus"
