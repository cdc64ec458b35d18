#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckBlockingAssign(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    if (block.isSequential && block.blockingCount >= 1) {
      findings.push_back(
          MakeDiagnostic(CheckId::kBlockingAssign, block.startLine,
                         "sequential always uses '=' (" + std::to_string(block.blockingCount) + "x), suggest '<='"));
    }
    if (block.isCombinational && block.nonBlockingCount >= 1) {
      findings.push_back(MakeDiagnostic(
          CheckId::kBlockingAssign, block.startLine,
          "combinational always uses '<=' (" + std::to_string(block.nonBlockingCount) + "x), suggest '='"));
    }
  }
  return findings;
}

}  // namespace quill
