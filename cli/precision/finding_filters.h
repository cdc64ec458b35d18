// Named filters that drop a linter finding only where the file's own
// structure proves it wrong: declarations and drivers in different branches
// of a generate if or case or in different named generate blocks, an always
// block that only reads the signal it is said to drive, a latch warning on a
// block that gives every branch target a default first, a blocking-assign
// warning on a block without such an assignment, a port declared by
// direction and again by type, findings about an empty name, struct members
// and routine locals taken for signals, names read in an initializer taken
// for declared ones, uses that the text does not hold, latches asked for
// with always_latch, hierarchical paths and members of other objects taken
// for one signal, latches on blocks without the branch named, names that
// differ in letter case taken for one, assertions taken for instances, loops
// through a variable the block assigns before reading it, latches on blocks
// whose every path assigns every target, and blocking assigns to a clocked
// block's own variables. When in doubt a finding is kept.
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
  kMemberScopes,
  kInitializerNames,
  kAbsentUse,
  kIntendedLatch,
  kHierarchicalPaths,
  kAbsentBranch,
  kLetterCase,
  kAssertionItems,
  kAssignedFirst,
  kCompletePaths,
  kBlockLocals,
};

struct LintFilterInfo {
  LintFilter id;
  std::string_view name;
  std::string_view summary;
};

// In the order they are tried; a dropped finding counts for the first filter
// that drops it.
inline constexpr std::array<LintFilterInfo, 18> kLintFilters = {{
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
    {LintFilter::kMemberScopes, "member-scopes",
     "duplicates among struct members and routine locals, and assigns to disjoint members of one signal"},
    {LintFilter::kInitializerNames, "initializer-names",
     "dupli-define and wire-always findings that take a name read in a net's initializer for a declaration"},
    {LintFilter::kAbsentUse, "absent-use",
     "used-bef-declare findings on a name that does not occur before its declaration"},
    {LintFilter::kIntendedLatch, "intended-latch", "latch findings on always_latch blocks"},
    {LintFilter::kHierarchicalPaths, "hierarchical-paths",
     "comb-loop findings on an assign whose sides are different hierarchical paths under one root, or whose "
     "right side names the target only as a member of another object"},
    {LintFilter::kAbsentBranch, "absent-branch",
     "latch findings on a block whose own text has no if (or no case) of the kind named"},
    {LintFilter::kLetterCase, "letter-case",
     "comb-loop, repeated-assig, multi-driver and wire-always findings that join names differing only in "
     "letter case (a signal and a function among them)"},
    {LintFilter::kAssertionItems, "assertion-items",
     "dupli-inst findings that take 'assert property' for an instance named property"},
    {LintFilter::kAssignedFirst, "assigned-first",
     "comb-loop findings on an always block that assigns the signal whole before any read of it"},
    {LintFilter::kCompletePaths, "complete-paths",
     "latch findings on blocks that assign every target on every path (complete if/else and case, loops after "
     "defaults, loop indices read only in their loops)"},
    {LintFilter::kBlockLocals, "block-locals",
     "blocking-assign findings on a clocked block whose every '=' writes a variable declared in the block"},
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
  void Disable(LintFilter filter) { bits_ &= ~Bit(filter); }
  bool Has(LintFilter filter) const { return (bits_ & Bit(filter)) != 0; }
  bool Empty() const { return bits_ == 0; }

 private:
  static std::uint32_t Bit(LintFilter filter) { return 1u << static_cast<unsigned>(filter); }
  std::uint32_t bits_ = 0;
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
