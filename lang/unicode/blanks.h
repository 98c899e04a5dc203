// Blank and invisible characters other than space and tab, which the library takes as letters.
#pragma once

#include <cstdint>

namespace KelmoLibs::Lang {

enum class Blank : std::uint8_t {
  kNo,
  kNoBreak,      // U+00A0, U+2007, U+202F
  kIdeographic,  // U+3000
  kOther,        // of any other width
  kInvisible,    // without width: U+200B, U+2060
  kJoiner,       // U+200C and U+200D, which some scripts need within a word
};

Blank BlankOf(char32_t character) noexcept;

}  // namespace KelmoLibs::Lang
