"""GIF files (CompuServe, version 89a) of several frames."""

import struct

# The rows of an interlaced frame: first one and distance of each pass.
PASSES = ((0, 8), (4, 8), (2, 4), (1, 2))


def Codes(indices, bits):
    """The LZW codes of palette indices, lowest bits first."""
    clear, end = 1 << bits, (1 << bits) + 1
    packed, used, width = 0, 0, bits + 1
    table, following, prefix = {(i,): i for i in range(clear)}, end + 1, ()

    def Put(code):
        nonlocal packed, used
        packed |= code << used
        used += width

    Put(clear)
    for index in indices:
        if prefix + (index,) in table:
            prefix += (index,)
            continue
        Put(table[prefix])
        # A reader's table is one entry behind, and so is its change of width.
        if following < 4096:
            width += following == 1 << width
            table[prefix + (index,)] = following
            following += 1
        else:
            Put(clear)
            table, following, width = {(i,): i for i in range(clear)}, end + 1, bits + 1
        prefix = (index,)
    Put(table[prefix])
    width += following == 1 << width and width < 12
    Put(end)
    return packed.to_bytes((used + 7) // 8, "little")


def SubBlocks(data):
    return b"".join(bytes((len(data[i:i + 255]),)) + data[i:i + 255] for i in range(0, len(data), 255)) + b"\0"


def Frame(rows, bits, interlaced=False):
    if interlaced:
        rows = [row for first, step in PASSES for row in rows[first::step]]
    head = struct.pack("<BHHHHB", 0x2C, 0, 0, len(rows[0]), len(rows), 0x40 if interlaced else 0)
    return head + bytes((bits,)) + SubBlocks(Codes([index for row in rows for index in row], bits))


def File(palette, frames):
    """Frames as Frame makes them, all with the palette, whose length is a power of 2."""
    width, height = struct.unpack_from("<HH", frames[0], 5)
    flags = 0x80 | len(palette).bit_length() - 2
    screen = struct.pack("<HHBBB", width, height, flags, 0, 0)
    return b"GIF89a" + screen + b"".join(bytes(colour) for colour in palette) + b"".join(frames) + b";"
