#!/usr/bin/env python3
"""Compares quill's constraint and Tcl classifier (through the built library) with highlight_reference.py.

Runs both on every constraint and Tcl file of a corpus folder (read-only), on inputs made from those files
(CRLF line ends, TABs, inserted and deleted bytes, line shuffles, keyword case flips, truncation) and on
random texts built from the words and punctuation the classifier knows. Every input whose class bytes
differ is shrunk to a small one and printed with both class strings and the first differing offset.
Shrunk inputs are written to --out (outside the repository) when it is given.

Usage:
  compare_highlight.py [--lib build/dev/core_engine/libquill.so] [--corpus DIR] [--mutations N]
                       [--random N] [--seed S] [--max-reports N] [--out DIR] [--file PATH]

Class strings show one character per byte: 0-9, then "a" for 10; anything else shows as "!".
"""

import argparse
import ctypes
import os
import random
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
import highlight_reference as ref  # noqa: E402
from harness import SplitKeepEnds  # noqa: E402,F401


def CheckContract(engine):
    """Argument and capacity rules of the export; returns a list of failures."""
    fn = engine.classify
    sentinel = harness.kSentinel
    failures = []
    sample = b"set_property PACKAGE_PIN W5 [get_ports clk]"
    n = len(sample)
    out = ctypes.create_string_buffer(bytes([sentinel]) * (n + 8), n + 8)
    if fn(None, n, out, n + 8) != 0:
        failures.append("null text does not return 0")
    if fn(sample, 0, out, n + 8) != 0:
        failures.append("length 0 does not return 0")
    if fn(sample, -5, out, n + 8) != 0:
        failures.append("negative length does not return 0")
    if fn(sample, n, out, n - 1) != -n:
        failures.append("capacity length-1 does not return -length")
    if out.raw != bytes([sentinel]) * (n + 8):
        failures.append("a rejected call wrote into the buffer")
    if fn(sample, n, out, n + 8) != n:
        failures.append("capacity above length does not return length")
    if out.raw[n:] != bytes([sentinel]) * 8:
        failures.append("bytes past length were written")
    if out.raw[:n] != ref.Classify(sample):
        failures.append("contract sample classified differently")
    return failures


# ---------------------------------------------------------------------------
# Generated inputs

kAllWords = (ref.kConstraintKeywords + ref.kToolCommands + ref.kFlowCommands + ref.kPinProperties)
kKnownLower = set(word.lower().encode() for word in kAllWords)
kInsertBytes = [b'"', b"{", b"}", b"[", b"]", b"#", b";", b"\\", b"$", b"\x00", b"\x80", b"\xc3", b"\xa9", b"\xff",
                b"-", b"_", b" ", b"\t", b"\n", b"\r", b"\v", b"\f", b".", b"0", b"A", b"\xe2\x82\xac"]


def FlipKeywordCase(data, rng):
    out = bytearray(data)
    i = 0
    while i < len(out):
        if ref.IsWordByte(out[i]) or out[i] == ord("-"):
            j = i + 1
            while j < len(out) and ref.IsWordByte(out[j]):
                j += 1
            word = bytes(out[i:j])
            if ref.ToLower(word) in kKnownLower or word.upper().startswith(b"LV") or word.startswith(b"get_"):
                mode = rng.randrange(3)
                for k in range(i, j):
                    if mode == 0 or (mode == 2 and rng.random() < 0.5):
                        out[k] = out[k] ^ 0x20 if ref.IsAlpha(out[k]) else out[k]
                    elif mode == 1:
                        out[k] = out[k] - 32 if 0x61 <= out[k] <= 0x7A else out[k]
            i = j
        else:
            i += 1
    return bytes(out)


def Mutate(data, rng):
    lines = data.split(b"\n")
    kind = rng.randrange(8)
    if kind == 0:
        return b"crlf", b"\n".join(line + (b"\r" if rng.random() < 0.7 else b"") for line in lines)
    if kind == 1:
        out = []
        for line in lines:
            stripped = line.lstrip(b" ")
            out.append(b"\t" * ((len(line) - len(stripped) + 1) // 2) + stripped.replace(b" ", b"\t")
                       if rng.random() < 0.7 else line)
        return b"tabs", b"\n".join(out)
    if kind == 2:
        out = bytearray(data)
        for _ in range(rng.randrange(1, 30)):
            at = rng.randrange(len(out) + 1)
            if out and at < len(out) and rng.random() < 0.4:
                del out[at]
            else:
                out[at:at] = rng.choice(kInsertBytes)
        return b"bytes", bytes(out)
    if kind == 3:
        chosen = lines[:]
        rng.shuffle(chosen)
        return b"shuffle", b"\n".join(chosen)
    if kind == 4:
        return b"case", FlipKeywordCase(data, rng)
    if kind == 5:
        return b"truncate", data[:rng.randrange(len(data) + 1)]
    if kind == 6:
        start = rng.randrange(len(lines))
        return b"slice", b"\n".join(lines[start:start + rng.randrange(1, 30)])
    out = lines[:]
    for _ in range(rng.randrange(1, 6)):
        out.insert(rng.randrange(len(out) + 1), RandomLine(rng))
    return b"snippets", b"\n".join(out)


kNames = [b"clk", b"led[0]", b"led[15]", b"sw[ 1]", b"btn[a]", b"data_in", b"a", b"b", b"_x", b"rst_n", b"q[]",
          b"x[12]y", b"*", b"led*", b"sys_clk_pin"]
kPins = [b"W5", b"AB12", b"AA10", b"PIN_A5", b"PIN_AB3", b"pin_a5", b"ABCD1", b"A1234", b"W5[0]", b"A1", b"ZZZ999",
         b"PIN_", b"PIN_W", b"E3_1", b"AB12x", b"P1.2", b"U18"]
kIoStandards = [b"LVCMOS33", b"lvcmos18", b"LVDS_25", b"SSTL15_T_DCI", b"LVCMOS", b"LVDS", b"LVCMOS33[0]",
                b"DIFF_SSTL15", b"SUB_LVDS", b"HSLVDCI_18", b"PCI33_3", b"POD12", b"MOBILE_DDRx", b"LVTTL",
                b"BLVDS_25", b"Lvds_25[3]", b"LVDCI_15", b"MINI_LVDS_25", b"tmds_33", b"LVCMOS33#"]
kPunct = [b" ", b" ", b"  ", b"\t", b"\n", b"\r\n", b";", b",", b"{", b"}", b"[", b"]", b"$", b"\\", b"\\\n", b"-",
          b"- ", b"-5", b"=", b"(", b")", b"*", b"/", b".", b"\x00", b"\xc3\xa9", b"\xe2\x82\xac", b"\x80", b"\xff",
          b"\v", b"\f", b"::"]
kNumbers = [b"10.000", b"3.3", b"100", b"0", b"1.2.3", b"5ns", b"2.5V", b"0x1F"]
kStrings = [b'"abc"', b'"a\\"b"', b'"unterminated', b'"x # y"', b'"\\\\"', b'"[get_ports a]"', b'""', b'"\\',
            b'"{a}"']
kComments = [b"# comment", b"#", b"## x [get_ports y]", b"#\"q\"", b"# {", b"a#b"]
kGetPorts = [b"[get_ports ", b"[ get_ports ", b"[\tget_ports\t", b"[get_ports {", b"[GET_PORTS ", b"get_ports {",
             b"get_ports{", b"get_ports \t {", b"[get_portsx ", b"[get_ports", b"[get_ports]", b"[get_ports_x ",
             b"xget_ports {", b"get_ports\n{", b"[get_ports -of_objects ", b"{", b"}", b"]", b"[get_pins "]


def RandomToken(rng):
    kind = rng.randrange(12)
    if kind == 0:
        word = rng.choice(kAllWords).encode()
        return FlipKeywordCase(word, rng) if rng.random() < 0.2 else word
    if kind == 1:
        return rng.choice(kNames)
    if kind == 2:
        return rng.choice(kPins)
    if kind == 3:
        return rng.choice(kIoStandards)
    if kind == 4:
        return rng.choice(kNumbers)
    if kind == 5:
        return rng.choice(kStrings)
    if kind == 6:
        return rng.choice(kComments)
    if kind == 7:
        return rng.choice(kGetPorts)
    if kind == 8:
        return rng.choice(kPrefixes) + rng.choice([b"", b"_", b"1", b"x", b"[0]", b"[", b"-"])
    if kind == 9:
        return b"-" + rng.choice([b"period", b"name", b"dict", b"to", b"x", b"_y", b"1", b"", b"-from"])
    return rng.choice(kPunct)


kPrefixes = [prefix.encode() for prefix in ref.kIoStandardPrefixes]


def RandomLine(rng):
    templates = [
        lambda: b"set_property PACKAGE_PIN " + rng.choice(kPins) + b" [get_ports " + rng.choice(kNames) + b"]",
        lambda: b"set_property IOSTANDARD " + rng.choice(kIoStandards) + b" [get_ports {" + rng.choice(kNames) +
        b" " + rng.choice(kNames) + b"}]",
        lambda: b"set_property -dict { PACKAGE_PIN " + rng.choice(kPins) + b" IOSTANDARD " + rng.choice(kIoStandards) +
        b" } [get_ports { " + rng.choice(kNames) + b" }]; #" + rng.choice(kNames),
        lambda: b"create_clock -period " + rng.choice(kNumbers) + b" -name sys_clk -waveform {0 5} [get_ports clk]",
        lambda: b"set_location_assignment " + rng.choice(kPins) + b" -to " + rng.choice(kNames),
        lambda: b"IO_LOC \"" + rng.choice(kNames) + b"\" " + rng.choice(kPins) + b";",
        lambda: b"set_io " + rng.choice(kNames) + b" " + rng.choice(kPins),
        lambda: b"NET \"" + rng.choice(kNames) + b"\" LOC = \"" + rng.choice(kPins) + b"\" | IOSTANDARD = " +
        rng.choice(kIoStandards) + b";",
        lambda: b"LOCATE COMP \"" + rng.choice(kNames) + b"\" SITE \"" + rng.choice(kPins) + b"\";",
        lambda: b"get_ports {" + b" ".join(rng.choice(kNames) for _ in range(rng.randrange(4))) + b"}",
        lambda: b"proc f {a b} { puts $a; return [expr {$b + 1}] }",
        lambda: b"foreach x [list a b] { lappend y $x }",
        lambda: b"synth_design -top top; report_timing_summary; launch_runs impl_1",
        lambda: b"project_new x; execute_flow -compile; report_power",
        lambda: b" ".join(RandomToken(rng) for _ in range(rng.randrange(1, 12))),
        lambda: b"".join(RandomToken(rng) for _ in range(rng.randrange(1, 12))),
    ]
    return rng.choice(templates)()


kSoupAlphabet = b"aAgGeEtT_pPoOrRsS-{}[]#\"\\ \t\n\r;,.$0159LVDSINW\x00\x80\xbf\xc3\xff"


def ByteSoup(rng):
    """Short texts of bytes that change the scan, mixed with pieces of known words."""
    pieces = []
    for _ in range(rng.randrange(1, 16)):
        if rng.random() < 0.3:
            pieces.append(rng.choice([b"get_ports", b"GET_PORTS", b"PIN_", b"LVDS", b"led[", b"[get_ports"]))
        else:
            pieces.append(bytes([rng.choice(kSoupAlphabet)]))
    return b"".join(pieces)


def RandomText(rng):
    if rng.random() < 0.25:
        return ByteSoup(rng)
    lines = [RandomLine(rng) for _ in range(rng.randrange(1, 12))]
    text = b"\n".join(lines)
    if rng.random() < 0.2:
        text = text.replace(b"\n", b"\r\n")
    if rng.random() < 0.2:
        text = FlipKeywordCase(text, rng)
    if rng.random() < 0.2:
        text = text[:rng.randrange(len(text) + 1)]
    return text


# ---------------------------------------------------------------------------
# Driver


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--lib", default=harness.kDefaultLibrary)
    parser.add_argument("--corpus", default=harness.kDefaultCorpus)
    parser.add_argument("--mutations", type=int, default=6, help="generated inputs per corpus file")
    parser.add_argument("--random", type=int, default=20000, help="number of generated texts")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--max-reports", type=int, default=20)
    parser.add_argument("--shrink-seconds", type=float, default=30.0)
    parser.add_argument("--out", default="")
    parser.add_argument("--file", action="append", default=[])
    args = parser.parse_args()

    rng = random.Random(args.seed)
    engine = harness.Engine(args.lib)
    failures = CheckContract(engine)
    for failure in failures:
        print("contract: %s" % failure)
    run = harness.DivergenceLog(engine, harness.SERVICES["highlight"], maxReports=args.max_reports,
                                shrinkSeconds=args.shrink_seconds, outFolder=args.out)
    files = args.file or harness.CorpusFiles(args.corpus, harness.kConstraintExtensions)
    for path in files:
        data = harness.ReadFile(path)
        run.Check(path, data)
        for k in range(args.mutations):
            kind, mutated = Mutate(data, rng)
            if rng.random() < 0.3:
                kind, mutated = Mutate(mutated, rng)
            run.Check("%s (%s %d)" % (path, kind.decode(), k), mutated)
    if not args.file:
        for k in range(args.random):
            run.Check("random %d" % k, RandomText(rng))
    print("compared %d inputs (%d files), %d divergent, %d distinct signatures, %d contract failures" %
          (run.compared, len(files), run.divergent, len(run.signatures), len(failures)))
    for signature, label in sorted(run.signatures.items()):
        print("  engine %d / model %d first seen in %s" % (signature[0], signature[1], label))
    return 1 if run.divergent or failures else 0


if __name__ == "__main__":
    sys.exit(main())
