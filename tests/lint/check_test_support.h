// Builders for hand-made models and printing of findings, shared by the
// tests of the individual checks.
#ifndef QUILL_TESTS_LINT_CHECK_TEST_SUPPORT_H_
#define QUILL_TESTS_LINT_CHECK_TEST_SUPPORT_H_

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "common/name_set.h"
#include "lint/diagnostic.h"
#include "lint/module_model.h"
#include "lint/steps.h"

namespace quill {

inline bool operator==(const Diagnostic& a, const Diagnostic& b) {
  return a.severity == b.severity && a.line == b.line && a.check == b.check && a.message == b.message;
}

inline void PrintTo(const Diagnostic& d, std::ostream* os) {
  *os << "{" << SeverityName(d.severity) << ", " << d.line << ", " << LookUpCheck(d.check).name << ", \"" << d.message
      << "\"}";
}

namespace test {

// A finding of `check` with the severity the check table gives it.
inline Diagnostic Finding(CheckId check, std::int32_t line, std::string message) {
  return Diagnostic{LookUpCheck(check).severity, line, check, std::move(message)};
}

// The names of a map of first uses, as a set.
inline NameSet NamesOf(const NameMap& firstUseLine) {
  NameSet names;
  for (const auto& entry : firstUseLine) names.emplace(entry.first);
  return names;
}

// Adds the always blocks of `text` to `model`, with the budget and the record
// of uses the linter gives them.
inline void AddAlwaysBlocks(std::string_view text, ModuleModel& model) {
  model.alwaysBlocks = ExtractAlwaysBlocks(text, AlwaysAnalysisBudget(text.size()), model.firstUseLine);
}

inline SignalDecl Signal(std::string name, SignalKind kind, std::uint32_t line, std::string range = "",
                         bool isReg = false, bool isLogic = false) {
  SignalDecl signal;
  signal.name = std::move(name);
  signal.range = std::move(range);
  signal.line = line;
  signal.kind = kind;
  signal.isReg = isReg || kind == SignalKind::kReg;
  signal.isLogic = isLogic || kind == SignalKind::kLogic;
  return signal;
}

inline ContAssign Assign(std::uint32_t line, std::string lhs, std::vector<std::string> lhsNames, std::string rhs) {
  ContAssign assign;
  assign.line = line;
  assign.target = lhsNames.empty() ? std::string() : lhsNames.front();
  assign.lhs = std::move(lhs);
  assign.rhs = std::move(rhs);
  assign.lhsNames = std::move(lhsNames);
  return assign;
}

// An assignment to a single name, with the name as its whole left-hand side.
inline ContAssign Assign(std::uint32_t line, std::string name, std::string rhs) {
  return Assign(line, name, {name}, std::move(rhs));
}

inline AlwaysBlock Block(std::uint32_t startLine, bool isSequential, bool isCombinational,
                         std::vector<std::string> assignedSignals = {}) {
  AlwaysBlock block;
  block.startLine = startLine;
  block.endLine = startLine;
  block.isSequential = isSequential;
  block.isCombinational = isCombinational;
  block.assignedSignals = std::move(assignedSignals);
  return block;
}

inline AssignmentRecord Record(std::string target, std::string rhs, std::uint32_t line, bool indexed = false) {
  return AssignmentRecord{std::move(target), std::move(rhs), line, indexed};
}

}  // namespace test
}  // namespace quill

#endif  // QUILL_TESTS_LINT_CHECK_TEST_SUPPORT_H_
