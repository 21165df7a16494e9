#!/usr/bin/env bash
# The release package checked as a user gets it (slow; never part of the tests): makes it with
# scripts/package.sh (unless --zip names one), unpacks it, verifies SHA256SUMS, loads the
# unpacked plug-in in the unpacked fmhost under Wine and checks that its version is the
# package's and the resource's, runs the reference's checked examples through them, and opens
# the HTML reference in headless Chromium (offline: search for VFile_Compress, follow links).
# Screenshots are left in build/package-check/screens. With VF_SIGN_CA (a certificate file) a
# signed plug-in's signature must verify against it.
#   scripts/check-package.sh [--zip dist/Vantafile-X.Y.Z-win64.zip]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
check="$root/build/package-check"
zip=""
if [ "${1:-}" = "--zip" ]; then
    zip=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
else
    "$root/scripts/package.sh"
    zip="$root/dist/$("$root/scripts/package.sh" --name)"
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
mkdir -p "$check/driver"
if [ ! -d "$check/driver/node_modules/playwright-core" ]; then
    (cd "$check/driver" && npm install --no-audit --no-fund --no-save playwright-core@1 >/dev/null)
fi

failures=0
fail() { echo "FAILED: $*"; failures=$((failures + 1)); }

unpacked="$check/unpacked"
rm -rf "$unpacked" "$check/screens"
mkdir -p "$unpacked"
(cd "$unpacked" && unzip -q "$zip")
echo "== $(basename "$zip") unpacked in $unpacked"
for f in Vantafile.fmx64 README.txt CHANGELOG.md SHA256SUMS docs/index.html fmhost/fmhost.exe \
         fmhost/FMWrapper.dll LICENSES/README.txt LICENSES/zlib.txt; do
    [ -f "$unpacked/$f" ] || fail "the package has no $f"
done
(cd "$unpacked" && sha256sum --quiet -c SHA256SUMS) && echo "SHA256SUMS: every file verifies" ||
    fail "SHA256SUMS does not verify"

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
[ "$package_version" = "$resource_version" ] && echo "version: package $package_version = resource $resource_version" ||
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

NODE_PATH="$check/driver/node_modules" node "$root/scripts/release/check_docs_browser.js" \
    "$unpacked/docs" "$check/screens" || fail "the HTML reference in Chromium"

if [ $failures -gt 0 ]; then
    echo "check-package: $failures FAILED"
    exit 1
fi
echo "check-package: $(basename "$zip") is complete and works"
