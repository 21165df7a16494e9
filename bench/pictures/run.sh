#!/usr/bin/env bash
# Picture throughput: 50 generated 12-megapixel JPEGs (4000x3000, EXIF orientations 1 to 8 in
# turn) scaled to 1600 pixels wide and turned upright, once through VFile_Convert in ./fmhost
# (GDI+ under Wine) and once through ImageMagick's `convert -auto-orient -resize 1600x`, in the
# same run on the same files. Prints pictures per second for both and their ratio. Needs the
# Windows build (scripts/build.sh) and Debian's imagemagick package.
# --native: the Linux plug-in in the Linux host instead (./fmhost --linux, the release build from
# scripts/build.sh --linux), where the target is to be at least as fast as ImageMagick.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
count="${VF_BENCH_PICTURES:-50}"

host=("$root/fmhost")
label="fmhost, GDI+ under Wine"
target="0.80"
host_path() { winepath -w "$1" 2>/dev/null | sed 's/\\/\\\\/g'; }
if [ "${1:-}" = "--native" ]; then
    host=("$root/fmhost" --linux)
    label="fmhost --linux, the Linux plug-in"
    target="1.00"
    host_path() { printf '%s' "$1"; }
fi

# Debian's binary by its full path: another `convert` may come first on PATH.
magick=""
for candidate in /usr/bin/convert-im6.q16 /usr/bin/convert-im7.q16 /usr/bin/convert; do
    if [ -x "$candidate" ] && "$candidate" -version 2>/dev/null | grep -q ImageMagick; then
        magick="$candidate"
        break
    fi
done
if [ -z "$magick" ]; then
    echo "pictures bench: ImageMagick is missing; install it with: apt-get install imagemagick" >&2
    exit 2
fi

work=$(mktemp -d /tmp/vf-pictures-bench.XXXXXX)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/in" "$work/ours" "$work/magick"

echo "generating $count pictures of 4000x3000..."
"$magick" -size 4000x3000 -seed 7 plasma:fractal -quality 90 "$work/base.jpg"
python3 "$root/bench/pictures/splice_exif.py" "$work/base.jpg" "$work/in" "$count"

script="$work/convert.fmcalc"
for file in "$work"/in/*.jpg; do
    name=$(basename "$file")
    printf 'VFile_Convert( "%s" ; "%s" ; "width" ; 1600 ; "proportional" ; 1 ; "exif-rotate" ; 1 )\n\n' \
        "$(host_path "$file")" "$(host_path "$work/ours/$name")" >>"$script"
done
"${host[@]}" -e 'VFile_Version' >/dev/null  # the host (and Wine, if used) is up before timing

now() { python3 -c 'import time; print(time.monotonic())'; }
elapsed() { python3 -c "import sys; print(float(sys.argv[2]) - float(sys.argv[1]))" "$1" "$(now)"; }

start=$(now)
results=$("${host[@]}" --script "$script")
ours=$(elapsed "$start")
if [ "$(echo "$results" | grep -cx 0)" -ne "$count" ]; then
    echo "pictures bench: VFile_Convert failed:" >&2
    echo "$results" | sort | uniq -c >&2
    exit 1
fi

start=$(now)
for file in "$work"/in/*.jpg; do
    "$magick" "$file" -auto-orient -resize 1600x "$work/magick/$(basename "$file")"
done
theirs=$(elapsed "$start")

identify_one() { "${magick%convert*}identify${magick##*convert}" -format '%wx%h' "$1"; }
sample=$(printf 'p%02d.jpg' $((count >= 6 ? 6 : 1)))
echo "$sample: ours $(identify_one "$work/ours/$sample"), ImageMagick $(identify_one "$work/magick/$sample")"
python3 - "$count" "$ours" "$theirs" "$(basename "$magick")" "$label" "$target" <<'REPORT'
import sys
count, ours, theirs, magick = int(sys.argv[1]), float(sys.argv[2]), float(sys.argv[3]), sys.argv[4]
label, target = sys.argv[5], sys.argv[6]
print(f"VFile_Convert ({label}): {count} pictures in {ours:.2f} s = {count / ours:.2f} pictures/s")
print(f"ImageMagick {magick}: {count} pictures in {theirs:.2f} s = {count / theirs:.2f} pictures/s")
print(f"ratio (ours / ImageMagick): {theirs / ours:.2f} (target >= {target})")
REPORT
