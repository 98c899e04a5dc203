// kelmo-lang show: what the library sees of a file, and of a key in it.
#pragma once

#include <optional>
#include <string>

#include "lang/commands/answer.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct ShowOptions {
  std::string path;                // a file, a folder, or a pattern
  std::optional<std::string> key;  // of a text; the code of a unit in a unit table
};

/// Files of one id are loaded one after the other, as a program does. The status is 0; 1 if no file
/// has the key; 2 if there is no file, or one cannot be read.
Answer Show(const ShowOptions& options, const Texts& texts);

}  // namespace KelmoLibs::Lang
