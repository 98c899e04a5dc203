// The findings of a run in each of the formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "lang/finding.h"
#include "lang/reading/workspace.h"
#include "lang/rules/findings.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

/// What is reported: the findings of CheckWorkspace after the settings of the project.
struct Report {
  const Workspace& workspace;
  std::vector<Finding> findings;              // in the order of SortFindings
  std::vector<CountedFindings> counted;       // further ones, which are not kept
  std::vector<RuleId> rulesNotRun;            // for want of a base
  std::vector<std::uint32_t> setsOfTheirOwn;  // files that are not compared with the base
  std::vector<Sentence> staleIgnored = {};    // of the project files: no finding fits them
  std::string possibleBase = {};              // a file to name as the base; empty: none
};

/// Errors first, then warnings, then notes; each by file, line and column.
void SortFindings(std::vector<Finding>& findings);

/// Findings by severity.
struct SeverityCounts {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t notes = 0;

  void Add(Severity severity, std::size_t count) noexcept {
    (severity == Severity::kError     ? errors
     : severity == Severity::kWarning ? warnings
                                      : notes) += count;
  }
  std::size_t All() const noexcept { return errors + warnings + notes; }
};

/// How many findings there are, those that are not kept included.
struct Summary : SeverityCounts {
  std::size_t files = 0;  // that were checked
};
Summary SummaryOf(const Report& report);

struct TextStyle {
  bool hasColours = false;
  bool showsAll = false;  // false: at most twenty findings of a rule, and the number of the others
  unsigned width = 100;   // of the terminal, in columns
};

/// For people, in the language of `texts`.
std::string TextReport(const Report& report, const Texts& texts, const TextStyle& style);

// For programs, always in English.
std::string JsonReport(const Report& report);
std::string SarifReport(const Report& report);
std::string GithubReport(const Report& report);

}  // namespace KelmoLibs::Lang
