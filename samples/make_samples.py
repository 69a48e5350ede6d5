"""Writes the sample pictures beside this script, or into the folder given by --out.

The resolution chart, one bitmap for each generation of the file's header and each way to store pixels, and the usual
kinds of the other formats. A picture says by a label what it is.
"""

import argparse
import functools
import struct
from pathlib import Path

import bitmaps
import chart
import gifs
import jpegs
import lettering
import pngs
import tifs

# Odd on purpose: rows of every depth end in padding.
WIDTH, HEIGHT = 157, 93


def Scene(x, y):
    """(red, green, blue, alpha) of the picture that all formats carry: two ramps and a disc, with a fading edge."""
    red, green = x * 255 // (WIDTH - 1), y * 255 // (HEIGHT - 1)
    dx, dy = x - WIDTH // 2, y - HEIGHT // 2
    distance = dx * dx + dy * dy
    blue = 208 if distance < 36 * 36 else 64
    alpha = min(255, max(0, 255 * (62 * 62 - distance) // (62 * 62 - 36 * 36)))
    return red, green, blue, alpha


@functools.lru_cache(None)
def Palettes():
    """Palettes of 2, 4, 16 and 256 colours, by depth in bits."""
    levels6, levels = (0, 51, 102, 153, 204, 255), (0, 85, 170, 255)
    cube = [(r, g, b) for r in levels6 for g in levels6 for b in levels6]
    greys = [(i * 255 // 39,) * 3 for i in range(40)]
    return {
        1: [(24, 32, 64), (250, 220, 160)],
        2: [(24, 32, 64), (200, 64, 48), (72, 176, 96), (250, 220, 160)],
        4: [(levels[i & 3], levels[i >> 2], 160 - 60 * (i & 1)) for i in range(16)],
        8: cube + greys,
    }


@functools.lru_cache(None)
def Nearest(colour, depth):
    """The index of the palette's colour that is closest to (red, green, blue)."""
    red, green, blue = colour
    distances = [(red - r) ** 2 + (green - g) ** 2 + (blue - b) ** 2 for r, g, b in Palettes()[depth]]
    return distances.index(min(distances))


def Labelled(label, light, dark, pixels):
    """Writes the label into rows of pixels, light on a dark bar."""
    lines = label.split("\n")
    for y in range(4, 8 + 10 * len(lines)):
        for x in range(4, 8 + lettering.ADVANCE * max(len(line) for line in lines)):
            pixels[y][x] = dark
    for number, line in enumerate(lines):
        for x, y in lettering.Pixels(line, 7, 7 + 10 * number):
            pixels[y][x] = light
    return pixels


def TrueColour(label):
    rows = [[Scene(x, y) for x in range(WIDTH)] for y in range(HEIGHT)]
    return Labelled(label, (255, 255, 255, 255), (0, 0, 0, 255), rows)


def Indexed(label, depth):
    rows = []
    for y in range(HEIGHT):
        row = []
        for x in range(WIDTH):
            # An ordered dither of 4 x 4 pixels, so that few colours still carry the ramps.
            threshold = (0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5)[y % 4 * 4 + x % 4] - 8
            spread = 12 if depth < 8 else 2
            row.append(Nearest(tuple(min(255, max(0, value + threshold * spread)) for value in Scene(x, y)[:3]), depth))
        rows.append(row)
    return Palettes()[depth], Labelled(label, Nearest((255, 255, 255), depth), Nearest((0, 0, 0), depth), rows)


def IndexedFile(header, label, depth, **options):
    palette, rows = Indexed(label, depth)
    return bitmaps.File(header, depth, bitmaps.PackIndices(rows, depth), WIDTH, HEIGHT, palette=palette, **options)


def RunLengthFile(label, depth):
    palette, rows = Indexed(label, depth)
    data = bitmaps.RunLength8(rows) if depth == 8 else bitmaps.RunLength4(rows)
    return bitmaps.File(40, depth, data, WIDTH, HEIGHT, palette=palette, compression=1 if depth == 8 else 2)


def MaskedFile(header, label, depth, masks, **options):
    """masks for red, green, blue and alpha."""
    data = bitmaps.PackMasked(TrueColour(label), depth, masks, topDown=options.get("topDown", False))
    return bitmaps.File(header, depth, data, WIDTH, HEIGHT, masks=masks, **options)


def PngColours(label, kind, scale=1, **options):
    channels = 4 if kind == pngs.RGBA else 3
    rows = [[tuple(sample * scale for sample in pixel[:channels]) for pixel in row] for row in TrueColour(label)]
    return pngs.File(kind, 16 if scale > 1 else 8, rows, **options)


def PngIndexed(label, depth):
    """All colours are opaque but the darker one of 1 bit, which is half so."""
    palette, rows = Indexed(label, depth)
    alphas = (128,) if depth == 1 else ()
    return pngs.File(pngs.PALETTE, depth, [[(index,) for index in row] for row in rows], palette, alphas)


def PngGreys(label, depth):
    most = (1 << depth) - 1
    rows = [[((pixel[0] * most + 127) // 255,) for pixel in row] for row in TrueColour(label)]
    return pngs.File(pngs.GREY, depth, rows)


def IconRows(side):
    """The scene's disc alone, which fades into nothing."""
    left, top = (WIDTH - HEIGHT) // 2, 0
    return [[Scene(left + x * HEIGHT // side, top + y * HEIGHT // side) for x in range(side)] for y in range(side)]


def Turned(label):
    """The scene as a camera stores it that is held upright: its first row is the right edge."""
    rows = TrueColour(label)
    return [[row[x] for row in rows] for x in range(WIDTH - 1, -1, -1)]


def GifFrames():
    """The same picture, from the top and in passes."""
    palette, plain = Indexed("GIF\nFRAME 1", 8)
    _, interlaced = Indexed("GIF\nFRAME 2\nINTERLACED", 8)
    return gifs.File(palette, [gifs.Frame(plain, 8), gifs.Frame(interlaced, 8, interlaced=True)])


def TifColours(label, **options):
    rows = [b"".join(bytes(pixel[:3]) for pixel in row) for row in TrueColour(label)]
    return tifs.Image(rows, WIDTH, 8, tifs.RGB, samples=3, **options)


def TifIndexed(label):
    palette, rows = Indexed(label, 8)
    return tifs.Image([bytes(row) for row in rows], WIDTH, 8, tifs.PALETTE, compression=tifs.PACK_BITS, colourMap=palette)


def TifGreys(label, bits, code, sampleFormat, scale):
    """The code as struct names it."""
    rows = [struct.pack(f"{code[0]}{WIDTH}{code[1]}", *(pixel[0] * scale for pixel in row)) for row in TrueColour(label)]
    return tifs.Image(rows, WIDTH, bits, tifs.BLACK_IS_ZERO, sampleFormat=sampleFormat)


MASKS_555, MASKS_565 = (0x7C00, 0x3E0, 0x1F, 0), (0xF800, 0x7E0, 0x1F, 0)
MASKS_888, MASKS_8888 = (0xFF0000, 0xFF00, 0xFF, 0), (0xFF0000, 0xFF00, 0xFF, 0xFF000000)
MASKS_10 = (0x3FF00000, 0xFFC00, 0x3FF, 0)
BITFIELDS = 3


def Samples():
    """{file name: bytes}"""
    chartRows = bitmaps.PackIndices(chart.Rows(), 8)
    return {
        "resolution-chart.bmp": bitmaps.File(40, 8, chartRows, chart.WIDTH, chart.HEIGHT, palette=chart.Palette()),
        "os2-12-1bit.bmp": IndexedFile(12, "OS/2 1.X\n1 BIT", 1),
        "os2-12-4bit.bmp": IndexedFile(12, "OS/2 1.X\n4 BIT", 4),
        "os2-12-8bit.bmp": IndexedFile(12, "OS/2 1.X\n8 BIT", 8),
        "os2-12-24bit.bmp": MaskedFile(12, "OS/2 1.X\n24 BIT", 24, MASKS_888),
        "os2-16-4bit.bmp": IndexedFile(16, "OS/2 2.X\n16 BYTES\n4 BIT", 4),
        "os2-64-8bit.bmp": IndexedFile(64, "OS/2 2.X\n64 BYTES\n8 BIT", 8),
        "windows-40-1bit.bmp": IndexedFile(40, "WINDOWS 3\n1 BIT", 1),
        "windows-40-2bit.bmp": IndexedFile(40, "WINDOWS CE\n2 BIT", 2),
        "windows-40-4bit.bmp": IndexedFile(40, "WINDOWS 3\n4 BIT", 4),
        "windows-40-8bit.bmp": IndexedFile(40, "WINDOWS 3\n8 BIT", 8),
        "windows-40-rle4.bmp": RunLengthFile("WINDOWS 3\nRLE4", 4),
        "windows-40-rle8.bmp": RunLengthFile("WINDOWS 3\nRLE8", 8),
        "windows-40-16bit-555.bmp": MaskedFile(40, "WINDOWS 3\n16 BIT\n5-5-5", 16, MASKS_555),
        "windows-40-16bit-565.bmp": MaskedFile(40, "WINDOWS NT\n16 BIT\n5-6-5", 16, MASKS_565, compression=BITFIELDS),
        "windows-40-24bit.bmp": MaskedFile(40, "WINDOWS 3\n24 BIT", 24, MASKS_888),
        "windows-40-24bit-top-down.bmp": MaskedFile(40, "24 BIT\nTOP ROW\nFIRST", 24, MASKS_888, topDown=True),
        "windows-40-24bit-wide-pixels.bmp": MaskedFile(40, "24 BIT\nPIXELS\n2 TO 1", 24, MASKS_888,
                                                       resolution=(2835, 5670)),
        "windows-40-32bit.bmp": MaskedFile(40, "WINDOWS 3\n32 BIT", 32, MASKS_888),
        "windows-40-32bit-10-10-10.bmp": MaskedFile(40, "WINDOWS NT\n32 BIT\n10-10-10", 32, MASKS_10,
                                                    compression=BITFIELDS),
        "windows-52-16bit-565.bmp": MaskedFile(52, "52 BYTES\n16 BIT\n5-6-5", 16, MASKS_565, compression=BITFIELDS),
        "windows-56-32bit-alpha.bmp": MaskedFile(56, "56 BYTES\nALPHA", 32, MASKS_8888, compression=BITFIELDS),
        "windows-108-32bit-alpha.bmp": MaskedFile(108, "VERSION 4\nALPHA", 32, MASKS_8888, compression=BITFIELDS),
        "windows-124-32bit-alpha.bmp": MaskedFile(124, "VERSION 5\nALPHA", 32, MASKS_8888, compression=BITFIELDS),
        "gif-two-frames.gif": GifFrames(),
        "jpg-420.jpg": jpegs.File(TrueColour("JPEG\n4:2:0")),
        "jpg-turned.jpg": jpegs.File(Turned("JPEG\nTURNED\nBY EXIF"), orientation=6),
        "tif-rgb-8bit.tif": tifs.File([TifColours("TIFF\nRGB 8 BIT")]),
        "tif-grey-16bit-big-endian.tif": tifs.File([TifGreys("TIFF\nGREY 16 BIT", 16, ">H", tifs.UNSIGNED, 257)], ">"),
        "tif-grey-float.tif": tifs.File([TifGreys("TIFF\nFLOAT", 32, "<f", tifs.FLOAT, 1 / 255)]),
        "tif-three-images.tif": tifs.File([TifColours("TIFF\nIMAGE 1"), TifIndexed("TIFF\nIMAGE 2\nPACKBITS"),
                                           TifGreys("TIFF\nIMAGE 3", 16, "<H", tifs.UNSIGNED, 257)]),
        "png-grey-4bit.png": PngGreys("PNG\nGREY\n4 BIT", 4),
        "png-palette-1bit.png": PngIndexed("PNG\n1 BIT\nALPHA", 1),
        "png-palette-8bit.png": PngIndexed("PNG\n8 BIT", 8),
        "png-rgb-8bit-interlaced.png": PngColours("PNG\nRGB 8 BIT\nINTERLACED", pngs.RGB, interlaced=True),
        "png-rgb-16bit.png": PngColours("PNG\nRGB 16 BIT", pngs.RGB, 257),
        "png-rgba-8bit.png": PngColours("PNG\nRGBA 8 BIT", pngs.RGBA),
        "icon.ico": pngs.Icon([(side, pngs.IconBitmap(IconRows(side))) for side in (16, 32, 48)] +
                              [(128, pngs.File(pngs.RGBA, 8, IconRows(128)))]),
        "cursor.cur": pngs.Icon([(32, pngs.IconBitmap(IconRows(32)))], hotspot=(16, 16)),
    }


def Main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--out", default=Path(__file__).parent)
    folder = Path(parser.parse_args().out)
    for name, data in Samples().items():
        (folder / name).write_bytes(data)


if __name__ == "__main__":
    Main()
