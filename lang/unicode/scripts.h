// The script of a letter.
#pragma once

#include <cstdint>

namespace KelmoLibs::Lang {

enum class Script : std::uint8_t {
  kNone,  // no letter: digits, punctuation, symbols, blanks
  kMark,  // stands above, below or in the letter before it
  kLatin,
  kGreek,
  kCyrillic,
  kOther,  // letters, digits and marks of all other scripts
};

Script ScriptOf(char32_t character) noexcept;

inline bool IsLetter(char32_t character) noexcept { return ScriptOf(character) >= Script::kLatin; }

/// The letter of `script` that looks like `character`, a letter of another of the three scripts
/// kLatin, kGreek and kCyrillic; 0 if there is none.
char32_t LookAlikeIn(Script script, char32_t character) noexcept;

}  // namespace KelmoLibs::Lang
