#!/usr/bin/env python3
"""Writes archives with the inconsistencies other tools forgive, and some they refuse.

Every archive is written from scratch here, record by record, so that each field can be made to
lie on its own: the central and the local sizes, the end record's comment length, bytes in front
of the archive or behind it.

    odd_archives.py FOLDER    writes FOLDER/<case>.zip for each case and prints the case names

Each case says what Info-ZIP's `unzip -t` and Python's zipfile make of it ("accept" or
"refuse"); the test that uses this corpus checks that they still do before comparing with us:
we accept what both accept and refuse the rest, but for the few READ_ALTHOUGH_ONE_REFUSES names.
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
                 descriptor_fields=None, damage=False, gap=b""):
        self.name = name.encode()
        self.data = data
        self.method = method
        self.descriptor = descriptor
        self.central = central or {}
        self.local = local or {}
        self.descriptor_fields = descriptor_fields or {}
        self.packed = deflate(data) if method == 8 else data
        if damage:
            middle = len(self.packed) // 2
            spoiled = bytes(b ^ 0x5A for b in self.packed[middle:middle + 40])
            self.packed = self.packed[:middle] + spoiled + self.packed[middle + 40:]
        self.crc = zlib.crc32(data)
        self.gap = gap  # bytes between the data and what follows, as some writers leave

    def fields(self, overrides):
        values = {"method": self.method, "crc": self.crc, "csize": len(self.packed),
                  "usize": len(self.data), "flags": 8 if self.descriptor else 0}
        values.update(overrides)
        return values


def build(entries, prefix=b"", adjust_offsets=False, comment=b"", comment_length=None,
          trailing=b"", directory_offset_delta=0):
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
                            0) + entry.name + entry.packed + entry.gap
        if entry.descriptor:
            described = entry.fields(entry.descriptor_fields)
            body += struct.pack("<IIII", 0x08074B50, described["crc"], described["csize"],
                                described["usize"])
        fields = entry.fields(entry.central)
        extra = fields.get("extra", b"")
        central += struct.pack("<IHHHHHHIIIHHHHHII", 0x02014B50, 45 if extra else 20, 20,
                               fields["flags"], fields["method"], 0, 0x21, fields["crc"],
                               fields["csize"], fields["usize"], len(entry.name), len(extra), 0,
                               0, 0, 0, fields.get("offset", offset)) + entry.name + extra
    end = struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, len(entries), len(entries), len(central),
                      base + len(body) + directory_offset_delta,
                      len(comment) if comment_length is None else comment_length)
    return prefix + body + central + end + comment + trailing


def two(first=None, second=None, **kwargs):
    """A text file, then a smaller one; keyword arguments go to the first."""
    return [first or Entry("text.txt", TEXT, **kwargs), second or Entry("second.txt", SMALL)]


def grown(data, by):
    return {"csize": len(deflate(data)) + by, "usize": len(data) + by}


def zip64(csize, usize):
    """Central sizes moved into a ZIP64 extra field."""
    return {"csize": 0xFFFFFFFF, "usize": 0xFFFFFFFF,
            "extra": struct.pack("<HHQQ", 1, 16, usize, csize)}


STUB = b"MZ" + bytes(range(256)) * 6 + b"a self-extractor would run from here\n"
LARGE = b"".join(b"%08d %s\n" % (i, b"abcdefghij"[i % 10:] * 5) for i in range(60000))
GAP = b"\0" * 16
BIG = grown(TEXT, 16)
BIG_SMALL = grown(SMALL, 16)
ACCEPT, REFUSE = "accept", "refuse"

# name: (archive bytes, unzip -t's verdict, zipfile's verdict)
CASES = {
    "plain": (build(two()), ACCEPT, ACCEPT),
    "comment length past the end": (
        build(two(), comment=b"made here", comment_length=9 + 40), ACCEPT, ACCEPT),
    "trailing bytes": (build(two(), trailing=b"\0" * 7 + b"not part of it" * 9), ACCEPT, ACCEPT),
    "comment and trailing bytes": (
        build(two(), comment=b"made here", trailing=b"x" * 300), ACCEPT, ACCEPT),
    "both headers claim larger sizes, a gap after the data": (
        build(two(central=BIG, local=BIG, gap=GAP)), ACCEPT, ACCEPT),
    "both headers claim larger sizes, a gap after the data, last entry": (
        build(two(second=Entry("second.txt", SMALL, central=BIG_SMALL, local=BIG_SMALL,
                               gap=GAP))), ACCEPT, ACCEPT),
    "both headers claim larger sizes, a gap after the data, large entry": (
        build(two(first=Entry("large.txt", LARGE, central=grown(LARGE, 16),
                              local=grown(LARGE, 16), gap=GAP))), ACCEPT, ACCEPT),
    "central claims larger sizes, local right, a gap after the data": (
        build(two(central=BIG, gap=GAP)), ACCEPT, ACCEPT),
    "local claims larger sizes, central right": (build(two(local=BIG)), ACCEPT, ACCEPT),
    # zipfile refuses these since it checks for overlapping entries (CPython 3.12.2 and 3.11.8,
    # Debian's 3.11.2 too); older versions read them. See READ_ALTHOUGH_ONE_REFUSES.
    "central claims a larger compressed size, local right, into the next entry": (
        build(two(central={"csize": len(deflate(TEXT)) + 16})), ACCEPT, REFUSE),
    "central claims a larger compressed size, local right, into the directory": (
        build(two(second=Entry("second.txt", SMALL, central={"csize": len(deflate(SMALL)) + 16}))),
        ACCEPT, REFUSE),
    "stored entry, central claims a larger compressed size, into the directory": (
        build(two(second=Entry("second.txt", SMALL, method=0, central={"csize": len(SMALL) + 16}))),
        ACCEPT, REFUSE),
    "central claims a larger size only": (
        build(two(central={"usize": len(TEXT) + 16})), ACCEPT, ACCEPT),
    "descriptor entry, central and descriptor sizes count the descriptor": (
        build(two(descriptor=True, central=BIG, descriptor_fields=BIG)), ACCEPT, ACCEPT),
    "stub in front, offsets not adjusted": (build(two(), prefix=STUB), ACCEPT, ACCEPT),
    "stub in front, offsets adjusted": (
        build(two(), prefix=STUB, adjust_offsets=True), ACCEPT, ACCEPT),
    "stub in front and trailing bytes": (
        build(two(), prefix=STUB, trailing=b"t" * 50), ACCEPT, ACCEPT),
    "stub in front, sizes larger": (
        build(two(central=BIG, local=BIG, gap=GAP), prefix=STUB), ACCEPT, ACCEPT),
    "stored entry": (build(two(second=Entry("second.txt", SMALL, method=0))), ACCEPT, ACCEPT),
    "stored entry, central claims a larger compressed size": (
        build(two(second=Entry("second.txt", SMALL, method=0, gap=GAP,
                               central={"csize": len(SMALL) + 16}))), ACCEPT, ACCEPT),
    "ZIP64 sizes": (
        build(two(central=zip64(len(deflate(TEXT)), len(TEXT)))), ACCEPT, ACCEPT),
    "ZIP64 size as large as 64 bits hold": (
        build(two(central=zip64(len(deflate(TEXT)), 2**64 - 1))), ACCEPT, ACCEPT),
    # Refused by both.
    "ZIP64 local header offset past the end of the file": (
        build(two(central={"offset": 0xFFFFFFFF,
                           "extra": struct.pack("<HHQ", 1, 8, 2**40)})), REFUSE, REFUSE),
    "central and local CRC wrong": (
        build(two(central={"crc": zlib.crc32(TEXT) ^ 1}, local={"crc": zlib.crc32(TEXT) ^ 1})),
        REFUSE, REFUSE),
    "sizes smaller than the data": (
        build(two(central=grown(TEXT, -16), local=grown(TEXT, -16))), REFUSE, REFUSE),
    "stored entry, both headers claim larger sizes": (
        build(two(second=Entry("second.txt", SMALL, method=0, central=BIG_SMALL,
                               local=BIG_SMALL, gap=GAP))), REFUSE, REFUSE),
    "noise stored, said to be deflated": (
        build(two(second=Entry("noise.bin", NOISE, method=0, central={"method": 8},
                               local={"method": 8}))), REFUSE, REFUSE),
    "deflate data damaged": (
        build(two(first=Entry("text.txt", TEXT, damage=True))), REFUSE, REFUSE),
    "directory offset short, no stub": (
        build(two(), directory_offset_delta=-10), REFUSE, REFUSE),
    # The two disagree. We refuse: we go by the central header, as zipfile does, and an entry's
    # data may not reach into the next entry or the directory (unless the local header gives a
    # smaller compressed size that keeps it within its own space).
    "central CRC wrong": (build(two(central={"crc": zlib.crc32(TEXT) ^ 1})), ACCEPT, REFUSE),
    "central method stored, data deflated": (build(two(central={"method": 0})), ACCEPT, REFUSE),
    "size smaller than the data": (
        build(two(central={"usize": len(TEXT) - 1}, local={"usize": len(TEXT) - 1})),
        ACCEPT, REFUSE),
    "compressed size one short of the stream": (
        build(two(central={"csize": len(deflate(TEXT)) - 1},
                  local={"csize": len(deflate(TEXT)) - 1})), REFUSE, ACCEPT),
    "both headers claim larger sizes, into the next entry": (
        build(two(central=BIG, local=BIG)), ACCEPT, REFUSE),
    "both headers claim larger sizes, into the directory": (
        build(two(second=Entry("second.txt", SMALL, central=BIG_SMALL, local=BIG_SMALL))),
        ACCEPT, REFUSE),
    "ZIP64 compressed size past the end of the file": (
        build(two(central=zip64(2**40, len(TEXT)))), ACCEPT, REFUSE),
}


# Cases we read although one tool refuses them. zipfile's overlap check refuses an entry whose
# central compressed size reaches into the next entry or the directory, as a guard against
# archives whose entries share data; we read such an entry only within its own space, by the
# local header's smaller size, so no two entries share a byte, and its stream must end there and
# match its CRC.
READ_ALTHOUGH_ONE_REFUSES = {
    "central claims a larger compressed size, local right, into the next entry",
    "central claims a larger compressed size, local right, into the directory",
    "stored entry, central claims a larger compressed size, into the directory",
}


def read_tree(root):
    """Relative path -> content (None for folders), every item below root: what unpacking left."""
    items = {}
    for folder, folders, files in os.walk(root):
        for name in folders:
            items[os.path.relpath(os.path.join(folder, name), root)] = None
        for name in files:
            with open(os.path.join(folder, name), "rb") as f:
                items[os.path.relpath(os.path.join(folder, name), root)] = f.read()
    return items


def main():
    folder = sys.argv[1]
    os.makedirs(folder, exist_ok=True)
    for name, (data, _, _) in CASES.items():
        with open(os.path.join(folder, name + ".zip"), "wb") as out:
            out.write(data)
        print(name)


if __name__ == "__main__":
    main()
