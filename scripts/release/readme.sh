#!/usr/bin/env bash
# Writes the package's README.txt (Windows line ends) from README.txt.in, with the version from
# VERSION and whether the plug-in is signed.   readme.sh ROOT signed|unsigned
set -euo pipefail
root=$1 signed=$2
python3 - "$root" "$signed" <<'PY'
import os, sys
root, signed = sys.argv[1], sys.argv[2]
sys.path.insert(0, os.path.join(root, "scripts", "release"))
import version_file
v = version_file.read(root)
if signed == "signed":
    signature = "Vantafile.fmx64 is signed (Authenticode)."
    check = ("\n  The plug-in carries an Authenticode signature: Explorer shows it under\n"
             "  Properties > Digital Signatures.\n")
else:
    signature = "Vantafile.fmx64 in this package is NOT signed."
    check = ("\n  This package's Vantafile.fmx64 is not signed: Windows shows no publisher for it,\n"
             "  and some antivirus products may ask before letting FileMaker load it.\n")
fields = {"@SHORT@": v.short, "@VERSION@": v.text, "@BUILD@": str(v.build),
          "@PACKAGE@": f"Vantafile-{v.text}-win64.zip", "@SIGNATURE@": signature,
          "@SIGNATURE_CHECK@": check,
          "@AUTOUPDATE@": "".join(f"{n:02d}" for n in v.numbers + (v.build,))}
with open(os.path.join(root, "scripts", "release", "README.txt.in"), encoding="utf-8") as f:
    text = f.read()
for key, value in fields.items():
    text = text.replace(key, value)
sys.stdout.buffer.write(text.replace("\n", "\r\n").encode("utf-8"))
PY
