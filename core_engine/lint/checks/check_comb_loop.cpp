#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

// Whether "\b" + name + "\b", ignoring ASCII letter case, matches somewhere
// in `text`, the name taken literally. An empty name matches wherever \b
// holds, that is whenever the text holds a word byte.
bool ContainsWholeWord(std::string_view text, std::string_view name) {
  if (name.size() > text.size()) return false;
  for (std::size_t pos = 0; pos + name.size() <= text.size(); ++pos) {
    if (IsWordBoundary(text, pos) && HasWordAtIgnoreCase(text, pos, name) && IsWordBoundary(text, pos + name.size())) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<Diagnostic> CheckCombLoop(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  for (const ContAssign& assign : model.assigns) {
    for (const std::string& name : assign.lhsNames) {
      if (!ContainsWholeWord(assign.rhs, name)) continue;
      findings.push_back(
          MakeDiagnostic("warning", assign.line, "comb-loop", "assign '" + name + "' feeds back to itself"));
    }
  }
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    if (block.isSequential) continue;
    for (const AssignmentRecord& record : block.assignments) {
      if (!ContainsWholeWord(record.rhs, record.target)) continue;
      findings.push_back(MakeDiagnostic("warning", record.line, "comb-loop",
                                        "signal '" + record.target + "' feeds back to itself in always"));
    }
  }
  return findings;
}

}  // namespace quill
