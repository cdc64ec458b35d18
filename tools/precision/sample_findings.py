#!/usr/bin/env python3
"""Draws a reproducible sample of `quill lint` findings on a folder, for judging by hand.

Usage: sample_findings.py [--quill build/dev/cli/quill] [--seed N] [--count N] [--exclude TEXT] [FOLDER]

Runs `quill lint --isolated --no-ignore --format=json FOLDER` (all filters on, no quill.toml), sorts
the findings by path, line, check and message, and prints COUNT of them drawn with random.Random(SEED),
each with three lines of context around it. With --exclude, findings whose path holds TEXT are left
out before the draw (for a draw over hand-written files only).
"""

import argparse
import json
import os
import random
import subprocess
import sys


def main():
    parser = argparse.ArgumentParser()
    here = os.path.dirname(os.path.abspath(__file__))
    parser.add_argument("--quill", default=os.path.join(here, "..", "..", "build", "dev", "cli", "quill"))
    parser.add_argument("--seed", type=int, default=2026)
    parser.add_argument("--count", type=int, default=20)
    parser.add_argument("--exclude", action="append", default=[])
    parser.add_argument("folder", nargs="?", default=os.path.join(here, "..", "..", "..", "shared", "corpus"))
    args = parser.parse_args()
    run = subprocess.run([args.quill, "lint", "--isolated", "--no-ignore", "--format=json", args.folder],
                         capture_output=True)
    if run.returncode not in (0, 1):
        sys.exit("quill lint failed: " + run.stderr.decode(errors="replace"))
    findings = [finding for finding in json.loads(run.stdout)
                if not any(text in finding["path"] for text in args.exclude)]
    findings.sort(key=lambda f: (f["path"], f["line"], f["check"], f["message"]))
    sample = random.Random(args.seed).sample(findings, min(args.count, len(findings)))
    print("%d findings, seed %d, %d drawn" % (len(findings), args.seed, len(sample)))
    for index, finding in enumerate(sample, 1):
        print("\n%d. %s:%d [%s] %s" % (index, os.path.relpath(finding["path"], args.folder), finding["line"],
                                       finding["check"], finding["message"]))
        with open(finding["path"], encoding="utf-8", errors="replace") as source:
            lines = source.read().split("\n")
        line = finding["line"] - 1
        for number in range(max(0, line - 3), min(len(lines), line + 4)):
            print("   %s%5d | %s" % (">" if number == line else " ", number + 1, lines[number]))


if __name__ == "__main__":
    main()
