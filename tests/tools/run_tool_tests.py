"""Tests of the developers' programs, from outside and against what the samples' script knows of its own pictures.

    run_tool_tests.py [--results FILE] [NAME...]
"""

import argparse
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import traceback
from pathlib import Path
from random import Random

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "samples"), str(ROOT / "tests" / "window"), str(ROOT / "tools" / "checks")]

import make_samples  # noqa: E402
import outcomes  # noqa: E402
from expected import Bitmap, OnBackground, Rendered, Replicated  # noqa: E402

PROGRAMS, SAMPLES = ROOT / "build" / "release", ROOT / "samples"
RENDER = PROGRAMS / "render"


class Failure(Exception):
    """The program did something else than it should."""


class Skipped(Exception):
    """What the test needs is not there."""


def Equal(has, wants, what):
    if has != wants:
        raise Failure(f"{what}: has {str(has)[:200]}, wants {str(wants)[:200]}")


def Run(*command):
    """(exit code, standard output, standard error)"""
    result = subprocess.run([str(PROGRAMS / command[0]), *map(str, command[1:])], capture_output=True, text=True,
                            stdin=subprocess.DEVNULL, check=False)
    return result.returncode, result.stdout, result.stderr


def Decode(path, folder, *options):
    """({key: value}, pixels) of a good file."""
    raw = Path(folder, "raw")
    code, output, error = Run("decode", path, "--raw", raw, *options)
    Equal((code, error), (0, ""), f"decode {path}")
    return dict(field.split("=") for field in output.split()), raw.read_bytes()


def TestDecodeTellsAllOfAFile(folder):
    fields, _ = Decode(SAMPLES / "windows-40-24bit-wide-pixels.bmp", folder)
    Equal(fields, {"decoder": "BMPDecoder", "type": "BGRAUInt8", "width": "157", "height": "93",
                   "allocatedWidth": "192", "allocatedHeight": "96", "bitsPerPixel": "24", "count": "1", "default": "0",
                   "loaded": "1", "incomplete": "0", "wrongExtension": "0", "orientation": "1", "hasAlpha": "0",
                   "pixelScaleX": "2", "pixelScaleY": "1"}, "fields")


def TestDecodeGivesTheIndexedPixels(folder):
    for name, depth, label in (("os2-12-1bit", 1, "OS/2 1.X\n1 BIT"), ("os2-16-4bit", 4, "OS/2 2.X\n16 BYTES\n4 BIT"),
                               ("os2-64-8bit", 8, "OS/2 2.X\n64 BYTES\n8 BIT"), ("windows-40-2bit", 2, "WINDOWS CE\n2 BIT"),
                               ("windows-40-rle4", 4, "WINDOWS 3\nRLE4"), ("windows-40-rle8", 8, "WINDOWS 3\nRLE8")):
        palette, rows = make_samples.Indexed(label, depth)
        colours = [bytes((blue, green, red, 0)) for red, green, blue in palette]
        fields, pixels = Decode(SAMPLES / f"{name}.bmp", folder)
        Equal(fields["bitsPerPixel"], str(depth), name)
        Equal(pixels == b"".join(colours[index] for row in rows for index in row), True, f"pixels of {name}")


def TestDecodeGivesTheTrueColours(folder):
    for name, label, keepsAlpha in (("windows-40-24bit-top-down", "24 BIT\nTOP ROW\nFIRST", False),
                                    ("windows-56-32bit-alpha", "56 BYTES\nALPHA", True),
                                    ("windows-124-32bit-alpha", "VERSION 5\nALPHA", True)):
        rows = make_samples.TrueColour(label)
        wanted = b"".join(bytes((b, g, r, a if keepsAlpha else 255)) for row in rows for r, g, b, a in row)
        fields, pixels = Decode(SAMPLES / f"{name}.bmp", folder)
        Equal(fields["hasAlpha"], str(int(keepsAlpha)), name)
        Equal(pixels == wanted, True, f"pixels of {name}")


def TestDecodeGivesThePixelsOfPng(folder):
    fields, pixels = Decode(SAMPLES / "png-rgba-8bit.png", folder)
    rows = make_samples.TrueColour("PNG\nRGBA 8 BIT")
    Equal(pixels == b"".join(bytes((b, g, r, a)) for row in rows for r, g, b, a in row), True, "pixels with alpha")
    Equal((fields["decoder"], fields["bitsPerPixel"], fields["hasAlpha"]), ("PNGDecoder", "32", "1"), "fields")
    for name, label in (("png-rgb-8bit-interlaced", "PNG\nRGB 8 BIT\nINTERLACED"), ("png-rgb-16bit", "PNG\nRGB 16 BIT")):
        fields, pixels = Decode(SAMPLES / f"{name}.png", folder)
        rows = make_samples.TrueColour(label)
        wanted = b"".join(bytes((b, g, r, 255)) for row in rows for r, g, b, _ in row)
        if fields["type"] == "BGRAUInt16":
            # The two bytes of each sample are alike.
            wanted = bytes(byte for byte in wanted for _ in range(2))
        Equal(pixels == wanted, True, f"pixels of {name}")
    Equal(fields["type"], "BGRAUInt16", "type of 16 bits")


def TestDecodeGivesEveryImageOfAnIcon(folder):
    for number, side in enumerate((16, 32, 48, 128), 1):
        fields, pixels = Decode(SAMPLES / "icon.ico", folder, "--image", str(number))
        wanted = b"".join(bytes((b, g, r, a)) for row in make_samples.IconRows(side) for r, g, b, a in row)
        Equal(pixels == wanted, True, f"pixels of image {number}")
        Equal((fields["decoder"], fields["count"], fields["default"]), ("ICODecoder", "4", "3"), "fields")
    Equal(Decode(SAMPLES / "icon.ico", folder)[0]["loaded"], "4", "image shown first")
    Equal(Decode(SAMPLES / "cursor.cur", folder)[0]["width"], "32", "width of the cursor")


def Opaque(pixels):
    return b"".join(bytes((blue, green, red, 255)) for red, green, blue in pixels)


def PythonWithPillow():
    for python in (sys.executable, "/usr/bin/python3"):
        if Path(python).exists() and subprocess.run([python, "-c", "import PIL"], capture_output=True,
                                                    check=False).returncode == 0:
            return python
    raise Skipped("no Python here has Pillow")


def PillowImages(path, folder):
    """{number: (width, height, pixels)} of the images that Pillow reads."""
    script = ROOT / "tests" / "tools" / "icon_by_pillow.py"
    result = subprocess.run([PythonWithPillow(), script, path, folder], capture_output=True, text=True, check=False)
    Equal((result.returncode, result.stderr), (0, ""), f"Pillow on {path}")
    return {number: (width, height, Path(folder, str(number)).read_bytes())
            for number, width, height in (map(int, line.split()) for line in result.stdout.splitlines())}


def EntryData(file, number):
    size, offset = struct.unpack_from("<II", file, 6 + 16 * (number - 1) + 8)
    return file[offset:offset + size]


def WithMask(data, width, height, pixels):
    """Pillow does not look at the mask of a bitmap that has an alpha channel."""
    if len(data) < 40 or data[:8].startswith(b"\x89PNG") or struct.unpack_from("<H", data, 14)[0] != 32:
        return pixels
    result, stride = bytearray(pixels), (width + 31) // 32 * 4
    mask = data[40 + 4 * width * height:]
    if len(mask) < stride * height:
        return pixels
    for y in range(height):
        for x in range(width):
            isSet = mask[(height - 1 - y) * stride + x // 8] >> (7 - x % 8) & 1
            alpha = 4 * (y * width + x) + 3
            result[alpha] = 0 if isSet else result[alpha] or 255
    return bytes(result)


def CompareWithPillow(path, folder):
    """How many images were compared."""
    file, images = Path(path).read_bytes(), PillowImages(path, folder)
    for number, (width, height, wanted) in images.items():
        fields, pixels = Decode(path, folder, "--image", str(number))
        what = f"image {number} of {path}"
        Equal((fields["width"], fields["height"]), (str(width), str(height)), what)
        data = EntryData(file, number)
        pixels = b"".join(bytes((red, green, blue, alpha)) for blue, green, red, alpha in struct.iter_unpack("4B", pixels))
        wanted = WithMask(data, width, height, wanted)
        # Colours of 16 bits are cut off there, and rounded here.
        if fields["bitsPerPixel"] == "16" and not data.startswith(b"\x89PNG"):
            Equal(all(0 <= has - wants <= 1 for has, wants in zip(pixels, wanted, strict=True)), True, what)
        else:
            Equal(pixels == wanted, True, what)
    return len(images)


def DrawnBitmap(side, bits, isTopDown):
    """Header, palette, rows and mask drawn by lot."""
    width, height = side, side + 3
    random = Random(1000 * bits + side)
    header = struct.pack("<IiiHHIIiiII", 40, width, 2 * height * (-1 if isTopDown else 1), 1, bits, 0, 0, 0, 0, 0, 0)
    palette = b"".join(random.randbytes(3) + b"\0" for _ in range(1 << bits)) if bits <= 8 else b""
    rows = bytearray(random.randbytes((width * bits + 31) // 32 * 4 * height))
    if bits == 32:
        # Of every kind: without alpha, opaque and in between.
        for i in range(3, len(rows), 4):
            rows[i] = random.choice((0, 255, rows[i]))
    return header + palette + rows + random.randbytes((width + 31) // 32 * 4 * height)


def TestDrawnIconsAreThoseOfPillow(folder):
    # Pillow turns the alpha channel of a bitmap that begins with its highest row upside down.
    images = [(side, side + 3, bits, DrawnBitmap(side, bits, isTopDown))
              for side in (1, 8, 31, 32, 33, 48) for bits in (1, 4, 8, 16, 24, 32) for isTopDown in (False, True)
              if not (isTopDown and bits == 32)]
    images += [(0, 0, 32, (SAMPLES / f"{name}.png").read_bytes())
               for name in ("png-grey-4bit", "png-palette-1bit", "png-palette-8bit", "png-rgb-8bit-interlaced",
                            "png-rgba-8bit")]
    for kind in (1, 2):
        directory, offset = struct.pack("<HHH", 0, kind, len(images)), 6 + 16 * len(images)
        for width, height, bits, data in images:
            directory += struct.pack("<BBBBHHII", width, height, 0, 0, 1, bits, len(data), offset)
            offset += len(data)
        path = Path(folder, ("drawn.ico", "drawn.cur")[kind - 1])
        path.write_bytes(directory + b"".join(data for *_, data in images))
        Equal(CompareWithPillow(path, folder), len(images), "compared images")


def TestSharedIconsAreThoseOfPillow(folder):
    if not os.environ.get("VARNOLITE_CORPUS"):
        raise Skipped("VARNOLITE_CORPUS names no folder with the shared pictures")
    compared = 0
    for path in sorted(Path(os.environ["VARNOLITE_CORPUS"], "ico", "valid").glob("*/*.[ci]*")):
        # Their directories give the image a few bytes only.
        if path.name not in ("mask_1.cur", "mask_L.cur"):
            compared += CompareWithPillow(path, folder)
    Equal(compared > 40, True, f"compared images: {compared}")


def TestDecodeGivesEveryFrameOfAGif(folder):
    for number, label in ((1, "GIF\nFRAME 1"), (2, "GIF\nFRAME 2\nINTERLACED")):
        palette, rows = make_samples.Indexed(label, 8)
        fields, pixels = Decode(SAMPLES / "gif-two-frames.gif", folder, "--image", str(number))
        Equal(pixels == Opaque(palette[index] for row in rows for index in row), True, f"pixels of frame {number}")
        Equal((fields["decoder"], fields["count"]), ("GIFDecoder", "2"), "fields")


def TestDecodeGivesEveryImageOfATif(folder):
    path = SAMPLES / "tif-three-images.tif"
    colours = make_samples.TrueColour("TIFF\nIMAGE 1")
    fields, pixels = Decode(path, folder, "--image", "1")
    Equal(pixels == Opaque(pixel[:3] for row in colours for pixel in row), True, "pixels in colour")
    Equal((fields["decoder"], fields["count"], fields["type"]), ("TIFDecoder", "3", "BGRAUInt8"), "fields")
    palette, rows = make_samples.Indexed("TIFF\nIMAGE 2\nPACKBITS", 8)
    _, pixels = Decode(path, folder, "--image", "2")
    Equal(pixels == Opaque(palette[index] for row in rows for index in row), True, "pixels of a palette")
    greys = [pixel[0] for row in make_samples.TrueColour("TIFF\nIMAGE 3") for pixel in row]
    fields, pixels = Decode(path, folder, "--image", "-1")
    Equal((fields["loaded"], fields["type"]), ("3", "UInt16"), "fields of the last image")
    Equal(pixels == bytes(grey for grey in greys for _ in range(2)), True, "pixels in grey")


def TestDecodeGivesTheGreysOfTif(folder):
    greys = [pixel[0] for row in make_samples.TrueColour("TIFF\nGREY 16 BIT") for pixel in row]
    _, pixels = Decode(SAMPLES / "tif-grey-16bit-big-endian.tif", folder)
    Equal(pixels == bytes(grey for grey in greys for _ in range(2)), True, "pixels of 16 bits")
    greys = [pixel[0] for row in make_samples.TrueColour("TIFF\nFLOAT") for pixel in row]
    fields, pixels = Decode(SAMPLES / "tif-grey-float.tif", folder)
    Equal(fields["type"], "Float32", "type")
    Equal(pixels == struct.pack(f"<{len(greys)}f", *(grey / 255 for grey in greys)), True, "floating-point pixels")


def TestDecodeComesNearThePixelsOfJpg(folder):
    for name, rows, orientation in (("jpg-420", make_samples.TrueColour("JPEG\n4:2:0"), "1"),
                                    ("jpg-turned", make_samples.Turned("JPEG\nTURNED\nBY EXIF"), "6")):
        fields, pixels = Decode(SAMPLES / f"{name}.jpg", folder)
        Equal((fields["decoder"], fields["orientation"], fields["incomplete"]), ("JPGDecoder", orientation, "0"), name)
        differences = [abs(has - wants) for has, wants in zip(pixels, Opaque(pixel[:3] for row in rows for pixel in row))]
        # Quality 90 with halved colour: the edges of the lettering are the worst of it.
        Equal(sum(differences) / len(differences) < 3, True, f"mean difference of {name}")


def TestDecodeFindsPluginsBesideItself(folder):
    program = Path(shutil.copy(PROGRAMS / "decode", folder))
    path = Path(folder, "picture.rek")
    samples = struct.pack("<6H", 1, 2, 3, 40000, 5, 65535)
    path.write_bytes(b"REK1" + struct.pack("<III", 3, 2, 1) + samples)
    Equal(Run(program, path)[0], 1, "exit code without a plug-in")
    shutil.copy(PROGRAMS / "plugins" / "sample" / "VarnoliteSample.so", folder)
    code, output, error = Run(program, path, "--raw", Path(folder, "raw"))
    Equal((code, error), (0, ""), "with a plug-in")
    Equal("decoder=IDecoderCOMAsCPPWrapper type=UInt16 width=3 height=2 " in output, True, output)
    Equal(Path(folder, "raw").read_bytes(), samples, "pixels")


def TestDecodeSaysWhereTheNameIsWrong(folder):
    # No decoder is asked for by the first name, and another one by the second, so the content decides.
    for sample, decoder in (("windows-40-1bit.bmp", "BMPDecoder"), ("gif-two-frames.gif", "GIFDecoder"),
                            ("png-rgba-8bit.png", "PNGDecoder"), ("icon.ico", "ICODecoder")):
        for name in ("picture.data", "picture.tif"):
            path = Path(folder, name)
            path.write_bytes((SAMPLES / sample).read_bytes())
            fields, _ = Decode(path, folder)
            Equal((fields["decoder"], fields["wrongExtension"]), (decoder, "1"), f"{sample} by extension first")
            Equal(Decode(path, folder, "--content")[0]["wrongExtension"], "0", f"{sample} by content alone")


def TestDecodeSaysWhereTheFileIsCut(folder):
    path = Path(folder, "cut.bmp")
    path.write_bytes((SAMPLES / "windows-40-24bit.bmp").read_bytes()[:20000])
    Equal(Decode(path, folder)[0]["incomplete"], "1", "incomplete")


def TestFailuresAndWrongCommandLines(folder):
    broken = Path(folder, "broken.bmp")
    broken.write_bytes(b"BM")
    for program in ("decode", "header"):
        code, output, error = Run(program, broken)
        Equal((code, output, bool(error)), (1, "", True), f"{program} of a broken file")
        Equal(Run(program, Path(folder, "missing.bmp"))[0], 1, f"{program} of no file")
        Equal(Run(program)[0] != 0, True, f"{program} without arguments")
    sample = SAMPLES / "windows-40-24bit.bmp"
    good = {"--mode": "Nearest", "--rect": "0,0,5,5", "--rotation": "0", "--size": "5,5", "--out": Path(folder, "out")}
    for option, value in (("--mode", "Best"), ("--rect", "0,0,5"), ("--rotation", "45"), ("--size", "0,5"),
                          ("--renderer", "Paper")):
        arguments = [part for pair in {**good, option: value}.items() for part in pair]
        Equal(Run("render", sample, *arguments)[0], 1, f"render with {option} {value}")
    complete = [part for pair in good.items() for part in pair]
    Equal(Run("render", sample, *complete), (0, "", ""), "render with all it needs")
    for wrong in (("--scale", "2"), ("other.bmp",), ("--image",)):
        code, _, error = Run("render", sample, *complete, *wrong)
        Equal((code, "Usage: render FILE" in error), (1, True), f"render with {wrong}")
    numberless = [*complete, "--rect", "0,0,five,5"]
    Equal(Run("render", sample, *numberless), (1, "", "render: no number: five\n"), "a field that is no number")


def TestHeaderPrintsPathsAndValues(_):
    code, output, _ = Run("header", SAMPLES / "windows-124-32bit-alpha.bmp")
    lines = output.splitlines()
    Equal(code, 0, "exit code")
    for line in ("BITMAPFILEHEADER/usType = 19778", "BITMAPV5HEADER/bV5Width = 157",
                 "BITMAPV5HEADER/bV5AlphaMask = 4278190080"):
        Equal(line in lines, True, line)


def TestRenderReplicatesAtWholeMagnifications(_):
    path = SAMPLES / "windows-40-24bit.bmp"
    bitmap = Bitmap(path)
    for factor in (1, 2, 4):
        for left, top in ((10, 7), (-31, -5)):
            rectangle = (left, top, left + bitmap.width * factor, top + bitmap.height * factor)
            for mode in ("Nearest", "Area"):
                pixels = Rendered(RENDER, path, mode, rectangle, 333, 201)
                Equal(OnBackground(pixels, rectangle, 333, 201, False) == Replicated(bitmap, rectangle, 333, 201), True,
                      f"{mode} at {factor} times, {rectangle}")


def TestRenderTurnsCounterclockwise(_):
    path = SAMPLES / "windows-40-24bit.bmp"
    rows = Bitmap(path).Rows()
    for rotation in (90, 180, 270):
        # Each quarter turn brings the right edge to the top.
        rows = [list(column) for column in zip(*rows)][::-1]
        width, height = len(rows[0]), len(rows)
        pixels = Rendered(RENDER, path, "Nearest", (0, 0, width, height), width, height, rotation)
        wanted = b"".join(bytes((*pixel, 255)) for row in rows for pixel in row)
        Equal(pixels == wanted, True, f"turned by {rotation}")


def TestRenderLeavesTheRestClear(_):
    pixels = Rendered(RENDER, SAMPLES / "windows-40-24bit.bmp", "Area", (3, 2, 6, 4), 8, 5)
    drawn = [(x, y) for y in range(5) for x in range(8) if pixels[(y * 8 + x) * 4:(y * 8 + x) * 4 + 4] != bytes(4)]
    Equal(drawn, [(x, y) for y in (2, 3) for x in (3, 4, 5)], "drawn pixels")


TESTS = [value for name, value in sorted(globals().items()) if name.startswith("Test")]


def Main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--results", help="file to append the outcomes to")
    parser.add_argument("names", nargs="*", metavar="NAME")
    arguments = parser.parse_args()
    failed = False
    for test in TESTS:
        if arguments.names and test.__name__ not in arguments.names:
            continue
        start, outcome, reason = time.monotonic(), "passed", ""
        with tempfile.TemporaryDirectory() as folder:
            try:
                test(folder)
            except Skipped as missing:
                outcome, reason = "skipped", str(missing)
            except Exception as failure:  # pylint: disable=broad-except
                if not isinstance(failure, Failure):
                    traceback.print_exc()
                outcome, reason = "failed", str(failure) or repr(failure)
        failed = failed or outcome == "failed"
        outcomes.Report(arguments.results, outcome, f"tools {test.__name__}", time.monotonic() - start, reason)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(Main())
