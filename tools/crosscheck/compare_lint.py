#!/usr/bin/env python3
"""Compares quill's linter (through the built library) with the Python model in lint_reference.py.

Runs both on every .v .sv .vh .svh file of a corpus folder (read-only) and on inputs made from those
files and from small generated modules (line shuffles, TABs, CRLF line ends, comments, duplicated
always blocks, assigns and instances, case statements with and without default, nested cases,
multi-line conditions), then shrinks every input whose reports differ to a small one and prints it
with both reports. Shrunk inputs are written to --out (outside the repository).

Usage:
  compare_lint.py [--lib build/dev/core_engine/libquill.so] [--corpus DIR] [--mutations N]
                  [--generated N] [--random-modules N] [--soups N] [--seed S] [--max-reports N] [--out DIR]
                  [--file PATH] [--large]

--large compares only a few large constructed inputs (slow in the model: minutes).
"""

import argparse
import os
import random
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
from harness import SplitKeepEnds  # noqa: E402

# ---------------------------------------------------------------------------
# Generated inputs

kSnippets = [
    b"always @(posedge clk) begin\n  if (rst)\n    q <= 0;\n  else\n    q <= d;\nend\n",
    b"always @(*) begin\n  if (en)\n    y = a;\nend\n",
    b"always @(*) begin\n  case (sel)\n    2'd0: y = a;\n    2'd1: y = b;\n  endcase\nend\n",
    b"always @(*) begin\n  case (sel)\n    0: y = a;\n    default : y = b;\n  endcase\nend\n",
    b"always @* begin\n  case (s)\n    0: case (t)\n      1: z = 1;\n    endcase\n    default: z = 0;\n  endcase\nend\n",
    b"always @(a or b) begin\n  if ((a &&\n       b) ||\n      c)\n    x = a;\n  else\n    x = b;\nend\n",
    b"always_comb begin\n  y = y ^ a;\nend\n",
    b"always_ff @(posedge clk) cnt <= cnt + 1;\n",
    b"always @(posedge clk or *) begin a = 1; b <= 2; end\n",
    b"assign y = a;\n",
    b"assign Y = y & a;\n",
    b"assign {c, s} = x + y;\n",
    b"assign w = 8'hFF;\n",
    b"assign n = 4 'b1010;\n",
    b"assign r = (a <= b) ? c : d;\n",
    b"wire [7:0] w, n;\n",
    b"reg [3:0] r;\n",
    b"logic [0:7] l;\n",
    b"input a;\nwire a;\n",
    b"output q;\nreg q;\n",
    b"parameter N = 1;\nparameter N = 2;\n",
    b"localparam [7:0] M = 8'hFF;\n",
    b"sub u0 (.a(x), .b(y));\n",
    b"sub #(.W(8)) u0 (\n  .a(p),\n  .b(q)\n);\n",
    b"fifo #(\n  .W(8)\n) u_fifo (\n  .clk(clk),\n  .din(din)\n);\n",
    b"and g1 (o, a, b);\n",
    b"always @(posedge clk)\n  if (a)\n    m[i] <= d;\n",
    b"always @(*) begin : blk\n  if (a) o = 1; else if (b) o = 2; else o = 3;\nend\n",
    b"always @(*)\nBEGIN\n  x = 1;\nEND\n",
    b"always @(*) begin\n  CASE (s)\n    1: o = 1;\n  endcase\nend\n",
]

kComments = [b"// note\n", b"/* block */", b"/* two\n lines */", b"// module fake\n", b"/* always @(*) x = 1; */",
             b"/* unterminated "]


kSoupWords = [
    b"module", b"endmodule", b"MODULE", b"input", b"output", b"inout", b"INPUT", b"wire", b"reg", b"logic", b"Reg",
    b"signed", b"unsigned", b"parameter", b"localparam", b"integer", b"assign", b"always", b"always_comb",
    b"always_ff", b"always_latch", b"ALWAYS", b"begin", b"end", b"BEGIN", b"Begin", b"bEgin", b"END", b"if", b"else",
    b"IF", b"Else", b"case", b"casez", b"endcase", b"ENDCASE", b"CASE", b"default", b"DEFAULT", b"posedge",
    b"negedge", b"initial", b"and", b"buf", b"sub", b"u0", b"u1", b"a", b"b", b"A", b"q", b"Q", b"y", b"Y", b"x",
    b"clk", b"rst", b"d", b"_t", b"n1", b"8'hFF", b"4'b1010", b"4 'b 1010", b"'hAB", b"0", b"1", b"42", b"1ns",
    b"[7:0]", b"[0:3]", b"[ 3 : 0 ]", b"[W-1:0]", b"[i]", b"[2147483647:0]", b"#(", b"#", b".a(", b".b(", b"(",
    b")", b"[", b"]", b"{", b"}", b",", b";", b");", b"=", b"==", b"<=", b">=", b"!=", b"===", b"@", b"@(*)", b"@*",
    b"*", b":", b"+", b"?", b"$display", b"\"str // x\"", b"//", b"/*", b"*/", b"assignment", b"deassign",
    b"mycase", b"endcasex", b"xendcase", b"always_combx",
]
kSoupGaps = [b" ", b" ", b" ", b"", b"\n", b"\n", b"\t", b"\r\n", b"  ", b"\r", b"\v", b"\f", b"\0", b"\xc3\xa9"]


def TokenSoup(rng):
    out = []
    for _ in range(rng.randint(1, 80)):
        out.append(rng.choice(kSoupWords))
        out.append(rng.choice(kSoupGaps))
    return b"".join(out)


kNames = [b"a", b"b", b"c", b"q", b"Q", b"y", b"Y", b"d", b"en", b"sel", b"cnt", b"data", b"Data", b"w", b"r", b"x"]


def Name(rng):
    return rng.choice(kNames)


def Expression(rng, depth=0):
    choice = rng.randrange(10 if depth < 2 else 5)
    if choice < 3:
        return Name(rng)
    if choice == 3:
        return rng.choice([b"8'hFF", b"4'b1010", b"1'b0", b"0", b"16 'h ff", b"'hAB", b"3", b"2'd1"])
    if choice == 4:
        return Name(rng) + rng.choice([b"[0]", b"[3:0]", b"[i]"])
    if choice == 5:
        return Expression(rng, depth + 1) + rng.choice([b" + ", b" & ", b" == ", b" <= ", b"|", b" != "]) + Expression(
            rng, depth + 1)
    if choice == 6:
        return b"(" + Expression(rng, depth + 1) + b")"
    if choice == 7:
        return b"{" + Expression(rng, depth + 1) + b", " + Expression(rng, depth + 1) + b"}"
    if choice == 8:
        return Expression(rng, depth + 1) + b" ? " + Expression(rng, depth + 1) + b" :\n  " + Expression(rng, depth + 1)
    return b"f(" + Expression(rng, depth + 1) + b")"


def Target(rng):
    choice = rng.randrange(6)
    if choice < 4:
        return Name(rng)
    if choice == 4:
        return Name(rng) + rng.choice([b"[0]", b"[3:0]", b" [i] "])
    return b"{" + Name(rng) + b", " + Name(rng) + b"}"


def Statement(rng, depth):
    choice = rng.randrange(9 if depth < 3 else 3)
    if choice < 3:
        return Target(rng) + rng.choice([b" = ", b" <= ", b"=", b" <=\n "]) + Expression(rng) + b";\n"
    if choice == 3:
        s = b"if (" + Expression(rng) + rng.choice([b")\n", b")", b" &&\n" + Expression(rng) + b")\n"]) + Statement(
            rng, depth + 1)
        if rng.random() < 0.5:
            s += rng.choice([b"else ", b"else\n", b"else if (" + Name(rng) + b") "]) + Statement(rng, depth + 1)
        return s
    if choice == 4:
        s = rng.choice([b"case", b"case", b"casez", b"CASE"]) + b" (" + Name(rng) + b")\n"
        for k in range(rng.randint(0, 3)):
            s += b"%d: " % k + Statement(rng, depth + 1)
        if rng.random() < 0.6:
            s += rng.choice([b"default: ", b"default : ", b"DEFAULT:", b"default "]) + Statement(rng, depth + 1)
        return s + rng.choice([b"endcase\n", b"endcase\n", b"ENDCASE\n"])
    if choice in (5, 6):
        body = b"".join(Statement(rng, depth + 1) for _ in range(rng.randint(0, 3)))
        return rng.choice([b"begin\n", b"begin : blk\n", b"Begin\n", b"BEGIN\n"]) + body + rng.choice(
            [b"end\n", b"end\n", b"END\n"])
    if choice == 7:
        return b"for (i = 0; i < 4; i = i + 1) " + Statement(rng, depth + 1)
    return b"$display(\"x = %d\", " + Name(rng) + b");\n"


def ModuleItem(rng):
    choice = rng.randrange(12)
    if choice < 3:
        kw = rng.choice([b"input", b"output", b"inout", b"wire", b"reg", b"logic", b"INPUT", b"Wire"])
        typ = rng.choice([b"", b"", b"wire ", b"reg ", b"logic ", b"REG "])
        sign = rng.choice([b"", b"", b"signed ", b"unsigned "])
        rng_ = rng.choice([b"", b"", b"[7:0] ", b"[0:3] ", b"[ 3 : 0 ] ", b"[W-1:0] ", b"[7:0][1:0] "])
        names = b", ".join(Name(rng) + rng.choice([b"", b"", b" [0:3]", b" = 0"]) for _ in range(rng.randint(1, 3)))
        end = rng.choice([b";\n", b";\n", b",\n", b"\n", b");\n"])
        return kw + b" " + typ + sign + rng_ + names + end
    if choice < 5:
        return b"assign " + Target(rng) + b" = " + Expression(rng) + b";\n"
    if choice < 8:
        head = rng.choice([b"always @(posedge clk)", b"always @(*)", b"always @*", b"always @(a or b)",
                           b"always_comb", b"always_ff @(posedge clk or negedge rst)", b"always @(posedge clk or *)",
                           b"always_latch", b"ALWAYS @(*)", b"always @(sel)"])
        return head + rng.choice([b" ", b"\n", b" : lbl "]) + Statement(rng, 0)
    if choice == 8:
        conns = b",\n".join(b"  ." + Name(rng) + b"(" + Expression(rng) + b")" for _ in range(rng.randint(0, 3)))
        typ = rng.choice([b"sub", b"fifo", b"and", b"Sub"])
        params = rng.choice([b"", b"#(.W(8)) ", b"#(\n  .W(8)\n) ", b"# (8) "])
        name = rng.choice([b"u0", b"u1", b"U0", b"buf"])
        return typ + b" " + params + name + rng.choice([b" (", b"(", b"\n("]) + b"\n" + conns + b"\n);\n"
    if choice == 9:
        return rng.choice([b"parameter", b"localparam", b"PARAMETER"]) + rng.choice(
            [b" ", b" [7:0] ", b" integer "]) + rng.choice([b"N", b"W", b"n"]) + b" = " + Expression(rng) + b";\n"
    if choice == 10:
        return rng.choice([b"// comment\n", b"/* block\n comment */\n", b"initial begin\n x = 0;\nend\n",
                           b"generate\nendgenerate\n", b"\n"])
    return Statement(rng, 1)


def GeneratedRandomModule(rng):
    out = [rng.choice([b"module m;\n", b"module top (input clk, output [7:0] q);\n", b"MODULE Foo(\n", b""])]
    for _ in range(rng.randint(1, 14)):
        out.append(ModuleItem(rng))
    out.append(b"endmodule\n")
    data = b"".join(out)
    if rng.random() < 0.2:
        data = data.replace(b"\n", b"\r\n")
    if rng.random() < 0.2:
        data = data.replace(b" ", b"\t", rng.randint(1, 20))
    return data


def GeneratedModule(rng):
    name = rng.choice([b"top", b"Core", b"m"])
    lines = [b"module " + name + b" (input clk, input rst, output [7:0] q);\n"]
    for _ in range(rng.randint(1, 12)):
        lines.append(rng.choice(kSnippets))
    lines.append(b"endmodule\n")
    return b"".join(lines)


def Mutate(data, rng):
    kind = rng.randrange(9)
    lines = SplitKeepEnds(data)
    if not lines:
        return data
    if kind == 0:
        rng.shuffle(lines)
        return b"".join(lines)
    if kind == 1:
        return data.replace(b"    ", b"\t").replace(b"  ", b"\t ")
    if kind == 2:
        return data.replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")
    if kind == 3:
        for _ in range(rng.randint(1, 5)):
            i = rng.randrange(len(lines))
            j = rng.randrange(len(lines[i]) + 1)
            lines[i] = lines[i][:j] + rng.choice(kComments) + lines[i][j:]
        return b"".join(lines)
    if kind == 4:
        # Duplicate an always block, an assign or an instance-looking stretch.
        starts = [i for i, l in enumerate(lines)
                  if l.lstrip().startswith((b"always", b"assign")) or b"(" in l and b"." in l]
        if not starts:
            return data
        i = rng.choice(starts)
        stretch = lines[i:i + rng.randint(1, 12)]
        j = rng.randrange(len(lines) + 1)
        return b"".join(lines[:j] + stretch + lines[j:])
    if kind == 5:
        for _ in range(rng.randint(1, 4)):
            lines.insert(rng.randrange(len(lines) + 1), rng.choice(kSnippets))
        return b"".join(lines)
    if kind == 6:
        i = rng.randrange(len(lines))
        j = min(len(lines), i + rng.randint(1, 60))
        return b"".join(lines[i:j])
    if kind == 7:
        out = bytearray(data)
        for _ in range(rng.randint(1, 8)):
            if out:
                out[rng.randrange(len(out))] = rng.choice(b" \t\r\n;(){}[]=<@:,.'#*/")
        return bytes(out)
    return data.replace(b"default", b"dflt", rng.randint(1, 3))


def LargeInputs():
    """Inputs whose documented analysis grows with the square of their size: long "=" chains on one
    line, many always_comb blocks that take one later body, always bodies that run on to the end."""
    return [
        ("assignment chain", b"module m;\nalways @(*) x" + b" = x" * 6000 + b";\nendmodule\n"),
        ("shared body", b"module m;\n" + b"always_comb\n" * 1000 + b"always @(a) begin\n  if (a) y = 1;\n" +
         b" " * 80000 + b"\nend\nendmodule\n"),
        ("nested bodies", b"module m;\n" + b"always @(a) begin\n" * 3000 + b"if (a) y = 1;\n"),
    ]


def CheckLarge(engine):
    divergent = 0
    for label, data in LargeInputs():
        engineReport, referenceReport = harness.SERVICES["lint"].Answers(engine, data)
        same = engineReport == referenceReport
        divergent += not same
        print("%s (%d bytes): %s, %d engine findings, %d reference findings" %
              (label, len(data), "same" if same else "DIVERGENT", len(harness.LintFindings(engineReport)),
               len(harness.LintFindings(referenceReport))))
    return divergent


# ---------------------------------------------------------------------------
# Driver


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--lib", default=harness.kDefaultLibrary)
    parser.add_argument("--corpus", default=harness.kDefaultCorpus)
    parser.add_argument("--mutations", type=int, default=3)
    parser.add_argument("--generated", type=int, default=2000)
    parser.add_argument("--soups", type=int, default=20000)
    parser.add_argument("--random-modules", type=int, default=20000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--max-reports", type=int, default=40)
    parser.add_argument("--out", default="")
    parser.add_argument("--file", action="append", default=[])
    parser.add_argument("--large", action="store_true", help="only compare the few large constructed inputs")
    args = parser.parse_args()

    rng = random.Random(args.seed)
    engine = harness.Engine(args.lib)
    if args.large:
        return 1 if CheckLarge(engine) else 0
    run = harness.DivergenceLog(engine, harness.SERVICES["lint"], maxReports=args.max_reports, shrinkSeconds=60.0,
                                outFolder=args.out, suffix=".v", maxBytePieces=4000)
    files = args.file or harness.CorpusFiles(args.corpus, harness.kVerilogExtensions)
    for path in files:
        data = harness.ReadFile(path)
        run.Check(path, data)
        for k in range(args.mutations):
            run.Check("%s (mutation %d)" % (path, k), Mutate(data, rng))
    if not args.file:
        for k in range(args.generated):
            data = GeneratedModule(rng)
            for _ in range(rng.randint(0, 3)):
                data = Mutate(data, rng)
            run.Check("generated %d" % k, data)
        for k in range(args.random_modules):
            data = GeneratedRandomModule(rng)
            if rng.random() < 0.3:
                data = Mutate(data, rng)
            run.Check("random module %d" % k, data)
        for k in range(args.soups):
            run.Check("token soup %d" % k, TokenSoup(rng))
    print("compared %d inputs (%d files), %d divergent, %d distinct signatures" %
          (run.compared, len(files), run.divergent, len(run.signatures)))
    for signature, label in sorted(run.signatures.items(), key=lambda item: sorted(item[0])):
        print("  [%s] first seen in %s" % (",".join(sorted(signature)), label))
    return 1 if run.divergent else 0


if __name__ == "__main__":
    sys.exit(main())
