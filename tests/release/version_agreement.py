#!/usr/bin/env python3
"""The version is written once, in VERSION; everything that shows it must show that.
Checks the built DLL's resources (VERSIONINFO and string table) or the Linux plug-in's soname
(what the server shows), VFile_Version in the emulated host, the packages' names, the function
reference's title and the release notes.
Usage: version_agreement.py ROOT PLUGIN HOST_COMMAND..."""
import os
import re
import subprocess
import sys

root, plugin, host_command = sys.argv[1], sys.argv[2], sys.argv[3:]
sys.path.insert(0, os.path.join(root, "scripts", "release"))
import fmhost_session  # noqa: E402
import pe_resources  # noqa: E402
import version_file  # noqa: E402

failures = []


def expect(what, actual, wanted):
    if actual != wanted:
        failures.append(f"{what}: {actual!r}, expected {wanted!r}")


version = version_file.read(root)
numbers = version.numbers + (version.build,)
short = version.short
name = "Quorvel Vantafile Plug-In"


def check_windows_resources():
    pe = pe_resources.PeFile(plugin)
    file_version, product_version, strings = pe.version_info()
    expect("VERSIONINFO FILEVERSION", file_version, numbers)
    expect("VERSIONINFO PRODUCTVERSION", product_version, numbers)
    expect("VERSIONINFO FileVersion", strings.get("FileVersion"), version.text)
    expect("VERSIONINFO ProductVersion", strings.get("ProductVersion"), version.text)
    expect("string 1 (name)", pe.string(1), name)
    expect("string 3 (version)", pe.string(3), short)
    description = pe.string(2) or ""
    expect("string 2 (description) ends with", description[-len("Version " + short) - 1:],
           "\nVersion " + short)


def check_linux_soname():
    dynamic = subprocess.run(["readelf", "-d", "-W", plugin], stdout=subprocess.PIPE, check=True,
                             text=True).stdout
    expect("soname", re.findall(r"\(SONAME\).*\[(.*)\]", dynamic), [version.text])


with open(plugin, "rb") as f:
    magic = f.read(4)
if magic == b"\x7fELF":
    check_linux_soname()
else:
    check_windows_resources()

answers = fmhost_session.evaluate(
    host_command, plugin,
    ['VFile_Version', 'VFile_Version( "long" )', 'VFile_Version( "autoupdate" )'])
expect("VFile_Version", answers[0], short)
expect('VFile_Version( "long" )', answers[1], f"{name} {short}")
expect('VFile_Version( "autoupdate" )', answers[2], "".join(f"{n:02d}" for n in numbers))

for platform in ("win64", "linux-x86_64", "linux-arm64"):
    package_name = subprocess.run([os.path.join(root, "scripts", "package.sh"), "--name", platform],
                                  stdout=subprocess.PIPE, check=True, text=True).stdout.strip()
    expect(f"{platform} package name", package_name, f"Vantafile-{version.text}-{platform}.zip")

with open(os.path.join(root, "docs", "functions.md"), encoding="utf-8") as f:
    title = f.readline().strip()
expect("docs/functions.md title", title, f"# {name} {short} — function reference")

with open(os.path.join(root, "CHANGELOG.md"), encoding="utf-8") as f:
    releases = re.findall(r"^## (\d+\.\d+\.\d+)\b", f.read(), re.M)
expect("newest release in CHANGELOG.md", releases[:1], [version.text])

for failure in failures:
    print("FAILED:", failure)
print(f"version {version.text} (build {version.build}, shown as {short}):",
      "all agree" if not failures else f"{len(failures)} disagree")
sys.exit(1 if failures else 0)
