// The linter's light model of one source text: what the extraction steps
// find and the checks read. Built and discarded within one lint call. Line
// numbers are zero-based: the number of LFs before the position in the
// prepared text.
#ifndef QUILL_LINT_MODULE_MODEL_H_
#define QUILL_LINT_MODULE_MODEL_H_

#include <cstdint>
#include <string>
#include <vector>

#include "common/name_set.h"
#include "lint/text_piece.h"

namespace quill {

enum class SignalKind : std::int32_t { kWire = 0, kReg = 1, kLogic = 2, kInput = 3, kOutput = 4, kInout = 5 };

struct SignalDecl {
  std::string name;
  std::string range;  // packed range as written, brackets included, or ""
  std::uint32_t line = 0;
  SignalKind kind = SignalKind::kWire;
  bool isReg = false;
  bool isLogic = false;
};

struct ParamDecl {
  std::string name;
  std::string value;
  std::uint32_t line = 0;
};

struct ContAssign {
  std::uint32_t line = 0;
  std::string target;
  std::string lhs;
  std::string rhs;
  std::vector<std::string> lhsNames;
};

struct AssignmentRecord {
  std::string target;
  TextPiece rhs;
  std::uint32_t line = 0;
  bool indexed = false;
};

struct AlwaysBlock {
  std::uint32_t startLine = 0;
  std::uint32_t endLine = 0;
  std::string sensitivity;
  bool isSequential = false;
  bool isCombinational = false;
  std::vector<std::string> assignedSignals;
  std::vector<AssignmentRecord> assignments;
  std::uint32_t blockingCount = 0;
  std::uint32_t nonBlockingCount = 0;
  bool latchRisk = false;
  std::string latchReason;
};

struct InstanceRecord {
  std::string name;
  std::uint32_t line = 0;
};

struct ModuleModel {
  std::string moduleName;
  std::vector<SignalDecl> signals;
  std::vector<ParamDecl> parameters;
  std::vector<ContAssign> assigns;
  std::vector<AlwaysBlock> alwaysBlocks;
  std::vector<InstanceRecord> instances;
  // The first line each name is read on (letter case ignored; the spelling
  // of the first use recorded is kept).
  NameMap firstUseLine;
};

}  // namespace quill

#endif  // QUILL_LINT_MODULE_MODEL_H_
