"""Baseline JPEG files (ITU T.81) with the tables of its annex K, and Exif blocks that turn them."""

import math
import struct

ZIGZAG = sorted(range(64), key=lambda i: (i // 8 + i % 8, i // 8 if (i // 8 + i % 8) % 2 else i % 8))

# Tables K.1 and K.2.
LUMINANCE = (16, 11, 10, 16, 24, 40, 51, 61, 12, 12, 14, 19, 26, 58, 60, 55, 14, 13, 16, 24, 40, 57, 69, 56, 14, 17, 22,
             29, 51, 87, 80, 62, 18, 22, 37, 56, 68, 109, 103, 77, 24, 35, 55, 64, 81, 104, 113, 92, 49, 64, 78, 87, 103,
             121, 120, 101, 72, 92, 95, 98, 112, 100, 103, 99)
CHROMINANCE = (17, 18, 24, 47, 99, 99, 99, 99, 18, 21, 26, 66, 99, 99, 99, 99, 24, 26, 56, 99, 99, 99, 99, 99, 47, 66,
               99, 99, 99, 99, 99, 99) + (99,) * 32

# Table K.3 for all first coefficients. For the others two short codes and one length for the rest: a picture of this
# size is not worth the tables K.5 and K.6.
DC_COUNTS, DC_SYMBOLS = (0, 1, 5, 1, 1, 1, 1, 1, 1) + (0,) * 7, tuple(range(12))
AC_SYMBOLS = (0x00, 0x01) + tuple(
    run << 4 | size for run in range(16) for size in range(1, 11) if (run, size) != (0, 1)) + (0xF0,)
AC_COUNTS = (0, 0, 2, 0, 0, 0, 0, len(AC_SYMBOLS) - 2) + (0,) * 8

COSINES = [[math.cos((2 * x + 1) * u * math.pi / 16) * (math.sqrt(1 / 8) if u == 0 else 0.5) for x in range(8)]
           for u in range(8)]


def _Quantisation(table, quality):
    """Scaled as the Independent JPEG Group's library does."""
    scale = 5000 // quality if quality < 50 else 200 - 2 * quality
    return [min(255, max(1, (value * scale + 50) // 100)) for value in table]


def _Codes(counts, symbols):
    codes, code, place = {}, 0, 0
    for length, count in enumerate(counts, 1):
        for symbol in symbols[place:place + count]:
            codes[symbol] = format(code, f"0{length}b")
            code += 1
        place += count
        code <<= 1
    return codes


DC_CODES, AC_CODES = _Codes(DC_COUNTS, DC_SYMBOLS), _Codes(AC_COUNTS, AC_SYMBOLS)


def _Transformed(block):
    rows = [[sum(row[x] * COSINES[u][x] for x in range(8)) for u in range(8)] for row in block]
    return [[sum(rows[y][u] * COSINES[v][y] for y in range(8)) for u in range(8)] for v in range(8)]


def _Bits(value):
    """(size, digits) of a coefficient."""
    size = abs(value).bit_length()
    return size, format(value if value > 0 else value + (1 << size) - 1, f"0{size}b") if size else ""


def _Block(block, quantisation, predictor):
    """(digits, the new predictor)"""
    coefficients = [value for row in _Transformed(block) for value in row]
    values = [round(coefficients[i] / quantisation[i]) for i in ZIGZAG]
    size, digits = _Bits(values[0] - predictor)
    text, run = DC_CODES[size] + digits, 0
    last = max((place for place in range(64) if values[place]), default=0)
    for value in values[1:last + 1]:
        if value == 0:
            run += 1
            continue
        size, digits = _Bits(value)
        text += AC_CODES[0xF0] * (run // 16) + AC_CODES[run % 16 << 4 | size] + digits
        run = 0
    return text + (AC_CODES[0] if last < 63 else ""), values[0]


def _Planes(rows):
    """Luminance and the two colour differences around 0 (ITU T.871), the latter halved in both directions."""
    def YCbCr(red, green, blue):
        return (0.299 * red + 0.587 * green + 0.114 * blue - 128, -0.168736 * red - 0.331264 * green + 0.5 * blue,
                0.5 * red - 0.418688 * green - 0.081312 * blue)

    height, width = (len(rows) + 15) // 16 * 16, (len(rows[0]) + 15) // 16 * 16
    full = [[YCbCr(*rows[min(y, len(rows) - 1)][min(x, len(rows[0]) - 1)][:3]) for x in range(width)]
            for y in range(height)]
    halves = [[[sum(full[2 * y + j][2 * x + i][c] for j in (0, 1) for i in (0, 1)) / 4 for x in range(width // 2)]
               for y in range(height // 2)] for c in (1, 2)]
    return [[pixel[0] for pixel in row] for row in full], *halves


def _Segment(marker, content):
    return struct.pack(">BBH", 0xFF, marker, len(content) + 2) + content


def _Exif(orientation):
    return b"Exif\0\0MM\0*" + struct.pack(">IHHHIHHI", 8, 1, 274, 3, 1, orientation, 0, 0)


def File(rows, quality=90, orientation=None):
    """4:2:0 out of rows of (red, green, blue, ...)."""
    tables = _Quantisation(LUMINANCE, quality), _Quantisation(CHROMINANCE, quality)
    planes, predictors, digits = _Planes(rows), [0, 0, 0], []

    def Put(component, x, y):
        block = [line[x:x + 8] for line in planes[component][y:y + 8]]
        text, predictors[component] = _Block(block, tables[component > 0], predictors[component])
        digits.append(text)

    for y in range(0, len(planes[0]), 16):
        for x in range(0, len(planes[0][0]), 16):
            for place in ((x, y), (x + 8, y), (x, y + 8), (x + 8, y + 8)):
                Put(0, *place)
            Put(1, x // 2, y // 2)
            Put(2, x // 2, y // 2)
    bits = "".join(digits)
    bits += "1" * (-len(bits) % 8)
    data = int(bits, 2).to_bytes(len(bits) // 8, "big").replace(b"\xFF", b"\xFF\0")
    return (b"\xFF\xD8" + (_Segment(0xE1, _Exif(orientation)) if orientation else b"") +
            b"".join(_Segment(0xDB, bytes((number, *(table[i] for i in ZIGZAG)))) for number, table in enumerate(tables)) +
            _Segment(0xC0, struct.pack(">BHHB", 8, len(rows), len(rows[0]), 3) + bytes((1, 0x22, 0, 2, 0x11, 1, 3, 0x11, 1))) +
            _Segment(0xC4, bytes((0x00, *DC_COUNTS, *DC_SYMBOLS))) + _Segment(0xC4, bytes((0x10, *AC_COUNTS, *AC_SYMBOLS))) +
            _Segment(0xDA, bytes((3, 1, 0, 2, 0, 3, 0, 0, 63, 0))) + data + b"\xFF\xD9")
