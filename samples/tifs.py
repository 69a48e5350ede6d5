"""TIFF 6.0 files."""

import struct

SHORT, LONG = 3, 4
WIDTH, LENGTH, BITS, COMPRESSION, PHOTOMETRIC, OFFSETS = 256, 257, 258, 259, 262, 273
SAMPLES, ROWS, COUNTS, COLOUR_MAP, SAMPLE_FORMAT = 277, 278, 279, 320, 339
BLACK_IS_ZERO, RGB, PALETTE = 1, 2, 3
UNCOMPRESSED, PACK_BITS = 1, 32773
UNSIGNED, FLOAT = 1, 3


def PackBits(row):
    """Runs of 2 to 128 equal bytes, and what lies between them."""
    packed, plain, place = b"", b"", 0
    while place < len(row):
        run = 1
        while run < 128 and place + run < len(row) and row[place + run] == row[place]:
            run += 1
        if run > 1:
            packed += (bytes((len(plain) - 1,)) + plain if plain else b"") + bytes((257 - run, row[place]))
            plain = b""
        else:
            plain += row[place:place + 1]
            if len(plain) == 128:
                packed, plain = packed + b"\x7f" + plain, b""
        place += run
    return packed + (bytes((len(plain) - 1,)) + plain if plain else b"")


def Image(rows, width, bits, photometric, samples=1, rowsPerStrip=16, compression=UNCOMPRESSED, sampleFormat=UNSIGNED,
          colourMap=()):
    """(tags, strips) of one image out of its rows' bytes."""
    packed = [PackBits(row) if compression == PACK_BITS else row for row in rows]
    strips = [b"".join(packed[first:first + rowsPerStrip]) for first in range(0, len(rows), rowsPerStrip)]
    tags = {WIDTH: (SHORT, [width]), LENGTH: (SHORT, [len(rows)]), BITS: (SHORT, [bits] * samples),
            COMPRESSION: (SHORT, [compression]), PHOTOMETRIC: (SHORT, [photometric]), SAMPLES: (SHORT, [samples]),
            ROWS: (SHORT, [rowsPerStrip]), COUNTS: (LONG, [len(strip) for strip in strips]),
            SAMPLE_FORMAT: (SHORT, [sampleFormat] * samples)}
    if colourMap:
        tags[COLOUR_MAP] = (SHORT, [257 * colour[channel] for channel in range(3) for colour in colourMap])
    return tags, strips


def File(images, order="<"):
    """One directory for each image, as Image makes them; the order as struct names it."""
    data = {"<": b"II", ">": b"MM"}[order] + struct.pack(order + "HI", 42, 0)
    link = 4
    for tags, strips in images:
        offsets = []
        for strip in strips:
            offsets.append(len(data))
            data += strip + b"\0" * (len(strip) % 2)
        fields, spilt = b"", b""
        tags = {**tags, OFFSETS: (LONG, offsets)}
        directory = len(data)
        behind = directory + 2 + 12 * len(tags) + 4
        for tag, (kind, values) in sorted(tags.items()):
            content = struct.pack(f"{order}{len(values)}{'H' if kind == SHORT else 'I'}", *values)
            if len(content) > 4:
                spilt, content = spilt + content + b"\0" * (len(content) % 2), struct.pack(order + "I", behind + len(spilt))
            fields += struct.pack(order + "HHI", tag, kind, len(values)) + content.ljust(4, b"\0")
        data = data[:link] + struct.pack(order + "I", directory) + data[link + 4:]
        data += struct.pack(order + "H", len(tags)) + fields + b"\0\0\0\0" + spilt
        link = behind - 4
    return data
