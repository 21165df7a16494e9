#!/usr/bin/env python3
"""Writes archives with the inconsistencies other tools forgive, and some they refuse.

Every archive is written from scratch here, record by record, so that each field can be made to
lie on its own: the central and the local sizes, the end record's comment length, bytes in front
of the archive or behind it.

    odd_archives.py FOLDER    writes FOLDER/<case>.zip for each case and prints the case names

Each case says what Info-ZIP's `unzip -t` and Python's zipfile make of it ("accept" or
"refuse"); the test that uses this corpus checks that they still do before comparing with us.
"""
import os
import struct
import sys
import zlib

TEXT = b"".join(b"line %d of a file that deflates well\n" % i for i in range(3000))
SMALL = b"a short second file\n" * 20
NOISE = bytes((i * 7919 + (i >> 5) * 31) & 0xFF for i in range(5000))


def deflate(data):
    packer = zlib.compressobj(6, zlib.DEFLATED, -15)
    return packer.compress(data) + packer.flush()


class Entry:
    """One file. `central` and `local` override fields of that header after the fact:
    method, crc, csize, usize, flags."""

    def __init__(self, name, data, method=8, descriptor=False, central=None, local=None,
                 descriptor_fields=None):
        self.name = name.encode()
        self.data = data
        self.method = method
        self.descriptor = descriptor
        self.central = central or {}
        self.local = local or {}
        self.descriptor_fields = descriptor_fields or {}
        self.packed = deflate(data) if method == 8 else data
        self.crc = zlib.crc32(data)

    def fields(self, overrides):
        values = {"method": self.method, "crc": self.crc, "csize": len(self.packed),
                  "usize": len(self.data), "flags": 8 if self.descriptor else 0}
        values.update(overrides)
        return values


def build(entries, prefix=b"", adjust_offsets=False, comment=b"", comment_length=None,
          trailing=b""):
    """The archive's bytes: `prefix` (a stub) first, offsets counted from the archive's own start
    unless `adjust_offsets`."""
    base = len(prefix) if adjust_offsets else 0
    body = b""
    central = b""
    for entry in entries:
        offset = base + len(body)
        local = entry.fields(entry.local)
        if entry.descriptor and "csize" not in entry.local:
            local.update(crc=0, csize=0, usize=0)
        body += struct.pack("<IHHHHHIIIHH", 0x04034B50, 20, local["flags"], local["method"], 0,
                            0x21, local["crc"], local["csize"], local["usize"], len(entry.name),
                            0) + entry.name + entry.packed
        if entry.descriptor:
            described = entry.fields(entry.descriptor_fields)
            body += struct.pack("<IIII", 0x08074B50, described["crc"], described["csize"],
                                described["usize"])
        fields = entry.fields(entry.central)
        central += struct.pack("<IHHHHHHIIIHHHHHII", 0x02014B50, 20, 20, fields["flags"],
                               fields["method"], 0, 0x21, fields["crc"], fields["csize"],
                               fields["usize"], len(entry.name), 0, 0, 0, 0, 0,
                               offset) + entry.name
    end = struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, len(entries), len(entries), len(central),
                      base + len(body),
                      len(comment) if comment_length is None else comment_length)
    return prefix + body + central + end + comment + trailing


def two(first=None, second=None, **kwargs):
    """A text file, then a smaller one; keyword arguments go to the first."""
    return [first or Entry("text.txt", TEXT, **kwargs), second or Entry("second.txt", SMALL)]


def grown(entry_kwargs, by):
    return {"csize": len(deflate(entry_kwargs)) + by, "usize": len(entry_kwargs) + by}


STUB = b"MZ" + bytes(range(256)) * 6 + b"a self-extractor would run from here\n"
BIG = grown(TEXT, 16)
BIG_SMALL = grown(SMALL, 16)

# name: (archive bytes, what unzip -t and zipfile both do with it)
CASES = {
    # Accepted by both.
    "plain": (build(two()), "accept"),
    "comment length past the end": (build(two(), comment=b"made here",
                                          comment_length=9 + 40), "accept"),
    "trailing bytes": (build(two(), trailing=b"\0" * 7 + b"not part of it" * 9), "accept"),
    "comment and trailing bytes": (build(two(), comment=b"made here", trailing=b"x" * 300),
                                   "accept"),
    "both headers claim larger sizes, first entry": (
        build(two(central=BIG, local=BIG)), "accept"),
    "both headers claim larger sizes, last entry": (
        build(two(second=Entry("second.txt", SMALL, central=BIG_SMALL, local=BIG_SMALL))),
        "accept"),
    "central claims larger sizes, local right": (build(two(central=BIG)), "accept"),
    "central claims a larger compressed size only": (
        build(two(central={"csize": len(deflate(TEXT)) + 16})), "accept"),
    "central claims a larger size only": (
        build(two(central={"usize": len(TEXT) + 16})), "accept"),
    "descriptor entry, central and descriptor claim larger sizes": (
        build(two(descriptor=True, central=BIG, descriptor_fields=BIG)), "accept"),
    "stub in front, offsets not adjusted": (build(two(), prefix=STUB), "accept"),
    "stub in front, offsets adjusted": (build(two(), prefix=STUB, adjust_offsets=True),
                                        "accept"),
    "stub in front and trailing bytes": (build(two(), prefix=STUB, trailing=b"t" * 50),
                                         "accept"),
    "stored entry": (build(two(second=Entry("second.txt", SMALL, method=0))), "accept"),
    "stored entry, larger compressed size": (
        build(two(second=Entry("second.txt", SMALL, method=0,
                               central={"csize": len(SMALL) + 16}))), "accept"),
    # Refused by both.
    "central CRC wrong": (build(two(central={"crc": zlib.crc32(TEXT) ^ 1})), "refuse"),
    "central and local CRC wrong": (
        build(two(central={"crc": zlib.crc32(TEXT) ^ 1}, local={"crc": zlib.crc32(TEXT) ^ 1})),
        "refuse"),
    "central method stored, data deflated": (build(two(central={"method": 0})), "refuse"),
    "sizes smaller than the data": (
        build(two(central=grown(TEXT, -16), local=grown(TEXT, -16))), "refuse"),
    "size smaller than the data": (
        build(two(central={"usize": len(TEXT) - 1}, local={"usize": len(TEXT) - 1})), "refuse"),
    "compressed size smaller than the stream": (
        build(two(central={"csize": len(deflate(TEXT)) - 1},
                  local={"csize": len(deflate(TEXT)) - 1})), "refuse"),
    "stored entry, larger sizes": (
        build(two(second=Entry("second.txt", SMALL, method=0, central=BIG_SMALL,
                               local=BIG_SMALL))), "refuse"),
    "noise stored as deflated": (
        build(two(second=Entry("noise.bin", NOISE, method=0, central={"method": 8},
                               local={"method": 8}))), "refuse"),
    "stub in front, directory not where either offset says": (
        build(two(), prefix=STUB)[:len(STUB) - 5] + build(two(), prefix=STUB)[len(STUB):],
        "refuse"),
}


def main():
    folder = sys.argv[1]
    os.makedirs(folder, exist_ok=True)
    for name, (data, _) in CASES.items():
        with open(os.path.join(folder, name + ".zip"), "wb") as out:
            out.write(data)
        print(name)


if __name__ == "__main__":
    main()
