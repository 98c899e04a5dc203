// kelmo-lang ignore: accepts a finding, with a reason, in the project file.
#pragma once

#include <string>

#include "lang/commands/answer.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct IgnoreOptions {
  std::string file;
  std::string key;  // a pattern
  std::string rule;
  std::string reason;
};

/// Writes into the nearest project file, or creates one in the folder of the file.
Answer Ignore(const IgnoreOptions& options, const Texts& texts);

}  // namespace KelmoLibs::Lang
