#!/usr/bin/env bash
# Makes the release package: a clean Release build of the plug-in and the emulated host in
# build/package, the function reference as HTML, and dist/Vantafile-<version>-win64.zip holding
# them with README.txt, CHANGELOG.md, LICENSES/ and SHA256SUMS. Safe to run again: the build
# folder, the staging folder and the zip are made anew each time.
#   scripts/package.sh            build and package
#   scripts/package.sh --name     print the package's file name and stop
# Signing: set VF_SIGN_PFX + VF_SIGN_PASSWORD, or VF_SIGN_CERT + VF_SIGN_KEY (see
# scripts/release/sign.sh); without them the package is made unsigned and says so.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
version=$(head -n 1 "$root/VERSION")
name="Vantafile-$version-win64"
if [ "${1:-}" = "--name" ]; then
    echo "$name.zip"
    exit 0
fi

"$root/scripts/install-prereqs.sh"

build="${VF_PACKAGE_BUILD_DIR:-$root/build/package}"
dist="$root/dist"
stage="$build/stage/$name"

echo "== clean Release build in $build"
rm -rf "$build"
# shellcheck source=ccache-launcher.sh
source "$root/scripts/ccache-launcher.sh"
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
cp "$root/CHANGELOG.md" "$stage/"
python3 "$root/scripts/release/doc_pages.py" --root "$root" --out "$stage/docs"
"$root/scripts/release/readme.sh" "$root" "$signed" >"$stage/README.txt"
"$root/scripts/release/licenses.sh" "$root" "$stage/LICENSES"

# The same bytes for the same sources: every file gets the time of the last commit, or of VERSION.
stamp=$(git -C "$root" log -1 --format=%ct 2>/dev/null || stat -c %Y "$root/VERSION")
(cd "$stage" && find . -type f ! -name SHA256SUMS -printf '%P\n' | LC_ALL=C sort |
    xargs -d '\n' sha256sum >SHA256SUMS)
find "$stage" -exec touch -h -d "@$stamp" {} +

mkdir -p "$dist"
rm -f "$dist/$name.zip"
(cd "$stage" && find . -mindepth 1 -printf '%P\n' | LC_ALL=C sort |
    TZ=UTC zip -X -q -@ "$dist/$name.zip")
echo "== $dist/$name.zip ($(stat -c %s "$dist/$name.zip") bytes)"
if [ "$signed" = signed ]; then
    echo "   Vantafile.fmx64 is signed"
else
    echo "   Vantafile.fmx64 is NOT signed (no VF_SIGN_PFX or VF_SIGN_CERT given)"
fi
