#!/usr/bin/env python3
"""Checks the Linux plug-in's ELF form with readelf and objdump.

usage: check_plugin_elf.py PLUGIN SONAME [--release]

Always: a shared object whose only defined dynamic symbol is FMExternCallProc, that needs
libFMWrapper.so by its bare name, has SONAME as its soname, carries no run-time search path and
asks for no glibc symbol version newer than 2.35 (Ubuntu 22.04). With --release also: it needs
nothing but the host's library and glibc's own (the C++ runtime, libgcc, zlib and libdeflate are
inside).
"""
import re
import subprocess
import sys

NEWEST_GLIBC = (2, 35)
GLIBC_LIBRARIES = {"libc.so.6", "libm.so.6", "libpthread.so.0", "libdl.so.2", "librt.so.1",
                   "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1"}


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def dynamic_entries(plugin):
    entries = {}
    for line in run("readelf", "--wide", "--dynamic", plugin).splitlines():
        found = re.match(r"\s*0x[0-9a-f]+\s+\((\w+)\)\s+(.*)$", line)
        if found:
            value = re.search(r"\[(.*)\]", found.group(2))
            entries.setdefault(found.group(1), []).append(value.group(1) if value else found.group(2))
    return entries


def defined_exports(plugin):
    """Names of the global and weak dynamic symbols the object defines itself."""
    names = set()
    for line in run("objdump", "-T", plugin).splitlines():
        fields = line.split()
        # address, flags..., section, [alignment/size], [version], name
        if len(fields) < 4 or not re.fullmatch(r"[0-9a-f]{8,16}", fields[0]):
            continue
        section = next((f for f in fields[1:] if f.startswith(".") or f == "*UND*"), None)
        binding = line[17:18] if len(line) > 17 else " "
        if section in (None, "*UND*") or binding not in ("g", "w"):
            continue
        names.add(fields[-1])
    return names


def glibc_versions(plugin):
    text = run("readelf", "--wide", "--version-info", plugin)
    return {tuple(int(part) for part in version.split("."))
            for version in re.findall(r"GLIBC_(\d+(?:\.\d+)+)", text)}


def main():
    args = sys.argv[1:]
    release = "--release" in args
    args = [a for a in args if a != "--release"]
    if len(args) != 2:
        print(__doc__)
        return 2
    plugin, soname = args
    problems = []

    header = run("readelf", "--wide", "--file-header", plugin)
    if not re.search(r"Type:\s+DYN", header):
        problems.append("not a shared object")

    entries = dynamic_entries(plugin)
    if entries.get("SONAME") != [soname]:
        problems.append(f"soname {entries.get('SONAME')}, expected [{soname!r}]")
    needed = entries.get("NEEDED", [])
    if "libFMWrapper.so" not in needed:
        problems.append(f"no bare DT_NEEDED on libFMWrapper.so: {needed}")
    problems += [f"needs a path, not a name: {n}" for n in needed if "/" in n]
    for kind in ("RPATH", "RUNPATH"):
        if kind in entries:
            problems.append(f"{kind} {entries[kind]}: the host decides where libraries are found")
    if release:
        extra = [n for n in needed if n != "libFMWrapper.so" and n not in GLIBC_LIBRARIES]
        if extra:
            problems.append(f"needs libraries the server may lack or have under other names: {extra}")

    exports = defined_exports(plugin)
    if exports != {"FMExternCallProc"}:
        shown = sorted(exports)[:20]
        problems.append(f"exports {len(exports)} symbols, not FMExternCallProc alone: {shown}")

    too_new = sorted(v for v in glibc_versions(plugin) if v > NEWEST_GLIBC)
    if too_new:
        problems.append("glibc versions newer than 2.35: " +
                        ", ".join("GLIBC_" + ".".join(map(str, v)) for v in too_new))

    for problem in problems:
        print(f"{plugin}: {problem}")
    if not problems:
        print(f"{plugin}: exports FMExternCallProc alone, soname {soname}, needs {needed}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
