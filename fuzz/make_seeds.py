#!/usr/bin/env python3
"""Writes the committed seed inputs of the fuzz targets (fuzz/seeds/<target>/): small texts made by the
cross-check generators with a fixed seed, plus the project's own examples. Run it again after changing a
generator; the output is the same on every machine.

Usage: fuzz/make_seeds.py [--count N]
"""

import argparse
import hashlib
import os
import random
import shutil
import sys

kFuzz = os.path.dirname(os.path.abspath(__file__))
kRepo = os.path.dirname(kFuzz)
sys.path.insert(0, os.path.join(kRepo, "tools", "crosscheck"))
import compare_format  # noqa: E402
import compare_highlight  # noqa: E402
import compare_lint  # noqa: E402

kMaxSeedBytes = 4096


def Write(folder, data):
    data = data[:kMaxSeedBytes]
    name = hashlib.sha1(data).hexdigest()[:16]
    with open(os.path.join(folder, name), "wb") as f:
        f.write(data)


def Examples(*extensions):
    folder = os.path.join(kRepo, "examples")
    return [os.path.join(folder, n) for n in sorted(os.listdir(folder)) if n.endswith(extensions)]


def Main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--count", type=int, default=40, help="generated seeds per target")
    args = parser.parse_args()
    rng = random.Random(2026)
    makers = {
        "format": lambda: compare_format.RandomText(rng) if rng.random() < 0.5 else compare_format.FocusedText(rng),
        "lint": lambda: compare_lint.GeneratedModule(rng) if rng.random() < 0.5 else
        compare_lint.GeneratedRandomModule(rng),
        "highlight": lambda: compare_highlight.RandomText(rng),
    }
    examples = {"format": Examples(".v"), "lint": Examples(".v"), "highlight": Examples(".xdc")}
    for target, make in makers.items():
        folder = os.path.join(kFuzz, "seeds", target)
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(folder)
        for path in examples[target]:
            with open(path, "rb") as f:
                Write(folder, f.read())
        for _ in range(args.count):
            Write(folder, make())
    # The language-server target reads its bytes as a session script: any text will do as a start.
    folder = os.path.join(kFuzz, "seeds", "lsp")
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    for _ in range(args.count // 2):
        Write(folder, bytes(rng.randrange(256) for _ in range(rng.randrange(8, 64))) + makers["lint"]())
        Write(folder, bytes(rng.randrange(256) for _ in range(rng.randrange(8, 64))) + makers["highlight"]())


if __name__ == "__main__":
    Main()
