"""Draws the program's icon and writes win32/varnolite.ico beside this script, or below the folder given by --out.

A picture in a frame: half of it is a smooth ramp, half of it the same ramp in few and large pixels. All arithmetic is
in integers and nothing is compressed, so that every machine writes the same bytes.
"""

import argparse
import struct
import zlib
from pathlib import Path

# Sizes as 32-bit bitmaps, which every system reads, and one size as PNG, which systems read from 2006 on.
BITMAP_SIZES = (16, 24, 32, 48, 64)
PNG_SIZE = 256

FRAME, PAPER = (38, 44, 56), (245, 246, 248)
RAMP = ((255, 196, 61), (239, 108, 72), (176, 62, 124), (64, 78, 158))
SUBSAMPLES = 4
GRID = 16


def Colour(u, v):
    """Colour of a point of the drawing, u and v from 0 to 16 * GRID; None outside it."""
    unit = GRID
    side = 16 * unit
    corner = 2 * unit
    # A rounded square; the distance is taken from the nearest corner's centre.
    dx = max(corner - u, u - (side - 1 - corner), 0)
    dy = max(corner - v, v - (side - 1 - corner), 0)
    if dx * dx + dy * dy > corner * corner:
        return None
    x, y = u // unit, v // unit
    if not (2 <= x < 14 and 2 <= y < 14):
        return FRAME
    if x == 2 or x == 13 or y == 2 or y == 13:
        return PAPER
    return Picture(u - 3 * unit, v - 3 * unit, 10 * unit)


def Picture(u, v, side):
    """Left of the diagonal the ramp is smooth; right of it each pixel is a fifth of the side."""
    if u + v >= side:
        cell = side // 5
        u, v = u // cell * cell + cell // 2, v // cell * cell + cell // 2
    position = (u + v) * (len(RAMP) - 1) * 64 // (2 * side)
    index, part = divmod(min(position, (len(RAMP) - 1) * 64 - 1), 64)
    return tuple((RAMP[index][i] * (64 - part) + RAMP[index + 1][i] * part + 32) // 64 for i in range(3))


def Draw(size):
    """Rows of (red, green, blue, alpha), each pixel the mean of SUBSAMPLES squared points."""
    rows = []
    side = 16 * GRID
    for y in range(size):
        row = []
        for x in range(size):
            total, covered = [0, 0, 0], 0
            for j in range(SUBSAMPLES):
                for i in range(SUBSAMPLES):
                    colour = Colour((2 * (x * SUBSAMPLES + i) + 1) * side // (2 * size * SUBSAMPLES),
                                    (2 * (y * SUBSAMPLES + j) + 1) * side // (2 * size * SUBSAMPLES))
                    if colour:
                        covered += 1
                        total = [total[c] + colour[c] for c in range(3)]
            mean = [(value + covered // 2) // covered for value in total] if covered else [0, 0, 0]
            row.append((*mean, covered * 255 // (SUBSAMPLES * SUBSAMPLES)))
        rows.append(row)
    return rows


def Bitmap(size):
    """An icon's bitmap: a header with the height of picture and mask together, rows from the bottom, then the mask."""
    rows = Draw(size)
    pixels = b"".join(bytes((b, g, r, a)) for row in reversed(rows) for r, g, b, a in row)
    maskStride = (size + 31) // 32 * 4
    mask = bytearray(maskStride * size)
    for y, row in enumerate(reversed(rows)):
        for x, pixel in enumerate(row):
            if pixel[3] == 0:
                mask[y * maskStride + x // 8] |= 0x80 >> x % 8
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(pixels) + len(mask), 0, 0, 0, 0)
    return header + pixels + bytes(mask)


def Stored(data):
    """A zlib stream of stored blocks (RFC 1950, RFC 1951 section 3.2.4)."""
    result = b"\x78\x01"
    for start in range(0, len(data), 65535):
        block = data[start:start + 65535]
        last = start + 65535 >= len(data)
        result += struct.pack("<BHH", last, len(block), len(block) ^ 0xFFFF) + block
    return result + struct.pack(">I", zlib.adler32(data))


def PngFile(chunks):
    """A file of (name, bytes)."""
    return b"\x89PNG\r\n\x1a\n" + b"".join(struct.pack(">I", len(body)) + kind + body +
                                           struct.pack(">I", zlib.crc32(kind + body)) for kind, body in chunks)


def Png(size):
    """A PNG of palette colours: a quarter of the bytes of one with full colours."""
    rows = Draw(size)
    palette = sorted({pixel for row in rows for pixel in row})
    if len(palette) > 256:
        raise RuntimeError(f"{len(palette)} colours do not fit a palette")
    index = {pixel: i for i, pixel in enumerate(palette)}
    data = b"".join(b"\0" + bytes(index[pixel] for pixel in row) for row in rows)
    return PngFile(((b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 3, 0, 0, 0)),
                    (b"PLTE", b"".join(bytes(pixel[:3]) for pixel in palette)),
                    (b"tRNS", bytes(pixel[3] for pixel in palette)), (b"IDAT", Stored(data)), (b"IEND", b"")))


def Icon():
    images = [(size, Bitmap(size)) for size in BITMAP_SIZES] + [(PNG_SIZE, Png(PNG_SIZE))]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for size, data in images:
        # A side of 256 is written as 0.
        directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return directory + b"".join(data for _, data in images)


def Main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--out", default=Path(__file__).parent)
    folder = Path(parser.parse_args().out, "win32")
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "varnolite.ico").write_bytes(Icon())


if __name__ == "__main__":
    Main()
