#include "lint/identifiers.h"
#include "lint/steps.h"

namespace quill {

void CountIdentifiers(std::string_view text, ModuleModel& model) {
  ForEachIdentifier(text, [&model](std::string_view identifier) {
    if (IsKeyword(identifier) || IsNumberToken(identifier)) return;
    auto found = model.identifierCounts.find(identifier);
    if (found == model.identifierCounts.end()) {
      model.identifierCounts.emplace(std::string(identifier), 1);
    } else {
      ++found->second;
    }
  });
}

}  // namespace quill
