"""The images of an icon or cursor file as Pillow sees them.

    icon_by_pillow.py FILE FOLDER

For each image that Pillow reads in 8 bits a line with its number, width and height, and its pixels in the file of that
number in the folder: red, green, blue and alpha.
"""

import io
import struct
import sys
from pathlib import Path

from PIL import IcoImagePlugin

PNG = b"\x89PNG\r\n\x1a\n"


def Alone(file, number):
    """An icon of that image alone: Pillow puts images into an order of its own, and believes a cursor's hotspot and
    any wrong depth of a directory."""
    width, height, _, _, _, bits, size, offset = struct.unpack_from("<BBBBHHII", file, 6 + 16 * number)
    data = file[offset:offset + size]
    if data[:8] != PNG:
        bits = struct.unpack_from("<H", data, 14)[0]
    return struct.pack("<HHHBBBBHHII", 0, 1, 1, width, height, 0, 0, 1, bits, size, 22) + data


def Main(path, folder):
    file = Path(path).read_bytes()
    for number in range(struct.unpack_from("<H", file, 4)[0]):
        image = IcoImagePlugin.IcoFile(io.BytesIO(Alone(file, number))).frame(0)
        image.load()
        if image.mode.startswith("I"):
            continue
        Path(folder, str(number + 1)).write_bytes(image.convert("RGBA").tobytes())
        print(number + 1, *image.size)


Main(*sys.argv[1:])
