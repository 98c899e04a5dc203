#include "lang/commands/lint.h"

#include <cstdio>

#include "lang/report/report.h"
#include "lang/rules/check_workspace.h"

namespace KelmoLibs::Lang {

int Lint(const LintOptions& options) {
  std::vector<WorkspaceProblem> problems;
  const Workspace workspace = ReadWorkspace({options.paths, options.base}, problems);
  const Report report{workspace, CheckWorkspace(workspace).Take(), {}};
  const std::string text = TextReport(report, Texts("en"), {});
  std::fwrite(text.data(), 1, text.size(), stdout);
  return problems.empty() ? static_cast<int>(!report.findings.empty()) : 2;
}

}  // namespace KelmoLibs::Lang
