// kelmo-lang lint: checks dictionaries and unit tables.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "lang/commands/answer.h"
#include "lang/report/report.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct LintOptions {
  std::vector<std::string> paths;          // none: the current folder
  std::optional<std::string> base;         // none: that of the project file
  std::optional<std::string> defaultBase;  // if neither `base` nor the project file names one
  std::optional<std::string> html;         // the file of the page
  std::string format = "text";             // json, sarif, github
  std::string color = "auto";              // always, never
  std::optional<std::string> failOn;       // a name of FailOn
  std::vector<std::string> rules;          // "missing=off"
  std::optional<std::string> baseline;     // none: that of the project file
  std::optional<std::string> explained;    // a rule that is explained, and nothing is checked
  bool isRelease = false;
  bool showsAll = false;
};

/// Checks the files. `terminal` says how the report for people looks; `progress`, if there is one,
/// gets the part that is done, from 0 to 1, often.
Answer Lint(const LintOptions& options, const Texts& texts, TextStyle terminal,
            const std::function<void(double)>& progress);

}  // namespace KelmoLibs::Lang
