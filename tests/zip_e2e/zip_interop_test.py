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


def tree(root):
    """Relative path -> content (None for folders), every item below root."""
    items = {}
    for folder, folders, files in os.walk(root):
        for name in folders:
            items[os.path.relpath(os.path.join(folder, name), root)] = None
        for name in files:
            with open(os.path.join(folder, name), "rb") as f:
                items[os.path.relpath(os.path.join(folder, name), root)] = f.read()
    return items


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
