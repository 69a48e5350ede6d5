"""Every header compiles alone, and twice."""

import concurrent.futures
import os
import re
import shutil
import subprocess
from pathlib import Path

import tree

NAME = "headers alone"
ADVICE = "Include in the header what its declarations need, and begin it with #pragma once."
BAD = {"data/Needs.h": "#pragma once\nstd::vector<int> Numbers();\n", "data/Twice.h": "struct Twice {};\n"}
BAD_COUNT = 2
GOOD = {"data/Whole.h": "#pragma once\n#include <vector>\nstd::vector<int> Numbers();\n"}

WINDOWS_COMPILER = "x86_64-w64-mingw32-g++-posix"
# GoogleTest for Windows comes from the packaged sources, as in the build.
WINDOWS_FLAGS = ["-DNOMINMAX", "-DWIN32_LEAN_AND_MEAN", "-D_WIN32_WINNT=0x0A00",
                 "-isystem", "/usr/src/googletest/googletest/include",
                 "-isystem", "/usr/src/googletest/googlemock/include"]


def Command(root, path, source):
    """The command that compiles the source, which names the header twice; None where its compiler is missing."""
    compiler, extra = "g++", ["-I/usr/include/freetype2"]
    if "win32" in Path(path).parts:
        compiler, extra = WINDOWS_COMPILER, WINDOWS_FLAGS
    if not shutil.which(compiler):
        return None
    # An object that nobody uses lets ccache remember the answer, which it does not do for a mere look at the syntax.
    cached = ["ccache"] if shutil.which("ccache") else []
    return [*cached, compiler, "-std=c++20", "-O0", "-Wall", "-Wextra", "-Werror", f"-I{root}", *extra, "-c", source,
            "-o", source + ".o"]


def Compile(root, path, folder):
    source = os.path.join(folder, path.replace("/", "_") + ".cpp")
    command = Command(root, path, source)
    if command is None:
        return f"{path}: no compiler for it"
    Path(source).write_text(f'#include "{path}"\n' * 2, encoding="utf-8")
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    if result.returncode == 0:
        return None
    errors = [line for line in result.stderr.split("\n") if re.search(r"error", line)]
    return f"{path}: {errors[0] if errors else result.stderr.strip()[:200]}"


def Problems(root, paths):
    headers = [path for path in paths if path.endswith(".h")]
    # The name of the folder is part of what ccache compares.
    folder = Path(root, "build", "checks", "headers")
    folder.mkdir(parents=True, exist_ok=True)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return [problem for problem in pool.map(lambda path: Compile(root, path, str(folder)), headers) if problem]
