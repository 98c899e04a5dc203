// The findings of a run in each of the formats.
#pragma once

#include <string>
#include <vector>

#include "lang/finding.h"
#include "lang/reading/workspace.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

/// What is reported: the findings of CheckWorkspace after the settings of the project, worst first.
struct Report {
  const Workspace& workspace;
  std::vector<Finding> findings;
  std::vector<RuleId> rulesNotRun;  // for want of a base
};

struct TextStyle {
  bool hasColours = false;
  unsigned width = 100;  // of the terminal, in columns
};

/// For people, in the language of `texts`.
std::string TextReport(const Report& report, const Texts& texts, const TextStyle& style);

// For programs, always in English.
std::string JsonReport(const Report& report);
std::string SarifReport(const Report& report);
std::string GithubReport(const Report& report);

/// One HTML page for people who open no terminal.
std::string HtmlReport(const Report& report, const Texts& texts);

}  // namespace KelmoLibs::Lang
