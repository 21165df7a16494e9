#!/usr/bin/env bash
# Builds one libFuzzer target natively with clang under ASan/UBSan and runs it for a while:
#   scripts/fuzz.sh TARGET SECONDS
# The target is fuzz/TARGET.cpp; its lines "// fuzz-sources: <globs>" and "// fuzz-libs: <flags>"
# name the portable sources (relative to the repository) and libraries it needs. Seeds come from
# build/*/fuzz-seeds/TARGET when the tests wrote some; the corpus grows in build/fuzz/TARGET.
# Never part of the tests: run it by hand, preferably under `nice`.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
target=${1:?usage: fuzz.sh TARGET SECONDS}
seconds=${2:-60}
source_file="$root/fuzz/$target.cpp"
[ -f "$source_file" ] || { echo "fuzz.sh: no $source_file" >&2; exit 2; }

clang=${CLANGXX:-$(command -v clang++ || ls /usr/bin/clang++-* 2>/dev/null | sort -V | tail -1)}
out="$root/build/fuzz/$target"
mkdir -p "$out/corpus"

sources=()
for pattern in $(sed -n 's|^// fuzz-sources: ||p' "$source_file"); do
    for f in "$root"/$pattern; do sources+=("$f"); done
done
read -r -a libs <<<"$(sed -n 's|^// fuzz-libs: ||p' "$source_file")"

"$clang" -std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
    -I"$root/src" "$source_file" "${sources[@]}" "${libs[@]}" -o "$out/$target"

seeds=()
for dir in "$root"/build/*/fuzz-seeds/"$target"; do
    [ -d "$dir" ] && seeds+=("$dir")
done
cd "$out"
exec "./$target" -max_total_time="$seconds" -print_final_stats=1 -timeout=10 -rss_limit_mb=1024 \
    corpus "${seeds[@]}"
