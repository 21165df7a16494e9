#!/usr/bin/env python3
"""Writes the zip benchmark's corpus: a seeded mix of what users pack.

    make_corpus.py OUTDIR [--size-mb 200] [--seed 1]

At the default 200 MB: one 60 MB log-like text file, about 2,000 files under 4 KiB, text files of
100 KB to 2 MB, binary tables that compress moderately, already-compressed files (.jpg, .png, .gz,
.zip: random bytes), empty files and empty folders, and non-ASCII names throughout. Every part
scales with --size-mb; the same seed and size always give the same bytes. run_bench.py uses real
files (corpora.py) and these generators only for what a machine lacks.
"""
import argparse
import os
import random

WORDS = ("the of and to in is was for on that with as by at from this be are or an it which "
         "record invoice customer amount total status pending shipped returned folder file "
         "container script layout portal value field table relationship calculation summary "
         "Z\u00fcrich M\u00fcnchen S\u00e3o Paulo K\u00f8benhavn Krak\u00f3w").split()
NAMES = ["report", "Rechnung", "\u00e9t\u00e9", "\u65e5\u672c\u8a9e", "\u0444\u0430\u0439\u043b",
         "data", "notes", "Stra\u00dfe", "caf\u00e9", "log"]


def text(rng, size):
    out, length = [], 0
    while length < size:
        line = " ".join(rng.choices(WORDS, k=rng.randint(4, 14)))
        line = "%06d %s %d.%02d\n" % (rng.randint(0, 999999), line, rng.randint(0, 9999),
                                      rng.randint(0, 99))
        out.append(line)
        length += len(line.encode())
    return "".join(out).encode()[:size]


def table(rng, size):
    # Fixed-width binary records: small integers and repeated codes, as exported data often is.
    out = bytearray()
    while len(out) < size:
        out += rng.randint(0, 5000).to_bytes(4, "little") + bytes([rng.randint(0, 3)] * 4)
        out += rng.choice([b"ABCD", b"EFGH", b"IJKL"]) + rng.randbytes(4)
    return bytes(out[:size])


def write(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as f:
        f.write(content)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("outdir")
    parser.add_argument("--size-mb", type=float, default=200)
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    rng = random.Random(args.seed)
    mb = 1024 * 1024
    scale = args.size_mb / 200.0
    root = args.outdir

    def name(i, extension):
        return "%s %d%s" % (rng.choice(NAMES), i, extension)

    write(os.path.join(root, "logs", "server \u65e5\u5fd7.log"), text(rng, int(60 * mb * scale)))
    for i in range(int(2000 * scale)):
        write(os.path.join(root, "small", "part %d" % (i // 200), name(i, ".txt")),
              text(rng, rng.randint(0, 4095)))
    count = 0

    def fill(folder, megabytes, smallest, largest, extension, content):
        """Files of `smallest` to `largest` bytes in `folder` until `megabytes` are written."""
        nonlocal count
        budget = int(megabytes * mb * scale)
        while budget > 0:
            size = min(budget, rng.randint(smallest, largest))
            write(os.path.join(root, folder, name(count, extension())), content(size))
            budget -= size
            count += 1

    fill("documents", 70, 100 * 1024, 2 * mb, lambda: ".txt", lambda size: text(rng, size))
    fill("tables", 35, 200 * 1024, 4 * mb, lambda: ".dat", lambda size: table(rng, size))
    fill("media", 35, 50 * 1024, 3 * mb, lambda: rng.choice([".jpg", ".png", ".gz", ".zip"]),
         rng.randbytes)
    for j in range(max(1, int(20 * scale))):
        write(os.path.join(root, "empty files", name(j, ".txt")), b"")
        os.makedirs(os.path.join(root, "empty folders", name(j, "")), exist_ok=True)


if __name__ == "__main__":
    main()
