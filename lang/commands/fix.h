// kelmo-lang fix: mends what has one right answer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "lang/commands/answer.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct FixOptions {
  std::vector<std::string> paths;   // files, folders, patterns
  std::optional<std::string> from;  // one of EncodingNames()
  bool isDiff = false;              // show the changes, and write nothing
  bool isForced = false;            // believe `from`, even if another encoding fits better
};

/// Mends the files as MendBytes does, and says what it has done in the language of `texts`. A file
/// that needs nothing is not written, nor one for which another encoding fits better, unless forced. The status is 0; 1 if faults are left, or if there are changes
/// with --diff; 2 if a file cannot be read or written, or the encoding is unknown.
Answer Fix(const FixOptions& options, const Texts& texts);

}  // namespace KelmoLibs::Lang
