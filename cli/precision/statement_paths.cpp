#include "precision/statement_paths.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <initializer_list>

#include "precision/procedural_statements.h"

namespace quill::cli {
namespace {

bool IsAnyOf(const Token& token, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), token.text) != words.end();
}

using Names = std::vector<std::string_view>;

// The value of "5", "3'b101", "8'hF0" or "'d7" (underscores allowed); none
// for x, z or ? digits, a signed or real number, or more than 32 bits.
std::optional<std::uint64_t> NumberValue(std::string_view text) {
  unsigned base = 10;
  const std::size_t tick = text.find('\'');
  if (tick != std::string_view::npos) {
    if (tick + 1 >= text.size()) return std::nullopt;
    switch (text[tick + 1]) {
      case 'b': case 'B': base = 2; break;
      case 'o': case 'O': base = 8; break;
      case 'd': case 'D': base = 10; break;
      case 'h': case 'H': base = 16; break;
      default: return std::nullopt;
    }
    text.remove_prefix(tick + 2);
  }
  std::uint64_t value = 0;
  bool digits = false;
  for (char c : text) {
    if (c == '_') continue;
    unsigned digit = 16;
    if (c >= '0' && c <= '9') digit = static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A' + 10);
    if (digit >= base) return std::nullopt;
    value = value * base + digit;
    if (value > 0xFFFFFFFFu) return std::nullopt;
    digits = true;
  }
  if (!digits) return std::nullopt;
  return value;
}

bool Holds(const Names& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

void Add(Names& names, std::string_view name) {
  if (!Holds(names, name)) names.push_back(name);
}

// What the statements read so far assign whole on every path (`must`) and
// assign at all, whole or in part, on some path (`may`).
struct Assigned {
  Names must;
  Names may;
};

// Adds branches that exclude each other: each one's `may`, and, when they
// cover every path (`complete`), the names every branch assigns whole.
void AddBranches(Assigned& assigned, const std::vector<Assigned>& branches, bool complete) {
  for (const Assigned& branch : branches) {
    for (std::string_view name : branch.may) Add(assigned.may, name);
  }
  if (!complete || branches.empty()) return;
  for (std::string_view name : branches.front().must) {
    const bool everywhere = std::all_of(branches.begin(), branches.end(),
                                        [name](const Assigned& branch) { return Holds(branch.must, name); });
    if (everywhere) Add(assigned.must, name);
  }
}

class PathReader {
 public:
  // With `passed`, calls are read as assigning at most the names passed to
  // them, which are added there; without, a call makes a statement unread.
  PathReader(const std::vector<Token>& tokens, std::size_t end, Names* passed,
             std::function<std::optional<unsigned>(std::string_view)> declaredWidth = {})
      : tokens_(tokens), end_(end), passed_(passed), declaredWidth_(std::move(declaredWidth)) {}

  // Reads the statement at `j` into `assigned`: the token after it, or
  // kNoStatementEnd when the statement holds anything not read here.
  std::size_t Read(std::size_t j, Assigned& assigned, std::size_t depth) const {
    if (j >= end_ || depth > kMaxStatementDepth) return kNoStatementEnd;
    const Token& token = tokens_[j];
    if (token.Is(";")) return j + 1;
    if (token.Is("begin")) return ReadSequence(j, assigned, depth);
    if (IsAnyOf(token, {"unique", "unique0", "priority"})) return Read(j + 1, assigned, depth + 1);
    if (token.Is("if")) return ReadIf(j, assigned, depth);
    if (IsAnyOf(token, {"case", "casex", "casez"})) return ReadCase(j, assigned, depth, false);
    if (token.Is("(") && j + 1 < end_ && tokens_[j + 1].Is("*")) return ReadAttributed(j, assigned, depth);
    if (token.Is("for")) return ReadFor(j, assigned, depth);
    // Inside a loop's body, whose assignments count only as possible ones,
    // leaving it early changes nothing.
    if (loops_ > 0 && IsAnyOf(token, {"break", "continue"}) && j + 1 < end_ && tokens_[j + 1].Is(";")) return j + 2;
    if (token.kind == Token::Kind::kWord && token.text.front() == '$') return ReadSystemTask(j);
    return ReadAssignment(j, assigned);
  }

  // The token after "begin" or "end" and its optional ": label".
  std::size_t SkipLabel(std::size_t k) const {
    if (k + 1 < end_ && tokens_[k].Is(":") && tokens_[k + 1].kind == Token::Kind::kWord) return k + 2;
    return k;
  }

  // The token after the ";" that ends the expression starting at `k`, or
  // kNoStatementEnd when the expression may assign or wait (a call, a
  // macro, an assignment operator, a timing control).
  std::size_t ExpressionEnd(std::size_t k) const {
    std::size_t parentheses = 0;
    std::size_t brackets = 0;
    std::size_t firstCall = kNoStatementEnd;  // the nesting inside the outermost call
    for (; k < end_; ++k) {
      const Token& token = tokens_[k];
      if (parentheses == 0 && token.Is(";")) return k + 1;
      // With calls read, a macro names a constant ("`OP_ADD") and a macro
      // call in a select ("a[`IDX(i)]") an index.
      const bool indexMacro = passed_ != nullptr && brackets > 0;
      if (token.kind == Token::Kind::kMacro) {
        const bool called = k + 1 < end_ && tokens_[k + 1].Is("(");
        if (passed_ == nullptr || (called && !indexMacro)) return kNoStatementEnd;
      } else if (token.Is("(") && IsCall(tokens_, k)) {
        const bool macroCall = tokens_[k - 1].kind == Token::Kind::kMacro;
        if (!macroCall || !indexMacro) {
          if (passed_ == nullptr) return kNoStatementEnd;
          if (firstCall == kNoStatementEnd) firstCall = parentheses + 1;
        }
      } else if (!IsPlainExpressionToken(k)) {
        return kNoStatementEnd;
      }
      if (firstCall != kNoStatementEnd && token.kind == Token::Kind::kWord && token.text.front() != '$') {
        Add(*passed_, token.text);
      }
      if (token.Is("[")) ++brackets;
      if (token.Is("]") && brackets > 0) --brackets;
      if (token.Is("(")) ++parentheses;
      if (token.Is(")")) {
        if (parentheses == 0) return kNoStatementEnd;
        if (--parentheses < firstCall) firstCall = kNoStatementEnd;
      }
    }
    return kNoStatementEnd;
  }

 private:
  bool IsPlainExpressionToken(std::size_t k) const {
    const Token& token = tokens_[k];
    if (token.kind == Token::Kind::kMacro || IsAssignmentOperator(token)) return false;
    if (token.Is("(") && IsCall(tokens_, k)) return false;
    return !IsAnyOf(token, {"#", "@", ";", "begin", "end", "endcase", "fork", "join"});
  }

  bool IsPlainRange(std::size_t from, std::size_t to) const {
    for (std::size_t k = from; k < to; ++k) {
      if (!IsPlainExpressionToken(k)) return false;
    }
    return true;
  }

  // The token after the ")" matching the "(" at `k`, when what it encloses
  // is a plain expression.
  std::size_t SkipCondition(std::size_t k) const {
    if (k >= end_ || !tokens_[k].Is("(")) return kNoStatementEnd;
    std::size_t nesting = 0;
    for (std::size_t m = k; m < end_; ++m) {
      if (tokens_[m].Is("(")) ++nesting;
      if (tokens_[m].Is(")") && --nesting == 0) return IsPlainRange(k + 1, m) ? m + 1 : kNoStatementEnd;
    }
    return kNoStatementEnd;
  }

  std::size_t ReadSequence(std::size_t j, Assigned& assigned, std::size_t depth) const {
    std::size_t k = SkipLabel(j + 1);
    while (k < end_ && !tokens_[k].Is("end")) {
      k = Read(k, assigned, depth + 1);
      if (k == kNoStatementEnd) return kNoStatementEnd;
    }
    return k < end_ ? SkipLabel(k + 1) : kNoStatementEnd;
  }

  std::size_t ReadIf(std::size_t j, Assigned& assigned, std::size_t depth) const {
    const std::size_t condition = SkipCondition(j + 1);
    if (condition == kNoStatementEnd) return kNoStatementEnd;
    std::vector<Assigned> branches(1);
    std::size_t after = Read(condition, branches.back(), depth + 1);
    if (after == kNoStatementEnd) return kNoStatementEnd;
    const bool complete = after < end_ && tokens_[after].Is("else");
    if (complete) {
      branches.emplace_back();
      after = Read(after + 1, branches.back(), depth + 1);
      if (after == kNoStatementEnd) return kNoStatementEnd;
    }
    AddBranches(assigned, branches, complete);
    return after;
  }

  // The token after a case item's labels and their ":".
  std::size_t SkipCaseLabels(std::size_t k) const {
    std::size_t nesting = 0;
    for (; k < end_; ++k) {
      const Token& token = tokens_[k];
      if (nesting == 0 && token.Is(":")) return k + 1;
      // A macro label ("`STATE_IDLE:") names a constant.
      if (token.kind == Token::Kind::kMacro && k + 1 < end_ && !tokens_[k + 1].Is("(")) continue;
      if (!IsPlainExpressionToken(k) || IsAnyOf(token, {"?", "inside", "matches", "default"})) return kNoStatementEnd;
      if (IsAnyOf(token, {"(", "[", "{"})) ++nesting;
      if (IsAnyOf(token, {")", "]", "}"})) {
        if (nesting == 0) return kNoStatementEnd;
        --nesting;
      }
    }
    return kNoStatementEnd;
  }

  // "(* ... *) statement": an attribute changes nothing of the statement,
  // except that "full_case" declares a case complete: its designer states
  // that no other value occurs, and synthesis builds no latch for it.
  std::size_t ReadAttributed(std::size_t j, Assigned& assigned, std::size_t depth) const {
    bool full = false;
    for (std::size_t k = j + 2; k + 1 < end_; ++k) {
      if (tokens_[k].Is("full_case")) full = true;
      if (!tokens_[k].Is("*") || !tokens_[k + 1].Is(")")) continue;
      const std::size_t next = k + 2;
      if (full && next < end_ && IsAnyOf(tokens_[next], {"case", "casex", "casez"})) {
        return ReadCase(next, assigned, depth + 1, true);
      }
      return Read(next, assigned, depth + 1);
    }
    return kNoStatementEnd;
  }

  std::size_t ReadCase(std::size_t j, Assigned& assigned, std::size_t depth, bool declaredFull) const {
    const std::optional<unsigned> selector = tokens_[j].Is("case") ? SelectorWidth(j + 1) : std::nullopt;
    const unsigned width = selector.value_or(0);
    std::vector<std::uint32_t> values;
    bool numbered = selector.has_value();
    std::size_t k = SkipCondition(j + 1);
    std::vector<Assigned> items;
    bool hasDefault = false;
    while (k != kNoStatementEnd && k < end_ && !tokens_[k].Is("endcase")) {
      if (tokens_[k].Is("default")) {
        hasDefault = true;
        ++k;
        if (k < end_ && tokens_[k].Is(":")) ++k;
      } else {
        numbered = numbered && AddLabelValues(k, width, values);
        k = SkipCaseLabels(k);
        if (k == kNoStatementEnd) return kNoStatementEnd;
      }
      items.emplace_back();
      k = Read(k, items.back(), depth + 1);
    }
    if (k == kNoStatementEnd || k >= end_) return kNoStatementEnd;
    const bool full = declaredFull || (numbered && values.size() == (std::size_t{1} << width));
    AddBranches(assigned, items, hasDefault || full);
    return k + 1;
  }

  // The width of "(name)", "(name[3])" or "(name[3:2])" at `open`, up to 12
  // bits.
  std::optional<unsigned> SelectorWidth(std::size_t open) const {
    if (!declaredWidth_ || open + 2 >= end_ || !tokens_[open].Is("(")) return std::nullopt;
    const Token& name = tokens_[open + 1];
    if (name.kind != Token::Kind::kWord || name.text.front() == '$') return std::nullopt;
    if (tokens_[open + 2].Is(")")) {
      const std::optional<unsigned> width = declaredWidth_(name.text);
      if (width && *width >= 1 && *width <= 12) return width;
      return std::nullopt;
    }
    const bool bit = open + 5 < end_ && tokens_[open + 2].Is("[") && tokens_[open + 3].kind == Token::Kind::kNumber &&
                     NumberValue(tokens_[open + 3].text) && tokens_[open + 4].Is("]") && tokens_[open + 5].Is(")");
    if (bit && declaredWidth_(name.text)) return 1u;
    // "(name[3:2])": as many bits as the part names.
    const bool part = open + 7 < end_ && tokens_[open + 2].Is("[") && tokens_[open + 3].kind == Token::Kind::kNumber &&
                      tokens_[open + 4].Is(":") && tokens_[open + 5].kind == Token::Kind::kNumber &&
                      tokens_[open + 6].Is("]") && tokens_[open + 7].Is(")");
    if (!part || !declaredWidth_(name.text)) return std::nullopt;
    const std::optional<std::uint64_t> high = NumberValue(tokens_[open + 3].text);
    const std::optional<std::uint64_t> low = NumberValue(tokens_[open + 5].text);
    if (!high || !low || *high < *low || *high - *low >= 12) return std::nullopt;
    return static_cast<unsigned>(*high - *low + 1);
  }

  // Adds the values of the labels "3'b001, 3'b010:" from `k` that fit in
  // `width` bits; false when a label is not such a number.
  bool AddLabelValues(std::size_t k, unsigned width, std::vector<std::uint32_t>& values) const {
    for (; k + 1 < end_; k += 2) {
      const std::optional<std::uint64_t> value =
          tokens_[k].kind == Token::Kind::kNumber ? NumberValue(tokens_[k].text) : std::nullopt;
      if (!value) return false;
      if (*value < (std::uint64_t{1} << width)) {
        const auto fitting = static_cast<std::uint32_t>(*value);
        if (std::find(values.begin(), values.end(), fitting) == values.end()) values.push_back(fitting);
      }
      if (tokens_[k + 1].Is(":")) return true;
      if (!tokens_[k + 1].Is(",")) return false;
    }
    return false;
  }

  // "for (start; condition; step) body": the start runs on every path, the
  // body and the step may not run at all. A loop variable declared in the
  // start ("int i = 0") is the loop's own.
  std::size_t ReadFor(std::size_t j, Assigned& assigned, std::size_t depth) const {
    const std::size_t open = j + 1;
    if (open >= end_ || !tokens_[open].Is("(")) return kNoStatementEnd;
    std::vector<std::size_t> semicolons;
    std::size_t close = kNoStatementEnd;
    std::size_t nesting = 0;
    for (std::size_t m = open; m < end_ && close == kNoStatementEnd; ++m) {
      if (tokens_[m].Is("(")) ++nesting;
      if (tokens_[m].Is(")") && --nesting == 0) close = m;
      if (nesting == 1 && tokens_[m].Is(";")) semicolons.push_back(m);
      if (tokens_[m].Is(",")) return kNoStatementEnd;
    }
    if (close == kNoStatementEnd || semicolons.size() != 2) return kNoStatementEnd;
    std::size_t equals = open + 1;
    while (equals < semicolons[0] && tokens_[equals].kind == Token::Kind::kWord) ++equals;
    if (equals == open + 1 || equals >= semicolons[0] || !tokens_[equals].Is("=")) return kNoStatementEnd;
    if (!IsPlainRange(equals + 1, semicolons[0]) || !IsPlainRange(semicolons[0] + 1, semicolons[1])) {
      return kNoStatementEnd;
    }
    const std::string_view variable = tokens_[equals - 1].text;
    const bool local = equals - open > 2;
    if (!local) {
      Add(assigned.must, variable);
      Add(assigned.may, variable);
    }
    if (!IsLoopStep(semicolons[1] + 1, close, variable)) return kNoStatementEnd;
    Assigned body;
    ++loops_;
    const std::size_t after = Read(close + 1, body, depth + 1);
    --loops_;
    if (after == kNoStatementEnd) return kNoStatementEnd;
    for (std::string_view name : body.may) {
      if (!local || name != variable) Add(assigned.may, name);
    }
    return after;
  }

  // "i++", "i--", "++i", "--i" or "i op= expr" on the loop variable.
  bool IsLoopStep(std::size_t from, std::size_t to, std::string_view variable) const {
    if (to - from == 2) {
      const bool postfix = tokens_[from].Is(variable) && IsAnyOf(tokens_[from + 1], {"++", "--"});
      const bool prefix = tokens_[from + 1].Is(variable) && IsAnyOf(tokens_[from], {"++", "--"});
      return postfix || prefix;
    }
    return to - from > 2 && tokens_[from].Is(variable) && IsAssignmentOperator(tokens_[from + 1]) &&
           !IsAnyOf(tokens_[from + 1], {"++", "--"}) && IsPlainRange(from + 2, to);
  }

  // "$display(...);" and the like assign nothing.
  std::size_t ReadSystemTask(std::size_t j) const {
    std::size_t k = j + 1;
    if (k < end_ && tokens_[k].Is("(")) {
      k = SkipCondition(k);
      if (k == kNoStatementEnd) return kNoStatementEnd;
    }
    return k < end_ && tokens_[k].Is(";") ? k + 1 : kNoStatementEnd;
  }

  // The names of an assigned concatenation "{a, b[1], c}": whole ones and
  // selected ones. The token after its "}".
  std::size_t ReadConcatenationTarget(std::size_t k, Names& whole, Names& partial) const {
    std::size_t braces = 0;
    for (; k < end_; ++k) {
      const Token& token = tokens_[k];
      if (token.Is("{")) {
        ++braces;
      } else if (token.Is("}")) {
        if (--braces == 0) return k + 1;
      } else if (token.kind == Token::Kind::kWord && token.text.front() != '$') {
        const std::size_t after = SkipSelects(tokens_, k + 1, end_);
        if (!IsPlainRange(k + 1, after)) return kNoStatementEnd;
        (after == k + 1 ? whole : partial).push_back(token.text);
        k = after - 1;
      } else if (!token.Is(",")) {
        return kNoStatementEnd;
      }
    }
    return kNoStatementEnd;
  }

  // "name = expr;", "name[i] <= expr;", "{a, b} = expr;", "name += expr;",
  // "name++;": a selected name counts as assigned only in part.
  std::size_t ReadAssignment(std::size_t j, Assigned& assigned) const {
    std::size_t k = j;
    const bool prefix = IsAnyOf(tokens_[k], {"++", "--"});
    if (prefix) ++k;
    Names whole;
    Names partial;
    std::size_t after = kNoStatementEnd;
    if (k < end_ && tokens_[k].Is("{") && !prefix) {
      after = ReadConcatenationTarget(k, whole, partial);
    } else if (k < end_ && tokens_[k].kind == Token::Kind::kWord && tokens_[k].text.front() != '$') {
      after = SkipSelects(tokens_, k + 1, end_);
      if (!IsPlainRange(k + 1, after)) return kNoStatementEnd;
      (after == k + 1 ? whole : partial).push_back(tokens_[k].text);
    }
    if (after == kNoStatementEnd || after >= end_) return kNoStatementEnd;
    std::size_t next = kNoStatementEnd;
    if (prefix || IsAnyOf(tokens_[after], {"++", "--"})) {
      const std::size_t semicolon = prefix ? after : after + 1;
      if (semicolon < end_ && tokens_[semicolon].Is(";")) next = semicolon + 1;
    } else if (IsAssignmentOperator(tokens_[after]) || tokens_[after].Is("<=")) {
      next = ExpressionEnd(after + 1);
    }
    if (next == kNoStatementEnd) return kNoStatementEnd;
    for (std::string_view name : whole) {
      Add(assigned.must, name);
      Add(assigned.may, name);
    }
    for (std::string_view name : partial) Add(assigned.may, name);
    return next;
  }

  const std::vector<Token>& tokens_;
  std::size_t end_;
  Names* passed_;
  std::function<std::optional<unsigned>(std::string_view)> declaredWidth_;
  mutable std::size_t loops_ = 0;  // the for bodies being read
};

}  // namespace

bool EveryPathAssigns(const std::vector<Token>& tokens, const ProceduralBlock& block,
                      const std::function<bool(std::string_view)>& isInput,
                      const std::function<std::optional<unsigned>(std::string_view)>& declaredWidth,
                      const std::function<bool(std::string_view)>& isLoopIndex) {
  const std::size_t end = std::min(block.end, tokens.size());
  Names passed;
  const PathReader reader(tokens, end, &passed, declaredWidth);
  Assigned assigned;
  const std::size_t after = reader.Read(BodyStart(tokens, block), assigned, 0);
  if (after == kNoStatementEnd || after > end) return false;
  const auto covered = [&assigned](std::string_view name) { return Holds(assigned.must, name); };
  return std::all_of(assigned.may.begin(), assigned.may.end(),
                     [&](std::string_view name) { return covered(name) || isLoopIndex(name); }) &&
         std::all_of(passed.begin(), passed.end(),
                     [&](std::string_view name) { return covered(name) || isInput(name); });
}

bool AssignsBeforeReading(const std::vector<Token>& tokens, const ProceduralBlock& block, std::string_view name) {
  const std::size_t end = std::min(block.end, tokens.size());
  const PathReader reader(tokens, end, nullptr);
  std::size_t j = BodyStart(tokens, block);
  if (j >= end || !tokens[j].Is("begin")) return false;
  j = reader.SkipLabel(j + 1);
  auto mentions = [&tokens, name](std::size_t from, std::size_t to) {
    for (std::size_t k = from; k < to; ++k) {
      if (tokens[k].kind == Token::Kind::kWord && EqualFoldingCase(tokens[k].text, name)) return true;
    }
    return false;
  };
  while (j < end && !tokens[j].Is("end")) {
    if (tokens[j].text == name && j + 1 < end && tokens[j + 1].Is("=")) {
      const std::size_t next = reader.ExpressionEnd(j + 2);
      return next != kNoStatementEnd && !mentions(j + 2, next);
    }
    Assigned ignored;
    const std::size_t next = reader.Read(j, ignored, 0);
    if (next == kNoStatementEnd || mentions(j, next)) return false;
    j = next;
  }
  return false;
}

}  // namespace quill::cli
