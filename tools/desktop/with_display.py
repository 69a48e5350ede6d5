"""Runs a command with a display in memory: with_display.py COMMAND [ARGUMENT...]. The exit code is the command's."""

import os
import subprocess
import sys

from desktop import Desktop

if __name__ == "__main__":
    with Desktop() as desktop:
        sys.exit(subprocess.call(sys.argv[1:], env=dict(os.environ, DISPLAY=desktop.name)))
