// Named filters that drop a linter finding only where the file's own
// structure proves it wrong: declarations and drivers in different branches
// of a generate if or case or in different named generate blocks, an always
// block that only reads the signal it is said to drive, a latch warning on a
// block that gives every branch target a default first, a blocking-assign
// warning on a block without such an assignment, a port declared by
// direction and again by type, and findings about an empty name. When in doubt a finding is kept.
#ifndef QUILL_CLI_PRECISION_FINDING_FILTERS_H_
#define QUILL_CLI_PRECISION_FINDING_FILTERS_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "precision/generate_scopes.h"

namespace quill::cli {

enum class LintFilter : std::uint8_t {
  kEmptyName,
  kReadOnlyDriver,
  kAbsentAssignment,
  kGenerateScope,
  kPortRedeclaration,
  kInterfaceItems,
  kDefaultBeforeBranch,
};

struct LintFilterInfo {
  LintFilter id;
  std::string_view name;
  std::string_view summary;
};

// In the order they are tried; a dropped finding counts for the first filter
// that drops it.
inline constexpr std::array<LintFilterInfo, 7> kLintFilters = {{
    {LintFilter::kEmptyName, "empty-name", "findings about the empty name ''"},
    {LintFilter::kReadOnlyDriver, "read-only-driver",
     "multi-driver findings where a named always block only reads the signal"},
    {LintFilter::kAbsentAssignment, "absent-assignment",
     "blocking-assign findings on a block whose own text has no assignment of the kind named"},
    {LintFilter::kGenerateScope, "generate-scope",
     "duplicates and drivers in different branches of a generate if/case or in different named generate blocks"},
    {LintFilter::kPortRedeclaration, "port-redeclaration",
     "dupli-define (and wire-always) findings on a non-ANSI port declared by direction, then by type"},
    {LintFilter::kInterfaceItems, "interface-items",
     "dupli-define and used-bef-declare findings that take a modport or clocking item for a declaration"},
    {LintFilter::kDefaultBeforeBranch, "default-before-branch",
     "latch findings on blocks that assign every branch target a default value first"},
}};

std::optional<LintFilter> FindLintFilter(std::string_view name);
// "empty-name, read-only-driver, ...", for messages.
std::string LintFilterNames();

// A bit set of enabled filters.
class LintFilterSet {
 public:
  static LintFilterSet All() {
    LintFilterSet set;
    for (const LintFilterInfo& filter : kLintFilters) set.Enable(filter.id);
    return set;
  }
  void Enable(LintFilter filter) { bits_ |= Bit(filter); }
  void Disable(LintFilter filter) { bits_ &= static_cast<std::uint8_t>(~Bit(filter)); }
  bool Has(LintFilter filter) const { return (bits_ & Bit(filter)) != 0; }
  bool Empty() const { return bits_ == 0; }

 private:
  static std::uint8_t Bit(LintFilter filter) { return static_cast<std::uint8_t>(1u << static_cast<unsigned>(filter)); }
  std::uint8_t bits_ = 0;
};

struct FindingToFilter {
  std::uint32_t line = 0;  // zero-based, in the scanned text
  std::string_view check;
  std::string_view message;
};

// The filter that drops the finding, or nullopt when it is kept.
std::optional<LintFilter> FilterThatDrops(const GenerateScopes& scopes, const FindingToFilter& finding,
                                          LintFilterSet enabled);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_FINDING_FILTERS_H_
