#include "lang/reading/pattern.h"

#include <cstddef>

#include "lang/unicode/code_points.h"

namespace KelmoLibs::Lang {

// Backtracks to the last * only, so that the cost is at most the product of the lengths.
bool FitsPattern(std::string_view name, std::string_view pattern) noexcept {
  std::size_t at = 0;
  std::size_t inPattern = 0;
  std::size_t star = std::string_view::npos;
  std::size_t starAt = 0;
  while (at < name.size()) {
    const char wanted = inPattern < pattern.size() ? pattern[inPattern] : '\0';
    if (inPattern < pattern.size() && wanted == '*') {
      star = inPattern++;
      starAt = at;
    } else if (inPattern < pattern.size() && (wanted == '?' || wanted == name[at])) {
      ++at;
      ++inPattern;
      while (wanted == '?' && at < name.size() && IsContinuation(name[at])) {
        ++at;
      }
    } else if (star != std::string_view::npos) {
      inPattern = star + 1;
      at = ++starAt;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

}  // namespace KelmoLibs::Lang
