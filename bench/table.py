#!/usr/bin/env python3
"""Turns the results of the benchmarks into ratios: the peer's median time over ours, so that more is faster.

    bench/table.py RESULTS.json
"""

import json
import statistics
import sys

PEERS = {"Area, BGRA8": "OpenCV", "Area, grey 16": "OpenCV", "Cubic": "OpenCV", "Linear": "OpenCV", "Nearest": "pixman",
         "Scroll by 3 columns": "memcpy", "JPG 4:2:0": "libjpeg-turbo", "JPG 4:2:0, restarts": "libjpeg-turbo",
         "JPG 4:4:4": "libjpeg-turbo", "JPG progressive": "libjpeg-turbo", "JPG grey": "libjpeg-turbo",
         "GIF photograph": "giflib", "GIF photograph, interlaced": "giflib", "GIF drawing": "giflib",
         "PNG RGB 8 bit": "libpng", "PNG RGB 16 bit": "libpng",
         "TIF RGB16 LZW": "libtiff", "TIF RGB16 LZW, predictor": "libtiff", "TIF float32": "memcpy",
         "TIF JPEG tiles": "libtiff"}

STAGES = ("codes", "transform", "color")


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        runs = [run for run in json.load(file)["benchmarks"] if run["run_type"] == "iteration"]
    speeds, stages = {}, {}
    for run in runs:
        work, side = run["name"].removesuffix("/real_time").split("/")[:2]
        if side == "stages":
            stages.setdefault(work, []).append(run)
            continue
        speeds.setdefault(work, {}).setdefault(side, []).append(run["items_per_second"] / 1e6)
    for work in speeds:
        peer = PEERS[work]
        ours, theirs = (statistics.median(speeds[work][side]) for side in ("us", "peer"))
        print(f"{work:20} {ours:7.0f} MP/s   {peer} {theirs:7.0f} MP/s   {ours / theirs:.2f} x its speed")
    for work, runs in stages.items():
        cycles = {stage: statistics.median(run[stage] for run in runs) for stage in STAGES}
        print(f"{work:20} cycles per pixel on one thread: " +
              ", ".join(f"{stage} {cycles[stage]:.2f}" for stage in STAGES))


if __name__ == "__main__":
    main()
