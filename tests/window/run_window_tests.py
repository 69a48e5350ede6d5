"""Tests of the viewer on real windows: X11 in a display in memory, and Win32 under Wine in the same.

    run_window_tests.py [--results FILE] [--platform x11|wine] [NAME...]

The expected pixels come from the developers' program "render", from the files' own bytes at whole magnifications, and
from the view's arithmetic in view_model.py.
"""

import argparse
import os
import random
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import time
import traceback
from pathlib import Path

import viewer
from expected import Bitmap, GreyPicture, Replicated
from viewer import ROOT, Mismatch, Native, Viewer, Wine

import outcomes
from desktop import Desktop, PrepareWine, StopWine

SAMPLES = ROOT / "samples"
CHART, SMALL = SAMPLES / "resolution-chart.bmp", SAMPLES / "windows-40-24bit.bmp"
# Odd sides, on which the centre falls between pixels, and an even pair.
WINDOW_SIZES = [(801, 603), (333, 777), (640, 478)]
FAILURES = ROOT / "build" / "test" / "window"


class Bench:
    """What a test needs: the desktop, the platform and a folder of its own."""

    def __init__(self, desktop, platform, folder):
        self.desktop, self.platform, self.folder = desktop, platform, Path(folder)

    def Open(self, path, platform=None):
        return Viewer(self.desktop, platform or self.platform, path, str(self.folder / "settings"), str(FAILURES))


def TestFitAtAllWindowSizes(bench):
    for path in (CHART, SMALL):
        with bench.Open(path) as window:
            window.Model().Expect("first picture")
            for size in WINDOW_SIZES:
                window.Resize(*size)
                window.Expect(f"fit {size[0]} x {size[1]}")


def TestZoomByTheWheel(bench):
    for path in (CHART, SMALL):
        with bench.Open(path) as window:
            window.Model()
            for size in WINDOW_SIZES:
                window.Resize(*size)
                for percent in (50, 100, 200, 400):
                    window.ZoomTo(percent)
                    if percent == 100 and window.view.inverseZoom != 1.0:
                        raise Mismatch("the wheel does not reach 100 % exactly")
                    window.Expect(f"{percent} % {size[0]} x {size[1]}")


def TestBothLimitsOfTheZoom(bench):
    with bench.Open(SMALL) as window:
        window.Model().Resize(401, 303)
        window.Wheel(-viewer.ALL_NOTCHES)
        window.Expect("lower limit")
        window.Wheel(viewer.ALL_NOTCHES)
        window.Expect("upper limit")


def TestHundredPercentIsTheFile(bench):
    with bench.Open(SMALL) as window:
        window.Model()
        bitmap = Bitmap(SMALL)
        for size in WINDOW_SIZES:
            window.Resize(*size)
            window.ZoomTo(100)
            window.Expect(f"the file at {size[0]} x {size[1]}", Replicated(bitmap, window.view.Rectangle(), *size))


def TestDragAndBack(bench):
    with bench.Open(CHART) as window:
        window.Model().Resize(501, 399)
        window.ZoomTo(100)
        # The long ones end at the edge of the screen, and then at the last pixels that have to stay in the window.
        for move in ((37, -21), (-90, 55), (2000, 2000), (-2000, -2000), (-2000, -2000), (-2000, -2000), (13, 17)):
            window.Drag(*move)
            window.Expect(f"dragged by {move[0]}, {move[1]}")


def TestEverySample(bench):
    for path in sorted(SAMPLES.glob("*.bmp")):
        with bench.Open(path) as window:
            window.Model().Expect("first picture")
            window.Resize(403, 301)
            window.ZoomTo(100)
            window.Expect("100 %")


def TestResizeStorm(bench):
    numbers = random.Random(7)
    with bench.Open(CHART) as window:
        window.Model()
        for _ in range(60):
            window.Resize(numbers.randrange(40, 1000), numbers.randrange(40, 900))
        window.Resize(611, 409)
        window.Expect("after the storm")


def TestContentReturnsAfterLeavingTheScreen(bench):
    with bench.Open(CHART) as window:
        window.Model().Resize(501, 399)
        window.Expect("at rest")
        window.Resize(501, 399, bench.desktop.width - 100, bench.desktop.height - 50)
        time.sleep(0.3)
        window.Resize(501, 399, 20, 30)
        window.Expect("back again")


def TestPathWithBlanksAndUmlauts(bench):
    path = bench.folder / "Größe und Übermaß" / "ein Bild é 日本.bmp"
    path.parent.mkdir()
    shutil.copy(SMALL, path)
    with bench.Open(path) as window:
        window.Model().Expect("first picture")


def TestBrokenFileShowsAText(bench):
    path = bench.folder / "broken.bmp"
    path.write_bytes(b"BM" + b"\xff" * 60)
    with bench.Open(path) as window:
        end = time.monotonic() + 10
        picture = window.program.StillPicture()
        while picture.IsPlain() and time.monotonic() < end:
            picture = window.program.StillPicture()
        colours = {picture.Pixel(x, y) for y in range(picture.height) for x in range(picture.width)}
        if colours != {(138, 136, 136), (255, 255, 255)}:
            raise Mismatch(f"wants white text on the background, has the colours {sorted(colours)[:8]}")
        middle = picture.Crop(0, picture.height // 2 - 7, picture.width, 14)
        if middle.Opaque().count(b"\xff" * 4) < 50:
            raise Mismatch("the text does not stand in the middle")
        ExpectCleanEnd(window)


def TestCloseEndsTheProgram(bench):
    with bench.Open(CHART) as window:
        window.Model().Expect("first picture")
        ExpectCleanEnd(window)


def ExpectCleanEnd(window):
    try:
        code = window.program.Close()
    except subprocess.TimeoutExpired:
        raise Mismatch("the program did not end when its window was closed") from None
    if code != 0:
        raise Mismatch(f"the program ended with exit code {code}")


def TestNoArgumentOpensAnEmptyWindow(bench):
    window = Viewer(bench.desktop, bench.platform, SMALL, str(bench.folder / "settings"), str(FAILURES))
    command = bench.platform.Command(SMALL)[:-1]
    program = viewer.Program(bench.desktop, command, window.settingsFolder)
    try:
        program.WaitForWindow("Varnolite")
        picture = program.StillPicture()
        if not picture.IsPlain() or picture.Pixel(0, 0) != (138, 136, 136):
            raise Mismatch("the window is not all background")
        if program.Close() != 0:
            raise Mismatch("the program did not end cleanly")
    finally:
        program.Kill()


def TestFurtherArgumentsAreIgnored(bench):
    class TwoArguments(type(bench.platform)):
        def Command(self, path):
            return super().Command(path) + super().Command(CHART)[-1:]

    with Viewer(bench.desktop, TwoArguments(), SMALL, str(bench.folder / "settings"), str(FAILURES)) as window:
        window.Model().Expect("first picture")
        ExpectCleanEnd(window)


def TestPluginsBesideTheProgram(bench):
    """A good one reads its files, and a bad one is named in the log and does no harm."""
    here = bench.folder / "program"
    here.mkdir()
    platform = type(bench.platform)(here / bench.platform.program.name)
    shutil.copy(bench.platform.program, platform.program)
    shutil.copy(platform.plugin, here)
    bad = f"VarnoliteBad{platform.plugin.suffix}"
    (here / bad).write_text("This is no library.")
    # A report is copied to the desktop, which is not to be that of whoever runs the tests.
    settings = bench.folder / "settings" / "XDG_CONFIG_HOME"
    settings.mkdir(parents=True)
    (settings / "user-dirs.dirs").write_text(f'XDG_DESKTOP_DIR="{bench.folder}"\n', encoding="utf-8")
    log = platform.Log(bench.folder / "settings")
    log.unlink(missing_ok=True)

    picture = GreyPicture(160, 120)
    path = here / "ramp.rek"
    samples = b"".join(struct.pack(f"<{picture.width}H", *(value * 257 for value in row)) for row in picture.Values())
    path.write_bytes(b"REK1" + struct.pack("<3I", picture.width, picture.height, 1) + samples)
    with bench.Open(path, platform) as window:
        size = (picture.width, picture.height)
        window.Model(picture).Resize(*size)
        window.Expect("ramp", Replicated(picture, window.view.Rectangle(), *size))
    if f" {bad}: " not in log.read_text(encoding="utf-8", errors="replace"):
        raise Mismatch("the log does not name the library that cannot be loaded")


def TestEndsWhenTheDisplayGoes(bench):
    """On a desktop of its own, which it ends."""
    if bench.platform.name == "wine":
        return "the display belongs to Wine there"
    with Desktop() as desktop:
        with Viewer(desktop, bench.platform, CHART, str(bench.folder / "settings"), str(FAILURES)) as window:
            window.program.StillPicture()
            desktop.display.Close()
            desktop.display = None
            desktop.server.terminate()
            try:
                code = window.program.process.wait(20)
            except subprocess.TimeoutExpired:
                raise Mismatch("the program goes on without a display") from None
            if code < 0:
                raise Mismatch(f"the program was ended by the signal {signal.Signals(-code).name}")
    return None


TESTS = [TestFitAtAllWindowSizes, TestZoomByTheWheel, TestBothLimitsOfTheZoom, TestHundredPercentIsTheFile,
         TestDragAndBack, TestEverySample, TestResizeStorm, TestContentReturnsAfterLeavingTheScreen,
         TestPathWithBlanksAndUmlauts, TestBrokenFileShowsAText, TestCloseEndsTheProgram,
         TestNoArgumentOpensAnEmptyWindow, TestFurtherArgumentsAreIgnored, TestPluginsBesideTheProgram,
         TestEndsWhenTheDisplayGoes]


def RunOne(test, platform):
    """(outcome, reason) of one test on a fresh desktop."""
    with Desktop() as desktop, tempfile.TemporaryDirectory() as folder:
        os.environ["DISPLAY"] = desktop.name
        try:
            reason = test(Bench(desktop, platform, folder))
            return ("skipped", reason) if reason else ("passed", "")
        except (Mismatch, RuntimeError, subprocess.SubprocessError) as failure:
            return "failed", str(failure)
        except Exception as failure:  # pylint: disable=broad-except
            traceback.print_exc()
            return "failed", repr(failure)
        finally:
            if platform.name == "wine":
                StopWine(os.environ["WINEPREFIX"])


def Main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--results", help="file to append the outcomes to")
    parser.add_argument("--platform", choices=["x11", "wine"])
    parser.add_argument("names", nargs="*", metavar="NAME", help="tests to run; all without any")
    arguments = parser.parse_args()
    os.environ.setdefault("WINEPREFIX", str(ROOT / "build" / "wine"))
    os.environ.setdefault("WINEDEBUG", "-all")
    os.environ.setdefault("WINEDLLOVERRIDES", "mscoree=;mshtml=")
    os.environ["LC_ALL"] = "C.UTF-8"
    failed = False
    for platform in (Native(), Wine()):
        if arguments.platform not in (None, platform.name):
            continue
        if platform.name == "wine":
            with Desktop() as desktop:
                os.environ["DISPLAY"] = desktop.name
                PrepareWine(os.environ["WINEPREFIX"])
        for test in TESTS:
            if arguments.names and test.__name__ not in arguments.names:
                continue
            start = time.monotonic()
            outcome, reason = RunOne(test, platform)
            failed = failed or outcome == "failed"
            outcomes.Report(arguments.results, outcome, f"window {platform.name} {test.__name__}",
                            time.monotonic() - start, reason)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(Main())
