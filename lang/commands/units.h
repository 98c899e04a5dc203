// kelmo-lang units: the rows of units that the library carries.
#pragma once

#include <string>

#include "lang/commands/answer.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

struct UnitsListOptions {};

struct UnitsExplainOptions {
  std::string code;
};

/// The rows before and after start-up, and the lines of the default unit table that give none.
Answer ListUnits(const Texts& texts);

/// What the library knows of a code. The status is 0; 1 if no row has the code, before or after
/// start-up; 2 if it is no number.
Answer ExplainUnit(const UnitsExplainOptions& options, const Texts& texts);

}  // namespace KelmoLibs::Lang
