#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "structure/item_lists.h"
#include "structure/structure.h"
#include "structure/token_view.h"
#include "structure/verilog_tokens.h"

namespace quill::structure {

std::vector<Fold> FoldRanges(const TokenView& view, const TokenizedText& tokenized);

namespace {

// Containers and the word that ends each.
struct ContainerWords {
  std::string_view start, end;
};
constexpr ContainerWords kContainers[] = {
    {"module", "endmodule"},       {"macromodule", "endmodule"}, {"interface", "endinterface"},
    {"program", "endprogram"},     {"package", "endpackage"},    {"primitive", "endprimitive"},
    {"checker", "endchecker"}};

// Constructs skipped whole: their start word and end word.
constexpr ContainerWords kSkipped[] = {
    {"class", "endclass"},         {"covergroup", "endgroup"}, {"property", "endproperty"},
    {"sequence", "endsequence"},   {"clocking", "endclocking"}, {"specify", "endspecify"},
    {"table", "endtable"},         {"config", "endconfig"}};

// Statements read up to their ';' and otherwise ignored.
constexpr std::string_view kSkippedStatements[] = {
    "typedef", "import", "export", "assign", "defparam", "alias", "let", "bind", "nettype", "timeunit",
    "timeprecision", "specparam", "modport", "assert", "assume", "cover", "restrict", "default", "extern",
    "force", "release", "pullup", "pulldown"};

constexpr std::string_view kProcesses[] = {"always", "always_ff", "always_comb", "always_latch", "initial",
                                           "final"};

template <std::size_t N>
bool IsIn(const std::string_view (&words)[N], std::string_view word) {
  for (std::string_view w : words) {
    if (w == word) return true;
  }
  return false;
}

std::string_view EndWordOf(std::string_view start) {
  for (const ContainerWords& c : kContainers) {
    if (c.start == start) return c.end;
  }
  return {};
}

std::string_view SkippedEndOf(std::string_view start) {
  for (const ContainerWords& c : kSkipped) {
    if (c.start == start) return c.end;
  }
  return {};
}

bool IsBlockOpener(std::string_view w) {
  return w == "begin" || w == "fork" || w == "case" || w == "casex" || w == "casez" || w == "randcase";
}
bool IsBlockCloser(std::string_view w) {
  return w == "end" || w == "join" || w == "join_any" || w == "join_none" || w == "endcase";
}

// A region of a module body that holds module items: generate, a begin
// block of a generate loop or condition, or a generate case.
struct Region {
  enum class Kind { kGenerate, kBegin, kCase } kind;
  std::size_t block;  // index into the module's blocks, or npos
};

class Scanner {
 public:
  Scanner(std::string_view text, const TokenView& view) : text_(text), view_(view) {}

  std::vector<Module> Run() {
    while (i_ < view_.Size()) {
      const std::string_view w = view_.Word(i_);
      const std::string_view end = EndWordOf(w);
      if (!end.empty() && view_.At(i_).kind == TokenKind::kIdentifier && !IsClassInterface()) {
        ScanContainer(end);
        continue;
      }
      if (w == "extern") {
        i_ = std::min(view_.StatementEnd(i_) + 1, view_.Size());
        continue;
      }
      if (w == "function" || w == "task") {
        i_ = SkipTo(i_ + 1, w == "function" ? "endfunction" : "endtask");
        continue;
      }
      if (const std::string_view skipped = SkippedEndOf(w); !skipped.empty()) {
        i_ = SkipTo(i_ + 1, skipped);
        continue;
      }
      ++i_;
    }
    return std::move(modules_);
  }

 private:
  bool IsClassInterface() const { return view_.Word(i_) == "interface" && view_.Word(i_ + 1) == "class"; }

  // The index past the first `end` word from `from`, or of a hard stop.
  std::size_t SkipTo(std::size_t from, std::string_view end) const {
    for (std::size_t j = from; j < view_.Size(); ++j) {
      const std::string_view w = view_.Word(j);
      if (w == end) return SkipEndLabel(j + 1);
      if (IsHardStop(w)) return j;
    }
    return view_.Size();
  }

  // Past `: label` after an end word.
  std::size_t SkipEndLabel(std::size_t j) const {
    if (j + 1 < view_.Size() && view_.Word(j) == ":" && view_.At(j + 1).kind == TokenKind::kIdentifier) return j + 2;
    return j;
  }

  std::size_t Last(std::size_t end) const { return end > 0 ? end - 1 : 0; }

  void ScanContainer(std::string_view endWord) {
    const std::size_t start = i_;
    Module module;
    module.kind = std::string(view_.Word(i_));
    ++i_;
    if (view_.Word(i_) == "automatic" || view_.Word(i_) == "static") ++i_;
    if (view_.At(i_ < view_.Size() ? i_ : start).kind == TokenKind::kIdentifier && i_ < view_.Size() &&
        !IsHardStop(view_.Word(i_))) {
      module.name = std::string(view_.Word(i_));
      module.nameSpan = view_.SpanOf(i_, i_);
      ++i_;
    }
    ScanHeader(module);
    module.header = view_.SpanOf(start, Last(i_));
    ScanBody(module, endWord);
    module.span = view_.SpanOf(start, Last(i_));
    modules_.push_back(std::move(module));
  }

  void ScanHeader(Module& module) {
    while (i_ < view_.Size()) {
      const std::string_view w = view_.Word(i_);
      if (w == ";") {
        ++i_;
        return;
      }
      if (IsHardStop(w) || IsProcessOrDeclaration(w)) return;
      if (w == "import") {
        i_ = std::min(view_.StatementEnd(i_) + 1, view_.Size());
        continue;
      }
      if (w == "#" && view_.Word(i_ + 1) == "(") {
        const std::size_t close = view_.SkipGroup(i_ + 1, true);
        ReadParameters(view_, i_ + 2, GroupContentEnd(close), false, module);
        i_ = close;
        continue;
      }
      if (w == "(") {
        const std::size_t close = view_.SkipGroup(i_, true);
        ReadPortList(view_, i_ + 1, GroupContentEnd(close), module);
        i_ = close;
        continue;
      }
      ++i_;
    }
  }

  static bool IsProcessOrDeclaration(std::string_view w) {
    return IsIn(kProcesses, w) || w == "endmodule" || w == "assign";
  }

  // The end of a group's contents: before its ')' when it closed.
  std::size_t GroupContentEnd(std::size_t close) const {
    return close > 0 && close <= view_.Size() && view_.Word(close - 1) == ")" ? close - 1 : close;
  }

  void ScanBody(Module& module, std::string_view endWord) {
    regions_.clear();
    while (i_ < view_.Size()) {
      const std::string_view w = view_.Word(i_);
      const TokenKind kind = view_.At(i_).kind;
      if (kind == TokenKind::kIdentifier && w == endWord) {
        i_ = SkipEndLabel(i_ + 1);
        CloseRegions(module);
        return;
      }
      if (kind == TokenKind::kIdentifier && IsHardStop(w) && w != "endgenerate") {
        // Another container's end word closes this one too; a new module
        // starts after the one left open.
        if (w.starts_with("end")) i_ = SkipEndLabel(i_ + 1);
        CloseRegions(module);
        return;
      }
      ScanItem(module, w, kind);
    }
    CloseRegions(module);
  }

  void ScanItem(Module& module, std::string_view w, TokenKind kind) {
    if (kind == TokenKind::kMacro) {
      i_ = view_.Word(i_ + 1) == "(" ? view_.SkipGroup(i_ + 1, true) : i_ + 1;
      return;
    }
    if (kind != TokenKind::kIdentifier) {
      ++i_;
      return;
    }
    if (!regions_.empty() && regions_.back().kind == Region::Kind::kCase && SkipCaseLabel()) return;
    if (IsDirection(w)) return Statement([&](std::size_t end) { ReadPortDeclaration(view_, i_, end, module); });
    if (w == "parameter" || w == "localparam") {
      return Statement([&](std::size_t end) { ReadParameters(view_, i_, end, w == "localparam", module); });
    }
    if (IsDeclarationWord(w) || w == "signed" || w == "unsigned" || w == "const" || w == "automatic" ||
        w == "static") {
      return Statement([&](std::size_t end) { ReadSignals(view_, i_, end, module); });
    }
    if (IsIn(kProcesses, w)) return ScanProcess(module);
    if (IsIn(kSkippedStatements, w)) {
      i_ = view_.StatementEnd(i_);
      if (i_ < view_.Size() && view_.Word(i_) == ";") ++i_;
      return;
    }
    if (w == "function" || w == "task") return ScanRoutine(module, w);
    if (w == "virtual" && view_.Word(i_ + 1) == "class") ++i_;
    if (const std::string_view skipped = SkippedEndOf(view_.Word(i_)); !skipped.empty()) {
      i_ = SkipTo(i_ + 1, skipped);
      return;
    }
    if (w == "generate") return OpenRegion(module, Region::Kind::kGenerate, "generate", i_ + 1);
    if (w == "endgenerate") return CloseRegion(module, Region::Kind::kGenerate, i_ + 1);
    if (w == "begin") return OpenBegin(module);
    if (w == "end") return CloseRegion(module, Region::Kind::kBegin, SkipEndLabel(i_ + 1));
    if (w == "for" || w == "if" || w == "while") {
      i_ = view_.Word(i_ + 1) == "(" ? view_.SkipGroup(i_ + 1, false) : i_ + 1;
      return;
    }
    if (w == "case" || w == "casex" || w == "casez") {
      const std::size_t next = view_.Word(i_ + 1) == "(" ? view_.SkipGroup(i_ + 1, false) : i_ + 1;
      return OpenRegion(module, Region::Kind::kCase, {}, next);
    }
    if (w == "endcase") return CloseRegion(module, Region::Kind::kCase, i_ + 1);
    if (view_.IsName(i_) && view_.Word(i_ + 1) == ":" && view_.Word(i_ + 2) != ":") {
      i_ += 2;  // a statement label
      return;
    }
    if (view_.IsName(i_) || IsGate(w)) return ScanInstanceOrDeclaration(module);
    ++i_;
  }

  static bool IsGate(std::string_view w) {
    return w == "and" || w == "or" || w == "nand" || w == "nor" || w == "xor" || w == "xnor" || w == "not" ||
           w == "buf" || w == "bufif0" || w == "bufif1" || w == "notif0" || w == "notif1" || w == "pullup" ||
           w == "pulldown";
  }

  // Reads the statement from i_ to its ';' with `read(end)` and moves past it.
  template <typename Read>
  void Statement(Read read) {
    const std::size_t end = view_.StatementEnd(i_);
    read(end);
    i_ = end < view_.Size() && view_.Word(end) == ";" ? end + 1 : std::max(end, i_ + 1);
  }

  // In a generate case, `value, value :` before an item.
  bool SkipCaseLabel() {
    const std::string_view w = view_.Word(i_);
    if (w == "begin" || w == "end" || w == "endcase") return false;
    for (std::size_t j = i_; j < view_.Size(); ++j) {
      const std::string_view x = view_.Word(j);
      if (x == ";" || x == "begin" || x == "end" || x == "endcase" || IsHardStop(x)) return false;
      if (x == "(" || x == "[" || x == "{") {
        j = view_.SkipGroup(j, true) - 1;
        continue;
      }
      if (x == ":") {
        i_ = j + 1;
        return true;
      }
    }
    return false;
  }

  void OpenBegin(Module& module) {
    std::size_t next = i_ + 1;
    std::string label;
    if (view_.Word(next) == ":" && view_.IsName(next + 1)) {
      label = std::string(view_.Word(next + 1));
      next += 2;
    }
    OpenRegion(module, Region::Kind::kBegin, "begin", next);
    if (regions_.back().block != std::string::npos) module.blocks[regions_.back().block].label = label;
  }

  void OpenRegion(Module& module, Region::Kind kind, std::string_view blockKind, std::size_t next) {
    std::size_t block = std::string::npos;
    if (!blockKind.empty()) {
      block = module.blocks.size();
      module.blocks.push_back({std::string(blockKind), {}, view_.SpanOf(i_, i_)});
    }
    regions_.push_back({kind, block});
    ++openCount_[static_cast<std::size_t>(kind)];
    i_ = next;
  }

  // Closes the innermost region of `kind` (and any left open inside it) at
  // the token before `next`; a stray end word is passed over.
  void CloseRegion(Module& module, Region::Kind kind, std::size_t next) {
    const bool open = openCount_[static_cast<std::size_t>(kind)] > 0;
    const std::size_t last = Last(next);
    while (open && !regions_.empty()) {
      const Region region = regions_.back();
      regions_.pop_back();
      --openCount_[static_cast<std::size_t>(region.kind)];
      if (region.block != std::string::npos) {
        Span& span = module.blocks[region.block].span;
        span = {span.begin, view_.At(last).end, span.start, view_.SpanOf(last, last).stop};
      }
      if (region.kind == kind) break;
    }
    i_ = next;
  }

  void CloseRegions(Module& module) {
    const std::size_t last = Last(i_);
    for (const Region& region : regions_) {
      if (region.block == std::string::npos) continue;
      Span& span = module.blocks[region.block].span;
      span = {span.begin, view_.At(last).end, span.start, view_.SpanOf(last, last).stop};
    }
    regions_.clear();
    openCount_ = {};
  }

  // always/initial/final and the statement it runs.
  void ScanProcess(Module& module) {
    const std::size_t start = i_;
    Block block;
    block.kind = std::string(view_.Word(i_));
    std::size_t j = i_ + 1;
    bool bodyStarted = false;  // past the timing controls
    while (j < view_.Size()) {
      const std::string_view w = view_.Word(j);
      if (IsHardStop(w)) break;
      if (w == "@" || w == "#") {
        // The event or delay: a group or one token, when the text has one.
        ++j;
        if (j < view_.Size()) j = view_.Word(j) == "(" ? view_.SkipGroup(j, false) : j + 1;
        continue;
      }
      const bool first = !bodyStarted;
      bodyStarted = true;
      if (w == "if" || w == "for" || w == "while" || w == "repeat" || w == "foreach" || w == "wait") {
        ++j;
        if (view_.Word(j) == "(") j = view_.SkipGroup(j, false);
        continue;
      }
      if (w == "else" || w == "forever" || w == "unique" || w == "unique0" || w == "priority" || w == "do") {
        ++j;
        continue;
      }
      if (IsBlockOpener(w)) {
        if (w == "begin" && first && view_.Word(j + 1) == ":" && view_.IsName(j + 2)) {
          block.label = std::string(view_.Word(j + 2));
        }
        j = MatchBlockEnd(j);
      } else {
        j = view_.StatementEnd(j);
        if (j < view_.Size() && view_.Word(j) == ";") ++j;
      }
      if (view_.Word(j) == "else") {
        ++j;
        continue;
      }
      break;
    }
    j = std::max(j, start + 1);
    block.span = view_.SpanOf(start, Last(j));
    module.blocks.push_back(std::move(block));
    i_ = j;
  }

  // Past the end word matching the opener at `j`, with its label.
  std::size_t MatchBlockEnd(std::size_t j) const {
    std::size_t depth = 0;
    for (; j < view_.Size(); ++j) {
      if (view_.At(j).kind != TokenKind::kIdentifier) continue;
      const std::string_view w = view_.Word(j);
      if (IsBlockOpener(w)) {
        ++depth;
      } else if (IsBlockCloser(w)) {
        if (depth <= 1) return SkipEndLabel(j + 1);
        --depth;
      } else if (IsHardStop(w) || w == "endfunction" || w == "endtask") {
        return j;
      }
    }
    return j;
  }

  void ScanRoutine(Module& module, std::string_view kind) {
    const std::size_t start = i_;
    Routine routine;
    routine.kind = std::string(kind);
    // The name is the last identifier before '(' or ';'.
    std::size_t name = std::string::npos;
    for (std::size_t j = i_ + 1; j < view_.Size(); ++j) {
      const std::string_view w = view_.Word(j);
      if (w == "(" || w == ";" || IsHardStop(w)) break;
      if (w == "[") {
        j = view_.SkipGroup(j, true) - 1;
        continue;
      }
      if (view_.IsName(j)) name = j;
    }
    if (name != std::string::npos) {
      routine.name = std::string(view_.Word(name));
      routine.nameSpan = view_.SpanOf(name, name);
    }
    i_ = SkipTo(i_ + 1, kind == "function" ? "endfunction" : "endtask");
    routine.span = view_.SpanOf(start, Last(std::max(i_, start + 1)));
    module.routines.push_back(std::move(routine));
  }

  // `type [#(...)] name [dims] (...) [, name (...)] ;` is an instance;
  // `type name [, name];` a declaration of a user-typed signal.
  void ScanInstanceOrDeclaration(Module& module) {
    const std::size_t start = i_;
    std::size_t j = i_ + 1;
    while (view_.Word(j) == "::" && j + 1 < view_.Size()) j += 2;
    const std::size_t typeLast = j - 1;
    if (view_.Word(j) == "#") {
      ++j;
      if (j < view_.Size()) j = view_.Word(j) == "(" ? view_.SkipGroup(j, true) : j + 1;
    }
    if (view_.Word(j) == "(") {  // a gate without an instance name
      i_ = view_.StatementEnd(j);
      if (i_ < view_.Size() && view_.Word(i_) == ";") ++i_;
      return;
    }
    if (!view_.IsName(j)) {
      i_ = start + 1;
      return;
    }
    std::size_t after = j + 1;
    while (view_.Word(after) == "[") after = view_.SkipGroup(after, true);
    if (view_.Word(after) != "(") {
      const std::string_view next = view_.Word(after);
      if (next == ";" || next == "," || next == "=") {
        return Statement([&](std::size_t end) { ReadSignals(view_, start, end, module); });
      }
      i_ = start + 1;
      return;
    }
    const std::string moduleType(view_.TextOf(start, typeLast));
    const Span typeSpan = view_.SpanOf(start, typeLast);
    while (view_.IsName(j)) {
      std::size_t k = j + 1;
      while (view_.Word(k) == "[") k = view_.SkipGroup(k, true);
      if (view_.Word(k) != "(") break;
      const std::size_t close = view_.SkipGroup(k, true);
      module.instances.push_back(
          {moduleType, std::string(view_.Word(j)), typeSpan, view_.SpanOf(j, j), view_.SpanOf(start, Last(close))});
      j = close;
      if (view_.Word(j) != ",") break;
      ++j;
    }
    i_ = view_.StatementEnd(j);
    if (i_ < view_.Size() && view_.Word(i_) == ";") ++i_;
    i_ = std::max(i_, start + 1);
  }

  std::string_view text_;
  const TokenView& view_;
  std::size_t i_ = 0;
  std::vector<Region> regions_;
  std::array<std::size_t, 3> openCount_{};  // regions_ entries of each kind
  std::vector<Module> modules_;
};

}  // namespace

FileStructure ScanStructure(std::string_view text) { return ScanStructure(text, TokenizeVerilog(text)); }

FileStructure ScanStructure(std::string_view text, const TokenizedText& tokenized) {
  const TokenView view(text, tokenized.tokens);
  FileStructure structure;
  structure.modules = Scanner(text, view).Run();
  structure.folds = FoldRanges(view, tokenized);
  return structure;
}

}  // namespace quill::structure
