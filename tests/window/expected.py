"""What a window has to show, pixel by pixel, as bytes of blue, green, red and 255."""

import struct
import subprocess
import tempfile
from pathlib import Path

# Of the area behind the picture: blue, green, red.
BACKGROUND = (138, 136, 136)
ALPHA_HEADERS = (56, 108, 124)


class Bitmap:
    """The fields of a bitmap file that the tests need, read anew here."""

    def __init__(self, path):
        data = Path(path).read_bytes()
        self.offset, self.headerSize = struct.unpack_from("<II", data, 10)
        if self.headerSize == 12:
            self.width, height, _, self.depth = struct.unpack_from("<HHHH", data, 18)
        else:
            self.width, height, _, self.depth = struct.unpack_from("<iiHH", data, 18)
        self.height, self.topDown = abs(height), height < 0
        across, down = struct.unpack_from("<ii", data, 38) if self.headerSize >= 40 else (1, 1)
        largest = max(across, down)
        self.pixelWidth, self.pixelHeight = largest / across, largest / down
        self.hasAlpha = self.headerSize in ALPHA_HEADERS
        self.data = data

    def Rows(self):
        """Rows of (blue, green, red) from the top, of a file of 24 bits a pixel."""
        if self.depth != 24:
            raise ValueError("only 24 bits are read here")
        stride = (self.width * 3 + 3) // 4 * 4
        rows = [self.data[self.offset + y * stride:self.offset + y * stride + self.width * 3]
                for y in range(self.height)]
        return [[row[x:x + 3] for x in range(0, len(row), 3)] for row in (rows if self.topDown else reversed(rows))]


class GreyPicture:
    """In the place of a bitmap: grey of 0 to 255, as a diagonal ramp that has both ends."""

    pixelWidth = pixelHeight = 1.0
    hasAlpha = False

    def __init__(self, width, height):
        self.width, self.height = width, height

    def Values(self):
        """Rows from the top."""
        last = self.width + self.height - 2
        return [[(x + y) * 255 // last for x in range(self.width)] for y in range(self.height)]

    def Rows(self):
        return [[bytes((value,)) * 3 for value in row] for row in self.Values()]


def Plain(width, height):
    return bytearray(bytes((*BACKGROUND, 255)) * (width * height))


def Replicated(bitmap, rectangle, width, height):
    """The window with each pixel of the file as a block of whole pixels, from the file alone."""
    x0, y0, x1, y1 = rectangle
    acrossPixel, downPixel = (x1 - x0) // bitmap.width, (y1 - y0) // bitmap.height
    if (x1 - x0, y1 - y0) != (bitmap.width * acrossPixel, bitmap.height * downPixel):
        raise ValueError("no whole magnification")
    result = Plain(width, height)
    rows = bitmap.Rows()
    for y in range(max(y0, 0), min(y1, height)):
        row = rows[(y - y0) // downPixel]
        for x in range(max(x0, 0), min(x1, width)):
            result[(y * width + x) * 4:(y * width + x) * 4 + 3] = row[(x - x0) // acrossPixel]
    return bytes(result)


def Rendered(renderProgram, path, mode, rectangle, width, height, rotation=0):
    """The picture drawn by the developers' program onto nothing: blue, green, red and alpha as stored."""
    with tempfile.TemporaryDirectory() as folder:
        out = Path(folder, "pixels")
        subprocess.run([str(renderProgram), str(path), "--mode", mode, "--rect", ",".join(map(str, rectangle)),
                        "--rotation", str(rotation), "--size", f"{width},{height}", "--out", str(out)], check=True,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        return out.read_bytes()


def OnBackground(pixels, rectangle, width, height, hasAlpha):
    """The window: the drawn picture inside the rectangle, blended when it has alpha, the background elsewhere."""
    result = Plain(width, height)
    x0, y0, x1, y1 = rectangle
    left, right = max(x0, 0), min(x1, width)
    for y in range(max(y0, 0), min(y1, height)):
        start, end = (y * width + left) * 4, (y * width + right) * 4
        if end <= start:
            continue
        if hasAlpha:
            for offset in range(start, end, 4):
                result[offset:offset + 3] = Blend(pixels[offset:offset + 4])
        else:
            row = bytearray(pixels[start:end])
            row[3::4] = b"\xff" * (right - left)
            result[start:end] = row
    return bytes(result)


def Blend(pixel):
    """A straight colour over the background, in 16 bits of fraction."""
    part = (pixel[3] * 65536 * 2 + 255) // 510
    return bytes((BACKGROUND[i] * (65536 - part) + 0x8000 + pixel[i] * part) >> 16 for i in range(3))
