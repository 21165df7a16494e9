#!/usr/bin/env bash
# The release packages checked as a user gets them (slow; never part of the tests): makes them
# with scripts/package.sh (unless --zip names one), unpacks each, verifies SHA256SUMS, and opens
# its HTML reference in headless Chromium (offline: search for VFile_Compress, follow links).
#  - Windows: loads the unpacked plug-in in the unpacked fmhost under Wine, checks that its
#    version is the package's and the resource's, runs the reference's checked examples.
#  - Linux (x86_64 natively, arm64 under qemu): the plug-in's binary check for its machine, then
#    it loads in the package's own fmhost, which must answer the version of the package's name
#    and the soname.
# Screenshots are left in build/package-check/<platform>/screens. With VF_SIGN_CA (a certificate
# file) a signed Windows plug-in's signature must verify against it.
#   scripts/check-package.sh [--zip dist/Vantafile-X.Y.Z-PLATFORM.zip]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
check_root="$root/build/package-check"
zips=()
if [ "${1:-}" = "--zip" ]; then
    zips=("$(cd "$(dirname "$2")" && pwd)/$(basename "$2")")
else
    "$root/scripts/package.sh"
    for platform in win64 linux-x86_64 linux-arm64; do
        zips+=("$root/dist/$("$root/scripts/package.sh" --name "$platform")")
    done
fi

# The browser and its driver, only for this check: Chromium and Node from Debian, playwright-core
# (the driver alone, it downloads no browser) from npm into the check folder.
missing=()
command -v chromium >/dev/null || missing+=(chromium)
command -v node >/dev/null || missing+=(nodejs)
command -v npm >/dev/null || missing+=(npm)
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get -o DPkg::Lock::Timeout=900 update -qq
    apt-get -o DPkg::Lock::Timeout=900 install -y -qq "${missing[@]}" >/dev/null
fi
mkdir -p "$check_root/driver"
if [ ! -d "$check_root/driver/node_modules/playwright-core" ]; then
    (cd "$check_root/driver" && npm install --no-audit --no-fund --no-save playwright-core@1 >/dev/null)
fi

failures=0
fail() { echo "FAILED: $*"; failures=$((failures + 1)); }

# Unpacks ZIP into the platform's folder, checks the files every package has and the sums.
unpack() { # ZIP PLATFORM FILES...
    local zip=$1 platform=$2 f
    shift 2
    check="$check_root/$platform"
    unpacked="$check/unpacked"
    rm -rf "$unpacked" "$check/screens"
    mkdir -p "$unpacked"
    (cd "$unpacked" && unzip -q "$zip")
    echo "== $(basename "$zip") unpacked in $unpacked"
    for f in README.txt CHANGELOG.md SHA256SUMS docs/index.html LICENSES/README.txt \
             LICENSES/zlib.txt LICENSES/libdeflate.txt LICENSES/gcc-runtime-libstdc++-libgcc.txt \
             LICENSES/GPL-3.txt "$@"; do
        [ -f "$unpacked/$f" ] || fail "$platform: the package has no $f"
    done
    (cd "$unpacked" && sha256sum --quiet -c SHA256SUMS) &&
        echo "SHA256SUMS: every file verifies" || fail "$platform: SHA256SUMS does not verify"
}

browse_docs() { # PLATFORM
    NODE_PATH="$check_root/driver/node_modules" node "$root/scripts/release/check_docs_browser.js" \
        "$unpacked/docs" "$check/screens" || fail "$1: the HTML reference in Chromium"
}

check_windows() { # ZIP
    local zip=$1 host package_version resource_version verdict
    unpack "$zip" win64 Vantafile.fmx64 fmhost/fmhost.exe fmhost/FMWrapper.dll
    # shellcheck source=wine-env.sh
    source "$root/scripts/wine-env.sh"
    vf_wine_start "$check"
    trap vf_wine_stop EXIT
    host=(wine "$unpacked/fmhost/fmhost.exe")

    package_version=$(basename "$zip" | sed -n 's/^Vantafile-\([0-9.]*\)-win64\.zip$/\1/p')
    resource_version=$(python3 -c "
import sys; sys.path.insert(0, '$root/scripts/release')
import pe_resources; print(pe_resources.PeFile(sys.argv[1]).version_info()[2]['FileVersion'])
" "$unpacked/Vantafile.fmx64")
    [ "$package_version" = "$resource_version" ] &&
        echo "version: package $package_version = resource $resource_version" ||
        fail "the package says $package_version, the DLL's resource $resource_version"
    python3 "$root/tests/release/version_agreement.py" "$root" "$unpacked/Vantafile.fmx64" "${host[@]}" ||
        fail "the unpacked plug-in's version disagrees"
    python3 "$root/scripts/release/doc_examples.py" "$root/docs/functions.md" \
        "$unpacked/Vantafile.fmx64" "${host[@]}" || fail "the reference's examples through the packaged fmhost"

    # Its answer first: verify fails on an unsigned file, which under pipefail would hide the match.
    verdict=$(osslsigncode verify -in "$unpacked/Vantafile.fmx64" 2>&1 || true)
    if grep -q "No signature found" <<<"$verdict"; then
        grep -q "NOT signed" "$unpacked/README.txt" || fail "unsigned, but README.txt does not say so"
        echo "signature: none (README.txt says so)"
    else
        grep -q "is signed" "$unpacked/README.txt" || fail "the plug-in carries a signature README.txt does not mention"
        if [ -n "${VF_SIGN_CA:-}" ]; then
            osslsigncode verify -CAfile "$VF_SIGN_CA" -in "$unpacked/Vantafile.fmx64" >/dev/null 2>&1 &&
                echo "signature: verifies against $VF_SIGN_CA" || fail "the signature does not verify against $VF_SIGN_CA"
        else
            echo "signature: present (set VF_SIGN_CA to a CA or certificate file to verify it)"
        fi
    fi
    browse_docs win64
    vf_wine_stop
    trap - EXIT
}

check_linux() { # ZIP PLATFORM
    local zip=$1 platform=$2 machine binutils="" host version soname newest search_path
    unpack "$zip" "$platform" Vantafile.fmx fmhost/fmhost fmhost/libFMWrapper.so \
        LICENSES/libjpeg-turbo.txt LICENSES/libpng.txt LICENSES/giflib.txt LICENSES/libtiff.txt
    if [ "$platform" = linux-arm64 ]; then
        machine=aarch64 binutils=aarch64-linux-gnu-
        host=("$root/scripts/qemu-arm64.sh" "$unpacked/fmhost/fmhost")
    else
        machine=x86_64
        host=("$unpacked/fmhost/fmhost")
    fi
    [ -x "$unpacked/Vantafile.fmx" ] && [ -x "$unpacked/fmhost/fmhost" ] ||
        fail "$platform: the plug-in and fmhost must unpack executable"
    version=$(basename "$zip" | sed -n "s/^Vantafile-\([0-9.]*\)-$platform\.zip\$/\1/p")
    python3 "$root/scripts/release/elf_plugin_check.py" --machine "$machine" --soname "$version" \
        --readelf "${binutils}readelf" --objdump "${binutils}objdump" "$unpacked/Vantafile.fmx" ||
        fail "$platform: the plug-in's binary check"
    # The host is for the same servers: no newer glibc, and it looks for its library only
    # beside itself.
    newest=$("${binutils}objdump" -T "$unpacked/fmhost/fmhost" "$unpacked/fmhost/libFMWrapper.so" |
        grep -oE 'GLIBC_[0-9.]+' | sed 's/GLIBC_//' | sort -uV | tail -n 1)
    [ -n "$newest" ] && [ "$(printf '%s\n' "$newest" 2.35 | sort -V | tail -n 1)" = 2.35 ] ||
        fail "$platform: fmhost needs GLIBC_$newest, newer than 2.35"
    search_path=$(readelf -d -W "$unpacked/fmhost/fmhost" | sed -n 's/.*(R.*PATH).*\[\(.*\)\]/\1/p')
    [ "$search_path" = '$ORIGIN' ] || fail "$platform: fmhost's run-path is '$search_path', not \$ORIGIN"
    soname=$(readelf -d -W "$unpacked/Vantafile.fmx" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
    [ "$version" = "$soname" ] && echo "version: package $version = soname $soname" ||
        fail "$platform: the package says $version, the soname $soname"
    # Loaded from a folder that is not the build's: the host finds its library beside itself.
    (cd / && python3 "$root/tests/release/version_agreement.py" "$root" "$unpacked/Vantafile.fmx" \
        "${host[@]}") || fail "$platform: the unpacked plug-in in the unpacked fmhost"
    browse_docs "$platform"
}

for zip in "${zips[@]}"; do
    case "$(basename "$zip")" in
    *-win64.zip) check_windows "$zip" ;;
    *-linux-x86_64.zip) check_linux "$zip" linux-x86_64 ;;
    *-linux-arm64.zip) check_linux "$zip" linux-arm64 ;;
    *) fail "$(basename "$zip"): not a package name this check knows" ;;
    esac
done

if [ $failures -gt 0 ]; then
    echo "check-package: $failures FAILED"
    exit 1
fi
echo "check-package: $(for z in "${zips[@]}"; do basename "$z"; done | paste -sd ' ') complete and working"
