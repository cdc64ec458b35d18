#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

// A net or input port, or an output port that is not declared reg.
bool IsNet(const SignalDecl& declaration) {
  if (declaration.isLogic) return false;
  switch (declaration.kind) {
    case SignalKind::kWire:
    case SignalKind::kInput:
    case SignalKind::kInout:
      return true;
    case SignalKind::kOutput:
      return !declaration.isReg;
    default:
      return false;
  }
}

}  // namespace

std::vector<Diagnostic> CheckWireAlways(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  const FirstDeclarations declarations = IndexFirstDeclarations(model.signals);
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    for (const std::string& name : block.assignedSignals) {
      const SignalDecl* declaration = FindDeclaration(model, declarations, name);
      if (declaration == nullptr || !IsNet(*declaration)) continue;
      findings.push_back(
          MakeDiagnostic(CheckId::kWireAlways, block.startLine,
                         "wire signal '" + name + "' cannot be assigned in always block (use reg instead)"));
    }
  }
  return findings;
}

}  // namespace quill
