// The characters without a shape around what people type: blanks in front of numbers, between groups of
// digits and in front of units, and marks of direction.
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

/// The length in bytes of the mark of direction at the start of `text`: of U+061C, U+200E, U+200F or
/// U+2066 to U+2069. 0 if there is none. `text` need not be UTF-8.
inline std::size_t BidiMarkLength(std::string_view text) noexcept {
  // The first and the last, in one literal: compilers warn of an isolate without its end.
  constexpr std::string_view kIsolates = "\u2066\u2069";
  if (text.empty() || (text.front() != '\xE2' && text.front() != '\xD8')) {
    return 0;
  }
  constexpr std::string_view kArabicMark = "\u061C";
  if (text.substr(0, kArabicMark.size()) == kArabicMark) {
    return kArabicMark.size();
  }
  const std::string_view mark = text.substr(0, 3);
  const bool isDirection = mark == "\u200E" || mark == "\u200F";
  const bool isIsolate = mark >= kIsolates.substr(0, 3) && mark <= kIsolates.substr(3);
  return isDirection || isIsolate ? mark.size() : 0;
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
