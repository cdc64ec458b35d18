#include <cstdint>

#include "lint/identifiers.h"
#include "lint/steps.h"

namespace quill {

void CollectUses(const std::vector<ContAssign>& assigns, const std::vector<AlwaysBlock>& alwaysBlocks,
                 NameMap& firstUseLine) {
  for (const ContAssign& assign : assigns) {
    RecordUses(assign.rhs, static_cast<std::int32_t>(assign.line), firstUseLine);
  }
  for (const AlwaysBlock& block : alwaysBlocks) {
    const auto line = static_cast<std::int32_t>(block.startLine);
    ForEachIdentifier<SizedLiterals::kSkipped>(block.sensitivity, [&firstUseLine, line](std::string_view identifier) {
      // Edge words are keywords already; the explicit test is kept.
      if (IsKeyword(identifier) || identifier == "posedge" || identifier == "negedge") {
        return;
      }
      RecordFirstUse(firstUseLine, identifier, line);
    });
  }
}

}  // namespace quill
