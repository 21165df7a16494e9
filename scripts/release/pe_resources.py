"""Reads a Windows DLL's string table and VERSIONINFO resource straight from the file, so that the
version checks need no Windows tool: the PE headers lead to the .rsrc section, whose directory
tree (type, id, language) leads to the resource bytes."""
import struct

RT_STRING = 6
RT_VERSION = 16
FIXED_FILE_INFO_SIGNATURE = 0xFEEF04BD


class PeFile:
    def __init__(self, path):
        with open(path, "rb") as f:
            self.data = f.read()
        if self.data[:2] != b"MZ":
            raise ValueError(f"{path}: not a PE file")
        pe = struct.unpack_from("<I", self.data, 0x3C)[0]
        if self.data[pe:pe + 4] != b"PE\0\0":
            raise ValueError(f"{path}: no PE signature")
        sections, optional_size = struct.unpack_from("<H12xH", self.data, pe + 6)
        first = pe + 24 + optional_size
        self.rsrc = None
        for i in range(sections):
            name, vsize, rva, raw_size, raw = struct.unpack_from("<8sIIII", self.data, first + 40 * i)
            if name.rstrip(b"\0") == b".rsrc":
                self.rsrc = (rva, raw)
        if self.rsrc is None:
            raise ValueError(f"{path}: no resources")

    def _entries(self, offset):
        base = self.rsrc[1]
        named, ids = struct.unpack_from("<12xHH", self.data, base + offset)
        for i in range(named + ids):
            ident, target = struct.unpack_from("<II", self.data, base + offset + 16 + 8 * i)
            yield ident, target

    def resource(self, type_id, name_id):
        """The bytes of the first language of resource (type_id, name_id), or None."""
        for ident, target in self._entries(0):
            if ident != type_id:
                continue
            for name, sub in self._entries(target & 0x7FFFFFFF):
                if name != name_id:
                    continue
                for _, leaf in self._entries(sub & 0x7FFFFFFF):
                    rva, size = struct.unpack_from("<II", self.data, self.rsrc[1] + leaf)
                    start = rva - self.rsrc[0] + self.rsrc[1]
                    return self.data[start:start + size]
        return None

    def string(self, string_id):
        """String-table entry string_id (16 strings a block, each length-prefixed UTF-16)."""
        block = self.resource(RT_STRING, string_id // 16 + 1)
        if block is None:
            return None
        pos = 0
        for index in range(16):
            length = struct.unpack_from("<H", block, pos)[0]
            text = block[pos + 2:pos + 2 + 2 * length].decode("utf-16-le")
            if index == string_id % 16:
                return text if length else None
            pos += 2 + 2 * length
        return None

    def version_info(self):
        """(file version tuple, product version tuple, {string name: value})."""
        raw = self.resource(RT_VERSION, 1)
        if raw is None:
            return None
        strings = {}
        fixed = {}

        def align(pos):
            return (pos + 3) & ~3

        def node(pos, depth):
            length, value_length, kind = struct.unpack_from("<HHH", raw, pos)
            end = pos + length
            key_end = pos + 6
            while raw[key_end:key_end + 2] != b"\0\0":
                key_end += 2
            key = raw[pos + 6:key_end].decode("utf-16-le")
            value = align(key_end + 2)
            if key == "VS_VERSION_INFO" and value_length:
                signature, _, fms, fls, pms, pls = struct.unpack_from("<6I", raw, value)
                if signature != FIXED_FILE_INFO_SIGNATURE:
                    raise ValueError("VERSIONINFO without its fixed part")
                fixed["file"] = (fms >> 16, fms & 0xFFFF, fls >> 16, fls & 0xFFFF)
                fixed["product"] = (pms >> 16, pms & 0xFFFF, pls >> 16, pls & 0xFFFF)
            if kind == 1 and depth == 3:  # a String: its value is text, value_length in characters
                text = raw[value:value + 2 * value_length].decode("utf-16-le")
                strings[key] = text.rstrip("\0")
                return end
            child = align(value + (value_length * (2 if kind == 1 else 1)))
            while child < end:
                child = align(node(child, depth + 1))
            return end

        node(0, 0)
        return fixed["file"], fixed["product"], strings
