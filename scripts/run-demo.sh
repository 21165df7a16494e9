#!/usr/bin/env bash
# The main job: build the plug-in and the emulated host, then run a short session in which the
# host loads Vantafile.fmx64 and evaluates calculations that call it. --linux: the same session
# with the Linux plug-in (build/linux/bin/Vantafile.fmx) in the native Linux host.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build="${VF_BUILD_DIR:-$root/build}"
export VF_BUILD_DIR="$build"

"$root/scripts/install-prereqs.sh"
echo "== Building (first run: a few minutes)"
host=("$root/fmhost")
if [ "${1:-}" = "--linux" ]; then
    "$root/scripts/build.sh" --linux
    plugin="$build/linux/bin/Vantafile.fmx"
    host+=(--linux)
else
    "$root/scripts/build.sh"
    plugin="$build/windows/bin/Vantafile.fmx64"
fi
echo
echo "== Plug-in: $plugin"
echo "== Loading it in the emulated host (verbose: what FileMaker would see)"
"${host[@]}" --plugin "$plugin" --verbose -e 'VFile_Version( "long" )'

# The demo: each calculation of docs/examples/demo.fmcalc evaluated by the host as FileMaker
# would, for a database in a fresh temporary folder, so relative paths land there. After each one
# the folder's contents show what happened on disk.
demo_dir=$(mktemp -d "${TMPDIR:-/tmp}/vantafile-demo.XXXXXX")
demo_errors=$(mktemp "${TMPDIR:-/tmp}/vantafile-demo-errors.XXXXXX")
trap 'rm -rf "$demo_dir" "$demo_errors"' EXIT
echo
echo "== Files and folders beside a database in $demo_dir"

show_folder() {
    local items
    items=$(cd "$demo_dir" && find . -mindepth 1 \( -type d -printf '%P/\n' -o -printf '%P\n' \) |
            sort | paste -sd '|' | sed 's/|/, /g')
    echo "   on disk: ${items:-(empty)}"
}

run_block() {
    local comments=() calculation=() line
    while IFS= read -r line; do
        if [[ $line == //* ]]; then comments+=("$line"); else calculation+=("$line"); fi
    done <<<"$1"
    echo
    if [ ${#comments[@]} -gt 0 ]; then printf '%s\n' "${comments[@]}"; fi
    printf '   %s\n' "${calculation[@]}"
    local result status=0
    result=$("${host[@]}" --plugin "$plugin" --file "$demo_dir/Demo.fmp12" -e "$1" \
             2>"$demo_errors") || status=$?
    echo "   = $result"
    if [ $status != 0 ]; then sed 's/^/   /' "$demo_errors"; fi
    show_folder
}

block=""
while IFS= read -r line || [ -n "$line" ]; do
    if [[ -z ${line// /} ]]; then
        if [ -n "$block" ]; then run_block "$block"; fi
        block=""
    else
        block+="${block:+$'\n'}$line"
    fi
done <"$root/docs/examples/demo.fmcalc"
if [ -n "$block" ]; then run_block "$block"; fi
