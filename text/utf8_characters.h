// The characters of text in UTF-8.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/utf8.h"

namespace KelmoLibs::Localize {

/// Whether the byte is one behind the first of a character.
constexpr bool IsContinuation(unsigned char byte) noexcept { return (byte & 0xC0U) == 0x80U; }
constexpr bool IsContinuation(char byte) noexcept {
  return IsContinuation(static_cast<unsigned char>(byte));
}

/// Whether there is such a character: no half of a surrogate pair, and not beyond U+10FFFF.
constexpr bool IsScalarValue(char32_t character) noexcept {
  return character < 0xD800 || (character > 0xDFFF && character <= 0x10FFFF);
}

inline bool IsUtf8(std::string_view bytes) noexcept {
  return WellFormedUtf8Length(bytes) == bytes.size();
}

/// Number of characters in a text that is UTF-8.
inline std::size_t CountWellFormed(std::string_view wellFormed) noexcept {
  return static_cast<std::size_t>(std::count_if(wellFormed.begin(), wellFormed.end(),
                                                [](char c) { return !IsContinuation(c); }));
}

/// Number of characters in `bytes`; each byte that is not UTF-8 counts as one.
inline std::uint32_t CountCharacters(std::string_view bytes) noexcept {
  std::size_t count = 0;
  while (!bytes.empty()) {
    const std::size_t wellFormed = WellFormedUtf8Length(bytes);
    count += CountWellFormed(bytes.substr(0, wellFormed));
    bytes.remove_prefix(wellFormed);
    if (!bytes.empty()) {
      ++count;
      bytes.remove_prefix(1);
    }
  }
  return static_cast<std::uint32_t>(count);
}

}  // namespace KelmoLibs::Localize
