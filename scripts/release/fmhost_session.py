"""Evaluates calculations in the emulated host, one process for a list of them, and hands back
each calculation's printed result (None where the host reported an error instead)."""
import os
import subprocess


def windows_path(path):
    """Wine's Z: drive maps the Linux root."""
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def host_path(path, plugin):
    """A Windows plug-in (.fmx64) runs in fmhost.exe under Wine; a Linux one (.fmx) takes plain paths."""
    return windows_path(path) if plugin.endswith(".fmx64") else os.path.abspath(path)


def evaluate(host_command, plugin, calculations, database=None, cwd=None, timeout=120):
    """host_command: the argv that starts fmhost.exe (e.g. [wine-run.sh, fmhost.exe])."""
    # The host may run in another folder: paths of the command itself are made absolute.
    argv = [os.path.abspath(a) if os.path.exists(a) else a for a in host_command]
    argv += ["--plugin", host_path(plugin, plugin), "--echo"]
    if database:
        argv += ["--file", host_path(database, plugin)]
    for calc in calculations:
        argv += ["-e", calc]
    run = subprocess.run(argv, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                         stdin=subprocess.DEVNULL, timeout=timeout)
    if run.returncode not in (0, 1):
        raise RuntimeError(f"fmhost exited {run.returncode}: {run.stderr.decode(errors='replace')}")
    # --echo prints every line of a calculation prefixed "> ", then its result (if any).
    results = []
    lines = run.stdout.decode("utf-8").split("\n")
    if lines and lines[-1] == "":
        lines.pop()
    i = 0
    for calc in calculations:
        echoed = calc.replace("\r\n", "\n").replace("\r", "\n").split("\n")
        for line in echoed:
            if i >= len(lines) or lines[i] != "> " + line:
                raise RuntimeError(f"fmhost output out of step at {calc!r}: {lines[i:i + 3]}")
            i += 1
        if i < len(lines) and not lines[i].startswith("> "):
            results.append(lines[i])
            i += 1
        else:
            results.append(None)
    return results
