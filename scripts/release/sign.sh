#!/usr/bin/env bash
# Authenticode-signs a Windows DLL with osslsigncode when a certificate is given, else copies it
# unsigned. Prints "signed" or "unsigned" on standard output; the reason goes to standard error.
#   sign.sh IN OUT
# The certificate comes from the environment, one of:
#   VF_SIGN_PFX=cert.pfx           and VF_SIGN_PASSWORD (the PKCS#12 file's password)
#   VF_SIGN_CERT=cert.pem (or .spc) and VF_SIGN_KEY=key.pem (VF_SIGN_PASSWORD if the key is encrypted)
# VF_SIGN_TIMESTAMP_URL, if set, adds an RFC 3161 time stamp from that server (needs the network);
# without it the signature is valid only while the certificate is.
set -euo pipefail
in=$1 out=$2
description="Quorvel Vantafile Plug-In"

if [ -z "${VF_SIGN_PFX:-}" ] && [ -z "${VF_SIGN_CERT:-}" ]; then
    cp -f "$in" "$out"
    echo "sign.sh: no certificate (VF_SIGN_PFX or VF_SIGN_CERT + VF_SIGN_KEY): $out is NOT signed" >&2
    echo unsigned
    exit 0
fi

credentials=()
if [ -n "${VF_SIGN_PFX:-}" ]; then
    [ -n "${VF_SIGN_PASSWORD+set}" ] || { echo "sign.sh: VF_SIGN_PFX needs VF_SIGN_PASSWORD" >&2; exit 2; }
    credentials=(-pkcs12 "$VF_SIGN_PFX")
else
    [ -n "${VF_SIGN_KEY:-}" ] || { echo "sign.sh: VF_SIGN_CERT needs VF_SIGN_KEY" >&2; exit 2; }
    credentials=(-certs "$VF_SIGN_CERT" -key "$VF_SIGN_KEY")
fi
tmp="$out.signing"
secret=$(mktemp -d)
trap 'rm -rf "$tmp" "$secret"' EXIT
# The password goes through a private file, never on a command line others can list.
if [ -n "${VF_SIGN_PASSWORD+set}" ]; then
    (umask 077 && printf '%s' "$VF_SIGN_PASSWORD" >"$secret/password")
    credentials+=(-readpass "$secret/password")
fi
timestamp=()
if [ -n "${VF_SIGN_TIMESTAMP_URL:-}" ]; then
    timestamp=(-ts "$VF_SIGN_TIMESTAMP_URL")
fi

rm -f "$tmp"
osslsigncode sign "${credentials[@]}" "${timestamp[@]}" -h sha256 -n "$description" \
    -in "$in" -out "$tmp" >&2
mv -f "$tmp" "$out"
echo "sign.sh: $out is signed" >&2
echo signed
