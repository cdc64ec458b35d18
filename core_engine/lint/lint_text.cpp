#include "lint/lint_text.h"

#include <exception>
#include <optional>

#include "common/pattern.h"
#include "lint/checks/run_checks.h"
#include "lint/report.h"
#include "lint/steps.h"

namespace quill {
namespace {

constexpr std::string_view kExceptionReportHead =
    "[{\"severity\":\"error\",\"line\":0,\"check\":\"cpp-exception\",\"message\":\"";
constexpr std::string_view kExceptionReportTail = "\"}]";
constexpr std::string_view kUnknownExceptionReport =
    "[{\"severity\":\"error\",\"line\":0,\"check\":\"cpp-exception\",\"message\":\"unknown exception\"}]";

// Capture 1 of the first "module <name>"; only the first module is named.
std::string FindModuleName(std::string_view text) {
  static const Pattern kModuleNamePattern(R"(\bmodule\s+(\w+))", CaseMode::kIgnoreCase);
  Match match;
  return kModuleNamePattern.Search(text, &match) ? match.Str(1) : std::string();
}

// The description is inserted as it is, unescaped: hosts already depend on
// this exact form of the report.
std::string ExceptionReport(const char* description) {
  std::string report(kExceptionReportHead);
  report += description;
  report += kExceptionReportTail;
  return report;
}

}  // namespace

std::string PrepareText(std::string_view source) {
  std::string prepared = StripComments(source);
  for (std::size_t tab = prepared.find('\t'); tab != std::string::npos; tab = prepared.find('\t', tab + 1)) {
    prepared[tab] = ' ';
  }
  return prepared;
}

std::optional<ModuleModel> BuildModuleModel(std::string_view source) {
  if (source.empty()) return std::nullopt;
  const std::string prepared = PrepareText(source);
  ModuleModel model;
  // The module name and the declarations decide whether the text is linted
  // at all; the other steps run only for a text that has one of them.
  model.moduleName = FindModuleName(prepared);
  model.signals = ExtractDeclarations(prepared);
  if (model.moduleName.empty() && model.signals.empty()) return std::nullopt;
  model.parameters = ExtractParameters(prepared);
  model.assigns = ExtractContinuousAssigns(prepared);
  // Sources name a new identifier about every 64 to 100 bytes; sized for one
  // every 64, the table of first uses seldom grows.
  model.firstUseLine.reserve(prepared.size() / 64);
  // Uses are recorded in this order: always bodies, instance connections,
  // then assignment right-hand sides and sensitivity lists.
  model.alwaysBlocks = ExtractAlwaysBlocks(prepared, AlwaysAnalysisBudget(prepared.size()), model.firstUseLine);
  model.instances = ExtractInstances(prepared, model.firstUseLine);
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  return model;
}

std::string LintText(std::string_view text) {
  return LintTextWith(text, RunChecks);
}

std::string LintTextWith(std::string_view text, const CheckRunner& runChecks) {
  try {
    const std::optional<ModuleModel> model = BuildModuleModel(text);
    if (!model) return "[]";
    return RenderReport(runChecks(*model));
  } catch (const std::exception& error) {
    return ExceptionReport(error.what());
  } catch (...) {
    return std::string(kUnknownExceptionReport);
  }
}

}  // namespace quill
