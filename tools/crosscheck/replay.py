#!/usr/bin/env python3
"""Differential replay: runs inputs through the built library and through the Python models of the
formatter, linter and highlighter, and fails on any disagreement, naming the input and the first
difference (shrunk to a small input when time allows).

What it replays, per service:
  - the regression inputs kept in fuzz/regressions/<service>/ (one the model cannot answer within
    --input-seconds fails the replay; any other such input is listed as not compared);
  - every file of each --fuzz-corpus folder (libFuzzer corpus folders; the service comes from the folder
    name: corpus-format, corpus-lint, corpus-highlight, or a folder named after the service);
  - the corpus files (read-only) or, when the corpus is absent, fuzz/seeds/<service>/, each with
    --mutations seeded mutations;
  - --generated texts made from the words each service knows.

Usage:
  replay.py [--lib build/dev/core_engine/libquill.so] [--service NAME ...] [--fuzz-corpus DIR ...]
            [--corpus DIR | --no-corpus] [--mutations N] [--generated N] [--seed S] [--max-bytes N]
            [--shrink-seconds S] [--keep DIR] [--sample]

--sample is the short run of the unit suite: regressions, the seeds with mutations and a few hundred
generated inputs, no corpus. --keep writes each shrunk disagreement to DIR/<service>/ so it can become a
regression input.
"""

import argparse
import os
import random
import signal
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import compare_format  # noqa: E402
import compare_highlight  # noqa: E402
import compare_lint  # noqa: E402
import harness  # noqa: E402

kServices = ("format", "lint", "highlight")
kFuzzFolder = os.path.join(harness.kRepo, "fuzz")


def Mutate(service, data, rng):
    if not data:
        return data
    if service == "format":
        return compare_format.Mutations(data, rng)[1]
    if service == "lint":
        return compare_lint.Mutate(data, rng)
    return compare_highlight.Mutate(data, rng)[1]


def Generate(service, rng):
    if service == "format":
        return compare_format.RandomText(rng) if rng.random() < 0.5 else compare_format.FocusedText(rng)
    if service == "lint":
        return compare_lint.GeneratedRandomModule(rng) if rng.random() < 0.5 else compare_lint.TokenSoup(rng)
    return compare_highlight.RandomText(rng)


class ModelTooSlow(Exception):
    pass


def RaiseModelTooSlow(*_):
    raise ModelTooSlow()


def FolderFiles(folder):
    if not os.path.isdir(folder):
        return []
    return sorted(os.path.join(folder, name) for name in os.listdir(folder)
                  if os.path.isfile(os.path.join(folder, name)) and not name.startswith("."))


def ServiceOfFolder(folder):
    name = os.path.basename(os.path.normpath(folder))
    for service in kServices:
        if name in (service, "corpus-" + service, "seeds-" + service):
            return service
    return None


class Replay:

    def __init__(self, engine, args):
        self.args = args
        self.logs = {service: harness.DivergenceLog(engine, harness.SERVICES[service], maxReports=20,
                                                    shrinkSeconds=args.shrink_seconds, maxBytePieces=4000)
                     for service in args.service}
        self.skipped = 0
        self.slow = []
        self.slowRegressions = 0

    def Check(self, service, label, data, regression=False):
        if len(data) > self.args.max_bytes:
            self.skipped += 1
            return
        log = self.logs[service]
        # Some regular expressions of the Python models backtrack for seconds on
        # long runs of odd blanks; such an input is listed, not compared.
        signal.signal(signal.SIGALRM, RaiseModelTooSlow)
        signal.alarm(self.args.input_seconds)
        try:
            agree = log.service.Signature(log.engine, data) is None
        except ModelTooSlow:
            self.slow.append((service, label, len(data)))
            # A kept regression input is there to be compared; one the model
            # cannot answer in time fails the replay.
            self.slowRegressions += regression
            return
        finally:
            signal.alarm(0)
        if agree:
            log.compared += 1
            return
        reports = len(log.reports)
        log.Check(label, data)
        if self.args.keep and len(log.reports) > reports:
            folder = os.path.join(self.args.keep, service)
            os.makedirs(folder, exist_ok=True)
            with open(os.path.join(folder, "divergence_%02d" % len(log.reports)), "wb") as f:
                f.write(log.reports[-1][1])

    def Files(self, service, paths, mutations, rng, regression=False):
        for path in paths:
            try:
                data = harness.ReadFile(path)
            except FileNotFoundError:
                continue  # a running fuzzer replaced it with a smaller input
            self.Check(service, path, data, regression)
            for k in range(mutations):
                self.Check(service, "%s (mutation %d, seed %d)" % (path, k, self.args.seed), Mutate(service, data, rng))


def Main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--lib", default=harness.kDefaultLibrary)
    parser.add_argument("--service", action="append", choices=kServices)
    parser.add_argument("--fuzz-corpus", action="append", default=[], help="libFuzzer corpus folder")
    parser.add_argument("--corpus", default=harness.kDefaultCorpus)
    parser.add_argument("--no-corpus", action="store_true", help="mutate the committed seeds, not the corpus")
    parser.add_argument("--mutations", type=int, default=2, help="seeded mutations per corpus or seed file")
    parser.add_argument("--generated", type=int, default=500, help="generated texts per service")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--max-bytes", type=int, default=256 * 1024, help="longer inputs are skipped")
    parser.add_argument("--shrink-seconds", type=float, default=20.0)
    parser.add_argument("--input-seconds", type=int, default=5, help="model time allowed per input")
    parser.add_argument("--keep", default="", help="write shrunk disagreements to KEEP/<service>/")
    parser.add_argument("--sample", action="store_true", help="the short run of the unit suite")
    args = parser.parse_args()
    args.service = args.service or list(kServices)
    if args.sample:
        args.no_corpus = True
        args.mutations = min(args.mutations, 2)
        args.generated = min(args.generated, 300)
        args.shrink_seconds = min(args.shrink_seconds, 5.0)

    start = time.time()
    rng = random.Random(args.seed)
    replay = Replay(harness.Engine(args.lib), args)
    fuzzFolders = {}
    for folder in args.fuzz_corpus:
        service = ServiceOfFolder(folder)
        if service is None:
            print("replay: %s: cannot tell the service from the folder name (want corpus-format, "
                  "corpus-lint or corpus-highlight)" % folder, file=sys.stderr)
            return 2
        if not os.path.isdir(folder):
            print("replay: %s: no such folder" % folder, file=sys.stderr)
            return 2
        fuzzFolders.setdefault(service, []).append(folder)

    for service in args.service:
        replay.Files(service, FolderFiles(os.path.join(kFuzzFolder, "regressions", service)), 0, rng, regression=True)
        for folder in fuzzFolders.get(service, []):
            replay.Files(service, FolderFiles(folder), 0, rng)
        corpus = [] if args.no_corpus else harness.CorpusFiles(args.corpus, harness.SERVICES[service].extensions)
        sources = corpus or FolderFiles(os.path.join(kFuzzFolder, "seeds", service))
        replay.Files(service, sources, args.mutations, rng)
        for k in range(args.generated):
            replay.Check(service, "generated %s %d (seed %d)" % (service, k, args.seed), Generate(service, rng))

    failed = False
    for service in args.service:
        log = replay.logs[service]
        failed = failed or log.divergent > 0
        print("replay %s: %d inputs, %d disagreements, %d distinct" %
              (service, log.compared, log.divergent, len(log.signatures)))
        for signature, label in log.signatures.items():
            print("  %r first seen in %s" % (signature, label))
    for service, label, size in replay.slow:
        print("replay %s: %s (%d bytes): model slower than %d s, not compared" %
              (service, label, size, args.input_seconds))
    if replay.skipped:
        print("replay: %d inputs longer than %d bytes skipped" % (replay.skipped, args.max_bytes))
    verdict = "DISAGREEMENTS" if failed else "engine and models agree"
    if replay.slowRegressions:
        verdict += "; %d REGRESSION INPUTS NOT COMPARED" % replay.slowRegressions
        failed = True
    print("replay: %.1f s, %s" % (time.time() - start, verdict))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(Main())
