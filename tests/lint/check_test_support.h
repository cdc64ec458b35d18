// Builders for hand-made models and printing of findings, shared by the
// tests of the individual checks.
#ifndef QUILL_TESTS_LINT_CHECK_TEST_SUPPORT_H_
#define QUILL_TESTS_LINT_CHECK_TEST_SUPPORT_H_

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "lint/module_model.h"

namespace quill {

inline bool operator==(const Diagnostic& a, const Diagnostic& b) {
  return a.severity == b.severity && a.line == b.line && a.check == b.check && a.message == b.message;
}

inline void PrintTo(const Diagnostic& d, std::ostream* os) {
  *os << "{" << d.severity << ", " << d.line << ", " << d.check << ", \"" << d.message << "\"}";
}

namespace test {

inline Diagnostic Finding(std::string severity, std::int32_t line, std::string check, std::string message) {
  return Diagnostic{std::move(severity), line, std::move(check), std::move(message)};
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
