#!/usr/bin/env python3
"""A bitmap of 24 bits and 24 MP, from the file's name to the finished image, beside Pillow in the same run.

    bench/bmp_against_pillow.py LOAD_BENCH [--runs N]

Needs Pillow. The file lies in the system's cache. The two take turns, and the medians are compared.
"""

import argparse
import os
import statistics
import subprocess
import tempfile
import time

from PIL import Image

WIDTH, HEIGHT = 6000, 4000


def WithPillow(path):
    start = time.perf_counter()
    with Image.open(path) as image:
        image.load()
    return (time.perf_counter() - start) * 1000


def WithOurs(program, path):
    # The first run of a process also loads its code.
    runs = subprocess.run([program, path, "2"], check=True, capture_output=True, text=True).stdout.split()
    return float(runs[-1])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=15)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "picture.bmp")
        Image.frombytes("RGB", (WIDTH, HEIGHT), os.urandom(3 * WIDTH) * HEIGHT).save(path)
        WithPillow(path)
        ours, theirs = [], []
        for _ in range(options.runs):
            ours.append(WithOurs(os.path.abspath(options.program), path))
            theirs.append(WithPillow(path))
    ours, theirs = (WIDTH * HEIGHT / 1000 / statistics.median(times) for times in (ours, theirs))
    print(f"{'BMP 24 bit to image':20} {ours:7.0f} MP/s   Pillow {theirs:7.0f} MP/s   {ours / theirs:.2f} x its speed")


if __name__ == "__main__":
    main()
