#!/bin/sh
# Our FMWrapper.dll (libFMWrapper.so) must export every name of the interface definition file,
# and every function a plug-in imports from it (the loader resolves imports by name: one missing
# name and the plug-in does not load).
# usage: check_exports_cover_imports.sh OBJDUMP FMWRAPPER_DLL DEF_FILE PLUGIN...
#        check_exports_cover_imports.sh nm libFMWrapper.so DEF_FILE PLUGIN.fmx...
set -eu
objdump="$1"
wrapper="$2"
def="$3"
shift 3

elf=0
case "$wrapper" in *.so) elf=1 ;; esac
if [ $elf = 1 ]; then
    exports=$("$objdump" -D --defined-only "$wrapper" | awk '{ print $3 }' | sort -u)
else
    exports=$("$objdump" -p "$wrapper" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' |
              sed -n 's/^[[:space:]]*\[ *[0-9]*\] //p' | sort -u)
fi
[ -n "$exports" ] || { echo "no export table in $wrapper"; exit 1; }

# Runs at the end of a pipeline (a subshell): it reports through its exit status.
check() {  # $1: where the names come from, stdin: names
    count=0
    missing=0
    while read -r name; do
        [ -n "$name" ] || continue
        count=$((count + 1))
        if ! printf '%s\n' "$exports" | grep -qx "$name"; then
            echo "MISSING export: $name (needed by $1)"
            missing=1
        fi
    done
    echo "$1: $count names checked"
    return $missing
}

status=0
sed -n '/^EXPORTS/,$p' "$def" | sed '1d; s/[[:space:]]//g' | check "$(basename "$def")" || status=1

for plugin in "$@"; do
    if [ $elf = 1 ]; then
        # An ELF file does not say which library provides a symbol: the interface's are FM_*.
        "$objdump" -D --undefined-only "$plugin" | awk '$2 ~ /^FM_/ { print $2 }' |
            check "$(basename "$plugin")" || status=1
        continue
    fi
    # The import table lists each DLL, then its functions as "hint name" lines.
    "$objdump" -p "$plugin" | awk '
        /DLL Name:/ { in_fm = (tolower($3) == "fmwrapper.dll"); next }
        in_fm && /^[[:space:]]+[0-9a-f]+[[:space:]]+[0-9]+[[:space:]]+[A-Za-z_]/ { print $3 }
        in_fm && /^$/ { in_fm = 0 }' | check "$(basename "$plugin")" || status=1
done
exit $status
