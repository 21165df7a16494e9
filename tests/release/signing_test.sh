#!/usr/bin/env bash
# Signing with a throwaway self-signed certificate made here: both ways of giving the certificate
# (PKCS#12 with a password, PEM certificate and encrypted key) give a signature that
# osslsigncode verifies against that certificate, and signing changes neither what the DLL
# imports nor what it exports. Without a certificate the copy is unsigned and says so.
# Usage: signing_test.sh ROOT PLUGIN
set -uo pipefail
root=$1 plugin=$2
sign="$root/scripts/release/sign.sh"
objdump=x86_64-w64-mingw32-objdump
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() { echo "FAILED: $*"; failures=$((failures + 1)); }

# The import tables (each DLL and name) and the export tables, as objdump prints them.
linkage() {
    "$objdump" -p "$1" | sed -n '/^The Import Tables/,/^The Function Table/p' |
        grep -v -E 'Time Stamp|^\s*$|^The Function Table'
}

openssl req -x509 -newkey rsa:2048 -sha256 -days 2 -subj "/CN=Vantafile test signer" \
    -addext "extendedKeyUsage=codeSigning" -passout pass:key-secret \
    -keyout "$work/key.pem" -out "$work/cert.pem" 2>/dev/null || fail "openssl could not make a certificate"
openssl pkcs12 -export -in "$work/cert.pem" -inkey "$work/key.pem" -passin pass:key-secret \
    -passout pass:pfx-secret -out "$work/cert.pfx" 2>/dev/null || fail "openssl could not make a PFX"

before=$(linkage "$plugin")
[ -n "$before" ] && grep -q 'FMExternCallProc' <<<"$before" && grep -q 'FMWrapper.dll' <<<"$before" ||
    fail "objdump shows no import/export tables for $plugin"

check_signed() { # how FILE
    local how=$1 file=$2
    osslsigncode verify -CAfile "$work/cert.pem" -in "$file" >"$work/verify.log" 2>&1 ||
        { fail "$how: osslsigncode verify refused the signature"; sed 's/^/    /' "$work/verify.log"; }
    grep -q "Vantafile test signer" "$work/verify.log" || fail "$how: the signer is not our certificate"
    [ "$(linkage "$file")" = "$before" ] || fail "$how: signing changed the imports or exports"
    cmp -s "$plugin" "$file" && fail "$how: the file was not changed at all"
}

status=$(VF_SIGN_PFX="$work/cert.pfx" VF_SIGN_PASSWORD=pfx-secret "$sign" "$plugin" "$work/pfx.fmx64" 2>"$work/err")
[ "$status" = signed ] || { fail "PFX: sign.sh said '$status'"; cat "$work/err"; }
check_signed PFX "$work/pfx.fmx64"

status=$(VF_SIGN_CERT="$work/cert.pem" VF_SIGN_KEY="$work/key.pem" VF_SIGN_PASSWORD=key-secret \
    "$sign" "$plugin" "$work/pem.fmx64" 2>"$work/err")
[ "$status" = signed ] || { fail "PEM: sign.sh said '$status'"; cat "$work/err"; }
check_signed PEM "$work/pem.fmx64"

# A wrong password must fail, not fall back to an unsigned copy.
if VF_SIGN_PFX="$work/cert.pfx" VF_SIGN_PASSWORD=wrong "$sign" "$plugin" "$work/bad.fmx64" >/dev/null 2>&1; then
    fail "a wrong PFX password was accepted"
fi
[ -e "$work/bad.fmx64" ] && fail "a failed signing left $work/bad.fmx64 behind"

status=$(env -u VF_SIGN_PFX -u VF_SIGN_CERT "$sign" "$plugin" "$work/plain.fmx64" 2>"$work/err")
[ "$status" = unsigned ] || fail "without a certificate sign.sh said '$status'"
grep -q "NOT signed" "$work/err" || fail "without a certificate sign.sh does not say so"
cmp -s "$plugin" "$work/plain.fmx64" || fail "the unsigned copy differs from the DLL"
osslsigncode verify -CAfile "$work/cert.pem" -in "$work/plain.fmx64" >/dev/null 2>&1 &&
    fail "osslsigncode verifies an unsigned DLL: the checks above prove nothing"

[ $failures = 0 ] && echo "signing: PFX and PEM signatures verify; imports and exports unchanged"
exit $((failures > 0))
