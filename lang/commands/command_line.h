// The command line of kelmo-lang: from arguments to the options of a command.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "lang/commands/lint.h"

namespace KelmoLibs::Lang {

/// What the program prints if no command is to run: help, its version, or what is wrong.
struct Answer {
  int status = 0;
  std::string output;
  std::string error;
};

struct CommandLine {
  std::string language = "en";  // one of TextLanguages()
  std::variant<Answer, LintOptions> command;
};

/// Reads the arguments behind the name of the program. `userLanguage` counts unless --lang is given;
/// help is made for `width` columns. Wrong use gives an Answer with one line and status 2.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments,
                             const std::string& userLanguage, unsigned width);

}  // namespace KelmoLibs::Lang
