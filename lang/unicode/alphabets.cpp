// Tested by alphabets_test.cpp.
#include "lang/unicode/alphabets.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "lang/unicode/alphabet_table.h"

namespace KelmoLibs::Lang {
namespace {

constexpr unsigned kContinuationBits = 6;
constexpr unsigned kContinuationMask = 0x3F;
constexpr unsigned char kLeadOfTwo = 0xC0;
constexpr char32_t kBehindTwoBytes = 0x800;

// Of three bytes: U+2000 to U+2FFF have no letters of Asia.
constexpr std::size_t kFirstLeadOfThree = 0xE0;
constexpr std::size_t kLeadOfAdditional = 0xE1;
constexpr std::size_t kLeadOfPunctuation = 0xE2;
constexpr std::size_t kLastLeadOfLetters = 0xED;

// Latin Extended Additional, the letters of Vietnamese and others: E1 B8 80 to E1 BB BF.
constexpr char32_t kFirstAdditional = 0x1E00;
constexpr char32_t kLastAdditional = 0x1EFF;
constexpr std::uint64_t kSecondBytesOfAdditional = std::uint64_t{0xF} << 0x38U;

std::string_view NameInTable(std::string_view language) noexcept {
  return language == "nb" || language == "nn" ? "no" : language;
}

bool IsInOtherScript(std::string_view language) noexcept {
  constexpr std::string_view kLanguages[] = {"am", "ar", "bn", "el", "fa", "gu", "he", "hi", "hy",
                                             "ja", "ka", "km", "kn", "ko", "lo", "ml", "mr", "my",
                                             "ne", "pa", "si", "ta", "te", "th", "ur", "zh"};
  return std::find(std::begin(kLanguages), std::end(kLanguages), language) != std::end(kLanguages);
}

// Quick: the compiler makes a loop of vectors of it.
bool IsAllAscii(std::string_view text) noexcept {
  unsigned char bits = 0;
  for (const char c : text) {
    bits |= static_cast<unsigned char>(c);
  }
  return bits < 0x80U;
}

}  // namespace

Alphabet::Alphabet(std::string_view language) {
  const auto* const own = std::find_if(
      std::begin(kAlphabetTable), std::end(kAlphabetTable),
      [name = NameInTable(language)](const AlphabetRow& row) { return row.language == name; });
  if (own == std::end(kAlphabetTable)) {
    kind_ = IsInOtherScript(language) ? Kind::kOther : Kind::kUnknown;
    return;
  }
  constexpr char32_t kFirstCyrillic = 0x400;
  constexpr char32_t kBehindCyrillic = 0x530;
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  for (std::size_t lead = kFirstLeadOfThree; lead <= kLastLeadOfLetters; ++lead) {
    secondBytes_[lead] = lead == kLeadOfPunctuation  ? 0
                         : lead == kLeadOfAdditional ? kSecondBytesOfAdditional
                                                     : kAll;
  }
  kind_ = own->isCyrillic ? Kind::kCyrillic : Kind::kLatin;
  for (char32_t letter = own->isCyrillic ? kBehindCyrillic : kFirstCyrillic;
       letter < kBehindTwoBytes; ++letter) {
    Set(letter, true);
  }
  for (const AlphabetRow& row : kAlphabetTable) {
    if (row.isCyrillic == own->isCyrillic) {
      for (const char32_t letter : row.letters) {
        Set(letter, true);
      }
    }
  }
  for (const char32_t letter : own->letters) {
    Set(letter, false);
  }
}

void Alphabet::Set(char32_t letter, bool isForeign) noexcept {
  if (letter >= kFirstAdditional && letter <= kLastAdditional) {
    foreignAdditional_[letter - kFirstAdditional] = isForeign;
    return;
  }
  std::uint64_t& bits = secondBytes_[kLeadOfTwo | (letter >> kContinuationBits)];
  const std::uint64_t bit = std::uint64_t{1} << (letter & kContinuationMask);
  bits = isForeign ? bits | bit : bits & ~bit;
}

bool Alphabet::IsForeign(char32_t letter) const noexcept {
  if (letter >= kFirstAdditional && letter <= kLastAdditional) {
    return foreignAdditional_[letter - kFirstAdditional];
  }
  return letter < kBehindTwoBytes && ((secondBytes_[kLeadOfTwo | (letter >> kContinuationBits)] >>
                                       (letter & kContinuationMask)) &
                                      1U) != 0;
}

bool Alphabet::MayHaveForeign(std::string_view text) const noexcept {
  if (IsAllAscii(text)) {
    return false;
  }
  // Without branches, which most letters would take at random. Each byte is taken as a first one;
  // those within a character have no bits.
  std::uint64_t found = 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    const auto first = static_cast<unsigned char>(text[i - 1]);
    found |= secondBytes_[first] >> (static_cast<unsigned char>(text[i]) & kContinuationMask);
  }
  return (found & 1U) != 0;
}

}  // namespace KelmoLibs::Lang
