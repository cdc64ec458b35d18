#!/usr/bin/env python3
"""Counts `quill lint` findings per check on a folder in the three readings the docs compare.

Usage: corpus_table.py [--quill build/dev/cli/quill] [FOLDER]

Runs `quill lint --isolated --no-ignore --format=json FOLDER` three times: with `--exact` (the
library's report, one call per file), with every filter turned off (`--no-filter` for each; unit by
unit, `ifdef evaluated) and as it is by default, and prints a Markdown table of findings per check
with a total row that also counts the files with findings.
"""

import argparse
import collections
import json
import os
import re
import subprocess
import sys


def Findings(quill, folder, extra):
    run = subprocess.run([quill, "lint", "--isolated", "--no-ignore", "--format=json", *extra, folder],
                         capture_output=True)
    if run.returncode not in (0, 1):
        sys.exit("quill lint failed: " + run.stderr.decode(errors="replace"))
    return json.loads(run.stdout)


def FilterNames(quill):
    help_text = subprocess.run([quill, "lint", "--help"], capture_output=True, text=True).stdout
    match = re.search(r"Turn off one lint filter \(([^)]*)\)", help_text)
    if not match:
        sys.exit("no filter names in quill lint --help")
    return [name.strip() for name in match.group(1).split(",")]


def main():
    parser = argparse.ArgumentParser()
    here = os.path.dirname(os.path.abspath(__file__))
    parser.add_argument("--quill", default=os.path.join(here, "..", "..", "build", "dev", "cli", "quill"))
    parser.add_argument("folder", nargs="?", default=os.path.join(here, "..", "..", "..", "shared", "corpus"))
    args = parser.parse_args()
    no_filters = [word for name in FilterNames(args.quill) for word in ("--no-filter", name)]
    columns = [Findings(args.quill, args.folder, ["--exact"]),
               Findings(args.quill, args.folder, no_filters),
               Findings(args.quill, args.folder, [])]
    counts = [collections.Counter(finding["check"] for finding in column) for column in columns]
    checks = sorted(set().union(*counts), key=lambda check: (-counts[0][check], check))
    print("| check | `--exact` | unit by unit, `ifdef evaluated, no filter | default (all filters) |")
    print("|---|---|---|---|")
    for check in checks:
        print("| %s | %s |" % (check, " | ".join("{:,}".format(count[check]) for count in counts)))
    totals = ["**{:,}** ({:,} files)".format(len(column), len({finding["path"] for finding in column}))
              for column in columns]
    print("| **total** | %s |" % " | ".join(totals))


if __name__ == "__main__":
    main()
