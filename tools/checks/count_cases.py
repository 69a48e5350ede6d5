"""Turns the JSON report of one GoogleTest program into lines "passed|failed|skipped<TAB>name<TAB>reason".

    count_cases.py NAME REPORT.json EXITCODE

A program that crashed leaves no report, and one that ran nothing has tested nothing: both count as a failure.
"""

import json
import sys


def Lines(name, report, exitCode):
    """The lines for a report (the parsed JSON, or None when the program left none)."""
    if report is None:
        return [("failed", name, f"ended with exit code {exitCode} without a report")]
    lines = []
    for suite in report.get("testsuites", []):
        for case in suite.get("testsuite", []):
            label = f"{name} {suite['name']}.{case['name']}"
            if case.get("failures"):
                lines.append(("failed", label, FirstLine(case["failures"][0].get("failure", ""))))
            elif case.get("result") == "SKIPPED":
                lines.append(("skipped", label, FirstLine(case.get("skipped", [{}])[0].get("message", ""))))
            elif case.get("status") == "RUN":
                lines.append(("passed", label, ""))
            else:
                lines.append(("skipped", label, "disabled"))
    if not lines:
        lines.append(("failed", name, "no test ran"))
    if exitCode != 0 and all(line[0] != "failed" for line in lines):
        lines.append(("failed", name, f"ended with exit code {exitCode} after its tests"))
    return lines


def FirstLine(text):
    # GoogleTest puts "file:line" first and the message after it.
    return " ".join(text.split("\n")[:4]).replace("\t", " ").strip()[:300]


def Main(name, path, exitCode):
    try:
        with open(path, encoding="utf-8") as file:
            report = json.load(file)
    except (OSError, ValueError):
        report = None
    for line in Lines(name, report, int(exitCode)):
        print("\t".join(line))


if __name__ == "__main__":
    Main(*sys.argv[1:])
