// The letters that languages are written with.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string_view>

namespace KelmoLibs::Lang {

/// Tells which letters beyond ASCII a language does not use: letters of other languages with the same
/// script that do not stand in its words from other languages either, and letters of other scripts.
/// Greek and Latin letters stand in formulas of all languages.
class Alphabet {
 public:
  enum class Kind : std::uint8_t {
    kUnknown,
    kLatin,
    kCyrillic,
    kOther,  // any other script
  };

  /// `language` is the first part of an id: "pl".
  explicit Alphabet(std::string_view language);

  Kind KindOfLetters() const noexcept { return kind_; }

  /// Only Latin and Cyrillic alphabets have foreign letters. Of letters with more than two bytes only
  /// Latin ones are told.
  bool IsForeign(char32_t letter) const noexcept;

  /// Whether `text`, which is UTF-8, may have a foreign letter or one of Asia. Precondition: the
  /// alphabet is Latin or Cyrillic.
  bool MayHaveForeign(std::string_view text) const noexcept;

 private:
  void Set(char32_t letter, bool isForeign) noexcept;

  // By the first byte of a character: a bit for each second byte that makes a foreign letter, or in
  // characters of three bytes perhaps one.
  std::array<std::uint64_t, 256> secondBytes_ = {};
  std::bitset<256> foreignAdditional_;  // U+1E00 to U+1EFF
  Kind kind_ = Kind::kUnknown;
};

}  // namespace KelmoLibs::Lang
