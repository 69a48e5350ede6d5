"""clang-tidy has nothing to say about the sources changed since the common base (see .clang-tidy)."""

import concurrent.futures
import os
import re
import subprocess
import tempfile
from pathlib import Path

import tree

NAME = "clang-tidy"
ADVICE = "Change the code as the message says; .clang-tidy tells why each rule is there."
BAD = {".clang-tidy": "Checks: '-*,bugprone-use-after-move'\n",
       "data/Moved.cpp": "#include <string>\n#include <utility>\nstd::string F(std::string a) {\n"
                         "    std::string b = std::move(a);\n    return a + b;\n}\n"}
BAD_COUNT = 1
GOOD = {".clang-tidy": BAD[".clang-tidy"], "data/Good.cpp": "int F() {\n    return 1;\n}\n"}

# Ten seconds a file on two processors: beyond this the check would cost more than the build.
MOST_FILES = 40


class Skip(Exception):
    """The check can't say anything here; the text says why."""


def Git(root, *arguments):
    result = subprocess.run(["git", "-C", str(root), *arguments], capture_output=True, text=True, check=False)
    return result.stdout.strip() if result.returncode == 0 else ""


def Base(root):
    """VARNOLITE_BASE, else where this branch left the published one."""
    if os.environ.get("VARNOLITE_BASE"):
        return os.environ["VARNOLITE_BASE"]
    head = Git(root, "rev-parse", "HEAD")
    for published in ("origin/main", "main"):
        base = Git(root, "merge-base", "HEAD", published)
        if base and (base != head or Git(root, "status", "--porcelain")):
            return base
    raise Skip("nothing to compare with; name a commit in VARNOLITE_BASE to have the files since then looked at")


def Changed(root):
    names = Git(root, "diff", "--name-only", Base(root)).split("\n")
    names += Git(root, "ls-files", "--others", "--exclude-standard").split("\n")
    return {name for name in names if name.endswith(".cpp")}


def Tidy(root, path, database):
    options = [f"-p={database}"] if database else []
    tail = [] if database else ["--", "-std=c++20", f"-I{root}"]
    result = subprocess.run(["clang-tidy", "--quiet", "--warnings-as-errors=*", *options, path, *tail], cwd=root,
                            capture_output=True, text=True, check=False)
    text = result.stdout + result.stderr
    return [f"{Path(place).relative_to(root) if Path(place).is_absolute() else place}:{rest}"
            for place, rest in re.findall(r"^([^\s:]+):(\d+:\d+: (?:error|warning): .*)$", text, re.MULTILINE)
            if Path(root) in Path(root, place).resolve().parents]


def Problems(root, paths):
    root = Path(root).resolve()
    isProject = (root / "CMakePresets.json").exists()
    sources = [path for path in paths if path.endswith(".cpp") and "win32" not in Path(path).parts]
    if isProject:
        changed = Changed(root)
        sources = [path for path in sources if path in changed]
        left = sources[MOST_FILES:]
        sources = sources[:MOST_FILES]
        if left:
            print(f"   clang-tidy: {len(left)} more changed files not looked at")
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        database = Database(root, folder) if isProject and sources else None
        found = pool.map(lambda path: Tidy(root, path, database), sources)
        return sorted({problem for problems in found for problem in problems})


def Database(root, folder):
    """A compilation database of the native build, made in a folder of its own: nothing has to be built for it."""
    configured = subprocess.run(["cmake", "--preset", "release", "-B", folder, "-DVARNOLITE_DEVELOPER=ON",
                                 "-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_CXX_COMPILER_LAUNCHER="],
                                cwd=root, capture_output=True, text=True, check=False)
    if configured.returncode != 0:
        raise Skip("the native build could not be configured")
    return folder
