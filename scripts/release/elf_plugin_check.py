#!/usr/bin/env python3
"""Checks a Linux plug-in (.fmx) the way FileMaker Server on Ubuntu 22.04 and later needs it, for
any architecture: the binutils that read it and the ELF machine it must be are parameters.

  elf_plugin_check.py --machine x86_64|aarch64 --soname TEXT [--readelf R] [--objdump O]
                      [--max-glibc 2.35] PLUGIN

- a shared object for that machine;
- FMExternCallProc is the only symbol it exports;
- it needs libFMWrapper.so by that bare name, and otherwise only glibc's own libraries (the C++
  runtime, libgcc and every third-party library are inside);
- no GLIBC_ symbol version newer than --max-glibc, none of libstdc++'s or libgcc's;
- no run-time search path (a build tree's path must not travel);
- its soname is TEXT, the version the server shows.
Prints one line per fault and exits 1 when there is any."""
import argparse
import re
import subprocess
import sys

MACHINES = {"x86_64": "Advanced Micro Devices X86-64", "aarch64": "AArch64"}
ENTRY_POINT = "FMExternCallProc"
HOST_LIBRARY = "libFMWrapper.so"
# glibc's own libraries, present on every target system under these sonames.
SYSTEM_LIBRARY = re.compile(
    r"^(libc\.so\.6|libm\.so\.6|libpthread\.so\.0|libdl\.so\.2|librt\.so\.1"
    r"|ld-linux-x86-64\.so\.2|ld-linux-aarch64\.so\.1)$")
# Versions a statically linked runtime would not leave behind.
RUNTIME_VERSION = re.compile(r"\b(GLIBCXX|CXXABI|GCC)_[0-9.]+")


def run(tool, *args):
    return subprocess.run([tool, *args], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          check=True, text=True).stdout


def version_tuple(text):
    return tuple(int(part) for part in text.split("."))


def dynamic_entries(readelf, plugin):
    entries = []
    for line in run(readelf, "-d", "-W", plugin).splitlines():
        match = re.match(r"\s*0x[0-9a-f]+\s+\((\w+)\)\s+(.*)$", line)
        if match:
            value = re.search(r"\[(.*)\]", match.group(2))
            entries.append((match.group(1), value.group(1) if value else match.group(2)))
    return entries


def exported_symbols(readelf, plugin):
    exported = []
    for line in run(readelf, "--dyn-syms", "-W", plugin).splitlines():
        # Num: Value Size Type Bind Vis Ndx Name
        fields = line.split()
        if len(fields) < 8 or not fields[0].endswith(":") or fields[6] == "UND":
            continue
        if fields[4] in ("GLOBAL", "WEAK", "UNIQUE") and fields[3] not in ("SECTION", "FILE"):
            exported.append(fields[7].split("@")[0])
    return exported


def check(args):
    faults = []
    header = run(args.readelf, "-h", "-W", args.plugin)
    machine = re.search(r"^\s*Machine:\s*(.*)$", header, re.M)
    wanted_machine = MACHINES[args.machine]
    if not machine or machine.group(1).strip() != wanted_machine:
        faults.append(f"machine: {machine.group(1).strip() if machine else '?'}, "
                      f"expected {wanted_machine}")
    kind = re.search(r"^\s*Type:\s*(\w+)", header, re.M)
    if not kind or kind.group(1) != "DYN":
        faults.append(f"type: {kind.group(1) if kind else '?'}, expected a shared object (DYN)")

    exported = exported_symbols(args.readelf, args.plugin)
    if exported != [ENTRY_POINT]:
        shown = sorted(exported)[:6] + ([f"{len(exported) - 6} more"] if len(exported) > 6 else [])
        faults.append(f"exports: {', '.join(shown) or 'nothing'}; expected {ENTRY_POINT} alone")

    entries = dynamic_entries(args.readelf, args.plugin)
    needed = [value for tag, value in entries if tag == "NEEDED"]
    if HOST_LIBRARY not in needed:
        faults.append(f"needed: no bare {HOST_LIBRARY} among {', '.join(needed) or 'nothing'}")
    for library in needed:
        if library != HOST_LIBRARY and not SYSTEM_LIBRARY.match(library):
            faults.append(f"needed: {library} (only {HOST_LIBRARY} and glibc may be needed)")
    for tag, value in entries:
        if tag in ("RPATH", "RUNPATH"):
            faults.append(f"{tag.lower()}: {value} (no search path may travel with the plug-in)")
    sonames = [value for tag, value in entries if tag == "SONAME"]
    if sonames != [args.soname]:
        faults.append(f"soname: {', '.join(sonames) or 'none'}, expected {args.soname}")

    symbols = run(args.objdump, "-T", "-w", args.plugin)
    limit = version_tuple(args.max_glibc)
    newer = sorted({v for v in re.findall(r"\bGLIBC_([0-9.]+)\b", symbols)
                    if version_tuple(v) > limit}, key=version_tuple)
    if newer:
        faults.append(f"glibc: needs GLIBC_{', GLIBC_'.join(newer)}, newer than {args.max_glibc}")
    runtime = sorted(set(m.group(0) for m in RUNTIME_VERSION.finditer(symbols)))
    if runtime:
        faults.append(f"runtime: needs {', '.join(runtime)} (libstdc++ and libgcc go inside)")
    return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--machine", required=True, choices=sorted(MACHINES))
    parser.add_argument("--soname", required=True)
    parser.add_argument("--readelf", default="readelf")
    parser.add_argument("--objdump", default="objdump")
    parser.add_argument("--max-glibc", default="2.35")
    parser.add_argument("plugin")
    args = parser.parse_args()
    try:
        faults = check(args)
    except (OSError, subprocess.CalledProcessError) as error:
        print(f"FAILED: {args.plugin}: cannot be read ({error})")
        return 1
    for fault in faults:
        print(f"FAILED: {args.plugin}: {fault}")
    if not faults:
        print(f"{args.plugin}: {args.machine}, exports {ENTRY_POINT} alone, needs "
              f"{HOST_LIBRARY} and glibc <= {args.max_glibc}, soname {args.soname}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
