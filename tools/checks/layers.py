"""A folder includes only itself and the folders below it in the order of the layers."""

from pathlib import Path

import tree

NAME = "layers"
ADVICE = ("Move what is shared down to the lowest layer that needs it, or hand it in from above through an interface; "
          "the order stands in CMakeLists.txt.")
BAD = {
    "CMakeLists.txt": "set(VARNOLITE_LAYERS foundation data app)\n",
    "data/Up.cpp": '#include "app/Main.h"\n',
    "app/Main.h": "",
    "tests/data/UpTest.cpp": '#include "app/Main.h"\n',
    "data/Relative.h": '#include "Other.h"\n',
    "data/Other.h": "",
}
BAD_COUNT = 3
GOOD = {
    "CMakeLists.txt": "set(VARNOLITE_LAYERS foundation data app)\n",
    "foundation/Base.h": "#include <vector>\n",
    "data/Image.h": '#include "foundation/Base.h"\n',
    "tests/program/WholeTest.cpp": '#include "data/Image.h"\n#include "tests/support/Files.h"\n',
    "tests/support/Files.h": "",
    "tools/Loading.h": "",
    "bench/LoadBench.cpp": '#include "tools/Loading.h"\n',
}


def Allowed(layers, path):
    """The top folders that the file may include from, or None for a file that no rule binds."""
    parts = Path(path).parts
    if parts[0] in layers:
        return set(layers[:layers.index(parts[0]) + 1])
    if parts[0] == "tests" and len(parts) > 2 and parts[1] in layers:
        return set(layers[:layers.index(parts[1]) + 1]) | {"tests"}
    if parts[0] in ("tests", "tools", "fuzz", "bench"):
        # What the developers' programs share serves the benchmarks too.
        return set(layers) | {parts[0]} | ({"tools"} if parts[0] == "bench" else set())
    return None


def Problems(root, paths):
    layers = tree.Layers(root)
    known = set(paths)
    problems = []
    for path in tree.Code(paths):
        allowed = Allowed(layers, path)
        if allowed is None:
            problems.append(f"{path}: code outside the layers, tests, tools, fuzz and bench")
            continue
        for number, quoted, name in tree.Includes(tree.Read(root, path)):
            if not quoted:
                continue
            if name not in known:
                problems.append(f"{path}:{number}: \"{name}\" is no path from the root of the project")
            elif Path(name).parts[0] not in allowed:
                problems.append(f"{path}:{number}: may not include \"{name}\"")
    return problems
