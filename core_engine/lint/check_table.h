// The linter's checks in one table: name, severity and descriptions, in the
// order their findings are reported. The checks, the command-line tool, the
// language server and the documentation all read it from here.
#ifndef QUILL_LINT_CHECK_TABLE_H_
#define QUILL_LINT_CHECK_TABLE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quill {

enum class Severity : std::uint8_t { kWarning, kError };

// The word a finding carries in its "severity" field.
constexpr std::string_view SeverityName(Severity severity) {
  return severity == Severity::kError ? "error" : "warning";
}

enum class CheckId : std::uint8_t {
  kLatch,
  kMultiDriver,
  kWidthMismatch,
  kBlockingAssign,
  kDuplicateDefine,
  kRepeatedAssign,
  kUsedBeforeDeclare,
  kCombLoop,
  kDuplicateInstance,
  kRegAssign,
  kWireAlways,
};

struct CheckInfo {
  CheckId id;
  std::string_view name;  // the "check" field of a finding
  Severity severity;
  std::string_view summary;      // one line
  std::string_view description;  // what it finds, why it matters, how to fix it
};

// clang-format off
inline constexpr std::array<CheckInfo, 11> kCheckTable = {{
  {CheckId::kLatch,             "latch",            Severity::kWarning,
   "Combinational always block that may infer a latch (if without else, case without default)",
   "A combinational always block (@(*) or a sensitivity list without an edge) in which an if has no "
   "else, or a case has no default, leaves its targets unassigned on some paths: synthesis keeps their "
   "old value in a latch. Give every target a value on every path, with an else, a default, or an "
   "assignment at the top of the block."},
  {CheckId::kMultiDriver,       "multi-driver",     Severity::kError,
   "Signal driven from more than one always block, or from both an assign and an always block",
   "A signal assigned in two always blocks, or by a continuous assignment and an always block, has "
   "several drivers: simulation and synthesis disagree and most tools reject it. Drive each signal "
   "from one place."},
  {CheckId::kWidthMismatch,     "width-mismatch",   Severity::kWarning,
   "Continuous assignment whose right-hand side width differs from its target's width",
   "The declared width of an assign's target differs from the width of its right-hand side where that "
   "width is known without evaluation (a sized literal or a single declared signal). The value is "
   "silently truncated or zero-extended. Size the literal or the target to match."},
  {CheckId::kBlockingAssign,    "blocking-assign",  Severity::kWarning,
   "Blocking '=' in a sequential always block, or non-blocking '<=' in a combinational one",
   "Clocked blocks should use non-blocking '<=' so that every register takes its new value at the "
   "same edge; combinational blocks should use blocking '='. Mixing them gives races between "
   "simulation and synthesis."},
  {CheckId::kDuplicateDefine,   "dupli-define",     Severity::kWarning,
   "Signal or parameter defined more than once",
   "A signal or parameter name declared twice in one module (an input port redeclared as a wire "
   "excepted). Most tools reject the second declaration; remove or rename it."},
  {CheckId::kRepeatedAssign,    "repeated-assig",   Severity::kWarning,
   "Signal assigned more than once by continuous assignments",
   "Several assign statements target the same whole signal; the nets are shorted together. Keep one "
   "assignment per signal."},
  {CheckId::kUsedBeforeDeclare, "used-bef-declare", Severity::kWarning,
   "Signal used before its declaration",
   "A signal is used on a line before the line that declares it. Verilog makes it an implicit one-bit "
   "net there, which is rarely what was meant. Move the declaration up."},
  {CheckId::kCombLoop,          "comb-loop",        Severity::kWarning,
   "Combinational loop: a signal that depends on itself",
   "A continuous assignment or a combinational always block reads the signal it assigns, which forms "
   "a feedback loop without a register. Register the value or break the loop."},
  {CheckId::kDuplicateInstance, "dupli-inst",       Severity::kError,
   "Instance name used more than once",
   "Two module instances in one module share an instance name; hierarchical names must be unique. "
   "Rename one of them."},
  {CheckId::kRegAssign,         "reg-assign",       Severity::kError,
   "Register (reg) driven by a continuous assignment",
   "A variable declared reg is the target of an assign statement, which Verilog does not allow. "
   "Declare it as a wire (or logic)."},
  {CheckId::kWireAlways,        "wire-always",      Severity::kError,
   "Net (wire, input, inout or plain output) assigned in an always block",
   "A net is assigned in a procedural block, which Verilog does not allow. Declare it as reg (or "
   "output reg, or logic)."},
}};
// clang-format on

constexpr bool CheckTableIsIndexedById() {
  for (std::size_t i = 0; i < kCheckTable.size(); ++i) {
    if (static_cast<std::size_t>(kCheckTable[i].id) != i) return false;
  }
  return true;
}
static_assert(CheckTableIsIndexedById(), "kCheckTable lists the checks in CheckId order");

constexpr const CheckInfo& LookUpCheck(CheckId id) { return kCheckTable[static_cast<std::size_t>(id)]; }

// The entry of the check with this name, or null.
constexpr const CheckInfo* FindCheck(std::string_view name) {
  for (const CheckInfo& check : kCheckTable) {
    if (check.name == name) return &check;
  }
  return nullptr;
}

}  // namespace quill

#endif  // QUILL_LINT_CHECK_TABLE_H_
