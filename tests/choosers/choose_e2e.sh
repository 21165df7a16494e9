#!/usr/bin/env bash
# VFile_Choose end to end: fmhost.exe under Wine shows the real dialogs on the test display and
# xdotool works them as a user would. A dialog still open 10 s after its keys is a failure: the
# watchdog ends that fmhost, so nothing here can hang.
# Usage: choose_e2e.sh WINE_RUN FMHOST_EXE PLUGIN WINEPREFIX
set -uo pipefail
# VF_WINEPREFIX: the prefix the run uses instead of the build's own (run-tests.sh).
wine_run=$1 fmhost=$2 plugin="Z:${3//\//\\}" prefix=${VF_WINEPREFIX:-$4}
failures=0
fail() { echo "FAILED: $*"; failures=$((failures + 1)); }

if [ -z "${DISPLAY:-}" ] || ! command -v xdotool >/dev/null; then
    echo "needs the test display and xdotool (scripts/wine-env.sh, scripts/install-prereqs.sh)"
    exit 1
fi
# On the prefix's C: drive: Wine's folder browser does not find its way into every Z: folder.
scratch="$prefix/drive_c/users/Public/vf-choose-$$" dir="C:\\users\\Public\\vf-choose-$$"
# The current folder is one of our own: the test user may not write in the build.
work=$(mktemp -d)
cd "$work" || exit 1
probe="vf-choose-probe-$$"
trap 'rm -rf "$scratch" "$work"' EXIT
mkdir -p "$scratch"
for f in a.txt b.txt c.txt d.csv; do printf x >"$scratch/$f"; done

# run CAPTION CALC ACTION...: evaluates CALC, then $after, in fmhost; waits for the dialog
# captioned CAPTION and works it: "type:TEXT", "key:KEYS" or "click:X Y" (in the window).
# $result holds the output, carriage returns shown as "|".
after='VFile_Get( "lastError" )'
run() {
    local caption=$1 calc=$2 out window="" waited=0 pid
    shift 2
    out=$(mktemp)
    "$wine_run" "$fmhost" --plugin "$plugin" ${options:-} -e "$calc" -e "$after" >"$out" 2>/dev/null </dev/null &
    pid=$!
    while [ -z "$window" ] && [ $waited -lt 150 ] && kill -0 $pid 2>/dev/null; do
        sleep 0.1
        waited=$((waited + 1))
        window=$(xdotool search --onlyvisible --pid $pid --name "^${caption}\$" 2>/dev/null | head -1)
    done
    [ -n "$window" ] || fail "$calc: no dialog captioned '$caption'"
    if [ -n "$window" ]; then
        sleep 0.7 # the dialog fills its lists and takes the focus right after showing
        xdotool windowfocus --sync "$window" 2>/dev/null
        for action in "$@"; do
            case $action in
                type:*) xdotool type --delay 20 "${action#type:}" ;;
                key:*) xdotool key ${action#key:} ;;
                click:*) xdotool mousemove --window "$window" ${action#click:} click 1 && sleep 0.3 ;;
            esac
        done
    fi
    waited=0
    while kill -0 $pid 2>/dev/null && [ $waited -lt 100 ]; do sleep 0.1; waited=$((waited + 1)); done
    if kill -0 $pid 2>/dev/null; then
        fail "$calc: the dialog was still open; the watchdog ended it"
        kill $pid
    fi
    wait $pid 2>/dev/null
    result=$(tr '\r' '|' <"$out")
    rm -f "$out"
}
expect() { [ "$result" = "$2" ] || fail "$1: got '$result', expected '$2'"; }
ok=$'\nNo Error Message'

# Names typed come back in the order typed.
run Open "VFile_Choose( \"files\" ; \"extensions\" ; \"txt\" ; \"folder\" ; \"$dir\" )" \
    'type:"b.txt" "c.txt" "a.txt"' key:Return
expect "three files typed" "$dir\\b.txt|$dir\\c.txt|$dir\\a.txt$ok"
# Everything the list shows, first to last: the filter leaves d.csv out. The title is the caption.
run "Pick the texts" "VFile_Choose( \"files\" ; \"extensions\" ; \".TXT\" ; \"folder\" ; \"$dir\" ; \"TITLE\" ; \"Pick the texts\" )" \
    "click:300 200" "key:Home shift+End Return"
expect "all listed" "$dir\\a.txt|$dir\\b.txt|$dir\\c.txt$ok"
# The process's current folder, where relative paths start without a database, stays put.
options=--no-file after="VFile_New( \"$probe\" )" run Open \
    "VFile_Choose( \"file\" ; \"folder\" ; \"$dir\" )" type:d.csv key:Return
expect "one file" "$dir\\d.csv"$'\n0'
[ -d "$probe" ] && [ ! -e "$scratch/$probe" ] || fail "the dialog moved the current folder"

# Found by its caption, the title; the browser opens on the folder (given in FileMaker's form),
# and Return takes it. Wine's browser cannot open on a folder made moments ago (it shows the
# desktop the first time), so this one has been there since the prefix was made.
run "Pick one" 'VFile_Choose( "folder" ; "title" ; "Pick one" ; "folder" ; "file:/C:/windows/system32" )' \
    key:Return
expect "folder" "C:\\windows\\system32$ok"
# An existing name is not asked about (a question would keep the call open) nor touched.
run "Save As" "VFile_Choose( \"NEW\" ; \"folder\" ; \"$dir\" )" type:a.txt key:Return
expect "save name" "$dir\\a.txt$ok"
[ "$(cat "$scratch/a.txt")" = x ] || fail "the save chooser changed the file"

for kind in file files new folder folders; do
    case $kind in new) caption="Save As" ;; folder*) caption="Choose Directory..." ;; *) caption=Open ;; esac
    run "$caption" "VFile_Choose( \"$kind\" ; \"folder\" ; \"$dir\" )" key:Escape
    expect "Escape on $kind" "-128$ok"
done

# Without a display every kind fails at once; bad arguments are refused before that.
no_display() {
    local started=$SECONDS
    result=$(env -u DISPLAY "$wine_run" "$fmhost" --plugin "$plugin" -e "$1" \
        -e 'VFile_Get( "lastErrorMessage" )' 2>/dev/null </dev/null)
    [ $((SECONDS - started)) -lt 5 ] || fail "$1 took $((SECONDS - started)) s without a display"
    expect "$1" "${2//|/$'\n'}"
}
for kind in file files new folder folders; do
    no_display "VFile_Choose( \"$kind\" )" "2400|No interactive desktop to show the dialog on"
done
no_display 'VFile_Choose' "-50|Not enough parameters"
no_display 'VFile_Choose( "chair" )' "-50|Wrong parameter"
no_display 'VFile_Choose( "file" ; "title" ; "t" ; "colour" ; "red" )' "-50|Unknown option: colour"
no_display 'VFile_Choose( "file" ; "folder" ; 5 )' "-50|Path parameter must be text"

[ $failures -eq 0 ] || { echo "$failures failure(s)"; exit 1; }
echo "VFile_Choose: every dialog answered as expected"
