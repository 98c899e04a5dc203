// kelmo-lang lint: checks dictionaries and unit tables.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct LintOptions {
  std::vector<std::string> paths;
  std::optional<std::string> base;
};

/// Prints the report in the language of `texts` and returns the exit status: 0, 1 or 2.
int Lint(const LintOptions& options, const Texts& texts);

}  // namespace KelmoLibs::Lang
