#!/usr/bin/env bash
# VFile_Choose end to end: fmhost.exe under Wine shows the real dialogs on the test display and
# xdotool works them with the keyboard, as a user would. A dialog still open after its keys is
# a failure: the watchdog ends that fmhost, so nothing here can hang.
# Usage: choose_e2e.sh WINE_RUN FMHOST_EXE PLUGIN WINEPREFIX
set -uo pipefail
wine_run=$1
fmhost=$2
plugin="Z:${3//\//\\}"
prefix=$4

failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

if [ -z "${DISPLAY:-}" ] || ! command -v xdotool >/dev/null; then
    echo "needs the test display and xdotool (scripts/wine-env.sh, scripts/install-prereqs.sh)"
    exit 1
fi

# On the C: drive of the prefix: the folder browser finds its way to folders there.
id="vf-choose-$$"
scratch="$prefix/drive_c/users/Public/$id"
dir="C:\\users\\Public\\$id"
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$scratch/inner"
for f in a.txt b.txt c.txt d.csv; do printf x >"$scratch/$f"; done

# run CAPTION CALC KEYS...: evaluates CALC (and the last error) in fmhost, waits for its dialog
# captioned CAPTION, focuses it and sends each "type:TEXT" or "key:KEY". Sets $result to the
# output, one line per calculation.
run() {
    local caption=$1 calc=$2 out window="" waited=0
    shift 2
    out=$(mktemp)
    "$wine_run" "$fmhost" --plugin "$plugin" -e "$calc" -e 'VFile_Get( "lastError" )' \
        >"$out" 2>/dev/null </dev/null &
    local pid=$!
    while [ -z "$window" ] && [ $waited -lt 150 ] && kill -0 $pid 2>/dev/null; do
        sleep 0.1
        waited=$((waited + 1))
        window=$(xdotool search --onlyvisible --pid $pid --name "^${caption}\$" 2>/dev/null | head -1)
    done
    if [ -n "$window" ]; then
        # The dialog fills its lists and takes the keyboard focus right after showing.
        sleep 0.7
        xdotool windowfocus --sync "$window" 2>/dev/null
        for action in "$@"; do
            case $action in
                type:*) xdotool type --delay 20 "${action#type:}" ;;
                key:*) xdotool key "${action#key:}" ;;
            esac
        done
    else
        fail "$calc: no dialog captioned '$caption'"
    fi
    waited=0
    while kill -0 $pid 2>/dev/null && [ $waited -lt 100 ]; do
        sleep 0.1
        waited=$((waited + 1))
    done
    if kill -0 $pid 2>/dev/null; then
        fail "$calc: the dialog was still open; the watchdog ended it"
        kill $pid
    fi
    wait $pid 2>/dev/null
    result=$(tr '\r' '|' <"$out")
    rm -f "$out"
}

expect() {
    if [ "$result" != "$2" ]; then
        fail "$1: got '$result', expected '$2'"
    fi
}

# Several files, offered only as the allowed extension, answered in the order given.
run Open "VFile_Choose( \"files\" ; \"extensions\" ; \"txt\" ; \"folder\" ; \"$dir\" )" \
    'type:"b.txt" "c.txt" "a.txt"' key:Return
expect "three files" "$dir\\b.txt|$dir\\c.txt|$dir\\a.txt
No Error Message"

run Open "VFile_Choose( \"file\" ; \"folder\" ; \"$dir\" )" type:d.csv key:Return
expect "one file" "$dir\\d.csv
No Error Message"

# The caption found is the title; the browser opens on the folder, and Return takes it.
run "Pick one" "VFile_Choose( \"folder\" ; \"title\" ; \"Pick one\" ; \"folder\" ; \"$dir\\inner\" )" \
    key:Return
expect "folder" "$dir\\inner
No Error Message"

# An existing name is not asked about (a question would keep the call open) and not touched.
run "Save As" "VFile_Choose( \"NEW\" ; \"folder\" ; \"$dir\" )" type:a.txt key:Return
expect "save name" "$dir\\a.txt
No Error Message"
[ "$(cat "$scratch/a.txt")" = x ] || fail "the save chooser changed the file"

for kind in file files new folder folders; do
    case $kind in new) caption="Save As" ;; folder*) caption="Choose Directory..." ;; *) caption=Open ;; esac
    run "$caption" "VFile_Choose( \"$kind\" ; \"folder\" ; \"$dir\" )" key:Escape
    expect "Escape on $kind" "-128
No Error Message"
done

# Without a display no dialog can show: every kind fails at once, and so do bad arguments,
# which are refused before anything would show.
no_display() {
    local started=$SECONDS
    result=$(env -u DISPLAY "$wine_run" "$fmhost" --plugin "$plugin" -e "$1" \
        -e 'VFile_Get( "lastErrorMessage" )' 2>/dev/null </dev/null | tr '\r' '|')
    if [ $((SECONDS - started)) -ge 5 ]; then
        fail "$1 took $((SECONDS - started)) s without a display"
    fi
}
for kind in file files new folder folders; do
    no_display "VFile_Choose( \"$kind\" ; \"title\" ; \"t\" )"
    expect "no display, $kind" "2400
No interactive desktop to show the dialog on"
done
while IFS='=' read -r calc expected; do
    no_display "$calc"
    expect "$calc" "${expected//|/$'\n'}"
done <<'CASES'
VFile_Choose( "chair" )=-50|Wrong parameter
VFile_Choose( "file" ; "title" ; "t" ; "colour" ; "red" )=-50|Unknown option: colour
VFile_Choose( "file" ; "folder" ; 5 )=-50|Path parameter must be text
CASES

if [ $failures -gt 0 ]; then
    echo "$failures failure(s)"
    exit 1
fi
echo "all VFile_Choose dialogs answered as expected"
