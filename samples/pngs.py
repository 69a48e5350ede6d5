"""PNG files (ISO/IEC 15948), and icons and cursors that hold them or bitmaps."""

import struct
import sys
from pathlib import Path

import bitmaps

sys.path.append(str(Path(__file__).resolve().parents[1] / "resources"))
from make_icon import PngFile, Stored  # noqa: E402

GREY, RGB, PALETTE, RGBA = 0, 2, 3, 6
# First column and row, and distances, of each pass of an interlaced file.
ADAM7 = ((0, 0, 8, 8), (4, 0, 8, 8), (0, 4, 4, 8), (2, 0, 4, 4), (0, 2, 2, 4), (1, 0, 2, 2), (0, 1, 1, 2))


def _Packed(pixels, depth):
    """A row of pixels, each a tuple of samples."""
    bits = "".join(format(sample, f"0{depth}b") for pixel in pixels for sample in pixel)
    bits += "0" * (-len(bits) % 8)
    return int(bits, 2).to_bytes(len(bits) // 8, "big")


def File(kind, depth, rows, palette=(), alphas=(), interlaced=False):
    """Rows of pixels from the top, each pixel a tuple of samples of the depth."""
    data = b""
    for x, y, stepX, stepY in ADAM7 if interlaced else ((0, 0, 1, 1),):
        data += b"".join(b"\0" + _Packed(row[x::stepX], depth) for row in rows[y::stepY] if row[x::stepX])
    chunks = [(b"IHDR", struct.pack(">IIBBBBB", len(rows[0]), len(rows), depth, kind, 0, 0, interlaced))]
    if palette:
        chunks.append((b"PLTE", b"".join(bytes(colour) for colour in palette)))
    if alphas:
        chunks.append((b"tRNS", bytes(alphas)))
    return PngFile(chunks + [(b"IDAT", Stored(data)), (b"IEND", b"")])


def IconBitmap(rows):
    """Rows of (red, green, blue, alpha) as 32 bits, with the mask of what is fully transparent."""
    side = len(rows)
    mask = bitmaps.PackIndices([[int(pixel[3] == 0) for pixel in row] for row in rows], 1)
    pixels = b"".join(bytes((b, g, r, a)) for row in reversed(rows) for r, g, b, a in row)
    return struct.pack("<IiiHHIIiiII", 40, side, 2 * side, 1, 32, 0, 0, 0, 0, 0, 0) + pixels + mask


def Icon(images, hotspot=None):
    """An icon of (side, bytes), or with a hotspot a cursor."""
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 2 if hotspot else 1, len(images))
    for side, data in images:
        x, y = hotspot or (1, 32)
        directory += struct.pack("<BBBBHHII", side % 256, side % 256, 0, 0, x, y, len(data), offset)
        offset += len(data)
    return directory + b"".join(data for _, data in images)
