// The characters of a text, one after the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/utf8_characters.h"

namespace KelmoLibs::Lang {

struct CodePoint {
  char32_t value = 0;
  std::size_t length = 0;  // in bytes
};

constexpr char32_t kNotUtf8 = 0xFFFFFFFF;

using Localize::IsContinuation;

/// The first character of `bytes`, which are not empty. A byte that does not begin a sequence of
/// UTF-8 is kNotUtf8, of one byte. Overlong forms and surrogates are not told apart from characters:
/// use text/utf8.h where that matters.
inline CodePoint FirstCodePoint(std::string_view bytes) noexcept {
  constexpr unsigned kContinuationBits = 6;
  // cppcheck-suppress containerOutOfBounds; the callers look whether there is one
  const auto lead = static_cast<unsigned char>(bytes.front());
  if (lead < 0x80U) {
    return {lead, 1};
  }
  const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : lead >= 0xC2U ? 2 : 0;
  if (length == 0 || length > bytes.size()) {
    return {kNotUtf8, 1};
  }
  char32_t value = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsContinuation(bytes[i])) {
      return {kNotUtf8, 1};
    }
    value = (value << kContinuationBits) | (static_cast<unsigned char>(bytes[i]) & 0x3FU);
  }
  return {value, length};
}

/// The last character of `bytes`, which are UTF-8 and not empty.
inline CodePoint LastCodePoint(std::string_view bytes) noexcept {
  std::size_t begin = bytes.size() - 1;
  while (begin > 0 && IsContinuation(bytes[begin])) {
    --begin;
  }
  return FirstCodePoint(bytes.substr(begin));
}

/// Calls `visit(value, part)` for each character and the bytes of `text` that are it, until it
/// returns false.
template <class Visitor>
void VisitCodePoints(std::string_view text, Visitor visit) {
  while (!text.empty()) {
    const CodePoint first = FirstCodePoint(text);
    if (!visit(first.value, text.substr(0, first.length))) {
      return;
    }
    text.remove_prefix(first.length);
  }
}

}  // namespace KelmoLibs::Lang
