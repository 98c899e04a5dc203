// What a command prints, and its exit status.
#pragma once

#include <string>

namespace KelmoLibs::Lang {

constexpr int kStatusFound = 1;  // findings
constexpr int kStatusWrong = 2;  // wrong use, a file that cannot be used

struct Answer {
  int status = 0;
  std::string output;
  std::string error;
};

}  // namespace KelmoLibs::Lang
