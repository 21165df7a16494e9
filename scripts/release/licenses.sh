#!/usr/bin/env bash
# Fills the package's LICENSES folder: our licence and the licence of every library built into
# the plug-in, copied from the Debian packages the build used (their copyright files).
#   licenses.sh ROOT OUT
set -euo pipefail
root=$1 out=$2
docs=/usr/share/doc
mkdir -p "$out"
copy() { # SOURCE NAME
    [ -f "$1" ] || { echo "licenses.sh: $1 is missing (is its package installed?)" >&2; exit 1; }
    cp "$1" "$out/$2"
}
copy "$root/scripts/release/Vantafile-LICENSE.txt" Vantafile.txt
copy "$docs/libz-mingw-w64-dev/copyright" zlib.txt
copy "$docs/gcc-mingw-w64-base/copyright" gcc-runtime-libstdc++-libgcc.txt
copy /usr/share/common-licenses/GPL-3 GPL-3.txt
copy "$docs/mingw-w64-common/copyright" mingw-w64-runtime-winpthreads.txt
# libdeflate's licence comes with the source package the build compiles (fetch-libdeflate.sh).
copy "$root/.cache/libdeflate/source/COPYING" libdeflate.txt

entries=(
    "Vantafile.txt                       the plug-in and the emulated host (ours)"
    "zlib.txt                            zlib, linked into the plug-in for deflate and inflate"
    "gcc-runtime-libstdc++-libgcc.txt    the C++ runtime (libstdc++) and libgcc, linked in; GPL 3"
    "                                    with the GCC Runtime Library Exception (in the file),"
    "                                    which lets them be linked into a program of any licence"
    "GPL-3.txt                           the GPL version 3 that file refers to"
    "mingw-w64-runtime-winpthreads.txt   the MinGW-w64 C runtime start-up code and winpthreads,"
    "                                    linked in"
    "libdeflate.txt                      libdeflate, linked into the plug-in for whole-entry"
    "                                    deflate, inflate and CRC-32"
)
{
    echo "Licences of Quorvel Vantafile and of the libraries built into it"
    echo
    printf '%s\n' "${entries[@]}"
} | sed 's/$/\r/' >"$out/README.txt"
