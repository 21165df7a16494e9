#!/usr/bin/env python3
"""The zip benchmark, in one run: VFile_Compress and VFile_DeCompress through ./fmhost against
Info-ZIP's `zip -r -6 -q` and `unzip -q`, and against the floor, on two trees of real files; the
codec alone, natively; and one 1 GB file. Never a test.

    bench/zip/run_bench.py [--work DIR] [--scale 1] [--repeat 3] [--seed 1]
                           [--large-file-gb 1] [--skip-large-file] [--skip-codec] [--native]

Needs the Windows build (fmhost, the plug-in and zip_floor.exe: scripts/build.sh), `zip`, `unzip`
and GNU `time`, and for the codec part cmake and Debian's libdeflate-dev and zlib1g-dev
(codec_bench is built in build/bench when missing, or give --codec-bench PATH). The corpora (see
corpora.py: 800 MB of large files and 9,500 small text files from /usr at --scale 1) are copied
into the work folder once; give --work to keep and reuse them. `--scale 0.05 --repeat 1
--skip-large-file --skip-codec` checks the script in a minute.

With --native the Linux build's operations run instead, natively, through native_zip (built in
build/bench like codec_bench, without sanitizers), against the same Info-ZIP runs; the floor, a
Windows program, is left out, and "call alone" takes off native_zip's own idle start-up.

Figures. Each time is the best of --repeat turns in which every side runs once, in turn, with its
input read into the page cache first (a change in the machine's load then touches every side
alike); each peak is the largest of the turns. "with start-up" is the whole fmhost run (Wine and
the host starting, the plug-in loading); "call alone" takes off the idle fmhost run (`1`
evaluated), so it is the function's own time. Peak memory is the largest resident set of any
process of the run (GNU time) less that of the idle run. Info-ZIP's start-up is a few
milliseconds: its whole run is its time. Every target is printed beside its figure with "met" or
"MISSED"; a missed target does not change the exit status, which is non-zero only when a tool
fails or an unpacked tree (ours, unzip's or the floor's, the first of each run) differs from the
corpus in any folder, file, size or BLAKE2 hash.

The floor (bench/zip/floor.cpp, zip_floor.exe, run under the same Wine server), one thread, one
file at a time, 1 MiB ReadFile/WriteFile calls, long-path names, its idle start-up taken off as
fmhost's is:
- packing floor (`zip_floor read`): walks the tree with FindFirstFileExW and reads every file as
  it is found; after each read it appends to one new output file its share of our archive's size
  (archive bytes x bytes read so far / tree bytes), so the output ends exactly as large as our
  archive. No compression, no CRC, no headers.
- unpacking floor (`zip_floor create`): reads a listing of the tree (folders first, then each
  file's size and path) and one file holding every file's bytes in listing order, creates the
  target folder and every folder (CreateDirectoryW), and each file (CreateFileW, CREATE_ALWAYS)
  with its bytes copied from that one file. No archive parsing, no inflating, no CRC check, no
  file times or attributes set.
"""
import argparse
import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import corpora  # noqa: E402

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.environ.get("VF_BUILD_DIR", os.path.join(ROOT, "build"))
FMHOST = os.path.join(ROOT, "fmhost")
FLOOR = os.path.join(BUILD, "windows", "bin", "zip_floor.exe")
# The native_zip program when the run is native (--native); None: fmhost under Wine.
NATIVE = None
MB = 1024.0 * 1024.0

# Per tree: the smallest call-alone ratios to Info-ZIP, the largest archive size ratio and peak
# above idle (MB), the largest ratio of our call alone to the floor's; None: no target.
TARGETS = {
    "large files": dict(compress=3.0, decompress=3.0, size=1.000, peak=64, floor=None),
    "many small files": dict(compress=1.0, decompress=None, size=None, peak=None, floor=1.15),
    "1 GB file": dict(compress=1.8, decompress=None, size=None, peak=64, floor=None),
}


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def calc_text(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def wine_env():
    return dict(os.environ, WINEPREFIX=os.path.join(BUILD, "windows", "wineprefix"),
                WINEDEBUG=os.environ.get("WINEDEBUG", "-all"),
                WINEDLLOVERRIDES=os.environ.get("WINEDLLOVERRIDES", "mscoree,mshtml="))


def run(args, **kwargs):
    """(seconds, peak resident MB, stdout) of one child process; exits when it fails. GNU time
    reads the peak: a child of this process would carry this process's own peak in its figure
    (Linux keeps the largest resident set across fork and exec)."""
    with tempfile.NamedTemporaryFile() as usage, tempfile.TemporaryFile() as errors:
        start = time.monotonic()
        child = subprocess.Popen(["/usr/bin/time", "-f", "%M", "-o", usage.name] + args,
                                 stdout=subprocess.PIPE, stderr=errors, **kwargs)
        out = child.communicate()[0]
        seconds = time.monotonic() - start
        if child.returncode != 0:
            errors.seek(0)
            sys.exit("failed: %s -> %s\n%s%s" % (" ".join(args), child.returncode,
                                                 out.decode(errors="replace"),
                                                 errors.read().decode(errors="replace")))
        peak_kib = int(open(usage.name).read().split()[-1])
    return seconds, peak_kib / 1024.0, out.decode()


def native(*words):
    seconds, peak, out = run([NATIVE] + list(words))
    if out.strip() != "0":
        sys.exit("native_zip %s answered %r" % (" ".join(words), out))
    return seconds, peak


def pack(source, target):
    if NATIVE:
        return native("compress", source, target)
    return fmhost("VFile_Compress( %s ; %s )" % (calc_text(windows_path(source)),
                                                  calc_text(windows_path(target))))


def unpack_with_vfile(archive, folder):
    if NATIVE:
        return native("decompress", archive, folder)
    return fmhost("VFile_DeCompress( %s ; %s )" % (calc_text(windows_path(archive)),
                                                    calc_text(windows_path(folder))))


def idle_run():
    return native("idle") if NATIVE else fmhost("1")


def fmhost(calculation):
    seconds, peak, out = run([FMHOST, "-e", calculation])
    if out.strip() != "0" and calculation != "1":
        sys.exit("%s answered %r" % (calculation, out))
    return seconds, peak


def floor(*words):
    seconds, peak, _ = run(["wine", FLOOR] + list(words), env=wine_env())
    return seconds, peak


def keep_wineserver(up):
    """One Wine server (and Wine's own services) for the whole run, as the tests keep one: else
    each fmhost run boots Wine anew, and the services it starts compete with the call."""
    env = wine_env()
    fmhost("1")  # makes the prefix on first use
    subprocess.run(["wineserver", "-k"], env=env)
    subprocess.run(["wineserver", "-w"], env=env)
    if up:
        subprocess.run(["wineserver", "-p"], env=env, check=True)
        fmhost("1")


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


def best_of_turns(times, sides, inputs):
    """{side: (fastest seconds, largest peak)} over `times` turns of every side in turn."""
    results = {name: [] for name in sides}
    for _ in range(times):
        for name, action in sides.items():
            warm(*inputs)
            results[name].append(action())
    return {name: (min(r[0] for r in runs), max(r[1] for r in runs))
            for name, runs in results.items()}


def remove(path):
    if os.path.isdir(path):
        shutil.rmtree(path)
    elif os.path.exists(path):
        os.remove(path)


def verdict(value, target, at_least, digits=2):
    """The target beside a figure, judged on the figure as printed (`digits` decimals)."""
    if target is None:
        return "[no target]"
    value = round(value, digits)
    met = value >= target if at_least else value <= target
    return "[target %s %g: %s]" % (">=" if at_least else "<=", target, "met" if met else "MISSED")



def compressions(source, ours_zip, theirs_zip):
    """Our VFile_Compress and Info-ZIP's `zip -6` of the folder `source`, each into a new archive."""
    def ours():
        remove(ours_zip)
        return pack(source, ours_zip)

    def theirs():
        remove(theirs_zip)
        return run(["zip", "-r", "-6", "-q", theirs_zip, "."], cwd=source)[:2]

    return dict(ours=ours, theirs=theirs)

class Bench:
    def __init__(self, work, repeat):
        self.work, self.repeat = work, repeat
        self.idle, self.idle_peak = self.idle_figures(idle_run)
        if NATIVE:
            print("idle start-up: native_zip %.3f s (%.1f MB peak)" % (self.idle, self.idle_peak))
            return
        self.floor_idle, self.floor_idle_peak = self.idle_figures(lambda: floor("idle"))
        print("idle start-up: fmhost %.2f s (%.1f MB peak), zip_floor %.2f s (%.1f MB peak)" %
              (self.idle, self.idle_peak, self.floor_idle, self.floor_idle_peak))

    @staticmethod
    def idle_figures(action):
        runs = [action() for _ in range(3)]
        return min(r[0] for r in runs), min(r[1] for r in runs)

    def report(self, what, megabytes, figures, tool, targets, floor_kind=None):
        ours, theirs = figures["ours"], figures["theirs"]
        call = max(ours[0] - self.idle, 1e-3)
        peak = ours[1] - self.idle_peak
        print("  %s" % what)
        print("    VFile  %7.2f s with start-up, %7.2f s call alone (%4.0f MB/s), peak %.1f MB "
              "above idle %s" % (ours[0], call, megabytes / call, peak,
                                 verdict(peak, targets["peak"], False, 1)))
        print("    %-6s %7.2f s (%4.0f MB/s), peak %.1f MB" %
              (tool, theirs[0], megabytes / theirs[0], theirs[1]))
        print("    vs %s: %.2fx call alone %s, %.2fx with start-up" %
              (tool, theirs[0] / call, verdict(theirs[0] / call, targets[what], True),
               theirs[0] / ours[0]))
        if floor_kind:
            mine = figures["floor"]
            floor_call = max(mine[0] - self.floor_idle, 1e-3)
            print("    floor (%s) %.2f s with start-up, %.2f s alone; VFile/floor %.2fx call "
                  "alone %s, %.2fx with start-up" %
                  (floor_kind, mine[0], floor_call, call / floor_call,
                   verdict(call / floor_call, targets["floor"], False), ours[0] / mine[0]))

    def tree(self, title, corpus, seed):
        """Both directions on one corpus, beside Info-ZIP and the floor."""
        name = os.path.basename(corpus)
        targets = TARGETS[title]
        folders, files = corpora.tree(corpus)
        total = sum(os.path.getsize(os.path.join(corpus, f)) for f in files)
        megabytes = total / MB
        with open(os.path.join(self.work, name + ".selection"), "rb") as f:
            fingerprint = hashlib.sha1(f.read() + str(seed).encode()).hexdigest()[:8]
        print("\n== %s: %d files, %d folders, %.1f MB (selection %s)" %
              (title, len(files), len(folders), megabytes, fingerprint))
        ours_zip = os.path.join(self.work, name + " ours.zip")
        theirs_zip = os.path.join(self.work, name + " infozip.zip")
        floor_output = os.path.join(self.work, name + " floor.bin")

        def floor_read():  # runs after ours in each turn: our archive's size is known
            remove(floor_output)
            return floor("read", windows_path(corpus), windows_path(floor_output),
                         str(os.path.getsize(ours_zip)), str(total))

        sides = compressions(corpus, ours_zip, theirs_zip)
        if not NATIVE:
            sides["floor"] = floor_read
        compress = best_of_turns(self.repeat, sides, [corpus])
        self.report("compress", megabytes, compress, "zip -6", targets,
                    None if NATIVE else "read")
        ours_size, theirs_size = os.path.getsize(ours_zip), os.path.getsize(theirs_zip)
        print("    archive: ours %d bytes, zip -6 %d, ratio %.4f %s" %
              (ours_size, theirs_size, ours_size / theirs_size,
               verdict(ours_size / theirs_size, targets["size"], False, 4)))

        # Each extraction gets a folder of its own, and all are removed only at the end: ext4
        # skips inodes freed in the last minutes when it allocates new ones, so extracting right
        # after deleting thousands of files costs either side a millisecond per file, depending
        # on which block group its folder lands in: that would measure the file system's state.
        outputs = {"ours": [], "theirs": []} if NATIVE else {"ours": [], "theirs": [], "floor": []}

        def fresh(side):
            outputs[side].append(os.path.join(self.work, "%s out %s %d" %
                                              (name, side, len(outputs[side]))))
            return outputs[side][-1]

        listing = os.path.join(self.work, name + ".listing")
        contents = os.path.join(self.work, name + ".contents")
        sides = dict(
            ours=lambda: unpack_with_vfile(ours_zip, fresh("ours")),
            theirs=lambda: run(["unzip", "-q", theirs_zip, "-d", fresh("theirs")])[:2])
        if not NATIVE:
            sides["floor"] = lambda: floor("create", windows_path(listing), windows_path(contents),
                                           windows_path(fresh("floor")))
        decompress = best_of_turns(self.repeat, sides, [ours_zip, theirs_zip, listing, contents])
        self.report("decompress", megabytes, decompress, "unzip", targets,
                    None if NATIVE else "create")

        expected = corpora.manifest(corpus)
        for side, folders_made in outputs.items():
            if corpora.manifest(folders_made[0]) != expected:
                sys.exit("%s: the %s side's unpacked tree %s differs from the corpus" %
                         (title, side, folders_made[0]))
        print("  unpacked trees (%s) equal the corpus" % ", ".join(outputs))
        for path in [ours_zip, theirs_zip, floor_output] + sum(outputs.values(), []):
            remove(path)

    def large_file(self, folder):
        """The streaming path: one file far larger than any whole-entry buffer."""
        title = "1 GB file"
        targets = TARGETS[title]
        source = os.path.join(folder, "big.bin")
        megabytes = os.path.getsize(source) / MB
        print("\n== one file of %.2f GB (the streaming path), from the large-files corpus' bytes"
              % (megabytes / 1024))
        ours_zip = os.path.join(self.work, "big ours.zip")
        theirs_zip = os.path.join(self.work, "big infozip.zip")

        compress = best_of_turns(self.repeat, compressions(folder, ours_zip, theirs_zip),
                                 [folder])
        self.report("compress", megabytes, compress, "zip -6", targets)
        ours_size, theirs_size = os.path.getsize(ours_zip), os.path.getsize(theirs_zip)
        print("    archive: ours %d bytes, zip -6 %d, ratio %.4f" %
              (ours_size, theirs_size, ours_size / theirs_size))
        out = os.path.join(self.work, "big out")
        expected = corpora.manifest(folder)

        checked = set()

        def unpack(action, side):
            remove(out)
            figures = action()
            if side not in checked:  # after the timing, on each side's first run
                if corpora.manifest(out) != expected:
                    sys.exit("%s: the %s side's unpacked file differs from the source" %
                             (title, side))
                checked.add(side)
            return figures

        decompress = best_of_turns(self.repeat, dict(
            ours=lambda: unpack(lambda: unpack_with_vfile(ours_zip, out), "ours"),
            theirs=lambda: unpack(lambda: run(["unzip", "-q", theirs_zip, "-d", out])[:2],
                                  "unzip")),
            [ours_zip, theirs_zip])
        self.report("decompress", megabytes, decompress, "unzip", targets)
        print("  unpacked files (ours, unzip's) equal the source")
        for path in (ours_zip, theirs_zip, out):
            remove(path)


def native_bench_program(given, target):
    """A program of the native benchmark build (build/bench: Release, no sanitizers), built when
    missing."""
    if given:
        return given
    build = os.path.join(BUILD, "bench")
    program = os.path.join(build, "bin", target)
    if not os.path.exists(program):
        print("building %s in %s" % (target, build))
        subprocess.run(["cmake", "-S", ROOT, "-B", build, "-DCMAKE_BUILD_TYPE=Release",
                        "-DVF_SANITIZE=OFF"], check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["cmake", "--build", build, "--target", target], check=True,
                       stdout=subprocess.DEVNULL)
    return program


def codec(program, corpus):
    """libdeflate against zlib on the large corpus' bytes, natively (no Wine, no files)."""
    print("\n== the codec alone, natively, on the large-files corpus (best of 3 each)")
    result = subprocess.run([program, corpus], stdout=subprocess.PIPE, text=True)
    print("".join("  " + line + "\n" for line in result.stdout.splitlines()), end="")
    if result.returncode != 0 or "FAILED" in result.stdout or "DIFFER" in result.stdout:
        sys.exit("codec_bench failed")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--work", help="folder for the corpora, kept and reused (default: a "
                        "temporary folder, removed at the end)")
    parser.add_argument("--scale", type=float, default=1.0, help="corpus sizes, 1 = full")
    parser.add_argument("--repeat", type=int, default=3, help="turns; each figure is the best")
    parser.add_argument("--seed", type=int, default=1, help="the selection's and the 1 GB "
                        "file's seed")
    parser.add_argument("--large-file-gb", type=float, default=1.0)
    parser.add_argument("--skip-large-file", action="store_true")
    parser.add_argument("--skip-codec", action="store_true")
    parser.add_argument("--codec-bench", help="a codec_bench program (default: build/bench's, "
                        "built when missing)")
    parser.add_argument("--native", action="store_true", help="the Linux build's operations, "
                        "natively (native_zip), instead of fmhost under Wine")
    args = parser.parse_args()
    global NATIVE
    if args.native:
        NATIVE = native_bench_program(None, "native_zip")
    else:
        for program in (FLOOR, os.path.join(BUILD, "windows", "bin", "fmhost.exe")):
            if not os.path.exists(program):
                sys.exit("%s is missing: run scripts/build.sh first" % program)
    for tool in ("zip", "unzip", "/usr/bin/time") + (() if NATIVE else ("wine",)):
        if not shutil.which(tool):
            sys.exit("%s is not installed" % tool)
    codec_program = None if args.skip_codec else native_bench_program(args.codec_bench,
                                                                       "codec_bench")

    work = os.path.abspath(args.work or tempfile.mkdtemp(prefix="vf-zip-bench-"))
    os.makedirs(work, exist_ok=True)
    large = corpora.prepare(work, "large files", corpora.LARGE, args.scale, args.seed)
    small = corpora.prepare(work, "many small files", corpora.SMALL, args.scale, args.seed)
    big = None if args.skip_large_file else corpora.prepare_large_file(
        work, large, args.large_file_gb, args.seed)

    if not NATIVE:
        keep_wineserver(True)
    try:
        bench = Bench(work, args.repeat)
        bench.tree("large files", large, args.seed)
        bench.tree("many small files", small, args.seed)
        if big:
            bench.large_file(big)
    finally:
        if not NATIVE:
            keep_wineserver(False)
    if codec_program:
        codec(codec_program, large)
    if not args.work:
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
