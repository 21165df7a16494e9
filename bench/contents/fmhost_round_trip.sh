#!/usr/bin/env bash
# VFile_Read and VFile_Write of a 100 MB file as "base64" and "hex-dump" through ./fmhost, beside
# the host's own Base64Encode/Base64Decode of the same file, each a separate fmhost run timed
# from outside less an empty run (start-up). Also the peak memory of each run (GNU time, the
# Wine process). Needs the Windows build: ./scripts/build.sh first.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
# One Wine server for the whole run, so that no run pays for booting Wine (nor its services).
export WINEPREFIX="${VF_BUILD_DIR:-$root/build}/windows/wineprefix"
"$root/fmhost" -e 1 >/dev/null  # makes the prefix on first use
wineserver -k 2>/dev/null || true
wineserver -w
wineserver -p
trap 'wineserver -k; rm -rf "$work"' EXIT
head -c $((${VF_BENCH_MB:-100} * 1024 * 1024)) /dev/urandom > "$work/data.bin"
mb=$(echo "${VF_BENCH_MB:-100} * 1.048576" | bc -l)

# Seconds and peak kilobytes of one fmhost run of the calculation.
run() {
    local start end
    start=$(date +%s.%N)
    /usr/bin/time -f '%M' -o "$work/rss" "$root/fmhost" --file "$work/Bench.fmp12" -e "$1" \
        > "$work/out" 2>&1
    end=$(date +%s.%N)
    echo "$(echo "$end - $start" | bc) $(cat "$work/rss")"
}

# The fastest of three empty runs: the first after the server starts is the slowest.
base=$(for _ in 1 2 3; do run '1' | cut -d' ' -f1; done | sort -n | head -1)
# The memory target of a text form: the file's bytes, the host's text of them (UTF-16), and one
# more copy of the larger of the two; `$1` is the text's length in characters.
bound() {
    echo $(((${VF_BENCH_MB:-100} * 1048576 + 4 * $1) / 1048576))
}
bytes=$((${VF_BENCH_MB:-100} * 1024 * 1024))
report() {
    local what=$1 calc=$2 limit=${3:-} seconds kb
    read -r seconds kb < <(run "$calc")
    printf '%-44s %7.0f MB/s  peak %5d MB%s\n' "$what" \
        "$(echo "$mb / ($seconds - $base)" | bc -l)" $((kb / 1024)) \
        "${limit:+  (target <= $limit MB)}"
    if [ "$(head -c 2 "$work/out")" != "0" ]; then cat "$work/out"; fi
}

echo "${VF_BENCH_MB:-100} MB through ./fmhost (start-up of $base s subtracted; peaks are the whole process)"
report 'VFile_Read base64 + VFile_Write base64' \
    'VFile_Write( "b64.bin" ; VFile_Read( "data.bin" ; "base64" ) ; "base64" )' \
    "$(bound $(((bytes + 2) / 3 * 4)))"
report 'VFile_Read hex-dump + VFile_Write hex-dump' \
    'VFile_Write( "hex.bin" ; VFile_Read( "data.bin" ; "hex-dump" ) ; "hex-dump" )' \
    "$(bound $((bytes * 3 - 1)))"
report 'reference: VFile_Read file + VFile_Write file' \
    'VFile_Write( "file.bin" ; VFile_Read( "data.bin" ; "file" ) )'
report 'reference: host Base64Encode + Base64Decode' \
    'VFile_Write( "host.bin" ; Base64Decode( Base64Encode( VFile_Read( "data.bin" ; "file" ) ) ; "x.bin" ) )'
for copy in b64 hex file host; do
    cmp -s "$work/data.bin" "$work/$copy.bin" || echo "$copy.bin differs from the original"
done
