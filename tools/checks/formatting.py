"""The code stands as clang-format writes it."""

import re
import subprocess

import tree

NAME = "clang-format"
ADVICE = "Run: git ls-files '*.h' '*.cpp' | xargs clang-format -i (version 14)."
BAD = {".clang-format": "BasedOnStyle: LLVM\n", "data/A.cpp": "int  f( ){return 1;}\n"}
BAD_COUNT = 1
GOOD = {".clang-format": "BasedOnStyle: LLVM\n", "data/A.cpp": "int f() { return 1; }\n"}


def Problems(root, paths):
    code = tree.Code(paths)
    if not code:
        return []
    result = subprocess.run(["clang-format", "--dry-run", "--Werror", "--ferror-limit=1", *code], cwd=root,
                            capture_output=True, text=True, check=False)
    if result.returncode == 0:
        return []
    places = re.findall(r"^(\S+?:\d+):\d+: error", result.stderr, re.MULTILINE)
    return [f"{place}: not formatted" for place in places] or [result.stderr.strip()[:300]]
