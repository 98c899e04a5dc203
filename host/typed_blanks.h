// The blanks that people type in front of numbers, between groups of digits, and in front of units.
#pragma once

#include <cstddef>
#include <string_view>

namespace KelmoLibs::Host {

/// The length in bytes of the blank at the start of `text`: of a space, a tab, U+00A0 (no-break
/// space), U+202F (narrow no-break space) or U+2009 (thin space). 0 if there is none. `text` need
/// not be UTF-8.
constexpr std::size_t BlankLength(std::string_view text) noexcept {
  if (text.empty()) {
    return 0;
  }
  if (text.front() == ' ' || text.front() == '\t') {
    return 1;
  }
  for (const std::string_view blank :
       {std::string_view("\u00A0"), std::string_view("\u202F"), std::string_view("\u2009")}) {
    if (text.front() == blank.front() && text.substr(0, blank.size()) == blank) {
      return blank.size();
    }
  }
  return 0;
}

/// The offset behind the blanks that begin at the offset `at`: `at` itself if there are none.
/// Precondition: `at` is not beyond the end.
constexpr std::size_t SkipBlanks(std::string_view text, std::size_t at = 0) noexcept {
  while (const std::size_t length = BlankLength(text.substr(at))) {
    at += length;
  }
  return at;
}

}  // namespace KelmoLibs::Host
