#!/usr/bin/env python3
"""A plain, slow reference of quill's linter, used to cross-check the engine.

Works on bytes throughout. Regular expressions follow the ECMAScript rules the
engine uses: "$" only at the very end of the subject (written here as \\Z),
"." excludes LF and CR (written as [^\\n\\r]), \\s is [ \\t\\n\\v\\f\\r], \\w is
[A-Za-z0-9_], and case folding is ASCII only (Python's behaviour for bytes
patterns).

Usage: lint_reference.py FILE   prints the JSON report of FILE.
"""

import bisect
import re
import sys

I = re.IGNORECASE

# ---------------------------------------------------------------------------
# Names: case-insensitive sets and maps that keep the first spelling.


def Fold(name):
    return name.lower()  # bytes.lower() folds ASCII letters only


class NameMap:
    """Map keyed by ASCII-case-folded name; each key keeps its first spelling."""

    def __init__(self):
        self.entries = {}  # folded -> [spelling, value]

    def __contains__(self, name):
        return Fold(name) in self.entries

    def Get(self, name, default=None):
        entry = self.entries.get(Fold(name))
        return default if entry is None else entry[1]

    def Set(self, name, value):
        key = Fold(name)
        if key in self.entries:
            self.entries[key][1] = value
        else:
            self.entries[key] = [name, value]

    def Spelling(self, name):
        return self.entries[Fold(name)][0]

    def Items(self):
        return [(spelling, value) for spelling, value in self.entries.values()]


class NameSet(NameMap):
    def Insert(self, name):
        if name not in self:
            self.Set(name, None)

    def Names(self):
        return [spelling for spelling, _ in self.entries.values()]


# ---------------------------------------------------------------------------
# Keywords, identifiers and literals.

kKeywordWords = b"""always and assign automatic begin buf bufif0 bufif1 case casex casez cell cmos config
deassign default defparam design disable edge else end endcase endconfig endfunction endgenerate endmodule
endprimitive endspecify endtable endtask event for force forever fork function generate genvar highz0
highz1 if ifnone incdir include initial inout input instance integer join large liblist library localparam
macromodule medium module nand negedge nmos nor noshowcancelled not notif0 notif1 or output parameter pmos
posedge primitive pull0 pull1 pulldown pullup pulsestyle_onevent pulsestyle_ondetect rcmos real realtime
reg release repeat rnmos rpmos rtran rtranif0 rtranif1 scalared showcancelled signed small specify
specparam strong0 strong1 supply0 supply1 table task time tran tranif0 tranif1 tri tri0 tri1 triand trior
trireg unsigned use uwire vectored wait wand weak0 weak1 while wire wor xnor xor always_comb always_ff
always_latch logic bit byte shortint int longint enum struct typedef package endpackage import interface
endinterface modport program endprogram class endclass virtual extends const static protected local rand
randc ref continue break return do foreach unique priority""".split()
assert len(kKeywordWords) == 162, len(kKeywordWords)
kKeywordSet = set(Fold(w) for w in kKeywordWords)

kIdentifierPattern = re.compile(rb"\b([a-zA-Z_]\w*)\b")
kSizedLiteralPattern = re.compile(rb"\b\d+\s*'\s*[bhdoBHDO]\s*\w+", I)
kDigitsPattern = re.compile(rb"^\d+\Z")
kSizedPrefixPattern = re.compile(rb"^\d+'[bhdo]\Z", I)
kLeadingWordPattern = re.compile(rb"^(\w+)")

C_SPACE = b" \t\n\v\f\r"  # C isspace in the C locale
TRIM_STR = b" \t\r"
BLANKS = b" \t\n\r"


def IsKeyword(word):
    return Fold(word) in kKeywordSet


def ExtractIdentifiers(text):
    return [m.group(1) for m in kIdentifierPattern.finditer(text)]


def IsNumberToken(word):
    return kDigitsPattern.match(word) is not None or kSizedPrefixPattern.match(word) is not None


def StripSizedLiterals(text):
    return kSizedLiteralPattern.sub(b" ", text)


def LeadingWord(text):
    m = kLeadingWordPattern.match(text.lstrip(TRIM_STR))
    return m.group(1) if m else b""


def IsAlnum(c):
    return (48 <= c <= 57) or (65 <= c <= 90) or (97 <= c <= 122)


def IsWordByte(c):
    return IsAlnum(c) or c == 95


def LinesBefore(text, pos):
    return text.count(b"\n", 0, pos)


# ---------------------------------------------------------------------------
# Model.

WIRE, REG, LOGIC, INPUT, OUTPUT, INOUT = range(6)


class SignalDecl:
    def __init__(self, name, rng, line, kind, isReg, isLogic):
        self.name, self.range, self.line, self.kind = name, rng, line, kind
        self.isReg, self.isLogic = isReg, isLogic


class ParamDecl:
    def __init__(self, name, value, line):
        self.name, self.value, self.line = name, value, line


class ContAssign:
    def __init__(self, line, target, lhs, rhs, lhsNames):
        self.line, self.target, self.lhs, self.rhs, self.lhsNames = line, target, lhs, rhs, lhsNames


class AssignmentRecord:
    def __init__(self, target, rhs, line, indexed):
        self.target, self.rhs, self.line, self.indexed = target, rhs, line, indexed


class AlwaysBlock:
    def __init__(self):
        self.startLine = 0
        self.endLine = 0
        self.sensitivity = b""
        self.isSequential = False
        self.isCombinational = False
        self.assignedSignals = []
        self.assignments = []
        self.blockingCount = 0
        self.nonBlockingCount = 0
        self.latchRisk = False
        self.latchReason = b""


class InstanceRecord:
    def __init__(self, name, line):
        self.name, self.line = name, line


class ModuleModel:
    def __init__(self):
        self.moduleName = b""
        self.signals = []
        self.parameters = []
        self.assigns = []
        self.alwaysBlocks = []
        self.declaredNames = NameSet()
        self.usedIdentifiers = NameSet()
        self.drivenSignals = NameSet()
        self.firstUseLine = NameMap()
        self.identifierCounts = NameMap()
        self.instances = []
        self.portNames = NameSet()


def RecordFirstUse(model, name, line):
    if name not in model.firstUseLine:
        model.firstUseLine.Set(name, line)
    elif line < model.firstUseLine.Get(name):
        model.firstUseLine.Set(name, line)


def RecordUses(text, line, model):
    for ident in ExtractIdentifiers(StripSizedLiterals(text)):
        if IsKeyword(ident) or IsNumberToken(ident):
            continue
        model.usedIdentifiers.Insert(ident)
        RecordFirstUse(model, ident, line)


# ---------------------------------------------------------------------------
# Text preparation.


def StripComments(text):
    out = bytearray(text)
    n = len(out)
    i = 0
    while i < n:
        if i + 1 < n and out[i] == 0x2F and out[i + 1] == 0x2A:
            end = n
            j = i + 2
            while j + 1 < n:
                if out[j] == 0x2A and out[j + 1] == 0x2F:
                    end = j + 2
                    break
                j += 1
            for k in range(i, end):
                if out[k] != 10 and out[k] != 13:
                    out[k] = 0x20
            i = end
        elif i + 1 < n and out[i] == 0x2F and out[i + 1] == 0x2F:
            end = out.find(b"\n", i)
            if end < 0:
                end = n
            for k in range(i, end):
                out[k] = 0x20
            i = end
        else:
            i += 1
    return bytes(out)


# ---------------------------------------------------------------------------
# Declarations.

kDeclLinePattern = re.compile(rb"^\s*(input|output|inout|wire|reg|logic)\b\s+([^\n\r]+)", I)
kDeclTypePattern = re.compile(rb"^(wire|reg|logic)\s+", I)
kDeclSignPattern = re.compile(rb"^(signed|unsigned)\s+", I)
kDeclRangePattern = re.compile(rb"^(\[[^\]]*\])\s*")
kDeclKeywordStartPattern = re.compile(rb"^(input|output|inout|wire|reg|logic)\b", I)
kSimpleIdentifierPattern = re.compile(rb"^[a-zA-Z_]\w*\Z")
kBracketGroupPattern = re.compile(rb"\[[^\]]*\]")


def ExtractDeclarations(text, model):
    lines = text.split(b"\n")
    if text.endswith(b"\n"):
        lines.pop()
    lines = [line.rstrip(b"\r") for line in lines]
    k = 0
    while k < len(lines):
        m = kDeclLinePattern.search(lines[k])
        if not m:
            k += 1
            continue
        keyword = m.group(1).lower()
        rest = m.group(2).rstrip(b" \r\t")
        declLine = k
        typeWord = b""
        t = kDeclTypePattern.match(rest)
        if t:
            typeWord = t.group(1).lower()
            rest = rest[t.end():].lstrip(TRIM_STR)
        s = kDeclSignPattern.match(rest)
        if s:
            rest = rest[s.end():]
        rng = b""
        r = kDeclRangePattern.match(rest)
        if r:
            rng = r.group(1)
            rest = rest[r.end():]
        while b";" not in rest and b")" not in rest and k + 1 < len(lines):
            nxt = lines[k + 1].strip(TRIM_STR)
            if kDeclKeywordStartPattern.match(nxt):
                break
            rest = rest + b" " + nxt
            k += 1
        rest = rest.rstrip(b";), \t\r")
        kind = {b"input": INPUT, b"output": OUTPUT, b"inout": INOUT, b"reg": REG, b"logic": LOGIC}.get(keyword, WIRE)
        if keyword not in (b"input", b"output", b"inout"):
            if typeWord == b"reg":
                kind = REG
            elif typeWord == b"logic":
                kind = LOGIC
        isReg = keyword == b"reg" or typeWord == b"reg"
        isLogic = keyword == b"logic" or typeWord == b"logic"
        for piece in rest.split(b","):
            eq = piece.find(b"=")
            if eq >= 0:
                piece = piece[:eq]
            piece = kBracketGroupPattern.sub(b"", piece).strip(TRIM_STR)
            if piece and kSimpleIdentifierPattern.match(piece):
                model.signals.append(SignalDecl(piece, rng, declLine, kind, isReg, isLogic))
                model.declaredNames.Insert(piece)
                if kind >= INPUT:
                    model.portNames.Insert(piece)
        k += 1


# ---------------------------------------------------------------------------
# Parameters and continuous assignments.

kParameterPattern = re.compile(
    rb"\b(parameter|localparam)\b(?:\s+(\[[^\]]*\]))?(?:\s+(signed|integer|real|realtime|time))?"
    rb"\s+(\w+)\s*=\s*([^;,]+)", I)


def ExtractParameters(text, model):
    for m in kParameterPattern.finditer(text):
        name = m.group(4)
        value = m.group(5)
        if value.strip(BLANKS):
            value = value.strip(TRIM_STR)
        model.parameters.append(ParamDecl(name, value, LinesBefore(text, m.start())))
        model.declaredNames.Insert(name)


def LhsNames(lhs):
    t = lhs.strip(TRIM_STR)
    if not t:
        return []
    if t[0:1] != b"{":
        w = LeadingWord(t)
        return [w] if w else []
    names = []
    if len(t) < 2:
        return names
    depth = 0
    s = 1
    for i in range(1, len(t)):
        c = t[i:i + 1]
        if c == b"{":
            depth += 1
        elif c == b"}":
            if depth == 0:
                for piece in t[s:i].split(b","):
                    names.append(LeadingWord(piece))
                return names
            depth -= 1
        elif c == b"," and depth == 0:
            names.append(LeadingWord(t[s:i]))
            s = i + 1
    return names


def ExtractContinuousAssigns(text, model):
    n = len(text)
    pos = 0
    while True:
        p = text.find(b"assign", pos)
        if p < 0:
            return
        if p > 0 and IsWordByte(text[p - 1]):
            pos = p + 6
            continue
        pos = p + 6
        if pos < n and text[pos] not in C_SPACE:
            continue
        while pos < n and text[pos] in C_SPACE:
            pos += 1
        i = pos
        op = -1
        while i < n:
            if text[i] == 0x3D:
                if text[i - 1] in b"=<>!":
                    i += 1
                elif i + 1 < n and text[i + 1] == 0x3D:
                    i += 2
                else:
                    op = i
                    break
            else:
                i += 1
        if op < 0:
            return
        lhs = text[pos:op].strip(TRIM_STR)
        semi = text.find(b";", op + 1)
        if semi < 0:
            return
        rhs = text[op + 1:semi].strip(TRIM_STR)
        names = LhsNames(lhs)
        model.assigns.append(ContAssign(LinesBefore(text, p), names[0] if names else b"", lhs, rhs, names))
        for name in names:
            model.drivenSignals.Insert(name)
        pos = semi + 1


# ---------------------------------------------------------------------------
# Always blocks.

kAlwaysKeywordPattern = re.compile(rb"\balways(_(comb|ff|latch))?\b", I)
kBeginEndPattern = re.compile(rb"\bbegin\b|\bend\b", I)
kLeadingBeginPattern = re.compile(rb"^\s*begin\b", I)
kTrailingEndPattern = re.compile(rb"\bend\s*\Z", I)
kNonBlockingTargetPattern = re.compile(rb"(\w+)\s*<=")
kBlockingTargetPattern = re.compile(rb"(\w+)\s*=\s*(?!\s*=)")
kElseIfPattern = re.compile(rb"\belse\s+if\b", I)
kIfPattern = re.compile(rb"\bif\b", I)
kElsePattern = re.compile(rb"\belse\b", I)
kCaseWordPattern = re.compile(rb"\bcase\b", I)
kCaseStartPattern = re.compile(rb"^case\b", I)
kEndcaseStartPattern = re.compile(rb"^endcase\b", I)
kDefaultPattern = re.compile(rb"\bdefault\s*:", I)
kCaseOrEndcaseAhead = re.compile(rb"(?=case|endcase)", I)


def StripDelimited(text, opening, closing):
    out = bytearray()
    depth = 0
    for c in text:
        if c == opening:
            depth += 1
        elif c == closing:
            depth -= 1
        elif depth == 0:
            out.append(c)
    return bytes(out)


def StripParenthesized(text):
    return StripDelimited(text, 0x28, 0x29)


def StripBracketed(text):
    return StripDelimited(text, 0x5B, 0x5D)


def CaseEvents(work):
    """The positions where the case-end walk changes its counter: +1 at a lower-case "case" word start
    (also the one inside "endcase"), -1 at an "endcase" of any spelling."""
    positions, steps = [], []
    for candidate in kCaseOrEndcaseAhead.finditer(work):
        i = candidate.start()
        if work.startswith(b"case", i) and kCaseStartPattern.match(work[i:i + 5]):
            positions.append(i)
            steps.append(1)
        elif work[i] in b"eE" and kEndcaseStartPattern.match(work[i:i + 8]):
            positions.append(i)
            steps.append(-1)
    return positions, steps


class CaseEndFinder:
    """Walks from a case word with a counter from 0; the end is the endcase met while the counter is 1.

    Indexed by prefix sums so that deeply nested bodies do not take quadratic time; the result is the
    position the plain walk would stop at, or -1."""

    def __init__(self, work):
        self.positions, steps = CaseEvents(work)
        self.before = []  # counter sum of all earlier events
        total = 0
        self.endsAtSum = {}  # sum before an endcase event -> its event indexes, ascending
        for k, step in enumerate(steps):
            self.before.append(total)
            if step < 0:
                self.endsAtSum.setdefault(total, []).append(k)
            total += step

    def End(self, c):
        s = bisect.bisect_left(self.positions, c)
        if s == len(self.positions):
            return -1
        candidates = self.endsAtSum.get(self.before[s] + 1, [])
        j = bisect.bisect_left(candidates, s)
        return self.positions[candidates[j]] if j < len(candidates) else -1


def ScanAssignments(text, op, startLine, model, block):
    pos = 0
    n = len(text)
    while True:
        q = text.find(op, pos)
        if q < 0:
            return
        if op == b"=" and q + 1 < n and text[q + 1] == 0x3D:
            pos = q + 2
            continue
        line = startLine + LinesBefore(text, q)
        j = q
        while j > 0 and text[j - 1] in C_SPACE:
            j -= 1
        indexed = False
        if j > 0 and text[j - 1] == 0x5D:
            indexed = True
            depth = 0
            k = j - 1
            while k >= 0:
                if text[k] == 0x5D:
                    depth += 1
                elif text[k] == 0x5B:
                    depth -= 1
                k -= 1
                if depth == 0:
                    break
            j = k + 1
            while j > 0 and text[j - 1] in C_SPACE:
                j -= 1
        e = j
        while j > 0 and IsWordByte(text[j - 1]):
            j -= 1
        target = text[j:e]
        if not target or IsKeyword(target) or IsNumberToken(target):
            pos = q + len(op)
            continue
        start = q + len(op)
        end = n
        for stop in (text.find(b";", q), text.find(b"\n", q)):
            if stop >= 0 and stop < end:
                end = stop
        rhs = text[start:end] if end >= start else b""
        RecordUses(rhs, line, model)
        block.assignments.append(AssignmentRecord(target, rhs.strip(TRIM_STR), line, indexed))
        pos = q + len(op)


def AnalyzeAlwaysBody(body, block, bodyStartLine, model):
    work = kLeadingBeginPattern.sub(b"", body, count=1)
    work = kTrailingEndPattern.sub(b"", work, count=1)
    RecordUses(work, bodyStartLine, model)
    stripped = StripBracketed(StripParenthesized(work))
    for m in kNonBlockingTargetPattern.finditer(stripped):
        name = m.group(1)
        if IsKeyword(name):
            continue
        if name not in block.assignedSignals:
            block.assignedSignals.append(name)
        block.nonBlockingCount += 1
    for m in kBlockingTargetPattern.finditer(stripped):
        name = m.group(1)
        if IsKeyword(name):
            continue
        if name not in block.assignedSignals:
            block.assignedSignals.append(name)
        block.blockingCount += 1
    if block.isCombinational:
        noElseIf = kElseIfPattern.sub(b"", work)
        ifs = len(kIfPattern.findall(noElseIf))
        elses = len(kElsePattern.findall(noElseIf))
        if ifs > elses:
            block.latchRisk = True
            block.latchReason = b"if without else (if:%d else:%d)" % (ifs, elses)
        caseEnds = CaseEndFinder(work)
        for m in kCaseWordPattern.finditer(work):
            c = m.start()
            end = caseEnds.End(c)
            caseEnd = min(end + 7, len(work)) if end >= 0 else len(work)
            # The case text is work[c:caseEnd]; searching it in place sees the same word boundaries, since
            # a default cannot start at the "case" word itself.
            if not kDefaultPattern.search(work, c, caseEnd):
                block.latchRisk = True
                if not block.latchReason:
                    block.latchReason = b"case without default"
                else:
                    block.latchReason += b"; case without default"
    scanned = StripParenthesized(work)
    ScanAssignments(scanned, b"<=", bodyStartLine, model, block)
    ScanAssignments(scanned, b"=", bodyStartLine, model, block)


def ExtractAlwaysBlocks(text, model):
    n = len(text)
    for m in kAlwaysKeywordPattern.finditer(text):
        p = m.start()
        block = AlwaysBlock()
        block.startLine = LinesBefore(text, p)
        at = text.find(b"@", p)
        if at < 0:
            continue
        openParen = text.find(b"(", at)
        if openParen < 0:
            continue
        close = openParen
        depth = 1
        for i in range(openParen + 1, n):
            if text[i] == 0x28:
                depth += 1
            elif text[i] == 0x29:
                depth -= 1
                if depth == 0:
                    close = i
                    break
        block.sensitivity = text[at:close + 1]
        head = text[p:p + 20]
        s = close + 1
        while s < n and text[s] in C_SPACE:
            s += 1
        if s < n and text[s] == 0x3A:
            s += 1
            while s < n and text[s] in C_SPACE:
                s += 1
        bodyStartLine = LinesBefore(text, s)
        block.isSequential = (b"posedge" in block.sensitivity or b"negedge" in block.sensitivity
                              or b"always_ff" in head)
        block.isCombinational = (b"*" in block.sensitivity or b"always_comb" in head or b"always_latch" in head
                                 or not block.isSequential)
        if text[s:s + 5] == b"begin":
            depth = 0
            bodyEnd = n
            for bm in kBeginEndPattern.finditer(text, s):
                if bm.group(0) in (b"begin", b"Begin", b"BEGIN"):
                    depth += 1
                else:
                    depth -= 1
                    if depth == 0:
                        bodyEnd = bm.end()
                        break
        else:
            semi = text.find(b";", s)
            if semi < 0:
                continue
            bodyEnd = semi + 1
        block.endLine = LinesBefore(text, bodyEnd)
        AnalyzeAlwaysBody(text[s:bodyEnd], block, bodyStartLine, model)
        model.alwaysBlocks.append(block)
        for name in block.assignedSignals:
            model.drivenSignals.Insert(name)


# ---------------------------------------------------------------------------
# Instances.

kNotInstanceLinePattern = re.compile(rb"^\s*(module|input|output|inout|wire|reg|assign|always|initial|end|endmodule)\b")
kParamInstanceStartPattern = re.compile(rb"^(\w+)\s+#\s*\(")
kInstanceNameAfterParamsPattern = re.compile(rb"(\w+)\s*\(")
kInstanceHeadPattern = re.compile(rb"^(\w+)\s+(?:#\s*\([^\n\r]*?\)\s+)?(\w+)\s*\(\s*([^\n\r]*)")
kConnectionHeadPattern = re.compile(rb"\.\w+\s*\(")


def NamedConnections(stretch):
    """The connections ".port( value )" of an instance, as (start, value) pairs, left to right.

    Reads like a search for \\.\\w+\\s*\\(\\s*([^)]+?)\\s*\\) (no nesting: the value ends at the first ")"),
    but scans by hand, since that expression backtracks cubically on long runs of blanks: the value is
    the text up to the first ")" with its blanks trimmed, and a value of blanks only keeps its last
    byte (the lazy group must take one byte). Empty parentheses do not match; the search goes on one
    byte after their dot."""
    found = []
    pos = 0
    while True:
        dot = stretch.find(b".", pos)
        if dot < 0:
            return found
        head = kConnectionHeadPattern.match(stretch, dot)
        if not head:
            pos = dot + 1
            continue
        close = stretch.find(b")", head.end())
        if close < 0:
            return found  # no later dot can find a ")" either
        if close == head.end():
            pos = dot + 1
            continue
        inner = stretch[head.end():close]
        value = inner.strip(C_SPACE)
        if value:
            start = head.end() + len(inner) - len(inner.lstrip(C_SPACE))
        else:
            value = inner[-1:]
            start = close - 1
        found.append((start, value))
        pos = close + 1


def ExtractInstances(text, model):
    n = len(text)
    lineStarts = [0]
    for i in range(n):
        if text[i] == 10:
            lineStarts.append(i + 1)
    k = 0
    while k < len(lineStarts):
        lineStart = lineStarts[k]
        lineEnd = lineStarts[k + 1] - 1 if k + 1 < len(lineStarts) else n
        line = text[lineStart:lineEnd]
        if kNotInstanceLinePattern.match(line):
            k += 1
            continue
        lead = 0
        while lead < len(line) and line[lead] in BLANKS:
            lead += 1
        trimmed = line[lead:]
        base = lineStart + lead
        found = None  # (type, name, connection start)
        pm = kParamInstanceStartPattern.match(trimmed)
        if pm:
            openParen = base + pm.end() - 1
            depth = 1
            close = -1
            for i in range(openParen + 1, n):
                if text[i] == 0x28:
                    depth += 1
                elif text[i] == 0x29:
                    depth -= 1
                    if depth == 0:
                        close = i
                        break
            if close >= 0:
                j = close + 1
                while j < n and text[j] in C_SPACE:
                    j += 1
                nm = kInstanceNameAfterParamsPattern.match(text, j)
                if nm:
                    found = (pm.group(1), nm.group(1), nm.end())
        if found is None:
            hm = kInstanceHeadPattern.match(trimmed)
            if hm:
                found = (hm.group(1), hm.group(2), base + hm.start(3))
        if found is None:
            k += 1
            continue
        typeName, name, connStart = found
        if IsKeyword(typeName) or IsKeyword(name):
            k += 1
            continue
        model.instances.append(InstanceRecord(name, k))
        close = text.find(b");", connStart)
        # The stretch includes the closing ");": its ")" can close a last
        # connection whose own ")" is missing.
        connEnd = close + 2 if close >= 0 else n
        for start, value in NamedConnections(text[connStart:connEnd]):
            RecordUses(value, bisect.bisect_right(lineStarts, connStart + start) - 1, model)
        if close < 0:
            return
        k = bisect.bisect_right(lineStarts, close)


# ---------------------------------------------------------------------------
# Usage collection, identifier counts, ports.

kModuleNamePattern = re.compile(rb"\bmodule\s+(\w+)", I)
kPortKeywordPattern = re.compile(rb"\b(input|output|inout)\b", I)


def CollectUses(model):
    for a in model.assigns:
        for ident in ExtractIdentifiers(StripSizedLiterals(a.rhs)):
            if IsKeyword(ident) or IsNumberToken(ident):
                continue
            model.usedIdentifiers.Insert(ident)
            RecordFirstUse(model, ident, a.line)
    for b in model.alwaysBlocks:
        for ident in ExtractIdentifiers(StripSizedLiterals(b.sensitivity)):
            if IsKeyword(ident) or IsNumberToken(ident) or ident in (b"posedge", b"negedge"):
                continue
            model.usedIdentifiers.Insert(ident)
            RecordFirstUse(model, ident, b.startLine)


def CountIdentifiersAndPorts(text, model):
    for ident in ExtractIdentifiers(text):
        if IsKeyword(ident) or IsNumberToken(ident):
            continue
        model.identifierCounts.Set(ident, model.identifierCounts.Get(ident, 0) + 1)
    for m in kPortKeywordPattern.finditer(text):
        e = m.end()
        ends = [x for x in (text.find(b";", e), text.find(b")", e)) if x >= 0]
        stop = min(ends) if ends else len(text)
        for ident in ExtractIdentifiers(text[e:stop]):
            if not IsKeyword(ident):
                model.portNames.Insert(ident)


# ---------------------------------------------------------------------------
# Checks.


class Diagnostic:
    def __init__(self, severity, line, check, message):
        self.severity, self.line, self.check, self.message = severity, line, check, message


def OrderedByFirstFinding(groups):
    """groups: list of (name, [Diagnostic...]) with at least one finding each."""
    groups = [g for g in groups if g[1]]
    groups.sort(key=lambda g: (g[1][0].line, g[0]))
    out = []
    for _, findings in groups:
        out.extend(findings)
    return out


def CheckLatch(model):
    out = []
    for b in model.alwaysBlocks:
        if b.isCombinational and b.latchRisk:
            out.append(Diagnostic(b"warning", b.startLine, b"latch",
                                  b.latchReason if b.latchReason else b"potential latch in combinational always"))
    return out


def CheckMultiDriver(model):
    assignLines = NameMap()
    for a in model.assigns:
        for name in a.lhsNames:
            if name not in assignLines:
                assignLines.Set(name, [])
            assignLines.Get(name).append(a.line)
    alwaysLines = NameMap()
    for b in model.alwaysBlocks:
        for name in b.assignedSignals:
            if name not in alwaysLines:
                alwaysLines.Set(name, [])
            alwaysLines.Get(name).append(b.startLine)
    names = NameSet()
    for name, _ in assignLines.Items():
        names.Insert(name)
    for name, _ in alwaysLines.Items():
        names.Insert(name)
    groups = []
    for name in names.Names():
        al = assignLines.Get(name, [])
        wl = alwaysLines.Get(name, [])
        distinctAlways = sorted(set(wl))
        A = len(set(al))
        W = len(distinctAlways)
        findings = []
        if W >= 2:
            findings.append(Diagnostic(
                b"error", min(wl), b"multi-driver", b"signal '" + name + b"' driven in %d always blocks (lines: " % W +
                b", ".join(b"%d" % x for x in distinctAlways) + b")"))
        if A >= 1 and W >= 1:
            findings.append(Diagnostic(b"error", min(min(al), min(wl)), b"multi-driver",
                                       b"signal '" + name + b"' driven by both assign and always"))
        groups.append((name, findings))
    return OrderedByFirstFinding(groups)


INT32_MAX = 2**31 - 1
kRangeNumbersPattern = re.compile(rb"\[[ \t\n\r]*(\d+)[ \t\n\r]*:[ \t\n\r]*(\d+)[ \t\n\r]*\]\Z")
kSizedWidthPattern = re.compile(rb"^(\d+)\s*'\s*[bhdo]", I)
kWholeDigitsPattern = re.compile(rb"^\d+\Z")
kSingleWordPattern = re.compile(rb"^(\w+\Z)")


def DeclaredWidth(decl):
    if not decl.range:
        return 1
    m = kRangeNumbersPattern.match(decl.range)
    if not m:
        return 1
    msb, lsb = int(m.group(1)), int(m.group(2))
    if msb > INT32_MAX or lsb > INT32_MAX:
        return 1
    width = abs(msb - lsb) + 1
    if width > INT32_MAX:
        return 1
    return width


def ExpressionWidth(text, widths):
    t = text.strip(BLANKS)
    m = kSizedWidthPattern.match(t)
    if m:
        size = int(m.group(1))
        return size if size <= INT32_MAX else -1
    if kWholeDigitsPattern.match(t):
        return -1
    m = kSingleWordPattern.match(t)
    if m:
        return widths.Get(m.group(1), -1)
    return -1


def CheckWidthMismatch(model):
    widths = NameMap()
    for s in model.signals:
        if s.name not in widths:
            widths.Set(s.name, DeclaredWidth(s))
    out = []
    for a in model.assigns:
        if b"[" in a.lhs or b"{" in a.lhs:
            continue
        if a.target not in widths:
            continue
        L = widths.Get(a.target)
        if L < 1:
            continue
        R = ExpressionWidth(a.rhs, widths)
        if R >= 1 and R != L:
            out.append(Diagnostic(b"warning", a.line, b"width-mismatch",
                                  b"assign '" + a.target + b"' LHS=%dbit RHS=%dbit" % (L, R)))
    return out


def CheckBlockingAssign(model):
    out = []
    for b in model.alwaysBlocks:
        if b.isSequential and b.blockingCount >= 1:
            out.append(Diagnostic(b"warning", b.startLine, b"blocking-assign",
                                  b"sequential always uses '=' (%dx), suggest '<='" % b.blockingCount))
        if b.isCombinational and b.nonBlockingCount >= 1:
            out.append(Diagnostic(b"warning", b.startLine, b"blocking-assign",
                                  b"combinational always uses '<=' (%dx), suggest '='" % b.nonBlockingCount))
    return out


def GroupExact(pairs):
    groups = {}
    for name, value in pairs:
        groups.setdefault(name, []).append(value)
    return groups


def CheckDuplicateDefine(model):
    out = []
    groups = []
    for name, entries in GroupExact((s.name, (s.line, s.kind)) for s in model.signals).items():
        if len(entries) < 2:
            continue
        kinds = set(kind for _, kind in entries)
        if kinds == {WIRE, INPUT}:
            continue
        groups.append((name, [Diagnostic(b"warning", entries[1][0], b"dupli-define",
                                         b"signal '" + name + b"' defined %d times" % len(entries))]))
    out.extend(OrderedByFirstFinding(groups))
    groups = []
    for name, lines in GroupExact((p.name, p.line) for p in model.parameters).items():
        if len(lines) < 2:
            continue
        groups.append((name, [Diagnostic(b"warning", lines[1], b"dupli-define",
                                         b"parameter '" + name + b"' defined %d times" % len(lines))]))
    out.extend(OrderedByFirstFinding(groups))
    return out


def CheckRepeatedAssign(model):
    lists = NameMap()
    for a in model.assigns:
        if b"{" in a.lhs or b"[" in a.lhs:
            continue
        for name in a.lhsNames:
            if name not in lists:
                lists.Set(name, [])
            lists.Get(name).append(a.line)
    groups = []
    for name, lines in lists.Items():
        if len(lines) >= 2:
            groups.append((name, [Diagnostic(b"warning", lines[0], b"repeated-assig",
                                             b"signal '" + name + b"' assigned %d times by assign" % len(lines))]))
    return OrderedByFirstFinding(groups)


def CheckUsedBeforeDeclare(model):
    declLines = NameMap()
    for s in model.signals:
        if s.name not in declLines:
            declLines.Set(s.name, s.line)
    groups = []
    for name, useLine in model.firstUseLine.Items():
        if name in declLines:
            d = declLines.Get(name)
            if useLine < d:
                groups.append((name, [Diagnostic(
                    b"warning", useLine, b"used-bef-declare",
                    b"signal '" + name + b"' used at line %d before declaration at line %d" % (useLine + 1, d + 1))]))
    return OrderedByFirstFinding(groups)


def CheckCombLoop(model):
    out = []
    for a in model.assigns:
        for name in a.lhsNames:
            if re.search(rb"\b" + name + rb"\b", a.rhs, I):
                out.append(Diagnostic(b"warning", a.line, b"comb-loop", b"assign '" + name + b"' feeds back to itself"))
    for b in model.alwaysBlocks:
        if b.isSequential:
            continue
        for rec in b.assignments:
            if re.search(rb"\b" + rec.target + rb"\b", rec.rhs, I):
                out.append(Diagnostic(b"warning", rec.line, b"comb-loop",
                                      b"signal '" + rec.target + b"' feeds back to itself in always"))
    return out


def CheckDuplicateInstance(model):
    groups = []
    for name, lines in GroupExact((r.name, r.line) for r in model.instances).items():
        if len(lines) >= 2:
            groups.append((name, [Diagnostic(
                b"error", lines[1], b"dupli-inst", b"instance '" + name + b"' instantiated %d times (lines: " % len(lines) +
                b", ".join(b"%d" % (x + 1) for x in lines) + b")")]))
    return OrderedByFirstFinding(groups)


def FindDeclaration(model, name):
    for s in model.signals:
        if Fold(s.name) == Fold(name):
            return s
    return None


def CheckRegAssign(model):
    out = []
    for a in model.assigns:
        for name in a.lhsNames:
            d = FindDeclaration(model, name)
            if d is not None and d.isReg and not d.isLogic:
                out.append(Diagnostic(b"error", a.line, b"reg-assign",
                                      b"reg signal '" + name + b"' cannot be assigned by continuous assignment "
                                      b"(use wire instead)"))
    return out


def CheckWireAlways(model):
    out = []
    for b in model.alwaysBlocks:
        for name in b.assignedSignals:
            d = FindDeclaration(model, name)
            if d is None or d.isLogic:
                continue
            if d.kind in (WIRE, INPUT, INOUT) or (d.kind == OUTPUT and not d.isReg):
                out.append(Diagnostic(b"error", b.startLine, b"wire-always",
                                      b"wire signal '" + name + b"' cannot be assigned in always block "
                                      b"(use reg instead)"))
    return out


def RunChecks(model):
    out = []
    for check in (CheckLatch, CheckMultiDriver, CheckWidthMismatch, CheckBlockingAssign, CheckDuplicateDefine,
                  CheckRepeatedAssign, CheckUsedBeforeDeclare, CheckCombLoop, CheckDuplicateInstance, CheckRegAssign,
                  CheckWireAlways):
        out.extend(check(model))
    return out


# ---------------------------------------------------------------------------
# Report.


def EscapeJson(s):
    out = bytearray()
    for c in s:
        if c == 9:
            out += b"\\t"
        elif c == 10:
            out += b"\\n"
        elif c == 13:
            out += b"\\r"
        elif c == 0x22:
            out += b'\\"'
        elif c == 0x5C:
            out += b"\\\\"
        else:
            out.append(c)
    return bytes(out)


def RenderReport(diagnostics):
    parts = [b"["]
    for k, d in enumerate(diagnostics):
        if k > 0:
            parts.append(b",")
        parts.append(b'{"severity":"' + EscapeJson(d.severity) + b'",' + b'"line":' + b"%d" % d.line + b"," +
                     b'"check":"' + EscapeJson(d.check) + b'",' + b'"message":"' + EscapeJson(d.message) + b'"}')
    parts.append(b"]")
    return b"".join(parts)


def BuildModel(source):
    model = ModuleModel()
    if not source:
        return model
    text = StripComments(source).replace(b"\t", b" ")
    m = kModuleNamePattern.search(text)
    model.moduleName = m.group(1) if m else b""
    ExtractDeclarations(text, model)
    ExtractParameters(text, model)
    ExtractContinuousAssigns(text, model)
    ExtractAlwaysBlocks(text, model)
    ExtractInstances(text, model)
    CollectUses(model)
    CountIdentifiersAndPorts(text, model)
    return model


def LintText(source):
    model = BuildModel(source)
    if not model.moduleName and not model.signals:
        return b"[]"
    return RenderReport(RunChecks(model))


if __name__ == "__main__":
    with open(sys.argv[1], "rb") as f:
        sys.stdout.buffer.write(LintText(f.read()) + b"\n")
