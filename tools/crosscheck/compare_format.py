#!/usr/bin/env python3
"""Compares quill's formatter (through the built library) with the Python model in format_reference.py.

Runs both on every .v .sv .vh .svh file of a corpus folder (read-only) and on inputs made from those
files (line shuffles, CRLF line ends, TAB indentation, injected block comments and instances), then
shrinks every input whose outputs differ to a small one and prints it with both outputs.

Usage:
  compare_format.py [--lib build/dev/core_engine/libquill.so] [--corpus DIR] [--mutations N] [--seed S]
                    [--mask NAME ...] [--max-reports N] [--file PATH]

--mask NAME makes the model copy a divergence that is already known (see KNOWN_DIVERGENCES), so that
the run looks for other ones.
"""

import argparse
import os
import random
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import format_reference as ref  # noqa: E402
import harness  # noqa: E402

# ---------------------------------------------------------------------------
# Generated inputs

kInstanceSnippets = [
    b"  fifo   u_fifo(\n    .clk(clk),\n    .din( data_in ), // data\n    .dout(q)\n  );\n",
    b"sub #(\n  .W(8), // width\n  .D(4)\n) u_sub ( // ports\n  .a(a),\n  .b(b)\n); // sub\n",
    b"\tcore   #(.W(8))  u_core(\n\t\t.x (x),\n\t\t.y(y) // y\n\t);\n",
    b"mem\n  u_mem\n  (\n  .addr(addr), .data(data),\n  .we(we)\n  );\n",
    b"blk u_b (.a(x), .b(y));\n",
    b"ram\nu_ram (\n   .q(q)\n);\n",
    b"pll u_pll (\n  .clk_in(clk) ,\n  .locked()\n  ) ;\n",
]
kBlockComments = [b"/* note */", b"/* two\n   lines */", b"/*\n * three\n */", b"/**/", b"/* wire x; */"]
kCodeSnippets = [
    b"always @(posedge clk) begin\nif (rst)\nq <= 0;\nelse q <= d;\nend\n",
    b"generate\nfor (i = 0; i < 4; i = i + 1) begin : g\nalways @* y[i] = a[i];\nend\nendgenerate\n",
    b"case (s)\nIDLE:\nnext = RUN;\ndefault:\nnext = IDLE;\nendcase\n",
    b"wire   [7:0]   data;\nreg signed [15:0] counter; // c\nlogic [3:0] st = 4'd0;\n",
    b"parameter WIDTH = 8,\nparameter [3:0] MODE = 4'h2, // mode\nDEPTH = 16\n",
    b"  input a, output b, inout c\n",
    b"  .a(x), .b(y), .c(z)\n",
    b"module m #(parameter W = 8) (\n  input wire [W-1:0] a,\n  output reg b // x\n);\n",
    b"localparam N = 4;\n",
    b"    endmodule : top   // end of top\n",
]


def Mutations(data, rng):
    lines = data.split(b"\n")
    kind = rng.randrange(10)
    if kind == 7:
        out = lines[:]
        for _ in range(rng.randrange(1, 1 + len(out) // 4 + 1)):
            if len(out) < 2:
                break
            at = rng.randrange(len(out) - 1)
            out[at:at + 2] = [out[at] + rng.choice([b" ", b"", b"\t"]) + out[at + 1].lstrip()]
        return b"joinlines", b"\n".join(out)
    if kind == 8:
        out = bytearray(data)
        for _ in range(rng.randrange(1, 20)):
            if not out:
                break
            at = rng.randrange(len(out))
            if out[at] in b" \t":
                del out[at]
            else:
                out.insert(at, rng.choice(b" \t\r(),;:#./*"))
        return b"bytes", bytes(out)
    if kind == 9:
        out = []
        for line in lines:
            stripped = line.lstrip(b" \t")
            out.append(stripped if rng.random() < 0.5 else b" " * rng.randrange(9) + stripped)
        return b"reindent", b"\n".join(out)
    if kind == 0:
        chosen = lines[:]
        rng.shuffle(chosen)
        return b"shuffle", b"\n".join(chosen)
    if kind == 1:
        return b"crlf", b"\n".join(line + (b"\r" if rng.random() < 0.5 else b"") for line in lines)
    if kind == 2:
        out = []
        for line in lines:
            stripped = line.lstrip(b" ")
            depth = (len(line) - len(stripped)) // 2
            out.append(b"\t" * depth + stripped if rng.random() < 0.7 else line)
        return b"tabs", b"\n".join(out)
    if kind == 3:
        out = lines[:]
        for _ in range(rng.randrange(1, 6)):
            at = rng.randrange(len(out) + 1)
            comment = rng.choice(kBlockComments)
            if at < len(out) and rng.random() < 0.5:
                line = out[at]
                cut = rng.randrange(len(line) + 1)
                out[at] = line[:cut] + comment + line[cut:]
            else:
                out.insert(at, comment)
        return b"blockcomments", b"\n".join(out)
    if kind == 4:
        out = lines[:]
        for _ in range(rng.randrange(1, 4)):
            out.insert(rng.randrange(len(out) + 1), rng.choice(kInstanceSnippets).rstrip(b"\n"))
        return b"instances", b"\n".join(out)
    if kind == 5:
        out = lines[:]
        for _ in range(rng.randrange(1, 5)):
            out.insert(rng.randrange(len(out) + 1), rng.choice(kCodeSnippets).rstrip(b"\n"))
        return b"snippets", b"\n".join(out)
    start = rng.randrange(len(lines))
    piece = lines[start:start + rng.randrange(1, 40)]
    return b"slice", b"\n".join(piece)


kNames = [b"a", b"b", b"clk", b"data_in", b"q", b"W", b"DEPTH", b"u_fifo", b"fifo", b"x1", b"_n", b"IDLE"]
kComments = [b"// c", b"//", b"// x, y", b"/* b */", b"// end", b"// wire w;"]
kBlanksChoice = [b"", b" ", b" ", b"  ", b"\t", b" \t", b"    "]


def RandomCase(rng, word):
    if rng.random() < 0.1:
        return word.upper()
    return word


def RandomLine(rng):
    def W():
        return rng.choice(kBlanksChoice)

    def N():
        return rng.choice(kNames)

    def Opt(p, value):
        return value if rng.random() < p else b""

    def Range():
        return rng.choice([b"[7:0]", b"[W-1:0]", b"[ 3 : 0 ]", b"[0:0]"])

    def Comment():
        return Opt(0.3, W() + rng.choice(kComments))

    kind = rng.randrange(24)
    if kind == 0:
        return b"module " + N() + rng.choice([b"", b" (", b"(", b";", b" #(", b" #(parameter W = 8) (", b" (input a);"])
    if kind == 1:
        return (W() + RandomCase(rng, rng.choice([b"input", b"output", b"inout"])) + b" " +
                Opt(0.5, rng.choice([b"wire", b"reg", b"logic"]) + b" ") + Opt(0.2, b"signed" + W() + b" ") +
                Opt(0.4, Range() + W()) + N() + Opt(0.1, b" = 1'b0") + Opt(0.1, b" [3:0]") + Opt(0.7, W() + b",") +
                Comment())
    if kind == 2:
        return (W() + RandomCase(rng, rng.choice([b"wire", b"reg", b"logic"])) + W() + Opt(0.2, b"signed ") +
                Opt(0.4, Range() + W()) + N() + Opt(0.1, b" = 4'd0") + Opt(0.1, b"[0:3]") + Opt(0.1, b", b") + W() +
                b";" + W() + Comment())
    if kind == 3:
        return (W() + Opt(0.7, RandomCase(rng, rng.choice([b"parameter", b"localparam"])) + b" ") +
                Opt(0.3, Range() + W()) + N() + W() + b"=" + W() + rng.choice([b"8", b"4'h2", b"{a,b}", b"16 "]) +
                W() + rng.choice([b"", b",", b";", b")"]) + Comment())
    if kind == 4:
        return W() + rng.choice([b");", b")", b") (", b");  // c", b")  ;", b") u_x (", b") " + N() + b"("])
    if kind == 5:
        return W() + rng.choice([b"always @(posedge clk) begin", b"always @*", b"always_ff @(posedge clk)",
                                 b"always_latch begin", b"always @(*) y = a;", b"always_comb begin // c",
                                 b"always @(a or b)"])
    if kind == 6:
        return W() + rng.choice([b"begin", b"end", b"end else begin", b"if (x)", b"else", b"case (s)", b"casez(s)",
                                 b"endcase", b"IDLE:", b"default:", b"2'b01: x = 1;", b"x <= y;", b"q <= 0;",
                                 b"end // c", b"// end", b"if (a) b = f(c)", b"else if (rst)", b"begin : blk",
                                 b"RUN: // go", b"for (i = 0; i < 4; i = i + 1) begin : g"])
    if kind == 7:
        return W() + rng.choice([b"generate", b"endgenerate", b"generate // g", b"GENERATE"])
    if kind == 8:
        return W() + N() + W() + b" " + N() + W() + b"(" + Opt(0.3, b" // ports") + Opt(0.2, b".a(b),")
    if kind == 9:
        return W() + N() + b" #(" + Opt(0.3, b".W(8)) " + N() + b" (") + Comment()
    if kind == 10:
        return W() + b"." + N() + W() + b"(" + W() + rng.choice([b"sig", b"a[3:0]", b"", b"{a, b}", b"f(x)"]) + W() + \
            b")" + W() + Opt(0.7, b",") + Comment()
    if kind == 11:
        return W() + rng.choice([N(), N() + b" " + N(), b"(", N() + b" (", N() + b"("])
    if kind == 12:
        return W() + rng.choice(kComments)
    if kind == 13:
        return rng.choice([b"/*", b"*/", b"/* x", b" * y", b"/* one */ wire z;", b"/* a */ /* b */"])
    if kind == 14:
        return W() + rng.choice([b"assign x = y;", b"assign   z = a & b; // and", b"ASSIGN q = 1;"])
    if kind == 15:
        return W() + rng.choice([b"endmodule", b"endmodule : m // c", b"endmodule  ", b"ENDMODULE"])
    if kind == 16:
        return W() + rng.choice([b"initial begin", b"function f;", b"endfunction", b"task t;", b"integer i;",
                                 b"genvar g;", b"`define X 1", b"`ifdef Y", b"`endif"])
    if kind == 17:
        return rng.choice([b"", b"", b" ", b"\t", b"\r", b"\v", b"\f"])
    if kind == 18:
        return W() + rng.choice([b"input a, output b, inout c", b".a(x), .b(y), .c(z)", b"input a, b;",
                                 b"output x, input y // ports", b".p(q), .r(s) // two", b"inputs a, input b",
                                 b"INPUT a, Output b"])
    if kind == 19:
        return rng.choice([b"__BLKCMT_0__", b"__BLKCMT_1__ x", b"module", b"Module m;", b"WIRE A;",
                           b"/* __BLKCMT_1__ */", b"/* __BLKCMT_2__\n */", b"/* a */ __BLKCMT_0__", b"/*__BLKCMT_0__*/",
                           b"/* x __BLKCMT_", b"1__ */", b"__BLKCMT_1__\n", b"/* __BLKCMT_10__ */"])
    if kind == 20:
        return W() + N() + b" " + N() + b" (" + b"." + N() + b"(" + N() + b"), ." + N() + b"(" + N() + b"));"
    if kind == 21:
        return W() + N() + W() + b"#(" + W() + b".W(8)" + W() + b")" + W() + N() + W() + b"(" + Comment()
    if kind == 22:
        return W() + rng.choice([b"input", b"output"]) + W() + N() + W() + b"," + b"\r" + Comment()
    return W() + rng.choice([b"x = 2;", b"q <= d;", b"$display(x);", b"return x;", b"foo(a);", b"#10;",
                             b"a = b ? c : d;"])


def RandomText(rng):
    lines = [RandomLine(rng) for _ in range(rng.randrange(1, 30))]
    text = b"\n".join(lines)
    if rng.random() < 0.3:
        text = text.replace(b"\n", b"\r\n")
    if rng.random() < 0.3:
        text = bytes(rng.choice(b" \t\v\f\r") if ch == 0x20 and rng.random() < 0.2 else ch for ch in text)
    if rng.random() < 0.2:
        text = bytes(ch ^ 0x20 if 0x61 <= (ch | 0x20) <= 0x7A and rng.random() < 0.1 else ch for ch in text)
    if rng.random() < 0.2:
        pos = rng.randrange(len(text) + 1)
        text = text[:pos] + rng.choice([b"\r", b"\v", b"(", b")", b";", b",", b"/*", b"*/", b"\x00", b"\xc3\xa9"]) + \
            text[pos:]
    return text


kBlockVocabulary = [
    b"always @(posedge clk) begin", b"always @*", b"always_ff @(posedge c)", b"always_comb", b"always_latch begin",
    b"generate", b"endgenerate", b"begin", b"end", b"end else begin", b"end else", b"else", b"if (a)", b"if (a) begin",
    b"else if (b)", b"if(a) x = (b)", b"case (s)", b"casez (s)", b"casex(s)", b"endcase", b"IDLE:", b"default:",
    b"A: // c", b"B: x = 1;", b"2'b01:", b"x = 1;", b"q <= d;", b"// end", b"end // c", b"begin // x", b"", b"  ",
    b"assign y = z;", b"wire w;", b"reg r;", b"initial begin", b"module m;", b"endmodule", b"begin : blk",
    b"for (i=0;i<2;i=i+1) begin : g", b"if (a) // c", b"end end", b"begin begin", b"/* c */", b"if (a)\r",
    b"x = f(a) // if (b)", b"else begin", b"\vif (a)", b"IF (a)", b"Begin", b"END"
]
kInstanceVocabulary = [
    b"fifo u_fifo (", b"fifo u_fifo(", b"fifo   u_fifo ( // c", b"fifo u (.a(b),", b"fifo #(", b"fifo #(.W(8)) u (",
    b"fifo #( // p", b"fifo\t#(.W(8)) u(", b") u_f (", b") u_f ( // n", b".W(8),", b".D(4)", b"  parameter X = 1",
    b")", b");", b"); // end", b") ;", b"))", b"((", b"(", b".clk(clk),", b".din( data_in ), // data", b".dout(q)",
    b".x()", b".y(f(a)),", b".z({a,b}) // c", b".p(q), .r(s)", b".a(b)) ;", b"a, b,", b"// comment", b"", b"fifo",
    b"u_fifo (", b"fifo u_fifo", b"  (", b"( // ports", b"if (a) x = y;", b"end", b"sub u0 (.a(x), .b(y));",
    b"module m (", b"input a,", b"x = foo(a, b);", b"#(.W(8))", b".q(q),\t// t", b".a (b) ,", b"\t.a(b)"
]


def FocusedText(rng):
    vocabulary = rng.choice([kBlockVocabulary, kInstanceVocabulary])
    lines = [rng.choice([b"", b" ", b"  ", b"\t", b"    "]) + rng.choice(vocabulary) for _ in range(rng.randrange(2, 40))]
    return b"\n".join(lines)


# ---------------------------------------------------------------------------
# Known divergences: each function makes the model copy the engine's current behaviour.

def _ParamHeaderAlwaysSpaced():
    # The engine always puts one space between the parameter block's ")" and the instance name.
    def Header(raw, close_col, name, open_col):
        indent = len(raw) - len(ref.TrimLeft(raw))
        return ref.CollapseBlanks(raw[indent:close_col + 1]) + b" " + name + b" ("
    ref.SingleLineParamHeader = Header


KNOWN_DIVERGENCES = {
    "param-header-space": _ParamHeaderAlwaysSpaced,
}


def ApplyMasks(names):
    for name in names:
        KNOWN_DIVERGENCES[name]()


# ---------------------------------------------------------------------------


def Main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--lib", default=harness.kDefaultLibrary)
    parser.add_argument("--corpus", default=harness.kDefaultCorpus)
    parser.add_argument("--mutations", type=int, default=4, help="generated inputs per corpus file")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--random", type=int, default=2000, help="number of generated Verilog-like texts")
    parser.add_argument("--mask", action="append", default=[])
    parser.add_argument("--max-reports", type=int, default=10)
    parser.add_argument("--shrink-seconds", type=float, default=60.0)
    parser.add_argument("--file", action="append", default=[])
    args = parser.parse_args()

    ApplyMasks(args.mask)
    engine = harness.Engine(args.lib)
    rng = random.Random(args.seed)

    def Differs(data):
        return engine.Format(data) != ref.FormatEntry(data)

    files = args.file or harness.CorpusFiles(args.corpus, harness.kVerilogExtensions)
    compared = 0
    diverging = 0
    reports = []
    seen = set()
    sources = [(path, None) for path in files] + [("random", k) for k in range(args.random)]
    for path, _ in sources:
        if path == "random":
            inputs = [(b"random", RandomText(rng)), (b"focused", FocusedText(rng))]
        else:
            original = harness.ReadFile(path)
            inputs = [(b"file", original)]
            for _ in range(args.mutations):
                inputs.append(Mutations(original, rng))
        for kind, data in inputs:
            compared += 1
            if not Differs(data):
                continue
            diverging += 1
            if len(reports) >= args.max_reports:
                continue
            small = harness.ShrinkByDeltaDebugging(data, Differs, time.time() + args.shrink_seconds)
            if small in seen:
                continue
            seen.add(small)
            reports.append((path, kind, small))
            got = engine.Format(small)
            want = ref.FormatEntry(small)
            print("=" * 72)
            print("source: %s (%s)" % (path, kind.decode()))
            print("input:  %r" % small)
            print("engine: %r" % got)
            print("model:  %r" % want)
            print("first differing line: %r" % (harness.FirstDifferingLine(got, want),))
            sys.stdout.flush()
    print("=" * 72)
    print("files: %d, random texts: %d, inputs compared: %d, diverging inputs: %d, distinct reports: %d" %
          (len(files), args.random, compared, diverging, len(reports)))
    return 1 if diverging else 0


if __name__ == "__main__":
    sys.exit(Main())
