#!/bin/sh
# The shipped plug-in may import only Windows system DLLs and FMWrapper.dll, and must export
# FMExternCallProc. A runtime DLL (libstdc++, libwinpthread, zlib1, ...) in its import table
# means it would fail to load on a user's machine.
# usage: check_plugin_binary.sh OBJDUMP PLUGIN
set -eu
objdump="$1"
plugin="$2"
dump=$("$objdump" -p "$plugin")

allowed='^(kernel32|user32|gdi32|advapi32|shell32|shlwapi|ole32|oleaut32|comdlg32|comctl32|mpr|gdiplus|msvcrt|ucrtbase|ntdll|version|ws2_32|crypt32|bcrypt|secur32|netapi32|userenv|uxtheme|riched20|msftedit|winmm|rpcrt4|wininet|winhttp|fmwrapper|api-ms-win-[a-z0-9-]+)\.dll$'
status=0
imports=$(printf '%s\n' "$dump" | sed -n 's/^[[:space:]]*DLL Name: //p')
[ -n "$imports" ] || { echo "no import table found in $plugin"; exit 1; }
for dll in $imports; do
    lower=$(printf '%s' "$dll" | tr 'A-Z' 'a-z')
    if printf '%s\n' "$lower" | grep -Eq "$allowed"; then
        echo "import ok: $dll"
    else
        echo "FORBIDDEN import: $dll"
        status=1
    fi
done

exports=$(printf '%s\n' "$dump" | sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p')
if printf '%s\n' "$exports" | grep -Eq '\] FMExternCallProc$'; then
    echo "export ok: FMExternCallProc"
else
    echo "MISSING export: FMExternCallProc"
    status=1
fi
others=$(printf '%s\n' "$exports" | grep -E '^[[:space:]]+\[ *[0-9]+\] ' | grep -v 'FMExternCallProc$' || true)
if [ -n "$others" ]; then
    echo "UNEXPECTED exports:"; printf '%s\n' "$others"
    status=1
fi
exit $status
