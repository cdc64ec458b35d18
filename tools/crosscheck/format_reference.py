#!/usr/bin/env python3
"""Straightforward Python model of quill's formatter, used to cross-check the engine.

The model works on bytes and follows the formatter's rules step by step, without
any attempt at speed. Regular expressions are written in the engine's dialect
(ECMAScript) and translated for Python's `re` by `Compile`:
  - "$" means the very end of the subject only (Python's \\Z);
  - "." matches any byte but LF and CR;
  - case-insensitive matching folds ASCII letters only (bytes patterns).
Match iteration resumes one byte further after an empty match, as the engine does.

Entry points: `FormatEntry(text)` models the exported format call (blank and
foreign-source handling, then the pipeline); `FormatText(text)` is the pipeline.
"""

import re
import sys

# ---------------------------------------------------------------------------
# Regular expressions


def Compile(source, icase=False):
    """Translates an ECMAScript pattern (str) into a compiled Python bytes pattern."""
    out = []
    i = 0
    n = len(source)
    while i < n:
        ch = source[i]
        if ch == "\\":
            out.append(source[i:i + 2])
            i += 2
        elif ch == "[":
            j = i + 1
            if j < n and source[j] == "^":
                j += 1
            while j < n and source[j] != "]":
                if source[j] == "\\":
                    j += 1
                j += 1
            out.append(source[i:j + 1])
            i = j + 1
        elif ch == ".":
            out.append("[^\\n\\r]")
            i += 1
        elif ch == "$":
            out.append("\\Z")
            i += 1
        else:
            out.append(ch)
            i += 1
    flags = re.IGNORECASE if icase else 0
    return re.compile("".join(out).encode("latin-1"), flags)


def Search(pattern, subject, start=0):
    return pattern.search(subject, start)


def IterMatches(pattern, subject):
    """Left-to-right non-overlapping matches; after an empty match the search resumes one byte on."""
    pos = 0
    n = len(subject)
    while pos <= n:
        m = pattern.search(subject, pos)
        if m is None:
            return
        yield m
        if m.end() == m.start():
            pos = m.end() + 1
        else:
            pos = m.end()


def CountMatches(subject, pattern):
    return sum(1 for _ in IterMatches(pattern, subject))


def RemoveAllMatches(pattern, subject):
    out = []
    last = 0
    for m in IterMatches(pattern, subject):
        out.append(subject[last:m.start()])
        last = m.end()
    out.append(subject[last:])
    return b"".join(out)


# ---------------------------------------------------------------------------
# Shared pattern table

kBeginPattern = Compile(r"\bbegin\b")
kEndPattern = Compile(r"\bend\b")
kCasePattern = Compile(r"\bcase[zx]?\b")
kEndcasePattern = Compile(r"\bendcase\b")
kModulePattern = Compile(r"^\s*module\b", True)
kEndmodulePattern = Compile(r"^\s*endmodule\b", True)
kLineCommentStartPattern = Compile(r"^\s*//")
kForeignSourcePattern = Compile(r"^\s*(def |class |import |from \w+ import|#!.*python)", True)
kPortDeclPattern = Compile(
    r"^\s*(input|output|inout)\s*(wire|reg|logic)?\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*"
    r"(\[[^\]]*\])?\s*(,?)\s*(//.*)?$", True)
kModuleHeaderPattern = Compile(r"^\s*module\s+(.+?)\s*(?=[#(\n\r]|$)", True)
kNetDeclPattern = Compile(
    r"^\s*(wire|reg|logic)\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*;\s*(//.*)?$", True)
kParamDeclPattern = Compile(
    r"^\s*(parameter|localparam)?\s*(\[[^\]]*\])?\s*(\w+)\s*(=\s*.+?)\s*([,;])?\s*(//.*)?$", True)
kAlwaysPattern = Compile(r"^\s*(always_ff|always_comb|always)\b", True)
kGeneratePattern = Compile(r"^\s*generate\b", True)
kEndgeneratePattern = Compile(r"^\s*endgenerate\b", True)
kAssignPattern = Compile(r"^\s*assign\b", True)
kLabelPattern = Compile(r"^\s*(\w+)\s*:\s*(.*)")
kIfHeaderPattern = Compile(r"\bif\b\s*\(.+?\)\s*$")
kStatementStartPattern = Compile(r"^\s*(always|initial|module|endmodule|assign|wire|reg|logic)\b", True)
kNamedConnectionPattern = Compile(r"^(\s*)\.(\w+)\s*\(\s*(.+?)\s*\)\s*(,?)\s*(//.*)?$")
kBlockKeywordPattern = Compile(
    r"^\s*(module|function|task|if|else|case|casex|casez|for|while|forever|assign|always|always_ff|always_comb|"
    r"initial|generate|endgenerate|specify|endspecify)\b", True)
kInstanceHeadPattern = Compile(r"^(\w+)\s+(\w+)\s*\(")
kParamInstanceHeadPattern = Compile(r"^(\w+)\s+#\s*\(")
kTypeAndNamePattern = Compile(r"^(\w+)\s+(\w+)$")
kSingleWordPattern = Compile(r"^(\w+)$")
kCallHeadPattern = Compile(r"^(\w+)\s*\(")
kBlockCommentPattern = Compile(r"/\*[\s\S]*?\*/")
kLineCommentPattern = Compile(r"//[^\n]*")

kCoreKeywords = {
    b"parameter", b"localparam", b"input", b"output", b"inout", b"wire", b"reg", b"logic", b"module",
    b"endmodule", b"always", b"assign", b"begin", b"end", b"case", b"if", b"else"
}
kDeclKeywords = {
    b"wire", b"reg", b"logic", b"parameter", b"localparam", b"assign", b"always", b"always_ff", b"always_comb",
    b"initial", b"generate", b"genvar", b"integer", b"input", b"output", b"inout", b"module", b"endmodule",
    b"function", b"task"
}

# ---------------------------------------------------------------------------
# Text utilities

kBlanks = b" \t\n\r"


def TrimLeft(s):
    return s.lstrip(kBlanks)


def Trim(s):
    return s.rstrip(kBlanks).lstrip(kBlanks)


def SplitLines(text):
    pieces = text.split(b"\n")
    return [p[:-1] if p.endswith(b"\r") else p for p in pieces]


def JoinLines(lines, separator=b"\n"):
    return separator.join(lines)


def StartsWithDeclKeyword(line):
    cut = len(line)
    for k, ch in enumerate(line):
        if ch in (0x20, 0x09):
            cut = k
            break
    return line[:cut].lower() in kDeclKeywords


def IsBlank(text):
    return all(ch in kBlanks for ch in text)


def PadRight(s, width):
    return s + b" " * (width - len(s)) if len(s) < width else s


def StripTrailing(s):
    return s.rstrip(b" \t\n\r")


def IsSkippableGap(lines, first, last):
    i = first
    while i <= last:
        if i >= len(lines):
            return True
        t = Trim(lines[i])
        if t != b"" and not t.startswith(b"//"):
            return False
        i += 1
    return True


def Group(m, k):
    g = m.group(k)
    return g if g is not None else b""


def GroupLineNumbers(lines, numbers):
    groups = []
    for n in numbers:
        if groups and (n == groups[-1][-1] + 1 or IsSkippableGap(lines, groups[-1][-1] + 1, n - 1)):
            groups[-1].append(n)
        else:
            groups.append([n])
    return groups


# ---------------------------------------------------------------------------
# Pipeline

kPortKeywordPattern = Compile(r"\b(input|output|inout)\b", True)
kConnectionPattern = Compile(r"\.\w+\s*\([^)]*\)\s*,?")
kTrailingCommentPattern = Compile(r"//.*$")
kIndentPattern = Compile(r"^\s*")


def SplitCrowdedLines(lines):
    out = []
    for line in lines:
        while line.endswith(b"\r"):
            line = line[:-1]
        indent = Search(kIndentPattern, line).group(0)
        rest = line[len(indent):]
        low = rest.lower()
        if (len(rest) >= 5 and low[:5] in (b"input", b"inout")) or (len(rest) >= 6 and low[:6] == b"output"):
            cm = Search(kTrailingCommentPattern, rest)
            code = rest[:cm.start()] + rest[cm.end():] if cm else rest
            comment = cm.group(0) if cm else None
            starts = [m.start() for m in IterMatches(kPortKeywordPattern, code)]
            if len(starts) < 2:
                out.append(line)
                continue
            for j, s in enumerate(starts):
                piece = rest[s:starts[j + 1]] if j + 1 < len(starts) else rest[s:]
                piece = StripTrailing(piece)
                if j == 0 and comment is not None:
                    piece = piece + b" " + comment
                out.append(indent + piece)
            continue
        if rest.startswith(b"."):
            matches = list(IterMatches(kConnectionPattern, rest))
            if len(matches) < 2:
                out.append(line)
                continue
            cm = Search(kTrailingCommentPattern, rest)
            for j, m in enumerate(matches):
                piece = StripTrailing(m.group(0))
                if j == 0 and cm is not None:
                    piece = piece + b" " + cm.group(0)
                out.append(indent + piece)
            continue
        out.append(line)
    return out


def Placeholder(index, comment):
    breaks = len(SplitLines(comment)) - 1
    return b"__BLKCMT_" + str(index).encode() + b"__" + b"\n" * breaks


def ProtectBlockComments(text, comments):
    out = []
    last = 0
    for m in IterMatches(kBlockCommentPattern, text):
        out.append(text[last:m.start()])
        comments.append(m.group(0))
        out.append(Placeholder(len(comments) - 1, m.group(0)))
        last = m.end()
    out.append(text[last:])
    return b"".join(out)


def RestoreBlockComments(text, comments):
    for i, comment in enumerate(comments):
        ph = Placeholder(i, comment)
        pos = 0
        while True:
            at = text.find(ph, pos)
            if at < 0:
                break
            text = text[:at] + comment + text[at + len(ph):]
            pos = at + len(comment)
    return text


def FormatText(text):
    lines = SplitCrowdedLines(SplitLines(text))
    text = JoinLines(lines)
    comments = []
    text = ProtectBlockComments(text, comments)
    text = LayoutPortList(text)
    text = AlignDeclarations(text)
    text = AlignParameters(text)
    text = LayoutBlocks(text)
    text = SpaceSections(text)
    text = AlignInstances(text)
    text = FlushModuleLevel(text)
    text = SpaceSections(text)
    text = RestoreBlockComments(text, comments)
    text = text.rstrip(b"\r\n")
    return text + b"\n"


def FormatEntry(text):
    if IsBlank(text):
        return b"\n"
    if Search(kForeignSourcePattern, text):
        return text
    return FormatText(text)


# ---------------------------------------------------------------------------
# Line classification, section spacing, module-level clean-up

kClassifyRules = [
    (Compile(r"^module\b"), b""),
    (Compile(r"^endmodule\b"), b""),
    (Compile(r"^(begin\b|end\b|endcase\b|endgenerate\b|endif\b|else\b)"), b""),
    (Compile(r"^(if\b|case[zx]?\b|for\b|forever\b|while\b|repeat\b)"), b""),
]
kLabelRules = [
    (Compile(r"^(input|output|inout)\b", True), b"PORT"),
    (Compile(r"^(wire|reg|logic)\b", True), b"SIGNAL"),
    (Compile(r"^(parameter|localparam)\b", True), b"PARAM"),
    (Compile(r"^(integer|genvar)\b", True), b"INTEGER"),
    (Compile(r"^assign\b", True), b"ASSIGN"),
    (Compile(r"^(always|always_ff|always_comb|always_latch)\b", True), b"ALWAYS"),
    (Compile(r"^initial\b", True), b"INITIAL"),
    (Compile(r"^generate\b", True), b"GENERATE"),
    (Compile(r"^(function|task)\b", True), b"FUNCTION"),
    (Compile(r"^\w+\s+\w+\s*\("), b"INST"),
    (Compile(r"^\w+\s+#\s*\("), b"INST"),
]
kBlockLabels = {b"ALWAYS", b"INITIAL", b"GENERATE", b"FUNCTION", b"INST"}
kDeclLabels = {b"SIGNAL", b"PARAM", b"INTEGER"}
kSeparatorLinePattern = Compile(r"^\s*(//|/\*)")


def ClassifyLine(line):
    t = TrimLeft(line)
    if t == b"":
        return b""
    if t.startswith(b"//") or t.startswith(b"/*"):
        return b""
    for pattern, label in kClassifyRules:
        if Search(pattern, t):
            return label
    if t == b");" or t.startswith(b"."):
        return b""
    for pattern, label in kLabelRules:
        if Search(pattern, t):
            return label
    return b""


def SpaceSections(text):
    lines = SplitLines(text)
    sections = []  # [label, first, last, count]
    for i, line in enumerate(lines):
        label = ClassifyLine(line)
        if label == b"":
            continue
        if sections and sections[-1][0] == label and label not in kBlockLabels:
            sections[-1][2] = i
            sections[-1][3] += 1
        else:
            sections.append([label, i, i, 1])
    if len(sections) < 2:
        return text
    insert_before = set()
    for k in range(1, len(sections)):
        p = sections[k - 1]
        s = sections[k]
        if p[0] == s[0] and s[0] not in kBlockLabels:
            continue
        if (p[3] == 1 and p[0] in kDeclLabels) or (s[3] == 1 and s[0] in kDeclLabels):
            continue
        separated = False
        for j in range(p[2] + 1, s[1]):
            between = lines[j]
            while between.endswith(b"\r"):
                between = between[:-1]
            if IsBlank(between) or Search(kSeparatorLinePattern, between):
                separated = True
                break
        if not separated:
            insert_before.add(s[1])
    out = []
    for i, line in enumerate(lines):
        if i in insert_before:
            out.append(b"")
        out.append(line)
    return JoinLines(out)


kPortListClosePattern = Compile(r"^\s*\)\s*;")


def FlushModuleLevel(text):
    lines = SplitLines(text)
    in_header = False
    depth = 0
    for i, line in enumerate(lines):
        t = Trim(line)
        if t == b"" or Search(kLineCommentStartPattern, t):
            continue
        if Search(kEndmodulePattern, t):
            cm = Search(kTrailingCommentPattern, t)
            lines[i] = b"endmodule" + (b" " + cm.group(0) if cm else b"")
            depth = 0
            in_header = False
            continue
        if Search(kModulePattern, t):
            depth = 0
            in_header = True
            continue
        c = RemoveAllMatches(kLineCommentPattern, t)
        b = CountMatches(c, kBeginPattern)
        e = CountMatches(c, kEndPattern)
        k = CountMatches(c, kCasePattern)
        ec = CountMatches(c, kEndcasePattern)
        after = max(depth - ec - e, 0)
        if in_header and not t.startswith(b"//"):
            if Search(kPortListClosePattern, t):
                in_header = False
            else:
                continue
        if after == 0 and StartsWithDeclKeyword(t):
            lines[i] = t
        depth = max(depth + k - ec - e + b, 0)
    return JoinLines(lines)


# ---------------------------------------------------------------------------
# Port-list layout

kCloseParenIndentPattern = Compile(r"^\s*\)")


def LayoutPortList(text):
    lines = SplitLines(text)
    header_line = -1
    header_match = None
    for i, line in enumerate(lines):
        m = Search(kModuleHeaderPattern, line)
        if m:
            header_line = i
            header_match = m
            break
    if header_line < 0:
        return text
    rest = JoinLines(lines[header_line:])
    pos = header_match.end()
    if TrimLeft(rest[pos:]).startswith(b"#"):
        hash_at = rest.find(b"#", pos)
        paren = rest.find(b"(", hash_at)
        if paren >= 0:
            count = 0
            for k in range(paren, len(rest)):
                ch = rest[k]
                if ch == 0x28:
                    count += 1
                elif ch == 0x29:
                    count -= 1
                    if count == 0:
                        pos = k + 1
                        break
    open_at = rest.find(b"(", pos)
    if open_at < 0:
        return text
    count = 0
    close_at = -1
    k = open_at
    while k < len(rest):
        ch = rest[k]
        if ch == 0x28:
            count += 1
        elif ch == 0x29:
            count -= 1
            if count == 0:
                j = k + 1
                while j < len(rest) and rest[j] == 0x20:
                    j += 1
                if j < len(rest) and rest[j] == 0x3B:
                    close_at = k
                    break
        k += 1
    if close_at < 0:
        return text
    first_port_line = header_line + len(SplitLines(rest[:open_at]))
    close_line = header_line + len(SplitLines(rest[:close_at])) - 1
    entries = []
    for idx in range(first_port_line, close_line):
        m = Search(kPortDeclPattern, lines[idx])
        if m:
            entries.append((idx, [Group(m, g) for g in range(1, 9)]))
        else:
            entries.append((idx, None))
    if not entries:
        return text
    fields = [f for _, f in entries if f is not None]
    dir_width = max([len(f[0]) for f in fields], default=0)
    name_width = max([len(f[4]) for f in fields], default=0)
    has_type = any(f[1] for f in fields)
    type_width = max([len(f[1]) for f in fields], default=0)
    has_signed = any(f[2] for f in fields)
    signed_width = max([len(f[2]) for f in fields], default=0)
    has_range = any(f[3] for f in fields)
    range_width = max([1] + [len(f[3]) for f in fields])
    has_array = any(f[5] for f in fields)
    array_width = max([len(f[5]) for f in fields], default=0)
    for idx, f in entries:
        if f is None:
            stripped = TrimLeft(lines[idx])
            lines[idx] = b"    " + stripped if stripped else b""
            continue
        cells = [PadRight(f[0], dir_width)]
        if has_type:
            cells.append(PadRight(f[1], max(type_width, 1)))
        if has_signed:
            cells.append(PadRight(f[2], max(signed_width, 1)))
        if has_range:
            cells.append(PadRight(f[3], max(range_width, 1)))
        cells.append(PadRight(f[4], name_width))
        if has_array:
            cells.append(PadRight(f[5], max(array_width, 1)))
        out = b"    " + b" ".join(cells) + b" " + f[6]
        if f[7]:
            out += b" " + f[7]
        lines[idx] = StripTrailing(out)
    m = Search(kCloseParenIndentPattern, lines[close_line])
    if m:
        lines[close_line] = b")" + lines[close_line][m.end():]
    return JoinLines(lines)


# ---------------------------------------------------------------------------
# Declaration alignment


def AlignDeclarations(text):
    lines = SplitLines(text)
    candidates = [i for i, line in enumerate(lines) if b"," not in line and Search(kNetDeclPattern, line)]
    if not candidates:
        return text
    for group in GroupLineNumbers(lines, candidates):
        records = []
        for i in group:
            m = Search(kNetDeclPattern, lines[i])
            records.append((Group(m, 1), Trim(Group(m, 2)), Group(m, 3), Group(m, 4), Group(m, 5), Group(m, 6)))
        type_width = max(len(r[0]) for r in records)
        name_width = max(len(r[3]) for r in records)
        has_signed = any(r[1] for r in records)
        has_range = any(r[2] for r in records)
        has_array = any(r[4] for r in records)
        signed_width = max(1, max(len(r[1]) for r in records))
        range_width = max([1] + [len(r[2]) for r in records])
        array_width = max(1, max(len(r[4]) for r in records))
        for i, r in zip(group, records):
            cells = [PadRight(r[0], type_width)]
            if has_signed:
                cells.append(PadRight(r[1], signed_width))
            if has_range:
                cells.append(PadRight(r[2], range_width))
            cells.append(PadRight(r[3], name_width))
            if has_array:
                cells.append(PadRight(r[4], array_width))
            out = b" ".join(cells) + b" ;"
            if r[5]:
                out += b" " + r[5]
            lines[i] = StripTrailing(out)
    return JoinLines(lines)


# ---------------------------------------------------------------------------
# Parameter-list alignment

kParamListOpenPattern = Compile(r"^\s*#\s*\(")
kNamedParamListOpenPattern = Compile(r"\w+\s+#\s*\(")
kBodyItemPattern = Compile(r"^\s*(module\b|endmodule\b|always\b|always_ff\b|always_comb\b|initial\b|assign\b)", True)


def AlignParameters(text):
    lines = SplitLines(text)
    in_list = [False] * len(lines)
    inside = False
    depth = 0
    for i, line in enumerate(lines):
        if Search(kParamListOpenPattern, line) or Search(kNamedParamListOpenPattern, line):
            inside = True
            depth = 0
        depth += line.count(b"(") - line.count(b")")
        if inside:
            in_list[i] = depth > 0
            inside = depth != 0
    accepted = []
    accepted_set = set()
    for i, line in enumerate(lines):
        t = Trim(line)
        if t == b"" or t.startswith(b"//"):
            continue
        if Search(kBodyItemPattern, t):
            continue
        m = Search(kParamDeclPattern, line)
        if not m:
            continue
        if not Trim(Group(m, 4)).startswith(b"="):
            continue
        if Group(m, 3).lower() in kCoreKeywords:
            continue
        if Group(m, 1) == b"" and (i - 1) not in accepted_set:
            continue
        accepted.append(i)
        accepted_set.add(i)
    if not accepted:
        return text
    for group in GroupLineNumbers(lines, accepted):
        records = []
        for i in group:
            m = Search(kParamDeclPattern, lines[i])
            records.append((Group(m, 1), Group(m, 2), Group(m, 3), Trim(Group(m, 4)), Group(m, 5), Group(m, 6),
                            in_list[i]))
        has_keyword = any(r[0] for r in records)
        keyword_width = max(len(r[0]) for r in records)
        has_range = any(r[1] for r in records)
        range_width = max(len(r[1]) for r in records)
        name_width = max(len(r[2]) for r in records)
        value_width = max(len(r[3]) for r in records)
        for i, r in zip(group, records):
            cells = []
            if has_keyword:
                cells.append(PadRight(r[0], keyword_width))
            if has_range:
                cells.append(PadRight(r[1], max(range_width, 1)))
            cells.append(PadRight(r[2], name_width))
            cells.append(PadRight(r[3], value_width))
            out = (b"    " if r[6] else b"") + b" ".join(cells) + b" " + r[4]
            if r[5]:
                out += b" " + r[5]
            lines[i] = StripTrailing(out)
    return JoinLines(lines)


# ---------------------------------------------------------------------------
# Always and generate block indentation


def CodeOf(line):
    return RemoveAllMatches(kLineCommentPattern, line)


def FindAlwaysEnd(lines, start):
    if start < 0 or start >= len(lines):
        return len(lines) - 1
    depth = 0
    seen_begin = False
    for i in range(start, len(lines)):
        code = CodeOf(lines[i])
        if not seen_begin and Search(kBeginPattern, code):
            seen_begin = True
        depth += CountMatches(code, kBeginPattern) - CountMatches(code, kEndPattern)
        if seen_begin and depth == 0:
            return i
        if not seen_begin and i > start and Search(kStatementStartPattern, Trim(lines[i])):
            return i - 1
    return len(lines) - 1


def FindGenerateEnd(lines, start):
    depth = 0
    for i in range(start, len(lines)):
        code = CodeOf(lines[i])
        depth += CountMatches(code, kGeneratePattern) - CountMatches(code, kEndgeneratePattern)
        if depth == 0:
            return i
    return len(lines) - 1


def IndentBlockBody(lines, start, end):
    if Search(kBeginPattern, lines[start]):
        has_begin = True
    else:
        has_begin = False
        for j in range(start + 1, len(lines)):
            t = Trim(lines[j])
            if t != b"" and not t.startswith(b"//"):
                has_begin = t == b"begin"
                break
    depth = 0
    case_depth = 0
    pending_if = False
    pending_label = False
    for i in range(start, end + 1):
        t = Trim(lines[i])
        if t == b"":
            continue
        code = CodeOf(t)
        b = CountMatches(code, kBeginPattern)
        e = CountMatches(code, kEndPattern)
        c = CountMatches(code, kCasePattern)
        ec = CountMatches(code, kEndcasePattern)
        level = depth - ec - e
        levels = (1 if pending_if else 0) + (1 if (not has_begin and i > start) else 0) + \
            (1 if pending_label else 0) + max(level, 0)
        lines[i] = b" " * (4 * levels) + t
        case_depth += c - ec
        lm = Search(kLabelPattern, t)
        pending_label = False
        if lm and case_depth >= 1:
            after = Trim(lm.group(2))
            pending_label = after == b"" or after.startswith(b"//")
        pending_if = Search(kIfHeaderPattern, code) is not None
        depth += b - e + c - ec


def LayoutBlocks(text):
    lines = SplitLines(text)
    spans = []
    for i, line in enumerate(lines):
        if Search(kAlwaysPattern, line):
            end = FindAlwaysEnd(lines, i)
        elif Search(kGeneratePattern, line):
            end = FindGenerateEnd(lines, i)
        else:
            continue
        if end > i:
            spans.append((i, end))
    for start, end in spans:
        IndentBlockBody(lines, start, end)
    for i, line in enumerate(lines):
        if Search(kAssignPattern, line) or Search(kEndgeneratePattern, line):
            lines[i] = TrimLeft(line)
    return JoinLines(lines)


# ---------------------------------------------------------------------------
# Instance alignment

kBlankRunPattern = Compile(r"\s+")


def CollapseBlanks(s):
    return kBlankRunPattern.sub(b" ", s)


def CommentAfter(line, col):
    at = line.find(b"//", col)
    return line[at:] if at >= 0 else None


def SingleLineParamHeader(raw, close_col, name, open_col):
    """Header of "type #(...) name (" written on one line: its text with blank runs collapsed, then " ("."""
    return CollapseBlanks(Trim(raw[:open_col])).rstrip(b" ") + b" ("


def FindMatchingParen(lines, line_no, col):
    """Returns (line, column) of the ")" that balances the "(" at (line_no, col), or None."""
    count = 0
    i = line_no
    k = col
    while i < len(lines):
        line = lines[i]
        while k < len(line):
            ch = line[k]
            if ch == 0x28:
                count += 1
            elif ch == 0x29:
                count -= 1
                if count == 0:
                    return (i, k)
            k += 1
        i += 1
        k = 0
    return None


def NextCodeLine(lines, after):
    for j in range(after + 1, len(lines)):
        t = Trim(lines[j])
        if t != b"" and not t.startswith(b"//"):
            return j
    return None


def FindInstance(lines, start):
    raw = lines[start]
    t = Trim(raw)
    if t == b"" or t.startswith(b"//") or Search(kBlockKeywordPattern, t):
        return None
    span = {"startLine": start, "indent": len(raw) - len(TrimLeft(raw)), "paramLines": [], "nameLine": None}
    m = Search(kInstanceHeadPattern, t)
    if m:
        open_line = start
        open_col = raw.find(b"(")
        header = m.group(1) + b" " + m.group(2) + b" ("
        cm = CommentAfter(t, t.find(b"(") + 1)
        if cm is not None:
            header += b" " + cm
    elif Search(kParamInstanceHeadPattern, t):
        m = Search(kParamInstanceHeadPattern, t)
        hash_col = raw.find(b"#")
        param_open = raw.find(b"(", hash_col)
        close = FindMatchingParen(lines, start, param_open)
        if close is None:
            return None
        close_line, close_col = close
        after = lines[close_line][close_col + 1:]
        cm_head = Search(kCallHeadPattern, TrimLeft(after))
        if not cm_head:
            return None
        open_line = close_line
        open_col = close_col + 1 + (len(after) - len(TrimLeft(after))) + TrimLeft(after).find(b"(")
        if close_line == start:
            header = SingleLineParamHeader(raw, close_col, cm_head.group(1), open_col)
            cm = CommentAfter(raw, open_col + 1)
            if cm is not None:
                header += b" " + Trim(cm)
        else:
            header = m.group(1) + b" #("
            cm = CommentAfter(raw, param_open + 1)
            if cm is not None:
                header += b" " + Trim(cm)
            span["paramLines"] = [Trim(lines[j]) for j in range(start + 1, close_line)]
            name_line = b") " + cm_head.group(1) + b" ("
            cm = CommentAfter(lines[close_line], open_col + 1)
            if cm is not None:
                name_line += b" " + Trim(cm)
            span["nameLine"] = name_line
    elif Search(kTypeAndNamePattern, t):
        m = Search(kTypeAndNamePattern, t)
        j = NextCodeLine(lines, start)
        if j is None or not Trim(lines[j]).startswith(b"("):
            return None
        open_line = j
        open_col = lines[j].find(b"(")
        header = m.group(1) + b" " + m.group(2) + b" ("
    elif Search(kSingleWordPattern, t):
        m = Search(kSingleWordPattern, t)
        j = start + 1
        if j >= len(lines):
            return None
        nt = Trim(lines[j])
        mc = Search(kCallHeadPattern, nt)
        if not mc:
            return None
        open_line = j
        open_col = lines[j].find(b"(")
        header = m.group(1) + b" " + mc.group(1) + b" ("
        cm = CommentAfter(nt, nt.find(b"(") + 1)
        if cm is not None:
            header += b" " + cm
    else:
        return None
    close = FindMatchingParen(lines, open_line, open_col)
    if close is None:
        return None
    span.update({"openLine": open_line, "openColumn": open_col, "closeLine": close[0], "closeColumn": close[1],
                 "endLine": close[0], "header": header})
    return span


def AlignInstances(text):
    lines = SplitLines(text)
    edits = []
    i = 0
    while i < len(lines):
        span = FindInstance(lines, i)
        if span is None:
            i += 1
            continue
        ol, oc, cl, cc = span["openLine"], span["openColumn"], span["closeLine"], span["closeColumn"]
        entries = []
        if ol == cl:
            remainder = lines[ol][oc + 1:]
            r = TrimLeft(remainder)
            entries.append(b"" if (r == b"" or r.startswith(b"//")) else remainder)
        else:
            remainder = lines[ol][oc + 1:]
            r = TrimLeft(remainder)
            entries.append(b"" if (r == b"" or r.startswith(b"//")) else remainder)
            for j in range(ol + 1, cl):
                entries.append(lines[j])
            entries.append(lines[cl][:cc])
        while entries and Trim(entries[0]) == b"":
            entries.pop(0)
        while entries and Trim(entries[-1]) == b"":
            entries.pop()
        connections = {}
        for k, entry in enumerate(entries):
            m = Search(kNamedConnectionPattern, entry)
            if m:
                connections[k] = (Group(m, 2), Group(m, 3), Group(m, 4), Group(m, 5))
        if connections:
            span["entries"] = entries
            span["connections"] = connections
            edits.append(span)
        i = span["endLine"] + 1
    if not edits:
        return text
    port_width = 0
    signal_width = 0
    for edit in edits:
        for port, signal, _, _ in edit["connections"].values():
            port_width = max(port_width, len(port) + 1)
            signal_width = max(signal_width, len(signal))
    for edit in edits:
        pad = b" " * edit["indent"]
        inner = pad + b"    "
        out = [pad + edit["header"]]
        for p in edit["paramLines"]:
            out.append(inner + p)
        if edit["nameLine"] is not None:
            out.append(pad + edit["nameLine"])
        for k, entry in enumerate(edit["entries"]):
            if k in edit["connections"]:
                port, signal, comma, comment = edit["connections"][k]
                s = inner + PadRight(b"." + port, port_width) + b" (" + PadRight(signal, signal_width) + b" )"
                s += comma if comma else b" "
                if comment:
                    s += b"   " + comment
                out.append(StripTrailing(s))
            else:
                tt = Trim(entry)
                out.append(inner + tt if tt else b"")
        close = pad + b");"
        last = lines[edit["endLine"]]
        at = last.find(b"//")
        if at >= 0:
            close += b" " + last[at:]
        out.append(close)
        start = edit["startLine"]
        for k, s in enumerate(out):
            if start + k < len(lines):
                lines[start + k] = s
        for j in range(start + len(out), edit["endLine"] + 1):
            lines[j] = b""
    return JoinLines(lines)


if __name__ == "__main__":
    data = open(sys.argv[1], "rb").read() if len(sys.argv) > 1 else sys.stdin.buffer.read()
    sys.stdout.buffer.write(FormatEntry(data))
