#include <cstdint>

#include "lint/identifiers.h"
#include "lint/steps.h"

namespace quill {

void CollectUses(ModuleModel& model) {
  for (const ContAssign& assign : model.assigns) {
    RecordUses(assign.rhs, static_cast<std::int32_t>(assign.line), model);
  }
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    const std::string sensitivity = StripSizedLiterals(block.sensitivity);
    const auto line = static_cast<std::int32_t>(block.startLine);
    ForEachIdentifier(sensitivity, [&model, line](std::string_view identifier) {
      // Edge words are keywords already; the explicit test is kept.
      if (IsKeyword(identifier) || IsNumberToken(identifier) || identifier == "posedge" || identifier == "negedge") {
        return;
      }
      if (model.usedIdentifiers.find(identifier) == model.usedIdentifiers.end()) {
        model.usedIdentifiers.emplace(identifier);
      }
      RecordFirstUse(model, identifier, line);
    });
  }
}

}  // namespace quill
