"""Writes COUNT copies of a JPEG into a folder, each with an EXIF orientation (1 to 8 in turn)
spliced in after the start-of-image marker: p01.jpg, p02.jpg, ..."""
import struct
import sys


def exif_app1(orientation: int) -> bytes:
    tiff = b"II" + struct.pack("<HI", 42, 8) + struct.pack("<H", 1)
    tiff += struct.pack("<HHIHH", 0x0112, 3, 1, orientation, 0) + struct.pack("<I", 0)
    payload = b"Exif\0\0" + tiff
    return b"\xff\xe1" + struct.pack(">H", len(payload) + 2) + payload


def main() -> None:
    source, folder, count = sys.argv[1], sys.argv[2], int(sys.argv[3])
    with open(source, "rb") as f:
        jpeg = f.read()
    for i in range(1, count + 1):
        with open(f"{folder}/p{i:02d}.jpg", "wb") as f:
            f.write(jpeg[:2] + exif_app1((i - 1) % 8 + 1) + jpeg[2:])


main()
