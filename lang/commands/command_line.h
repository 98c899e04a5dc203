// The command line of kelmo-lang: from arguments to the options of a command.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "lang/commands/answer.h"
#include "lang/commands/fix.h"
#include "lang/commands/ignore.h"
#include "lang/commands/lint.h"
#include "lang/commands/rules.h"
#include "lang/commands/show.h"
#include "lang/commands/units.h"

namespace KelmoLibs::Lang {

struct CommandLine {
  std::string language = "en";  // one of TextLanguages()
  // What to do; an Answer if no command is to run: help, the version, or what is wrong.
  std::variant<Answer, FixOptions, IgnoreOptions, LintOptions, RulesOptions, ShowOptions,
               UnitsListOptions, UnitsExplainOptions>
      command;
};

/// Reads the arguments behind the name of the program. `userLanguage` counts unless --lang is given;
/// help is made for `width` columns. Wrong use gives an Answer with one line and status 2.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments,
                             const std::string& userLanguage, unsigned width);

}  // namespace KelmoLibs::Lang
