"""A desktop in memory and programs that run in it."""

import os
import shutil
import subprocess
import time

from x11 import Display


class Desktop:
    """An X server in memory (Xvfb) with one screen of 24 bits; a context manager."""

    def __init__(self, width=1280, height=1024):
        self.width, self.height = width, height

    def __enter__(self):
        readEnd, writeEnd = os.pipe()
        # The server takes a free number of its own choice and tells it, so that runs side by side never meet.
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writeEnd), "-screen", "0", f"{self.width}x{self.height}x24", "-nolisten", "tcp"],
            pass_fds=[writeEnd], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writeEnd)
        with os.fdopen(readEnd) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.name = ":" + number
        self.display = Display(self.name)
        return self

    def __exit__(self, *_):
        if self.display:
            self.display.Close()
        self.server.terminate()
        self.server.wait()


class Program:
    """A program on a desktop. settingsFolder takes the place of the user's settings and logs."""

    def __init__(self, desktop, command, settingsFolder):
        self.desktop = desktop
        self.display = desktop.display
        environment = dict(os.environ, DISPLAY=desktop.name)
        environment.pop("WAYLAND_DISPLAY", None)
        for variable in ("XDG_CONFIG_HOME", "XDG_STATE_HOME"):
            environment[variable] = os.path.join(settingsFolder, variable)
            os.makedirs(environment[variable], exist_ok=True)
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL)
        self.window = None

    def HasEnded(self):
        return self.process.poll() is not None

    def WaitFor(self, what, condition, seconds):
        """Asks condition() until its answer is true, and returns that; raises when the program ends before."""
        end = time.monotonic() + seconds
        while True:
            ended = self.HasEnded()
            result = condition()
            if result:
                return result
            if ended:
                raise RuntimeError(f"the program ended with exit code {self.process.returncode} before {what}")
            if time.monotonic() > end:
                raise RuntimeError(f"no {what} after {seconds} s")
            time.sleep(0.01)

    def WaitForWindow(self, title, seconds=60):
        """The window whose title begins with the text, once it is on the screen."""
        self.window = self.WaitFor(f"window with the title \"{title}\"", lambda: self.display.FindWindow(title), seconds)
        return self.window

    def StillPicture(self, quiet=0.3, seconds=30):
        """The inside of the window, once it has not changed for the time quiet (in seconds)."""
        end = time.monotonic() + seconds
        last, since = None, 0.0
        while time.monotonic() < end:
            picture = self.display.Grab(self.window)
            now = time.monotonic()
            if last is None or picture.data != last.data or picture.width != last.width:
                last, since = picture, now
            elif now - since >= quiet:
                return picture
            time.sleep(0.05)
        raise RuntimeError(f"the window still changes after {seconds} s")

    def Close(self, seconds=30):
        """Closes the window as a user does and returns the exit code."""
        if not self.HasEnded():
            self.display.AskToClose(self.window)
        return self.process.wait(seconds)

    def Kill(self):
        """Ends the program without asking; for a test that has failed already."""
        if not self.HasEnded():
            self.process.kill()
            self.process.wait()


def _IsWineReady(prefix):
    return all(os.path.exists(os.path.join(prefix, name))
               for name in ("system.reg", "drive_c/windows/system32/kernel32.dll"))


def PrepareWine(prefix):
    """Makes the Wine folder that WINEPREFIX names, when it is not there: it takes half a minute once. What a failed
    attempt has left is made anew: Wine knows a folder by its inode, and the server of one that was deleted a moment ago
    may answer for the next one."""
    environment = dict(os.environ, WINEPREFIX=prefix)
    for _ in range(3):
        if _IsWineReady(prefix):
            return
        if os.path.exists(prefix):
            StopWine(prefix)
            shutil.rmtree(prefix, ignore_errors=True)
        os.makedirs(prefix)
        subprocess.run(["wineboot", "--init"], env=environment, check=False, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        subprocess.run(["wineserver", "-w"], env=environment, check=False)
    raise RuntimeError("Wine's folder could not be made")


def StopWine(prefix):
    """Ends what Wine keeps running for the folder; without this it complains when the display goes."""
    subprocess.run(["wineserver", "-k"], env=dict(os.environ, WINEPREFIX=prefix), check=False)
