"""A real viewer on a desktop in memory, and beside it the model of what it has to show."""

import getpass
import os
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "tools" / "desktop"), str(ROOT / "tools" / "checks")]

from desktop import Program  # noqa: E402
from expected import Bitmap, OnBackground, Rendered  # noqa: E402
from view_model import View  # noqa: E402
from x11 import Picture  # noqa: E402

RENDER = ROOT / "build" / "release" / "render"
# More notches than lie between the two limits of the zoom, which are twelve octaves apart.
ALL_NOTCHES = 100
# Notches from the lower limit, 6.25 %, to some zooms in per cent.
NOTCHES_TO = {50: 24, 100: 32, 200: 40, 400: 48}


class Native:
    name = "x11"

    def __init__(self, program=ROOT / "build" / "release" / "varnolite"):
        self.program = Path(program)
        self.plugin = ROOT / "build" / "release" / "plugins" / "sample" / "VarnoliteSample.so"

    def Command(self, path):
        return [str(self.program), str(path)]

    def Log(self, settingsFolder):
        return Path(settingsFolder, "XDG_STATE_HOME", "Varnolite", "Varnolite.log")

    def Title(self, path):
        return f"Varnolite - {path}"


class Wine:
    name = "wine"

    def __init__(self, program=ROOT / "build" / "windows" / "varnolite.exe"):
        self.program = Path(program)
        self.plugin = ROOT / "build" / "windows" / "plugins" / "sample" / "VarnoliteSample.dll"

    def Command(self, path):
        return ["wine", str(self.program), self._WindowsPath(path)]

    def Log(self, settingsFolder):
        """One for all programs of Wine's folder."""
        users = Path(os.environ["WINEPREFIX"], "drive_c", "users")
        return users / getpass.getuser() / "AppData" / "Local" / "Varnolite" / "Varnolite.log"

    def Title(self, path):
        return f"Varnolite - {self._WindowsPath(path)}"

    def _WindowsPath(self, path):
        return "Z:" + str(path).replace("/", "\\")


class Mismatch(Exception):
    """The screen does not show what it has to."""


class Viewer:
    """A viewer opened on a file; leaving the context closes it. The mouse rests near the window's centre."""

    def __init__(self, desktop, platform, path, settingsFolder, results):
        self.desktop, self.display, self.platform = desktop, desktop.display, platform
        self.path, self.settingsFolder, self.results = Path(path), settingsFolder, results
        self.bitmap = self.view = None
        self.hasNewSize = False

    def __enter__(self):
        self.program = Program(self.desktop, self.platform.Command(self.path), self.settingsFolder)
        try:
            self.window = self.program.WaitForWindow(self.platform.Title(self.path))
        except BaseException:
            self.program.Kill()
            raise
        return self

    def __exit__(self, *_):
        self.program.Kill()

    def Model(self, bitmap=None):
        """Begins to follow the picture; the file must be a good one, and a bitmap file where none is given."""
        self.bitmap = bitmap or Bitmap(self.path)
        self.view = View(self.bitmap.width, self.bitmap.height, self.bitmap.pixelWidth, self.bitmap.pixelHeight)
        _, _, width, height = self.display.Rectangle(self.window)
        self.view.Resize(width, height)
        return self

    def Resize(self, width, height, x=0, y=0):
        self.display.MoveResize(self.window, x, y, width, height)
        if self.view:
            self.view.Resize(width, height)
            self.hasNewSize = True

    def _AwaitNewSize(self):
        """What the mouse does next counts from the new size's centre, so the program has to know of it."""
        if self.hasNewSize:
            self.Expect(f"resized to {self.view.width} x {self.view.height}")

    def Wheel(self, notches):
        self._AwaitNewSize()
        x, y, width, height = self.display.Rectangle(self.window)
        self.display.Move(x + width // 2, y + height // 2)
        self.display.Wheel(notches)
        self.view.Wheel(notches, width // 2, height // 2)

    def ZoomTo(self, percent):
        """By way of the lower limit, which has to be seen: a zoom that ends where it began would look finished before
        the program has heard of it, and what comes next would meet its wheel."""
        self.Wheel(-ALL_NOTCHES)
        self.Expect("lower limit")
        self.Wheel(NOTCHES_TO[percent])

    def Drag(self, dx, dy):
        self._AwaitNewSize()
        x, y, width, height = self.display.Rectangle(self.window)
        start = (x + width // 2, y + height // 2)
        # The mouse stops at the edges of the screen.
        end = (max(0, min(start[0] + dx, self.desktop.width - 1)), max(0, min(start[1] + dy, self.desktop.height - 1)))
        self.display.Drag(start, end)
        self.view.Drag(end[0] - start[0], end[1] - start[1])

    def Expected(self):
        rectangle, width, height = self.view.Rectangle(), self.view.width, self.view.height
        pixels = Rendered(RENDER, self.path, self.view.Mode(), rectangle, width, height)
        return OnBackground(pixels, rectangle, width, height, self.bitmap.hasAlpha)

    def Expect(self, label, expected=None, seconds=20):
        """Waits until the window shows the expected bytes; saves both pictures and raises when it never does."""
        expected = expected or self.Expected()
        end = time.monotonic() + seconds
        while True:
            picture = self.display.Grab(self.window)
            if picture.Opaque() == expected:
                self.hasNewSize = False
                return
            if self.program.HasEnded():
                raise Mismatch(f"{label}: the program ended with exit code {self.program.process.returncode}")
            if time.monotonic() > end:
                break
            time.sleep(0.02)
        self._Save(label, picture, expected)
        raise Mismatch(f"{label}: {Difference(picture, expected, self.view)}")

    def _Save(self, label, picture, expected):
        name = f"{self.platform.name}-{self.path.stem}-{label}".replace(" ", "-").replace("%", "")
        os.makedirs(self.results, exist_ok=True)
        picture.SavePng(os.path.join(self.results, name + "-screen.png"))
        if len(expected) == len(picture.data):
            Picture(picture.width, picture.height, expected).SavePng(os.path.join(self.results, name + "-expected.png"))


def Difference(picture, expected, view):
    """In words: how many pixels differ, and the first of them."""
    shown = picture.Opaque()
    if len(shown) != len(expected):
        return f"the window is {picture.width} x {picture.height} pixels, not {view.width} x {view.height}"
    wrong = [i for i in range(0, len(shown), 4) if shown[i:i + 4] != expected[i:i + 4]]
    first = wrong[0] // 4
    place = f"({first % picture.width}, {first // picture.width})"
    return (f"{len(wrong)} of {len(shown) // 4} pixels differ, first {place}: "
            f"has {tuple(shown[wrong[0]:wrong[0] + 3])}, wants {tuple(expected[wrong[0]:wrong[0] + 3])}; picture at "
            f"{view.Rectangle()} in {view.width} x {view.height}, {view.Mode()}")
