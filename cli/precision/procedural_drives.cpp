#include "precision/procedural_drives.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>

#include "precision/procedural_statements.h"

namespace quill::cli {
namespace {

bool IsAnyOf(const Token& token, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), token.text) != words.end();
}

// Adds the whole-signal targets that the statement [j, end) assigns, or
// returns false when it holds something that may assign in a way not read
// here (a call, a loop, a concatenation with selects).
bool CollectTargets(const std::vector<Token>& tokens, std::size_t j, std::size_t end,
                    std::vector<std::string_view>* targets) {
  std::size_t parentheses = 0;
  for (std::size_t k = j; k < end; ++k) {
    const Token& token = tokens[k];
    if (token.Is("(")) {
      if (IsCall(tokens, k)) return false;
      ++parentheses;
      continue;
    }
    if (token.Is(")") && parentheses > 0) --parentheses;
    if (IsAnyOf(token, {"for", "while", "repeat", "forever", "foreach", "fork", "disable", "force", "assign"})) {
      return false;
    }
    if (token.kind == Token::Kind::kWord && token.text.front() != '$') {
      const std::size_t after = SkipSelects(tokens, k + 1, end);
      if (after >= end) continue;
      if (IsAssignmentOperator(tokens[after]) || IsSplitCompoundAssignment(tokens, after, end) ||
          (parentheses == 0 && tokens[after].Is("<="))) {
        targets->push_back(token.text);
      }
    }
    if (token.Is("{")) {
      // A concatenation that is assigned: every name in it is a target.
      std::size_t close = k;
      std::size_t braces = 0;
      for (; close < end; ++close) {
        if (tokens[close].Is("{")) ++braces;
        if (tokens[close].Is("}") && --braces == 0) break;
      }
      if (close + 1 < end && (tokens[close + 1].Is("=") || (parentheses == 0 && tokens[close + 1].Is("<=")))) {
        for (std::size_t m = k + 1; m < close; ++m) {
          if (tokens[m].kind == Token::Kind::kWord) targets->push_back(tokens[m].text);
        }
      }
    }
  }
  return true;
}

bool Contains(const std::vector<std::string_view>& names, std::string_view name) {
  return std::any_of(names.begin(), names.end(), [&](std::string_view n) { return EqualFoldingCase(n, name); });
}


}  // namespace

bool MayDrive(const std::vector<Token>& tokens, const ProceduralBlock& block, std::string_view name,
              bool exactCase) {
  std::vector<bool> openCalls;   // per open "(": is it a call's?
  std::vector<bool> openBraces;  // per open "{": does it hold the name?
  const std::size_t end = std::min(block.end, tokens.size());
  for (std::size_t j = block.keyword; j < end; ++j) {
    const Token& token = tokens[j];
    if (token.Is("(")) {
      openCalls.push_back(IsCall(tokens, j));
    } else if (token.Is(")")) {
      if (!openCalls.empty()) openCalls.pop_back();
    } else if (token.Is("{")) {
      openBraces.push_back(false);
    } else if (token.Is("}")) {
      if (openBraces.empty()) continue;
      const bool held = openBraces.back();
      openBraces.pop_back();
      if (!held) continue;
      if (!openBraces.empty()) openBraces.back() = true;
      if (j + 1 < end && (tokens[j + 1].Is("=") || (openCalls.empty() && tokens[j + 1].Is("<=")))) return true;
    } else if (token.kind == Token::Kind::kWord &&
               (exactCase ? token.text == name : EqualFoldingCase(token.text, name))) {
      if (std::find(openCalls.begin(), openCalls.end(), true) != openCalls.end()) return true;
      if (j > 0 && (tokens[j - 1].Is("++") || tokens[j - 1].Is("--"))) return true;
      if (!openBraces.empty()) openBraces.back() = true;
      const std::size_t after = SkipSelects(tokens, j + 1, end);
      if (after >= end) continue;
      if (IsAssignmentOperator(tokens[after]) || IsSplitCompoundAssignment(tokens, after, end)) return true;
      if (openCalls.empty() && tokens[after].Is("<=")) return true;
    }
  }
  return false;
}

bool DefaultsCoverBranches(const std::vector<Token>& tokens, const ProceduralBlock& block) {
  const std::size_t end = std::min(block.end, tokens.size());
  std::size_t j = BodyStart(tokens, block);
  if (j >= end || !tokens[j].Is("begin")) return false;
  ++j;
  if (j + 1 < end && tokens[j].Is(":")) j += 2;
  std::vector<std::string_view> defaults;
  bool sawBranch = false;
  while (j < end && !tokens[j].Is("end")) {
    const Token& token = tokens[j];
    if (token.Is(";")) {
      ++j;
      continue;
    }
    const std::size_t statementEnd = StatementEnd(tokens, j, end, 0);
    if (statementEnd == kNoStatementEnd) return false;
    if (IsAnyOf(token, {"if", "case", "casex", "casez", "unique", "unique0", "priority"})) {
      std::vector<std::string_view> targets;
      if (!CollectTargets(tokens, j, statementEnd, &targets)) return false;
      for (std::string_view target : targets) {
        if (!Contains(defaults, target)) return false;
      }
      sawBranch = true;
    } else if (token.kind == Token::Kind::kWord && token.text.front() == '$') {
      // A system task such as $display assigns nothing.
    } else if (token.kind == Token::Kind::kWord && j + 1 < end && (tokens[j + 1].Is("=") || tokens[j + 1].Is("<="))) {
      std::vector<std::string_view> targets;
      if (!CollectTargets(tokens, j + 2, statementEnd, &targets) || !targets.empty()) return false;
      defaults.push_back(token.text);
    } else if (token.kind == Token::Kind::kWord && j + 1 < end && tokens[j + 1].Is("[")) {
      // A part select assigned unconditionally: not a default of the whole
      // signal, and not a branch.
      std::vector<std::string_view> targets;
      if (!CollectTargets(tokens, j, statementEnd, &targets)) return false;
    } else {
      return false;
    }
    j = statementEnd;
  }
  return sawBranch && j < end;
}

}  // namespace quill::cli
