"""Makes the Wine folder that WINEPREFIX names, with a display in memory: prepare_wine.py."""

import os

from desktop import Desktop, PrepareWine

if __name__ == "__main__":
    with Desktop() as desktop:
        os.environ["DISPLAY"] = desktop.name
        PrepareWine(os.environ["WINEPREFIX"])
