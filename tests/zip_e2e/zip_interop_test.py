#!/usr/bin/env python3
"""Interoperability of VFile_Compress and VFile_DeCompress with Info-ZIP and Python's zipfile.

Runs on the Linux side: fmhost.exe (under Wine, through the build's wine-run.sh) packs and unpacks
real trees, Info-ZIP's zip/unzip and zipfile write and check the other half.

    zip_interop_test.py WINE_RUN BIN_DIR

VF_ZIP_LARGE_TEST=1 adds the 5 GB file (sparse on disk; minutes, not seconds).
"""
import io
import os
import random
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "archive"))
import odd_archives  # noqa: E402

tree = odd_archives.read_tree

WINE_RUN, BIN_DIR = sys.argv[1], sys.argv[2]
UTF8_ENV = dict(os.environ, LC_ALL="C.UTF-8")


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def calc_text(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def fmhost(*calculations):
    """Each calculation's printed result, in order (or 'error N')."""
    args = [WINE_RUN, os.path.join(BIN_DIR, "fmhost.exe"),
            "--plugin", windows_path(os.path.join(BIN_DIR, "Vantafile.fmx64"))]
    for calculation in calculations:
        args += ["-e", calculation, "-e", 'VFile_Get( "lastErrorMessage" )']
    run = subprocess.run(args, capture_output=True, text=True, encoding="utf-8")
    return run.stdout.splitlines()


def compress(source, target):
    return fmhost("VFile_Compress( %s ; %s )" % (calc_text(windows_path(source)),
                                                 calc_text(windows_path(target))))


def decompress(archive, target):
    return fmhost("VFile_DeCompress( %s ; %s )" % (calc_text(windows_path(archive)),
                                                   calc_text(windows_path(target))))


OK = ["0", "No Error Message"]


def make_tree(root, seed=1):
    rng = random.Random(seed)
    files = {
        "a.txt": b"alpha\n" * 1000,
        "empty.bin": b"",
        "sub/gr\u00fc\u00dfe \u65e5\u672c \u00e9t\u00e9.txt": "unicode \u00fc".encode() * 500,
        "sub/noise.bin": bytes(rng.getrandbits(8) for _ in range(600000)),
        "sub/deeper/kept.gz": bytes(rng.getrandbits(8) for _ in range(5000)),
        "sub/deeper/numbers.txt": "".join("%d\n" % i for i in range(200000)).encode(),
    }
    for relative, content in files.items():
        path = os.path.join(root, relative)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as f:
            f.write(content)
    os.makedirs(os.path.join(root, "empty folder", "inner"))


class Interop(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vf-zip-interop-")
        self.src = os.path.join(self.dir, "src")
        make_tree(self.src)

    def tearDown(self):
        for folder, _, files in os.walk(self.dir):
            for name in files:
                os.chmod(os.path.join(folder, name), 0o644)
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def test_our_archives_pass_unzip_and_python_and_keep_unicode_names(self):
        self.assertEqual(compress(self.src, self.path("ours.zip")), OK)
        check = subprocess.run(["unzip", "-t", "-q", self.path("ours.zip")], env=UTF8_ENV,
                               capture_output=True, text=True)
        self.assertEqual(check.returncode, 0, check.stdout + check.stderr)
        with zipfile.ZipFile(self.path("ours.zip")) as archive:
            self.assertIsNone(archive.testzip())
            names = archive.namelist()
            self.assertIn("sub/gr\u00fc\u00dfe \u65e5\u672c \u00e9t\u00e9.txt", names)
            self.assertIn("empty folder/inner/", names)
            archive.extractall(self.path("by python"))
        self.assertEqual(tree(self.path("by python")), tree(self.src))
        unpacked = subprocess.run(["unzip", "-q", self.path("ours.zip"), "-d",
                                   self.path("by unzip")], env=UTF8_ENV)
        self.assertEqual(unpacked.returncode, 0)
        self.assertEqual(tree(self.path("by unzip")), tree(self.src))

    def test_info_zip_archives_unpack_to_identical_trees(self):
        variants = {
            "plain.zip": ["zip", "-r", "-6", "-q"],
            "zip64.zip": ["zip", "-r", "-6", "-q", "-fz"],
            "stored.zip": ["zip", "-r", "-0", "-q"],
        }
        for name, command in variants.items():
            subprocess.run(command + [self.path(name), "."], cwd=self.src, env=UTF8_ENV,
                           check=True)
            self.assertEqual(decompress(self.path(name), self.path("out " + name)), OK, name)
            self.assertEqual(tree(self.path("out " + name)), tree(self.src), name)
        # Written to a pipe, zip cannot seek back: every entry gets a data descriptor.
        with open(self.path("streamed.zip"), "wb") as out:
            subprocess.run(["zip", "-r", "-q", "-", "."], cwd=self.src, env=UTF8_ENV,
                           stdout=out, check=True)
        self.assertEqual(decompress(self.path("streamed.zip"), self.path("out streamed")), OK)
        self.assertEqual(tree(self.path("out streamed")), tree(self.src))

    def test_python_archives_unpack_to_identical_trees(self):
        class Unseekable(io.RawIOBase):
            def __init__(self, target):
                self.target = target

            def writable(self):
                return True

            def write(self, data):
                return self.target.write(data)

        source = tree(self.src)
        for name, zip64, streamed in [("py.zip", False, False), ("py64.zip", True, False),
                                      ("pystream.zip", False, True)]:
            with open(self.path(name), "wb") as raw:
                target = Unseekable(raw) if streamed else raw
                with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED) as archive:
                    for relative, content in sorted(source.items()):
                        if content is None:
                            archive.writestr(zipfile.ZipInfo(relative + "/"), b"")
                        else:
                            with archive.open(relative, "w", force_zip64=zip64) as entry:
                                entry.write(content)
            if streamed:
                with zipfile.ZipFile(self.path(name)) as archive:
                    self.assertTrue(all(i.flag_bits & 8 for i in archive.infolist()
                                        if not i.is_dir()))
            self.assertEqual(decompress(self.path(name), self.path("out " + name)), OK, name)
            self.assertEqual(tree(self.path("out " + name)), source, name)

    def test_python_names_windows_cannot_use_are_made_usable_and_long_paths_stay_whole(self):
        deep = "/".join(["d" * 100, "e" * 100, "f" * 100])  # 302 characters with the file
        stored = {deep + "/aux.txt": b"device", deep + "/q?.txt": b"question",
                  deep + "/trail.": b"dot", "CON": b"console", "a<b>|c": b"chars",
                  deep + "/x": b"plain"}
        with zipfile.ZipFile(self.path("odd.zip"), "w", zipfile.ZIP_DEFLATED) as archive:
            for name, content in stored.items():
                archive.writestr(name, content)
        before = sorted(os.listdir(self.dir))
        self.assertEqual(decompress(self.path("odd.zip"), self.path("out")), OK)
        self.assertEqual(sorted(os.listdir(self.dir)), sorted(before + ["out"]))
        expected = {"d" * 100: None, "d" * 100 + "/" + "e" * 100: None,
                    "d" * 100 + "/" + "e" * 100 + "/" + "f" * 100: None,
                    deep + "/aux_.txt": b"device", deep + "/q_.txt": b"question",
                    deep + "/trail_": b"dot", "CON_": b"console", "a_b__c": b"chars",
                    deep + "/x": b"plain"}
        self.assertEqual(tree(self.path("out")), expected)

    def test_our_archives_of_300_character_paths_round_trip(self):
        deep = os.path.join(self.src, "p" * 120, "q" * 120, "r" * 60)
        os.makedirs(deep)
        for index in range(3):
            with open(os.path.join(deep, "%d-%s.bin" % (index, "s" * 40)), "wb") as f:
                f.write(bytes(range(256)) * (index + 1))
        self.assertEqual(compress(self.src, self.path("long.zip")), OK)
        with zipfile.ZipFile(self.path("long.zip")) as archive:
            self.assertTrue(any(len(name) > 300 for name in archive.namelist()))
        self.assertEqual(decompress(self.path("long.zip"), self.path("out")), OK)
        self.assertEqual(tree(self.path("out")), tree(self.src))

    def test_times_beyond_dos_and_attributes_survive_our_round_trip(self):
        when = 4417977600 + 12345  # 2110-01-01 03:25:45 UTC
        late = os.path.join(self.src, "late.txt")
        with open(late, "wb") as f:
            f.write(b"from the future")
        os.utime(late, (when, when))
        if int(os.stat(late).st_mtime) != when:
            self.skipTest("the file system here cannot hold a 2110 time")
        locked = os.path.join(self.src, "locked.txt")
        with open(locked, "wb") as f:
            f.write(b"read only")
        os.chmod(locked, 0o444)
        self.assertEqual(compress(self.src, self.path("times.zip")), OK)
        listing = subprocess.run(["unzip", "-l", self.path("times.zip"), "late.txt"],
                                 env=dict(UTF8_ENV, TZ="UTC"), capture_output=True, text=True)
        self.assertRegex(listing.stdout, r"(2107-12-31|12-31-2107) 23:59 +late\.txt")
        with zipfile.ZipFile(self.path("times.zip")) as archive:
            self.assertEqual(archive.getinfo("locked.txt").external_attr & 0x01, 0x01)
            self.assertEqual(archive.getinfo("late.txt").external_attr & 0x01, 0)
        self.assertEqual(decompress(self.path("times.zip"), self.path("out")), OK)
        # A second time, the read-only file of the first is kept, and its entry fails.
        self.assertEqual(decompress(self.path("times.zip"), self.path("out")),
                         ["-50", "Unable to get zip item"])
        with open(self.path("out/locked.txt"), "rb") as f:
            self.assertEqual(f.read(), b"read only")
        self.assertEqual(int(os.stat(self.path("out/late.txt")).st_mtime), when)
        self.assertEqual(os.stat(self.path("out/locked.txt")).st_mode & 0o222, 0)
        self.assertNotEqual(os.stat(self.path("out/late.txt")).st_mode & 0o200, 0)

    def test_archives_unzip_reads_despite_odd_records_unpack_as_unzip_unpacks_them(self):
        # A self-extractor's stub in front, sizes claiming more than the data (streamed and
        # whole, into the next entry too), a comment shorter than recorded: byte for byte what
        # unzip makes of them. Then
        # an archive whose second entry fails keeps the first and writes nothing else anywhere.
        accepted = ["stub in front, offsets not adjusted", "stub in front, sizes larger",
                    "both headers claim larger sizes, a gap after the data, large entry",
                    "comment length past the end",
                    "central claims a larger compressed size, local right, into the next entry"]
        refused = "stored entry, both headers claim larger sizes"
        calculations = []
        for index, name in enumerate(accepted + [refused]):
            with open(self.path("%d.zip" % index), "wb") as f:
                f.write(odd_archives.CASES[name][0])
            calculations.append("VFile_DeCompress( %s ; %s )" % (
                calc_text(windows_path(self.path("%d.zip" % index))),
                calc_text(windows_path(self.path("out %d" % index)))))
        before = sorted(os.listdir(self.dir))
        results = fmhost(*calculations)
        for index, name in enumerate(accepted):
            self.assertEqual(results[2 * index:2 * index + 2], OK, name)
            subprocess.run(["unzip", "-q", self.path("%d.zip" % index), "-d",
                            self.path("unzip %d" % index)], capture_output=True)
            self.assertEqual(tree(self.path("out %d" % index)),
                             tree(self.path("unzip %d" % index)), name)
        self.assertEqual(results[-2:], ["-50", "Unable to get zip item"])
        last = len(accepted)
        self.assertEqual(tree(self.path("out %d" % last)),
                         {"text.txt": odd_archives.TEXT})
        self.assertEqual(sorted(os.listdir(self.dir)),
                         sorted(before + ["out %d" % i for i in range(last + 1)] +
                                ["unzip %d" % i for i in range(last)]))

    def test_an_empty_archive_creates_the_target_folder(self):
        with zipfile.ZipFile(self.path("empty.zip"), "w"):
            pass
        self.assertEqual(decompress(self.path("empty.zip"), self.path("made/here")), OK)
        self.assertTrue(os.path.isdir(self.path("made/here")))
        self.assertEqual(os.listdir(self.path("made/here")), [])

    @unittest.skipUnless(os.environ.get("VF_ZIP_LARGE_TEST") == "1",
                         "set VF_ZIP_LARGE_TEST=1 for the 5 GB file")
    def test_a_5_gb_file_round_trips(self):
        large = os.path.join(self.dir, "large")
        os.makedirs(large)
        size = 5 * 1024 ** 3 + 12345
        with open(os.path.join(large, "big.bin"), "wb") as f:
            f.truncate(size)
            f.seek(size // 2)
            f.write(b"a marker in the middle")
        self.assertEqual(compress(large, self.path("big.zip")), OK)
        check = subprocess.run(["unzip", "-t", "-q", self.path("big.zip")], capture_output=True,
                               text=True)
        self.assertEqual(check.returncode, 0, check.stdout + check.stderr)
        with zipfile.ZipFile(self.path("big.zip")) as archive:
            self.assertEqual(archive.getinfo("big.bin").file_size, size)
        self.assertEqual(decompress(self.path("big.zip"), self.path("out")), OK)
        out = os.path.join(self.dir, "out", "big.bin")
        self.assertEqual(os.path.getsize(out), size)
        with open(out, "rb") as f:
            f.seek(size // 2)
            self.assertEqual(f.read(22), b"a marker in the middle")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
