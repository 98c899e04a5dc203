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

/// Whether `character` looks like a letter of `script` and is a letter of another one. The scripts
/// are kLatin, kGreek and kCyrillic.
bool LooksLikeLetterOf(Script script, char32_t character) noexcept;

}  // namespace KelmoLibs::Lang
