#!/usr/bin/env python3
"""An icon of ten images in memory, nine bitmaps and a PNG of 256 x 256, decoded whole beside Pillow in the same run.

    bench/ico_against_pillow.py ICO_BENCH [--runs N]

Needs Pillow. The two take turns, and the medians are compared.
"""

import argparse
import io
import os
import statistics
import struct
import subprocess
import tempfile
import time

from PIL import Image

SIDES, DEPTHS = (16, 32, 48), (4, 8, 32)


def Bitmap(side, depth):
    """Header, palette, rows and mask."""
    header = struct.pack("<IiiHHIIiiII", 40, side, 2 * side, 1, depth, 0, 0, 0, 0, 0, 0)
    palette = b"" if depth == 32 else os.urandom(4 << depth)
    return header + palette + os.urandom((side * depth + 31) // 32 * 4 * side + (side + 31) // 32 * 4 * side)


def Png():
    """A ramp with noise, so that its rows are filtered."""
    image = Image.new("RGBA", (256, 256))
    image.putdata([(x ^ y, x, (y + noise % 4) & 255, 255 - y // 2)
                   for y in range(256) for x, noise in enumerate(os.urandom(256))])
    file = io.BytesIO()
    image.save(file, "PNG")
    return file.getvalue()


def Icon():
    images = [(side, depth, Bitmap(side, depth)) for side in SIDES for depth in DEPTHS] + [(0, 32, Png())]
    directory, offset = struct.pack("<HHH", 0, 1, len(images)), 6 + 16 * len(images)
    for side, depth, data in images:
        directory += struct.pack("<BBBBHHII", side, side, 0, 0, 1, depth, len(data), offset)
        offset += len(data)
    return directory + b"".join(data for _, _, data in images)


def WithPillow(file):
    start = time.perf_counter()
    with Image.open(io.BytesIO(file)) as icon:
        for number in range(len(SIDES) * len(DEPTHS) + 1):
            icon.ico.frame(number).load()
    return (time.perf_counter() - start) * 1000


def WithOurs(program, path):
    # The first run of a process also loads its code.
    runs = subprocess.run([program, path, "5"], check=True, capture_output=True, text=True).stdout.split()
    return statistics.median(float(run) for run in runs[1:])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=31)
    options = parser.parse_args()
    file = Icon()
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "icon.ico")
        with open(path, "wb") as out:
            out.write(file)
        WithPillow(file)
        ours, theirs = [], []
        for _ in range(options.runs):
            ours.append(WithOurs(os.path.abspath(options.program), path))
            theirs.append(WithPillow(file))
    ours, theirs = (1000 / statistics.median(times) for times in (ours, theirs))
    print(f"{'ICO of 10 images':20} {ours:7.0f} files/s   Pillow {theirs:7.0f} files/s   {ours / theirs:.2f} x its speed")


if __name__ == "__main__":
    main()
