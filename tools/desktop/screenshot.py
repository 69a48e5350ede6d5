"""Runs the viewer in a display in memory, saves a screenshot when the picture stands, and closes it.

    screenshot.py --out FILE.png -- PROGRAM [ARGUMENT...]

The exit code is the program's.
"""

import argparse
import os
import subprocess
import sys
import tempfile
import time

from desktop import Desktop, PrepareWine, Program, StopWine

# The title bar names the file from the moment on when its load has ended, well or badly.
TITLE_EMPTY, TITLE_LOADED = "Varnolite", "Varnolite - "


def Finished(program):
    """The window with its picture. The title comes a moment before the first frame, and on a busy machine that moment is
    long; a window that stays plain, as one without a picture does, is given some seconds."""
    end = time.monotonic() + 5
    picture = program.StillPicture()
    while picture.IsPlain() and time.monotonic() < end:
        picture = program.StillPicture()
    return picture


def Photograph(command, out):
    winePrefix = os.environ.get("WINEPREFIX") if os.path.basename(command[0]) == "wine" else None
    with Desktop() as desktop, tempfile.TemporaryDirectory() as settings:
        if winePrefix:
            os.environ["DISPLAY"] = desktop.name
            PrepareWine(winePrefix)
        program = Program(desktop, command, settings)
        try:
            program.WaitForWindow(TITLE_LOADED if len(command) > 1 else TITLE_EMPTY)
            Finished(program).SavePng(out)
            print(f"Screenshot: {out}", flush=True)
            return program.Close()
        except subprocess.TimeoutExpired:
            raise RuntimeError("the program did not end when its window was closed") from None
        finally:
            program.Kill()
            if winePrefix:
                StopWine(winePrefix)


def Main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--out", required=True)
    parser.add_argument("command", nargs="+")
    arguments = parser.parse_args()
    try:
        return Photograph(arguments.command, arguments.out)
    except RuntimeError as error:
        print(f"Failed: {error}.", file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(Main())
