#include "lang/commands/lint.h"

#include "lang/report/report.h"
#include "lang/rules/check_workspace.h"
#include "platform/console.h"

namespace KelmoLibs::Lang {
namespace {

std::vector<RuleId> RulesNotRun(const Workspace& workspace) {
  std::vector<RuleId> rules;
  bool hasDictionary = false;
  for (const WorkspaceFile& file : workspace.files) {
    hasDictionary = hasDictionary || (file.isReported && file.dictionary);
  }
  if (hasDictionary && workspace.Base() == nullptr) {
    for (const Rule& rule : AllRules()) {
      if (rule.needsBase && rule.isOnByDefault) {
        rules.push_back(rule.id);
      }
    }
  }
  return rules;
}

std::vector<std::uint32_t> SetsOfTheirOwn(const Workspace& workspace) {
  std::vector<std::uint32_t> sets;
  for (std::uint32_t i = 0; i < workspace.files.size(); ++i) {
    if (workspace.files[i].isReported && workspace.files[i].isSetOfItsOwn) {
      sets.push_back(i);
    }
  }
  return sets;
}

}  // namespace

int Lint(const LintOptions& options, const Texts& texts) {
  std::vector<WorkspaceProblem> problems;
  const Workspace workspace = ReadWorkspace({options.paths, options.base}, problems);
  Findings findings = CheckWorkspace(workspace);
  Report report{workspace, findings.Take(), findings.Counted(), RulesNotRun(workspace),
                SetsOfTheirOwn(workspace)};
  SortFindings(report.findings);
  const std::string text = TextReport(report, texts, {});
  const bool isWritten = Write(Stream::kOutput, text);
  return problems.empty() && isWritten ? static_cast<int>(!report.findings.empty()) : 2;
}

}  // namespace KelmoLibs::Lang
