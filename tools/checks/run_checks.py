"""Runs the checks of the tree, each after a proof that it can fail.

    run_checks.py [--results FILE] [NAME...]

Every check is a module with NAME, ADVICE (what to do about a finding), Problems(root, paths) and two little trees:
BAD, in which it must find exactly BAD_COUNT problems, and GOOD, in which it must find none.
"""

import argparse
import sys
import tempfile
import time
from pathlib import Path

import formatting
import generated
import headers
import layers
import outcomes
import platform_code
import sizes
import tidy
import tree
import wording

CHECKS = [layers, platform_code, headers, formatting, sizes, wording, generated, tidy]
SHOWN = 20


def ProblemsOf(check, files):
    """What the check finds in a tree made of {path: text}."""
    with tempfile.TemporaryDirectory() as folder:
        for path, text in files.items():
            place = Path(folder, path)
            place.parent.mkdir(parents=True, exist_ok=True)
            place.write_text(text, encoding="utf-8")
        return check.Problems(folder, sorted(files))


def SelfTest(check):
    """Empty when the check tells good from bad, else what went wrong."""
    bad = ProblemsOf(check, check.BAD)
    if len(bad) != check.BAD_COUNT:
        return f"found {len(bad)} instead of {check.BAD_COUNT} problems in its bad example: {bad}"
    good = ProblemsOf(check, check.GOOD)
    return f"found problems in its good example: {good}" if good else ""


def Run(check, root, paths):
    """(passed|failed|skipped, reason) of one check; prints what it found."""
    wrong = SelfTest(check)
    if wrong:
        print(f"   The check \"{check.NAME}\" does not work: it {wrong}")
        return "failed", "self test"
    try:
        problems = check.Problems(root, paths)
    except tidy.Skip as reason:
        return "skipped", str(reason)
    for problem in problems[:SHOWN]:
        print(f"   {problem}")
    if len(problems) > SHOWN:
        print(f"   and {len(problems) - SHOWN} more")
    if problems:
        print(f"   -> {check.ADVICE}")
        return "failed", f"{len(problems)} problems"
    return "passed", ""


def Main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--results", help="file to append the outcomes to")
    parser.add_argument("names", nargs="*", metavar="NAME", help="module names; all checks without any")
    arguments = parser.parse_args()
    root = Path(__file__).resolve().parents[2]
    paths = tree.Files(root)
    failed = False
    for check in CHECKS:
        if arguments.names and check.__name__ not in arguments.names:
            continue
        start = time.monotonic()
        outcome, reason = Run(check, root, paths)
        failed = failed or outcome == "failed"
        outcomes.Report(arguments.results, outcome, f"check {check.NAME}", time.monotonic() - start, reason)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(Main())
