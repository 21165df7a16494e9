#!/usr/bin/env python3
"""The zip benchmark: VFile_Compress and VFile_DeCompress through ./fmhost against Info-ZIP's
`zip -r -6 -q` and `unzip -q`, on the same corpus in the same run. Never a test.

    bench/zip/run_bench.py [--size-mb 200] [--seed 1] [--work DIR] [--repeat 3] [--large-gb 0]

Each figure is the best of --repeat runs (the machine may be shared). Prints, for each side, the
wall time and throughput (plug-in side: the whole fmhost run, and the call alone with fmhost's
idle start-up taken off), the ratios, the archive sizes and their ratio, and the peak memory of
the fmhost process above its idle figure. --large-gb N adds a round trip
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

    def our_decompress():
        out = os.path.join(work, "out ours")
        shutil.rmtree(out, ignore_errors=True)
        return fmhost("VFile_DeCompress( %s ; %s )" % (calc_text(windows_path(ours_zip)),
                                                       calc_text(windows_path(out))))

    def their_decompress():
        out = os.path.join(work, "out infozip")
        shutil.rmtree(out, ignore_errors=True)
        seconds, peak, _ = run(["unzip", "-q", theirs_zip, "-d", out])
        return seconds, peak

    def report(what, ours, theirs, tool, target):
        call = max(ours[0] - idle_seconds, 1e-3)
        print("%s: VFile %.2f s (call alone %.2f s, %.0f MB/s), %s %.2f s (%.0f MB/s)" %
              (what, ours[0], call, total / call, tool, theirs[0], total / theirs[0]))
        print("  throughput ratio: %.2fx counting fmhost's start-up, %.2fx for the call alone "
              "(target %s)" % (theirs[0] / ours[0], theirs[0] / call, target))
        print("  peak memory: fmhost %.1f MB, %.1f MB above idle (target <= 64); %s %.1f MB" %
              (ours[1], ours[1] - idle_peak, tool, theirs[1]))

    compress_ours = best(args.repeat, our_compress)
    compress_theirs = best(args.repeat, their_compress)
    report("compress", compress_ours, compress_theirs, "zip -6", ">= 1.8x")
    ours_size, theirs_size = os.path.getsize(ours_zip), os.path.getsize(theirs_zip)
    print("  archive size: ours %d, Info-ZIP %d, ratio %.4f (target within 0.5 %%)" %
          (ours_size, theirs_size, ours_size / theirs_size))
    decompress_ours = best(args.repeat, our_decompress)
    decompress_theirs = best(args.repeat, their_decompress)
    report("decompress", decompress_ours, decompress_theirs, "unzip", ">= 1.2x")

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
    if not args.work:
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
