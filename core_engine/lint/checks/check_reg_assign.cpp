#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckRegAssign(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  const FirstDeclarations declarations = IndexFirstDeclarations(model.signals);
  for (const ContAssign& assign : model.assigns) {
    for (const std::string& name : assign.lhsNames) {
      const SignalDecl* declaration = FindDeclaration(model, declarations, name);
      if (declaration == nullptr || !declaration->isReg || declaration->isLogic) continue;
      findings.push_back(
          MakeDiagnostic(CheckId::kRegAssign, assign.line,
                         "reg signal '" + name + "' cannot be assigned by continuous assignment (use wire instead)"));
    }
  }
  return findings;
}

}  // namespace quill
