#!/usr/bin/env python3
"""Our verdict on the odd archives of odd_archives.py against Info-ZIP's `unzip -t` and Python's
zipfile: we unpack what both read, to the same bytes as `unzip`, and refuse the rest with the
reader's codes.

    odd_archives_test.py UNPACK_TOOL [SEED_FOLDER]

The small archives are also left in SEED_FOLDER, as seeds of the reader's fuzz target.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

import odd_archives

tree = odd_archives.read_tree

TOOL = sys.argv.pop(1)
SEEDS = sys.argv.pop(1) if len(sys.argv) > 1 else None


def unzip_verdict(path):
    # 1 is a warning (such as bytes in front of the archive): the data was read all the same.
    run = subprocess.run(["unzip", "-t", "-q", path], capture_output=True)
    return odd_archives.ACCEPT if run.returncode in (0, 1) else odd_archives.REFUSE


def zipfile_verdict(path):
    try:
        with zipfile.ZipFile(path) as archive:
            for info in archive.infolist():
                archive.read(info)
    except (zipfile.BadZipFile, OSError, ValueError, EOFError, NotImplementedError,
            __import__("zlib").error):
        return odd_archives.REFUSE
    return odd_archives.ACCEPT


class OddArchives(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="vf-odd-archives-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def test_we_read_what_unzip_and_zipfile_both_read_and_refuse_the_rest(self):
        if shutil.which("unzip") is None:
            self.fail("unzip is missing: scripts/install-prereqs.sh installs it")
        for name, (data, by_unzip, by_zipfile) in odd_archives.CASES.items():
            with self.subTest(name):
                path = os.path.join(self.dir, name + ".zip")
                with open(path, "wb") as f:
                    f.write(data)
                if SEEDS and len(data) <= 64 * 1024:
                    shutil.copyfile(path, os.path.join(SEEDS, "odd " + name + ".zip"))
                # The references first: a case that no longer shows what it says shows nothing.
                self.assertEqual(unzip_verdict(path), by_unzip, "unzip -t")
                self.assertEqual(zipfile_verdict(path), by_zipfile, "zipfile")

                target = os.path.join(self.dir, name + " ours")
                ours = subprocess.run([TOOL, path, target], capture_output=True, text=True)
                self.assertIn(ours.returncode, (0, 1), ours.stderr)
                if (by_unzip == by_zipfile == odd_archives.ACCEPT
                        or name in odd_archives.READ_ALTHOUGH_ONE_REFUSES):
                    self.assertEqual(ours.returncode, 0, ours.stdout)
                    theirs = os.path.join(self.dir, name + " unzip")
                    subprocess.run(["unzip", "-q", "-o", path, "-d", theirs],
                                   capture_output=True)
                    self.assertEqual(tree(target), tree(theirs))
                else:
                    self.assertEqual(ours.returncode, 1, "accepted")
                    self.assertIn(ours.stdout.strip(), ("-50 Unable to get zip item",
                                                        "-50 Invalid or missing zip item",
                                                        "-43 Invalid archive path."))


if __name__ == "__main__":
    unittest.main()
