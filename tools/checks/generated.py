"""Files that a script of the project writes are what the script writes, byte for byte."""

import subprocess
import sys
import tempfile
from pathlib import Path

NAME = "generated files"
ADVICE = "Change the script, not its result; then run the script without arguments and commit both."
# A script writes beside itself, or into the folder given by --out.
SCRIPTS = ["samples/make_samples.py", "resources/make_icon.py"]

_writer = ("import sys\nfrom pathlib import Path\n"
           "Path(sys.argv[2], 'a.bmp').write_bytes(b'BM')\nPath(sys.argv[2], 'b.bmp').write_bytes(b'BM')\n")
BAD = {"samples/make_samples.py": _writer, "samples/a.bmp": "BX", "samples/left.bmp": "BM"}
BAD_COUNT = 3
GOOD = {"samples/make_samples.py": _writer, "samples/a.bmp": "BM", "samples/b.bmp": "BM"}


def Problems(root, paths):
    problems = []
    for script in SCRIPTS:
        if script not in paths:
            continue
        folder = Path(root, script).parent
        with tempfile.TemporaryDirectory() as out:
            subprocess.run([sys.executable, str(Path(root, script)), "--out", out], check=True, capture_output=True)
            written = {str(path.relative_to(out)): path.read_bytes() for path in Path(out).rglob("*") if path.is_file()}
        kinds = {Path(name).suffix for name in written}
        for name, data in written.items():
            here = folder / name
            if not here.exists():
                problems.append(f"{folder.name}/{name}: missing; {script} writes it")
            elif here.read_bytes() != data:
                problems.append(f"{folder.name}/{name}: differs from what {script} writes")
        for path in paths:
            if Path(path).parent == Path(script).parent and Path(path).suffix in kinds and Path(path).name not in written:
                problems.append(f"{path}: {script} does not write it")
    return problems
