#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckLatch(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    if (!block.isCombinational || !block.latchRisk) continue;
    std::string message = block.latchReason.empty() ? "potential latch in combinational always" : block.latchReason;
    findings.push_back(MakeDiagnostic(CheckId::kLatch, block.startLine, std::move(message)));
  }
  return findings;
}

}  // namespace quill
