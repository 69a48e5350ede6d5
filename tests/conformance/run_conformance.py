#!/usr/bin/env python3
"""Decodes the valid pictures of the shared corpus and compares what comes of each with checksums.tsv.

    run_conformance.py [--results FILE] [--update]

A line there says what a picture is to be: its path in the corpus, the one-based image, the number of images, the sample
type, the size, whether it is incomplete, and the CRC-32 of its visible rows; or the text with which the file is refused.
The decoders' own tests compare pixels with other libraries; this list shows whenever any of them changes. --update
writes it anew, for a change that was meant: look at the difference before it is committed.
"""

import argparse
import os
import subprocess
import sys
import tempfile
import time
import zlib
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools" / "checks"))

import outcomes  # noqa: E402

PROGRAM = ROOT / "build" / "release" / "decode"
LIST = Path(__file__).with_name("checksums.tsv")
LARGEST_IMAGE_COUNT = 8  # Of a file with more, the first ones and the last.


def ValidFiles(corpus):
    with open(corpus / "INDEX.tsv", encoding="utf-8") as index:
        rows = [line.rstrip("\n").split("\t") for line in index]
    return sorted(row[0] for row in rows[1:] if row[2] == "valid")


def Decode(path, image, raw):
    """(number of images, what the list says of this one)"""
    result = subprocess.run([str(PROGRAM), str(path), "--image", str(image), "--raw", raw], capture_output=True, text=True,
                            stdin=subprocess.DEVNULL, check=False, timeout=300)
    if result.returncode == 1:
        return 0, ["refused", result.stderr.strip().removeprefix("decode: ")]
    if result.returncode != 0:
        return 0, ["crashed", f"exit code {result.returncode}"]
    fields = dict(field.split("=", 1) for field in result.stdout.split())
    state = "incomplete" if fields["incomplete"] == "1" else "complete"
    crc = zlib.crc32(Path(raw).read_bytes())
    return int(fields["count"]), [fields["count"], fields["type"], f"{fields['width']}x{fields['height']}", state,
                                  f"{crc:08x}"]


def Images(path, raw):
    """The list's lines of a file, without its path."""
    count, first = Decode(path, 1, raw)
    numbers = range(2, count + 1) if count <= LARGEST_IMAGE_COUNT else [*range(2, LARGEST_IMAGE_COUNT), count]
    return [["1", *first], *([str(number), *Decode(path, number, raw)[1]] for number in numbers)]


def ReadList():
    lines = {}
    for line in LIST.read_text(encoding="utf-8").splitlines():
        path, *rest = line.split("\t")
        lines.setdefault(path, []).append(rest)
    return lines


def Reason(has, wants):
    return "" if has == wants else f"has {has}, wants {wants}"[:400]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--results")
    parser.add_argument("--update", action="store_true")
    arguments = parser.parse_args()
    corpus = Path(os.environ.get("VARNOLITE_CORPUS") or "none")
    if not (corpus / "INDEX.tsv").exists():
        outcomes.Report(arguments.results, "skipped", "conformance", 0.0,
                        "VARNOLITE_CORPUS names no folder with the shared pictures")
        return 0
    wanted = {} if arguments.update else ReadList()
    lines, failures = [], 0
    with tempfile.TemporaryDirectory() as folder:
        for path in ValidFiles(corpus):
            start = time.monotonic()
            images = Images(corpus / path, str(Path(folder, "raw")))
            lines += ["\t".join([path, *image]) for image in images]
            if not arguments.update:
                reason = Reason(images, wanted.pop(path, None))
                failures += reason != ""
                outcomes.Report(arguments.results, "failed" if reason else "passed", f"conformance {path}",
                                time.monotonic() - start, reason)
    if arguments.update:
        LIST.write_text("\n".join(lines) + "\n", encoding="utf-8")
    for path in wanted:
        failures += 1
        outcomes.Report(arguments.results, "failed", f"conformance {path}", 0.0, "not in the corpus")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
