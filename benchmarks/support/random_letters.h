// Keys and texts of random letters, in any length and script. They are the same in every run.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/support/catalogue.h"

namespace benchmarks {

/// The first and the last letter of each range. All ranges are equally likely. A range that is
/// listed several times is more likely.
using Alphabet = std::wstring_view;

inline constexpr Alphabet kAsciiLettersAndDigits = L"azAZ09";
inline constexpr std::size_t kAsciiKeysOfOneLetter = 26 + 26 + 10;
inline constexpr Alphabet kEnglishLetters = L"azazAZ";
inline constexpr Alphabet kGermanLetters = L"azazazazAZ\u00DF\u00F6";  // one in six with an accent
inline constexpr Alphabet kRussianLetters = L"\u0430\u044F\u0430\u044F\u0410\u042F";
inline constexpr Alphabet kGreekLetters = L"\u03B1\u03C9\u03AC\u03AF\u0391\u03A1";
inline constexpr Alphabet kHindiLetters = L"\u0915\u0939\u0915\u0939\u0905\u0914\u093E\u094D";
inline constexpr Alphabet kChineseLetters = L"\u4E00\u9FA5";
inline constexpr Alphabet kKoreanLetters = L"\uAC00\uD7A3";
inline constexpr Alphabet kEmoji = L"\U0001F300\U0001F64F";
/// One to four bytes in UTF-8, two of three letters ASCII: like keys that were texts of a program.
inline constexpr Alphabet kMixedLetters =
    L"azazazAZAZ09\u00DF\u00F6\u4E00\u9FA5\U0001F300\U0001F64F";

struct Lengths {
  std::size_t shortest;
  std::size_t longest;
};

/// Distinct keys. Precondition: at least `size` keys of these lengths exist in the alphabet.
std::vector<std::wstring> MakeRandomKeys(Alphabet alphabet, Lengths lengths, std::size_t size);

/// Entries with these keys. The texts are English letters and blanks, 20 to 30 characters.
Catalogue MakeCatalogueOfKeys(const std::vector<std::wstring>& keys);

/// Entries with the keys of MakeCatalogue, and texts of random letters.
Catalogue MakeCatalogueInLetters(Alphabet alphabet, Lengths textLengths, std::size_t size);

}  // namespace benchmarks
