#include "lint/lint_text.h"

#include <algorithm>
#include <exception>

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
  std::replace(prepared.begin(), prepared.end(), '\t', ' ');
  return prepared;
}

namespace {

// The steps that decide whether a text is linted at all: the module name and
// the declarations.
void BeginModuleModel(std::string_view prepared, ModuleModel& model) {
  model.moduleName = FindModuleName(prepared);
  ExtractDeclarations(prepared, model);
}

bool IsLinted(const ModuleModel& model) { return !model.moduleName.empty() || !model.signals.empty(); }

void FinishModuleModel(std::string_view prepared, ModuleModel& model) {
  ExtractParameters(prepared, model);
  ExtractContinuousAssigns(prepared, model);
  ExtractAlwaysBlocks(prepared, model);
  ExtractInstances(prepared, model);
  CollectUses(model);
  CountIdentifiers(prepared, model);
  CollectPortNames(prepared, model);
}

}  // namespace

ModuleModel BuildModuleModel(std::string_view source) {
  ModuleModel model;
  if (source.empty()) return model;
  const std::string prepared = PrepareText(source);
  BeginModuleModel(prepared, model);
  FinishModuleModel(prepared, model);
  return model;
}

std::string LintText(std::string_view text) {
  return LintTextWith(text, RunChecks);
}

std::string LintTextWith(std::string_view text, const CheckRunner& runChecks) {
  try {
    // A text with neither a module header nor a declaration is not linted,
    // so the steps after those two are not run for it.
    if (text.empty()) return "[]";
    ModuleModel model;
    const std::string prepared = PrepareText(text);
    BeginModuleModel(prepared, model);
    if (!IsLinted(model)) return "[]";
    FinishModuleModel(prepared, model);
    return RenderReport(runChecks(model));
  } catch (const std::exception& error) {
    return ExceptionReport(error.what());
  } catch (...) {
    return std::string(kUnknownExceptionReport);
  }
}

}  // namespace quill
