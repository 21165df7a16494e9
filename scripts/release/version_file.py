"""Reads VERSION, the one file that holds the plug-in's version."""
import os
import re
from collections import namedtuple

Version = namedtuple("Version", "text numbers build short")


def read(root):
    with open(os.path.join(root, "VERSION"), encoding="ascii") as f:
        lines = f.read().splitlines()
    text = re.fullmatch(r"(\d+)\.(\d+)\.(\d+)", lines[0])
    build = re.fullmatch(r"build (\d+)", lines[1])
    if not text or not build:
        raise ValueError("VERSION: 'major.minor.patch' then 'build N'")
    numbers = tuple(int(n) for n in text.groups())
    # VFile_Version's form: a patch of 0 is left out.
    short = f"{numbers[0]}.{numbers[1]}" + (f".{numbers[2]}" if numbers[2] else "")
    return Version(lines[0], numbers, int(build.group(1)), short)
