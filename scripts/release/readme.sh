#!/usr/bin/env bash
# Writes the package's README.txt with the version from VERSION: for Windows from README.txt.in
# (Windows line ends) saying whether the plug-in is signed, for Linux from README-linux.txt.in.
#   readme.sh ROOT signed|unsigned [win64|linux-x86_64|linux-arm64]
set -euo pipefail
root=$1 signed=$2 platform=${3:-win64}
python3 - "$root" "$signed" "$platform" <<'PY'
import os, sys
root, signed, platform = sys.argv[1], sys.argv[2], sys.argv[3]
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
arch_notes = {"linux-x86_64": ("x86_64", "Intel and AMD processors"),
              "linux-arm64": ("arm64", "64-bit ARM processors, aarch64")}
fields = {"@SHORT@": v.short, "@VERSION@": v.text, "@BUILD@": str(v.build),
          "@PACKAGE@": f"Vantafile-{v.text}-{platform}.zip", "@SIGNATURE@": signature,
          "@SIGNATURE_CHECK@": check,
          "@AUTOUPDATE@": "".join(f"{n:02d}" for n in v.numbers + (v.build,))}
if platform in arch_notes:
    fields["@ARCH@"], fields["@ARCH_NOTE@"] = arch_notes[platform]
    template, line_end = "README-linux.txt.in", "\n"
elif platform == "win64":
    template, line_end = "README.txt.in", "\r\n"
else:
    sys.exit(f"readme.sh: unknown platform {platform}")
with open(os.path.join(root, "scripts", "release", template), encoding="utf-8") as f:
    text = f.read()
for key, value in fields.items():
    text = text.replace(key, value)
sys.stdout.buffer.write(text.replace("\n", line_end).encode("utf-8"))
PY
