#!/usr/bin/env bash
# Makes the release packages from clean Release builds in build/package: for Windows
# dist/Vantafile-<version>-win64.zip (the plug-in and the emulated host), for FileMaker Server on
# Linux dist/Vantafile-<version>-linux-x86_64.zip and -linux-arm64.zip (the .fmx and the Linux
# emulated host for that machine), each with the function reference as HTML, README.txt,
# CHANGELOG.md, LICENSES/ and SHA256SUMS. Safe to run again: the build folders, the staging
# folders and the zips are made anew each time.
#   scripts/package.sh [PLATFORM...]     build and package (default: win64 linux-x86_64 linux-arm64)
#   scripts/package.sh --name [PLATFORM] print a package's file name and stop (default: win64)
# Signing (Windows): set VF_SIGN_PFX + VF_SIGN_PASSWORD, or VF_SIGN_CERT + VF_SIGN_KEY (see
# scripts/release/sign.sh); without them the package is made unsigned and says so.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
version=$(head -n 1 "$root/VERSION")
platforms=(win64 linux-x86_64 linux-arm64)
package_name() { echo "Vantafile-$version-$1"; }
if [ "${1:-}" = "--name" ]; then
    echo "$(package_name "${2:-win64}").zip"
    exit 0
fi
[ $# -gt 0 ] && platforms=("$@")
for platform in "${platforms[@]}"; do
    case "$platform" in
    win64 | linux-x86_64 | linux-arm64) ;;
    *) echo "package.sh: unknown platform $platform (win64, linux-x86_64, linux-arm64)" >&2; exit 2 ;;
    esac
done

"$root/scripts/install-prereqs.sh"

build="${VF_PACKAGE_BUILD_DIR:-$root/build/package}"
dist="$root/dist"
# shellcheck source=ccache-launcher.sh
source "$root/scripts/ccache-launcher.sh"
echo "== clean Release builds in $build"
rm -rf "$build"

# Every file gets the time of the last commit (or of VERSION): the same bytes for the same sources.
seal_and_zip() { # STAGE NAME
    local stage=$1 name=$2 stamp
    stamp=$(git -C "$root" log -1 --format=%ct 2>/dev/null || stat -c %Y "$root/VERSION")
    (cd "$stage" && find . -type f ! -name SHA256SUMS -printf '%P\n' | LC_ALL=C sort |
        xargs -d '\n' sha256sum >SHA256SUMS)
    find "$stage" -exec touch -h -d "@$stamp" {} +
    mkdir -p "$dist"
    rm -f "$dist/$name.zip"
    (cd "$stage" && find . -mindepth 1 -printf '%P\n' | LC_ALL=C sort |
        TZ=UTC zip -X -q -@ "$dist/$name.zip")
    echo "== $dist/$name.zip ($(stat -c %s "$dist/$name.zip") bytes)"
}

# The parts every package shares: release notes, the HTML reference, the licences.
stage_common() { # STAGE PLATFORM
    cp "$root/CHANGELOG.md" "$1/"
    python3 "$root/scripts/release/doc_pages.py" --root "$root" --out "$1/docs"
    "$root/scripts/release/licenses.sh" "$root" "$1/LICENSES" "$2"
}

package_windows() {
    local name stage bin signed
    name=$(package_name win64)
    stage="$build/stage/$name"
    cmake -S "$root" -B "$build/windows" -DCMAKE_BUILD_TYPE=Release \
          -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64-x86_64.cmake" "${launcher[@]}" >/dev/null
    cmake --build "$build/windows" -j"$(nproc)" --target Vantafile fmhost FMWrapper
    bin="$build/windows/bin"

    echo "== staging $name"
    mkdir -p "$stage/fmhost" "$stage/LICENSES"
    signed=$("$root/scripts/release/sign.sh" "$bin/Vantafile.fmx64" "$stage/Vantafile.fmx64")
    cp "$bin/fmhost.exe" "$bin/FMWrapper.dll" "$stage/fmhost/"
    printf '%s\r\n' \
        "fmhost.exe: the emulated host, a command-line stand-in for FileMaker that loads a plug-in" \
        "and evaluates calculations. FMWrapper.dll is its own runtime: never copy it into FileMaker." \
        "" \
        "    fmhost.exe --plugin ..\\Vantafile.fmx64 -e \"VFile_Version( \\\"long\\\" )\"" \
        "" \
        "Scripting the plug-in with it: ..\\docs\\host.html (options, script files, output) and" \
        "..\\docs\\host-language.html (the calculations it understands)." >"$stage/fmhost/README.txt"
    stage_common "$stage" win64
    "$root/scripts/release/readme.sh" "$root" "$signed" >"$stage/README.txt"
    seal_and_zip "$stage" "$name"
    if [ "$signed" = signed ]; then
        echo "   Vantafile.fmx64 is signed"
    else
        echo "   Vantafile.fmx64 is NOT signed (no VF_SIGN_PFX or VF_SIGN_CERT given)"
    fi
}

# The Linux plug-in and host for one machine: x86_64 natively, arm64 with the cross toolchain.
package_linux() { # PLATFORM
    local platform=$1 name stage bin tree options=()
    name=$(package_name "$platform")
    stage="$build/stage/$name"
    tree="$build/$platform"
    if [ "$platform" = linux-arm64 ]; then
        options=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/aarch64-linux-gnu.cmake")
    fi
    # The install run-path ($ORIGIN for fmhost) from the start: no build folder goes in the zip.
    cmake -S "$root" -B "$tree" -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF -DVF_LINUX_PLUGIN=ON \
          -DCMAKE_BUILD_WITH_INSTALL_RPATH=ON "${options[@]}" "${launcher[@]}" >/dev/null
    cmake --build "$tree" -j"$(nproc)" --target Vantafile fmhost FMWrapper
    bin="$tree/bin"

    echo "== staging $name"
    mkdir -p "$stage/fmhost"
    install -m 755 "$bin/Vantafile.fmx" "$stage/"
    install -m 755 "$bin/fmhost" "$stage/fmhost/"
    install -m 644 "$bin/libFMWrapper.so" "$stage/fmhost/"
    printf '%s\n' \
        "fmhost: the emulated host, a command-line stand-in for FileMaker Server that loads a" \
        "plug-in and evaluates calculations. libFMWrapper.so, beside it, is its own runtime:" \
        "never copy it into the server." \
        "" \
        "    fmhost/fmhost --plugin Vantafile.fmx -e 'VFile_Version( \"long\" )'" \
        "" \
        "Scripting the plug-in with it: ../docs/host.html (options, script files, output) and" \
        "../docs/host-language.html (the calculations it understands)." >"$stage/fmhost/README.txt"
    stage_common "$stage" "$platform"
    "$root/scripts/release/readme.sh" "$root" unsigned "$platform" >"$stage/README.txt"
    seal_and_zip "$stage" "$name"
}

for platform in "${platforms[@]}"; do
    if [ "$platform" = win64 ]; then
        package_windows
    else
        package_linux "$platform"
    fi
done
