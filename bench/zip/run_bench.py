#!/usr/bin/env python3
"""The zip benchmark: VFile_Compress and VFile_DeCompress through ./fmhost against Info-ZIP's
`zip -r -6 -q` and `unzip -q`, on the same corpus in the same run. Never a test.

    bench/zip/run_bench.py [--size-mb 200] [--seed 1] [--work DIR] [--repeat 3] [--large-gb 0]

Each figure is the best of --repeat runs (the machine may be shared). Prints, for each side, the
wall time and throughput (plug-in side: the whole fmhost run, and the call alone with fmhost's
idle start-up taken off), the ratios, the archive sizes and their ratio, and the peak memory of
the fmhost process above its idle figure. One Wine server stays up for the whole run (it stops
any other of the build's prefix first). --large-gb N adds a round trip
of one sparse N GB file, for the memory figure with a file far larger than any buffer.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
FMHOST = os.path.join(ROOT, "fmhost")


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def calc_text(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def run(args, **kwargs):
    """(seconds, peak resident MB, stdout) of one child process."""
    start = time.monotonic()
    child = subprocess.Popen(args, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, **kwargs)
    out = child.stdout.read()
    _, status, usage = os.wait4(child.pid, 0)
    seconds = time.monotonic() - start
    child.returncode = os.waitstatus_to_exitcode(status)
    if child.returncode != 0:
        sys.exit("failed: %s -> %s %s" % (" ".join(args), child.returncode, out))
    return seconds, usage.ru_maxrss / 1024.0, out.decode()


def wine_prefix():
    return os.path.join(os.environ.get("VF_BUILD_DIR", os.path.join(ROOT, "build")), "windows",
                        "wineprefix")


def keep_wineserver(up):
    """One Wine server (and Wine's own services) for the whole run, as the tests keep one: else
    each fmhost run boots Wine anew, and the services it starts compete with the call."""
    env = dict(os.environ, WINEPREFIX=wine_prefix())
    fmhost("1")  # makes the prefix on first use
    subprocess.run(["wineserver", "-k"], env=env)
    subprocess.run(["wineserver", "-w"], env=env)
    if up:
        subprocess.run(["wineserver", "-p"], env=env, check=True)
        fmhost("1")


def fmhost(calculation):
    seconds, peak, out = run([FMHOST, "-e", calculation])
    if out.strip() != "0" and calculation != "1":
        sys.exit("%s answered %r" % (calculation, out))
    return seconds, peak


def tree_size(root):
    return sum(os.path.getsize(os.path.join(d, f)) for d, _, files in os.walk(root) for f in files)


def best(times, action):
    """The fastest of `times` runs of `action` (the machine is shared)."""
    results = [action() for _ in range(times)]
    return min(results, key=lambda r: r[0])


def warm(*paths):
    """Reads every file below `paths`: this machine reclaims page cache it deems cold, so a side
    run first would otherwise read its input from disk and the side after it from memory."""
    for path in paths:
        files = [path] if os.path.isfile(path) else [
            os.path.join(d, f) for d, _, names in os.walk(path) for f in names]
        for name in files:
            with open(name, "rb") as f:
                while f.read(1 << 20):
                    pass


def best_of_pairs(times, ours, theirs, inputs):
    """The fastest of `times` runs of each side, the two taking turns so that a change in the
    machine's load touches both alike; each run starts with its input in the page cache."""
    def warmed(action):
        warm(*inputs)
        return action()
    pairs = [(warmed(ours), warmed(theirs)) for _ in range(times)]
    return (min((p[0] for p in pairs), key=lambda r: r[0]),
            min((p[1] for p in pairs), key=lambda r: r[0]))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--size-mb", type=float, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--work", default=None)
    parser.add_argument("--repeat", type=int, default=3)
    parser.add_argument("--large-gb", type=float, default=0)
    args = parser.parse_args()
    work = args.work or tempfile.mkdtemp(prefix="vf-zip-bench-")
    corpus = os.path.join(work, "corpus")
    if not os.path.isdir(corpus):
        subprocess.run([sys.executable, os.path.join(os.path.dirname(__file__), "make_corpus.py"),
                        corpus, "--size-mb", str(args.size_mb), "--seed", str(args.seed)],
                       check=True)
    total = tree_size(corpus) / (1024.0 * 1024.0)
    files = sum(len(f) for _, _, f in os.walk(corpus))
    print("corpus: %.1f MB in %d files (seed %d)" % (total, files, args.seed))

    keep_wineserver(True)
    idle_seconds, idle_peak = best(3, lambda: fmhost("1"))
    print("fmhost idle: %.2f s, %.1f MB peak" % (idle_seconds, idle_peak))

    ours_zip = os.path.join(work, "ours.zip")
    theirs_zip = os.path.join(work, "infozip.zip")

    def our_compress():
        if os.path.exists(ours_zip):
            os.remove(ours_zip)
        return fmhost("VFile_Compress( %s ; %s )" % (calc_text(windows_path(corpus)),
                                                     calc_text(windows_path(ours_zip))))

    def their_compress():
        if os.path.exists(theirs_zip):
            os.remove(theirs_zip)
        seconds, peak, _ = run(["zip", "-r", "-6", "-q", theirs_zip, "."], cwd=corpus)
        return seconds, peak

    # Each extraction gets a folder of its own, and all are removed only at the end: ext4 skips
    # inodes freed in the last minutes when it allocates new ones, so extracting right after
    # deleting thousands of files costs either side a millisecond per file, depending on which
    # block group its folder lands in, which would measure the file system rather than the tool.
    outputs = []

    def fresh_output(name):
        outputs.append(os.path.join(work, "%s %d" % (name, len(outputs))))
        return outputs[-1]

    def our_decompress():
        out = fresh_output("out ours")
        return fmhost("VFile_DeCompress( %s ; %s )" % (calc_text(windows_path(ours_zip)),
                                                       calc_text(windows_path(out))))

    def their_decompress():
        seconds, peak, _ = run(["unzip", "-q", theirs_zip, "-d", fresh_output("out infozip")])
        return seconds, peak

    def report(what, ours, theirs, tool, target):
        call = max(ours[0] - idle_seconds, 1e-3)
        print("%s: VFile %.2f s (call alone %.2f s, %.0f MB/s), %s %.2f s (%.0f MB/s)" %
              (what, ours[0], call, total / call, tool, theirs[0], total / theirs[0]))
        print("  throughput ratio: %.2fx counting fmhost's start-up, %.2fx for the call alone "
              "(target %s)" % (theirs[0] / ours[0], theirs[0] / call, target))
        print("  peak memory: fmhost %.1f MB, %.1f MB above idle (target <= 64); %s %.1f MB" %
              (ours[1], ours[1] - idle_peak, tool, theirs[1]))

    compress_ours, compress_theirs = best_of_pairs(args.repeat, our_compress, their_compress,
                                                   [corpus])
    report("compress", compress_ours, compress_theirs, "zip -6", ">= 1.8x")
    ours_size, theirs_size = os.path.getsize(ours_zip), os.path.getsize(theirs_zip)
    print("  archive size: ours %d, Info-ZIP %d, ratio %.4f (target within 0.5 %%)" %
          (ours_size, theirs_size, ours_size / theirs_size))
    decompress_ours, decompress_theirs = best_of_pairs(args.repeat, our_decompress,
                                                       their_decompress, [ours_zip, theirs_zip])
    report("decompress", decompress_ours, decompress_theirs, "unzip", ">= 1.2x")
    for out in outputs:
        shutil.rmtree(out, ignore_errors=True)

    if args.large_gb > 0:
        large = os.path.join(work, "large")
        os.makedirs(large, exist_ok=True)
        with open(os.path.join(large, "big.bin"), "wb") as f:
            f.truncate(int(args.large_gb * 1024 ** 3))
        big_zip = os.path.join(work, "big.zip")
        if os.path.exists(big_zip):
            os.remove(big_zip)
        seconds, peak = fmhost("VFile_Compress( %s ; %s )" % (calc_text(windows_path(large)),
                                                              calc_text(windows_path(big_zip))))
        print("large %.1f GB compress: %.1f s, peak %.1f MB above idle" %
              (args.large_gb, seconds, peak - idle_peak))
        out = os.path.join(work, "out large")
        shutil.rmtree(out, ignore_errors=True)
        seconds, peak = fmhost("VFile_DeCompress( %s ; %s )" % (calc_text(windows_path(big_zip)),
                                                                calc_text(windows_path(out))))
        print("large %.1f GB decompress: %.1f s, peak %.1f MB above idle" %
              (args.large_gb, seconds, peak - idle_peak))
        shutil.rmtree(out, ignore_errors=True)
        os.remove(big_zip)
    keep_wineserver(False)
    if not args.work:
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
