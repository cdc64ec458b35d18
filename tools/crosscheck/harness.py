"""What the cross-check scripts share: the built library through ctypes, the corpus listing, shrinking a
diverging input to a small one, and the report of a divergence.

The three services are described once (SERVICES): which files they read, how the engine and the model
answer, and how two answers differ. compare_*.py and replay.py build on these.
"""

import ctypes
import json
import os
import sys
import time

kHere = os.path.dirname(os.path.abspath(__file__))
kRepo = os.path.dirname(os.path.dirname(kHere))
sys.path.insert(0, kHere)

kDefaultLibrary = os.path.join(kRepo, "build", "dev", "core_engine", "libquill.so")
kDefaultCorpus = "/work/shared/corpus"
kVerilogExtensions = (".v", ".sv", ".vh", ".svh")
kConstraintExtensions = (".xdc", ".sdc", ".tcl", ".qsf", ".cst", ".pcf", ".lpf", ".ucf", ".pdc", ".ccf")
kSentinel = 0xEE


class Engine:
    """The library's exports, called as a host would call them."""

    def __init__(self, path=kDefaultLibrary):
        self.lib = ctypes.CDLL(path)
        self.format = self.lib.n5p8w
        self.format.argtypes = [ctypes.c_char_p, ctypes.c_int32, ctypes.c_char_p, ctypes.c_int32]
        self.format.restype = ctypes.c_int32
        self.lint = self.lib.t2v6r
        self.lint.argtypes = [ctypes.c_char_p, ctypes.c_int32]
        self.lint.restype = ctypes.c_void_p
        self.classify = self.lib.x4b7d
        self.classify.argtypes = [ctypes.c_char_p, ctypes.c_int32, ctypes.c_char_p, ctypes.c_int32]
        self.classify.restype = ctypes.c_int32
        self.release = self.lib.h3x9c
        self.release.argtypes = [ctypes.c_void_p]
        self.release.restype = None

    def Format(self, data):
        # A length of 0 means a NUL-terminated text: the empty input is passed as one.
        source, length = (b"\0", 0) if len(data) == 0 else (data, len(data))
        capacity = 2 * len(data) + 4096
        for _ in range(3):
            out = ctypes.create_string_buffer(capacity)
            n = self.format(source, length, out, capacity)
            if n >= 0:
                return out.raw[:n]
            capacity = -n
        raise RuntimeError("engine kept asking for more room")

    def Lint(self, data):
        result = self.lint(data if data else b"", len(data))
        if not result:
            raise RuntimeError("t2v6r returned null")
        try:
            return ctypes.string_at(result)
        finally:
            self.release(result)

    def Classify(self, data):
        """The class bytes, or a description of a broken buffer contract."""
        n = len(data)
        if n == 0:
            return b""
        out = ctypes.create_string_buffer(bytes([kSentinel]) * n, n)
        result = self.classify(data, n, out, n)
        if result != n:
            return b"<returned %d for length %d>" % (result, n)
        return out.raw


def CorpusFiles(folder, extensions):
    """Every file under folder whose name ends in one of extensions (any case), sorted; none when the
    folder is absent."""
    found = []
    for root, _, names in os.walk(folder):
        for name in names:
            if name.lower().endswith(extensions):
                found.append(os.path.join(root, name))
    return sorted(found)


def ReadFile(path):
    with open(path, "rb") as handle:
        return handle.read()


def SplitKeepEnds(data):
    return data.splitlines(keepends=True) if data else []


# ---------------------------------------------------------------------------
# Shrinking


def ShrinkByRemoval(data, keeps, deadline, maxBytePieces=None):
    """Removes runs of lines, then of bytes, while keeps(candidate) holds, until nothing more goes or the
    deadline (a time.time() value) passes. Byte removal is skipped for inputs longer than maxBytePieces."""
    for unit in ("lines", "bytes"):
        pieces = SplitKeepEnds(data) if unit == "lines" else [bytes([b]) for b in data]
        if unit == "bytes" and maxBytePieces is not None and len(pieces) > maxBytePieces:
            continue
        chunk = max(1, len(pieces) // 2)
        while chunk >= 1 and time.time() < deadline:
            i = 0
            changed = False
            while i < len(pieces) and time.time() < deadline:
                candidate = pieces[:i] + pieces[i + chunk:]
                if candidate and keeps(b"".join(candidate)):
                    pieces = candidate
                    changed = True
                else:
                    i += chunk
            if not changed:
                chunk //= 2
        data = b"".join(pieces)
    return data


def Ddmin(items, failing):
    """Classic delta debugging: a smaller list for which failing(list) still holds."""
    n = 2
    while len(items) >= 2:
        size = len(items) // n
        if size == 0:
            break
        reduced = False
        for k in range(n):
            complement = items[:k * size] + items[(k + 1) * size:]
            if complement and failing(complement):
                items = complement
                n = max(n - 1, 2)
                reduced = True
                break
        if not reduced:
            if n >= len(items):
                break
            n = min(len(items), n * 2)
    return items


def ShrinkByDeltaDebugging(data, differs, deadline):
    """Delta debugging over lines, then over the bytes of each line, then over lines again."""

    def Timed(pred):
        return lambda candidate: time.time() <= deadline and pred(candidate)

    lines = data.split(b"\n")
    lines = Ddmin(lines, Timed(lambda ls: differs(b"\n".join(ls))))
    for idx in range(len(lines)):
        def LineFails(chars, idx=idx):
            return differs(b"\n".join(lines[:idx] + [bytes(chars)] + lines[idx + 1:]))
        if len(lines[idx]) > 1:
            lines[idx] = bytes(Ddmin(list(lines[idx]), Timed(LineFails)))
    lines = Ddmin(lines, Timed(lambda ls: differs(b"\n".join(ls))))
    return b"\n".join(lines)


# ---------------------------------------------------------------------------
# Describing differences


def FirstDifferingLine(a, b):
    """(line index, line of a, line of b) of the first line that differs, or None."""
    la, lb = a.split(b"\n"), b.split(b"\n")
    for k in range(max(len(la), len(lb))):
        x = la[k] if k < len(la) else None
        y = lb[k] if k < len(lb) else None
        if x != y:
            return k, x, y
    return None


def FirstDifferingOffset(a, b):
    for k in range(min(len(a), len(b))):
        if a[k] != b[k]:
            return k
    return None if len(a) == len(b) else min(len(a), len(b))


def ClassString(classes):
    """One character per class byte: 0-9, "a" for 10, "!" for anything else."""
    return "".join("0123456789a"[c] if c <= 10 else "!" for c in classes)


def LintFindings(report):
    try:
        return [tuple(d.values()) for d in json.loads(report.decode("utf-8", "surrogateescape"))]
    except ValueError:
        return [("invalid", 0, "invalid", report)]


def LintSignature(engineReport, modelReport):
    """The checks whose findings differ: what a shrunk input must keep showing."""
    mine, theirs = LintFindings(modelReport), LintFindings(engineReport)
    checks = {f[2] for f in mine if f not in theirs} | {f[2] for f in theirs if f not in mine}
    return frozenset(checks or {"order"})


def FirstDifferingFinding(engineReport, modelReport):
    mine, theirs = LintFindings(engineReport), LintFindings(modelReport)
    for k in range(max(len(mine), len(theirs))):
        x = mine[k] if k < len(mine) else None
        y = theirs[k] if k < len(theirs) else None
        if x != y:
            return k, x, y
    return None


# ---------------------------------------------------------------------------
# The three services


class Service:
    """One service as the cross-checks see it: engine and model answers and how they differ."""

    def __init__(self, name, extensions, engineCall, modelCall, signature, describe):
        self.name = name
        self.extensions = extensions
        self.engineCall = engineCall
        self.modelCall = modelCall
        self.signature = signature
        self.describe = describe

    def Answers(self, engine, data):
        return self.engineCall(engine, data), self.modelCall(data)

    def Signature(self, engine, data):
        """None when engine and model agree, else what a shrunk input must keep showing."""
        got, want = self.Answers(engine, data)
        return None if got == want else self.signature(got, want)


def _FormatModel(data):
    import format_reference
    return format_reference.FormatEntry(data)


def _LintModel(data):
    import lint_reference
    return lint_reference.LintText(data)


def _HighlightModel(data):
    import highlight_reference
    return highlight_reference.Classify(data)


def _HighlightSignature(got, want):
    k = FirstDifferingOffset(got, want)
    return (got[k] if k < len(got) else -1, want[k] if k < len(want) else -1)


SERVICES = {
    "format": Service(
        "format", kVerilogExtensions, lambda e, d: e.Format(d), _FormatModel,
        lambda got, want: "format",
        lambda got, want: ["engine: %r" % got, "model:  %r" % want,
                           "first differing line: %r" % (FirstDifferingLine(got, want),)]),
    "lint": Service(
        "lint", kVerilogExtensions, lambda e, d: e.Lint(d), _LintModel, LintSignature,
        lambda got, want: ["engine: %s" % got.decode("utf-8", "replace"), "model:  %s" % want.decode("utf-8", "replace"),
                           "first differing finding: %r" % (FirstDifferingFinding(got, want),)]),
    "highlight": Service(
        "highlight", kConstraintExtensions, lambda e, d: e.Classify(d), _HighlightModel, _HighlightSignature,
        lambda got, want: ["engine: %s" % ClassString(got), "model:  %s" % ClassString(want),
                           "first differing offset: %s" % FirstDifferingOffset(got, want)]),
}


class DivergenceLog:
    """Counts compared and diverging inputs; shrinks and prints the first input of each distinct
    signature (up to maxReports), and writes it to outFolder when one is given."""

    def __init__(self, engine, service, maxReports=20, shrinkSeconds=30.0, outFolder="", suffix=".txt",
                 maxBytePieces=None):
        self.engine = engine
        self.service = service
        self.maxReports = maxReports
        self.shrinkSeconds = shrinkSeconds
        self.outFolder = outFolder
        self.suffix = suffix
        self.maxBytePieces = maxBytePieces
        self.compared = 0
        self.divergent = 0
        self.signatures = {}
        self.reports = []  # (label, shrunk input, description lines)

    def Check(self, label, data):
        """Compares one input; returns True when engine and model agree."""
        self.compared += 1
        signature = self.service.Signature(self.engine, data)
        if signature is None:
            return True
        self.divergent += 1
        if signature in self.signatures or len(self.signatures) >= self.maxReports:
            self.signatures.setdefault(signature, label)
            return False
        self.signatures[signature] = label
        small = data
        if self.shrinkSeconds > 0:
            small = ShrinkByRemoval(data, lambda c: self.Keeps(c, signature), time.time() + self.shrinkSeconds,
                                    self.maxBytePieces)
        got, want = self.service.Answers(self.engine, small)
        lines = self.service.describe(got, want)
        self.reports.append((label, small, lines))
        index = len(self.reports)
        if self.outFolder:
            os.makedirs(self.outFolder, exist_ok=True)
            with open(os.path.join(self.outFolder, "divergence_%02d%s" % (index, self.suffix)), "wb") as f:
                f.write(small)
        print("=== %s divergence %d from %s" % (self.service.name, index, label))
        print("input:  %r" % small)
        for line in lines:
            print(line)
        sys.stdout.flush()
        return False

    def Keeps(self, candidate, signature):
        found = self.service.Signature(self.engine, candidate)
        if found is None:
            return False
        if isinstance(signature, frozenset):
            return bool(found & signature)
        return found == signature
