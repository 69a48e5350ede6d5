"""Bitmap files with every generation of header.

The Windows headers follow the structures BITMAPINFOHEADER (40 bytes), its forms with masks (52 and 56), BITMAPV4HEADER
(108) and BITMAPV5HEADER (124); the OS/2 headers follow OS22XBITMAPHEADER and its short forms (12, 16 and 64 bytes).
"""

import struct

# "sRGB" as BITMAPV4HEADER wants it, most significant byte first.
COLOUR_SPACE_SRGB = 0x73524742
INTENT_GRAPHICS = 2


def Stride(width, depth):
    return (width * depth + 31) // 32 * 4


def PackIndices(rows, depth):
    """Palette indices of 1, 2, 4 or 8 bits, the left pixel in the highest bits, rows from the bottom."""
    result = bytearray()
    perByte = 8 // depth
    for row in reversed(rows):
        packed = bytearray(Stride(len(row), depth))
        for x, index in enumerate(row):
            packed[x // perByte] |= index << (perByte - 1 - x % perByte) * depth
        result += packed
    return bytes(result)


def PackMasked(rows, depth, masks, topDown=False):
    """Colours of 16, 24 or 32 bits, each channel scaled to its mask and rounded."""
    size = depth // 8
    fields = [((mask & -mask).bit_length() - 1, mask // (mask & -mask)) for mask in masks if mask]
    result = bytearray()
    for row in rows if topDown else reversed(rows):
        packed = bytearray()
        for pixel in row:
            word = 0
            for value, (shift, most) in zip(pixel, fields):
                word |= (value * most * 2 + 255) // 510 << shift
            packed += word.to_bytes(size, "little")
        result += packed.ljust(Stride(len(row), depth), b"\0")
    return bytes(result)


def Runs(row):
    """[length, value] of equal neighbours, lengths of at most 255."""
    runs = []
    for value in row:
        if runs and runs[-1][1] == value and runs[-1][0] < 255:
            runs[-1][0] += 1
        else:
            runs.append([1, value])
    return runs


def _Encode(rows, runBytes, literalBytes):
    """Lines of runs; neighbouring runs shorter than three pixels are gathered into absolute groups."""
    result = bytearray()
    for row in reversed(rows):
        literal = []

        def Flush():
            # An absolute group has at least three pixels: counts of 0 to 2 are escapes.
            while literal:
                part = literal[:254]
                del literal[:254]
                if len(part) < 3:
                    for value in part:
                        result.extend(runBytes(1, value))
                else:
                    data = literalBytes(part)
                    result.extend(bytes((0, len(part))) + data + b"\0" * (len(data) % 2))

        for length, value in Runs(row):
            if length < 3:
                literal.extend([value] * length)
            else:
                Flush()
                result.extend(runBytes(length, value))
        Flush()
        result.extend(b"\0\0")
    result.extend(b"\0\1")
    return bytes(result)


def RunLength8(rows):
    return _Encode(rows, lambda length, value: bytes((length, value)), bytes)


def RunLength4(rows):
    def Pairs(values):
        padded = values + [0] * (len(values) % 2)
        return bytes(padded[i] << 4 | padded[i + 1] for i in range(0, len(padded), 2))

    return _Encode(rows, lambda length, value: bytes((length, value << 4 | value)), Pairs)


def Header(size, depth, dataBytes, width, height, colours, masks, compression, resolution):
    """The information header of the given size, without the masks that follow one of 40 bytes."""
    if size == 12:
        return struct.pack("<IHHHH", size, width, height, 1, depth)
    if size == 16:
        return struct.pack("<IIIHH", size, width, height, 1, depth)
    header = struct.pack("<IiiHHIIiiII", size, width, height, 1, depth, compression, dataBytes, *resolution, colours, 0)
    if size == 64:
        # Units, reserved, recording from the bottom, no halftoning with its two sizes, RGB, no identifier.
        return header + struct.pack("<HHHHIIII", 0, 0, 0, 0, 0, 0, 0, 0)
    if size >= 52:
        header += struct.pack("<III", *masks[:3])
    if size >= 56:
        header += struct.pack("<I", masks[3])
    if size >= 108:
        # With sRGB named, the end points and the gammas have no meaning.
        header += struct.pack("<I", COLOUR_SPACE_SRGB) + b"\0" * (36 + 12)
    if size == 124:
        header += struct.pack("<IIII", INTENT_GRAPHICS, 0, 0, 0)
    return header


def File(size, depth, data, width, height, palette=(), masks=(0, 0, 0, 0), compression=0, topDown=False,
         resolution=(2835, 2835)):
    """A whole file around the packed pixels; resolution in pixels a metre, across and down."""
    header = Header(size, depth, len(data), width, -height if topDown else height, len(palette), masks, compression,
                    resolution)
    if size == 40 and compression == 3:
        header += struct.pack("<III", *masks[:3])
    entry = "<BBB" if size == 12 else "<BBBx"
    table = b"".join(struct.pack(entry, blue, green, red) for red, green, blue in palette)
    offset = 14 + len(header) + len(table)
    return struct.pack("<2sIhhI", b"BM", offset + len(data), 0, 0, offset) + header + table + data
