// What a command prints, and its exit status.
#pragma once

#include <string>

#include "lang/texts/sentence.h"
#include "lang/texts/texts.h"

namespace KelmoLibs::Lang {

constexpr int kStatusFound = 1;    // findings
constexpr int kStatusMissing = 1;  // what was asked for does not exist
constexpr int kStatusWrong = 2;    // wrong use, a file that cannot be used

struct Answer {
  int status = 0;
  std::string output;
  std::string error;
};

/// The sentence as one line. Nothing in it controls a terminal.
std::string LineOf(const Sentence& sentence, const Texts& texts);

/// The line about a file that cannot be used.
std::string ProblemLine(const std::string& path, const Sentence& reason, const Texts& texts);

/// One line about wrong use of `command`, such as "kelmo-lang lint".
Answer WrongUse(const std::string& command, const Sentence& sentence, const Texts& texts);

}  // namespace KelmoLibs::Lang
