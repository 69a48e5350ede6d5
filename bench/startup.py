#!/usr/bin/env python3
"""From exec to the picture on the screen, beside a small viewer of the desktop, on one display in the same run.

    bench/startup.py VIEWER [--runs N]

Needs Xvfb and gpicview. A bitmap of one colour is opened; the clock stops when the pixel in the middle of the window has
that colour on the screen. The programs take turns, and the medians are compared.
"""

import argparse
import ctypes
import ctypes.util
import os
import statistics
import struct
import subprocess
import tempfile
import time

ALL_PLANES, Z_PIXMAP = 0xFFFFFFFFFFFFFFFF, 2


class Screen:
    """A display in memory, and the colour of a pixel on it."""

    def __init__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten",
                                        "tcp"], pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        self.name = ":" + os.read(reading, 16).decode().strip()
        self.x11 = ctypes.CDLL(ctypes.util.find_library("X11"))
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.x11.XGetImage.restype = ctypes.c_void_p
        self.x11.XGetPixel.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x11.XOpenDisplay(self.name.encode()))
        self.root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.display))

    def Pixel(self, x, y):
        image = ctypes.c_void_p(self.x11.XGetImage(self.display, self.root, x, y, 1, 1, ctypes.c_ulong(ALL_PLANES), Z_PIXMAP))
        value = self.x11.XGetPixel(image, 0, 0) & 0xFFFFFF
        self.x11.XDestroyImage(image)
        return value

    def HasColour(self, colour):
        """Somewhere on a coarse grid: windows open at different places."""
        return any(self.Pixel(x, y) == colour for x, y in ((640, 512), (512, 384), (320, 256), (200, 150), (120, 120)))

    def Close(self):
        self.server.terminate()
        self.server.wait()


def WriteBitmap(path, width, height, colour):
    row = bytes(colour) * width
    row += b"\0" * (-len(row) % 4)
    size = 54 + len(row) * height
    with open(path, "wb") as file:
        file.write(b"BM" + struct.pack("<IHHI", size, 0, 0, 54))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, 0, 0, 0, 0, 0))
        for _ in range(height):
            file.write(row)


def Measure(screen, command, colour):
    environment = dict(os.environ, DISPLAY=screen.name)
    start = time.perf_counter()
    program = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    while not screen.HasColour(colour):
        if time.perf_counter() - start > 20:
            raise SystemExit(f"{command[0]} has not shown the picture within 20 seconds")
    elapsed = time.perf_counter() - start
    program.kill()
    program.wait()
    while screen.HasColour(colour):
        time.sleep(0.005)
    return elapsed * 1000


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("viewer")
    parser.add_argument("--runs", type=int, default=15)
    options = parser.parse_args()
    screen = Screen()
    colour = (200, 100, 50)
    expected = colour[2] << 16 | colour[1] << 8 | colour[0]
    with tempfile.TemporaryDirectory() as folder:
        for name, width, height in (("256 x 256", 256, 256), ("24 MP", 6000, 4000)):
            path = os.path.join(folder, f"{width}.bmp")
            WriteBitmap(path, width, height, colour)
            times = {"ours": [], "gpicview": []}
            for _ in range(options.runs):
                times["ours"].append(Measure(screen, [os.path.abspath(options.viewer), path], expected))
                times["gpicview"].append(Measure(screen, ["gpicview", path], expected))
            ours, peer = (statistics.median(times[key]) for key in ("ours", "gpicview"))
            print(f"exec to picture, {name} BMP | ours {ours:.1f} ms | gpicview {peer:.1f} ms | {ours / peer:.2f} x its time")
    screen.Close()


if __name__ == "__main__":
    main()
