#include "structure/token_view.h"

#include <algorithm>
#include <array>

namespace quill::structure {
namespace {

// Sorted, for binary search.
constexpr std::array<std::string_view, 148> kReserved = {
    "alias", "always", "always_comb", "always_ff", "always_latch", "and", "assert", "assign", "assume",
    "automatic", "begin", "bind", "bit", "buf", "bufif0", "bufif1", "byte", "case", "casex", "casez",
    "chandle", "checker", "class", "clocking", "cmos", "const", "constraint", "cover", "covergroup",
    "deassign", "default", "defparam", "disable", "do", "else", "end", "endcase", "endchecker", "endclass",
    "endclocking", "endfunction", "endgenerate", "endgroup", "endinterface", "endmodule", "endpackage",
    "endprimitive", "endprogram", "endproperty", "endsequence", "endspecify", "endtask", "enum", "event",
    "export", "extern", "final", "for", "force", "foreach", "forever", "fork", "function", "generate",
    "genvar", "if", "iff", "import", "initial", "inout", "input", "int", "integer", "interface", "join",
    "join_any", "join_none", "localparam", "logic", "longint", "macromodule", "modport", "module", "nand",
    "negedge", "nmos", "nor", "not", "notif0", "notif1", "or", "output", "package", "packed", "parameter",
    "pmos", "posedge", "primitive", "priority", "program", "property", "pulldown", "pullup", "rcmos",
    "real", "realtime", "ref", "reg", "release", "repeat", "return", "rnmos", "rpmos", "rtran", "sequence",
    "shortint", "signed", "specify", "specparam", "static", "string", "struct", "supply0", "supply1",
    "task", "time", "tran", "tri", "tri0", "tri1", "triand", "trior", "trireg", "typedef", "union",
    "unique", "unsigned", "uwire", "var", "virtual", "void", "wait", "wand", "while", "wire", "wor", "xnor",
    "xor"};

constexpr std::array<std::string_view, 11> kHardStops = {
    "endchecker", "endgenerate", "endinterface", "endmodule", "endpackage", "endprimitive", "endprogram",
    "macromodule", "module", "package", "primitive"};

constexpr std::array<std::string_view, 31> kDeclarationWords = {
    "bit", "byte", "chandle", "event", "genvar", "int", "integer", "logic", "longint", "real", "realtime",
    "reg", "shortint", "shortreal", "string", "supply0", "supply1", "time", "tri", "tri0", "tri1",
    "triand", "trior", "trireg", "uwire", "var", "wand", "wire", "wor", "enum", "struct"};

template <std::size_t N>
bool Contains(const std::array<std::string_view, N>& words, std::string_view word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

bool IsOpen(std::string_view w) { return w == "(" || w == "[" || w == "{"; }
bool IsClose(std::string_view w) { return w == ")" || w == "]" || w == "}"; }

}  // namespace

bool IsReservedWord(std::string_view word) {
  if (word.empty() || word.size() > 13 || word[0] < 'a' || word[0] > 'x') return false;
  return std::binary_search(kReserved.begin(), kReserved.end(), word) || word == "shortreal";
}

bool IsHardStop(std::string_view word) {
  return !word.empty() && (word[0] == 'e' || word[0] == 'm' || word[0] == 'p') && Contains(kHardStops, word);
}

bool IsDirection(std::string_view word) {
  return word == "input" || word == "output" || word == "inout" || word == "ref";
}

bool IsDeclarationWord(std::string_view word) { return Contains(kDeclarationWords, word); }

// One walk serves both: it keeps the bracket depth, stops at a hard-stop
// word, and `end` says what a closing bracket or a ';' does at that depth.
std::size_t TokenView::Walk(std::size_t from, WalkEnd end) const {
  std::size_t depth = 0;
  for (std::size_t i = from; i < tokens_.size(); ++i) {
    const Token& token = tokens_[i];
    if (token.kind == TokenKind::kIdentifier) {
      if (IsHardStop(Word(i))) return i;
      continue;
    }
    if (token.kind != TokenKind::kPunctuation) continue;
    const std::string_view w = Word(i);
    if (IsOpen(w)) {
      ++depth;
    } else if (IsClose(w)) {
      if (end != WalkEnd::kStatement && depth <= 1) return i + 1;
      if (depth > 0) --depth;
    } else if (w == ";" && (end == WalkEnd::kGroupOrSemicolon || (end == WalkEnd::kStatement && depth == 0))) {
      return i;
    }
  }
  return tokens_.size();
}

std::size_t TokenView::SkipGroup(std::size_t open, bool stopAtSemicolon) const {
  return Walk(open, stopAtSemicolon ? WalkEnd::kGroupOrSemicolon : WalkEnd::kGroup);
}

std::size_t TokenView::StatementEnd(std::size_t from) const { return Walk(from, WalkEnd::kStatement); }

}  // namespace quill::structure
