#!/usr/bin/env bash
# Fills the package's LICENSES folder: our licence and the licence of every library built into
# the plug-in, copied from the Debian packages the build used (their copyright files).
#   licenses.sh ROOT OUT [win64|linux-x86_64|linux-arm64]
set -euo pipefail
root=$1 out=$2 platform=${3:-win64}
docs=/usr/share/doc
mkdir -p "$out"
copy() { # SOURCE NAME
    [ -f "$1" ] || { echo "licenses.sh: $1 is missing (is its package installed?)" >&2; exit 1; }
    cp "$1" "$out/$2"
}
copy "$root/scripts/release/Vantafile-LICENSE.txt" Vantafile.txt
# Each platform's runtime and zlib come from the toolchain packages that build it.
case "$platform" in
win64)
    zlib="$docs/libz-mingw-w64-dev/copyright" gcc="$docs/gcc-mingw-w64-base/copyright" ;;
linux-x86_64)
    zlib="$docs/zlib1g-dev/copyright" gcc="$docs/gcc-12-base/copyright" ;;
linux-arm64)
    zlib="$docs/zlib1g-dev/copyright" gcc="$docs/gcc-12-aarch64-linux-gnu-base/copyright" ;;
*)
    echo "licenses.sh: unknown platform $platform" >&2
    exit 2 ;;
esac
copy "$zlib" zlib.txt
copy "$gcc" gcc-runtime-libstdc++-libgcc.txt
copy /usr/share/common-licenses/GPL-3 GPL-3.txt
# libdeflate's licence comes with the source package the Windows build compiles
# (fetch-libdeflate.sh); the Linux builds link Debian's static build of the same release.
copy "$root/.cache/libdeflate/source/COPYING" libdeflate.txt

entries=(
    "Vantafile.txt                       the plug-in and the emulated host (ours)"
    "zlib.txt                            zlib, linked into the plug-in for deflate and inflate"
    "gcc-runtime-libstdc++-libgcc.txt    the C++ runtime (libstdc++) and libgcc, linked in; GPL 3"
    "                                    with the GCC Runtime Library Exception (in the file),"
    "                                    which lets them be linked into a program of any licence"
    "GPL-3.txt                           the GPL version 3 that file refers to"
)
line_end=$'\r'
if [ "$platform" = win64 ]; then
    copy "$docs/mingw-w64-common/copyright" mingw-w64-runtime-winpthreads.txt
    entries+=("mingw-w64-runtime-winpthreads.txt   the MinGW-w64 C runtime start-up code and winpthreads,"
              "                                    linked in")
else
    # glibc is the system's own, loaded from the server machine, never shipped.
    line_end=""
fi
entries+=("libdeflate.txt                      libdeflate, linked into the plug-in for whole-entry"
          "                                    deflate, inflate and CRC-32")
# The Linux plug-in's picture codecs, linked from Debian's static archives (Windows uses GDI+).
if [ "$platform" != win64 ]; then
    picture_libraries=(
        "libjpeg62-turbo libjpeg-turbo.txt  libjpeg-turbo, JPEG pictures"
        "libpng16-16 libpng.txt             libpng, PNG pictures"
        "libgif7 giflib.txt                 giflib, GIF pictures"
        "libtiff6 libtiff.txt               libtiff, TIFF pictures"
        "libwebp7 libwebp.txt               libwebp, WebP-compressed TIFF pages"
        "libzstd1 zstd.txt                  Zstandard, Zstandard-compressed TIFF pages"
        "liblzma5 xz-utils-liblzma.txt      liblzma, LZMA-compressed TIFF pages"
        "liblerc4 lerc.txt                  LERC (Apache 2.0), LERC-compressed TIFF pages"
    )
    for line in "${picture_libraries[@]}"; do
        read -r package file what <<<"$line"
        copy "$docs/$package/copyright" "$file"
        entries+=("$(printf '%-36s%s' "$file" "$what, linked into the plug-in")")
    done
    copy /usr/share/common-licenses/Apache-2.0 Apache-2.0.txt
    entries+=("Apache-2.0.txt                      the Apache License 2.0 lerc.txt refers to")
fi
{
    echo "Licences of Quorvel Vantafile and of the libraries built into it"
    echo
    printf '%s\n' "${entries[@]}"
} | sed "s/\$/$line_end/" >"$out/README.txt"
