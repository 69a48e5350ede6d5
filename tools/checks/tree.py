"""The files that the checks look at, and what they share in reading them."""

import re
import subprocess
from pathlib import Path

CODE = (".cpp", ".h")
# Folders with code that a platform may own: a folder of one of these names, anywhere.
SEAM_FOLDERS = {"win32", "posix", "x11"}


def Files(root):
    """All files of the project below root, as paths relative to it: what git tracks and what it would track."""
    listed = subprocess.run(["git", "-C", str(root), "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
                            capture_output=True, check=False)
    if listed.returncode == 0:
        names = [name for name in listed.stdout.decode().split("\0") if name]
    else:
        names = [str(path.relative_to(root)) for path in Path(root).rglob("*")]
        names = [name for name in names if not name.startswith(("build/", ".git/"))]
    return sorted({name for name in names if (Path(root) / name).is_file()})


def Code(paths):
    return [path for path in paths if path.endswith(CODE)]


def Read(root, path):
    return (Path(root) / path).read_text(encoding="utf-8", errors="replace")


def IsSeam(path):
    return bool(SEAM_FOLDERS & set(Path(path).parts[:-1]))


def Layers(root):
    """The layers, lowest first, as the build has them."""
    found = re.search(r"^set\(VARNOLITE_LAYERS (.*)\)$", Read(root, "CMakeLists.txt"), re.MULTILINE)
    if not found:
        raise RuntimeError("CMakeLists.txt sets no VARNOLITE_LAYERS")
    return found.group(1).split()


def Includes(text):
    """(line number, quoted?, name) of every #include."""
    for number, line in enumerate(text.split("\n"), 1):
        found = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
        if found:
            yield number, found.group(1) == '"', found.group(2)
