#include "lang/unicode/utf16.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "text/utf8.h"

namespace KelmoLibs::Lang {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(char32_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

char32_t UnitAt(std::string_view bytes, std::size_t offset, bool isBigEndian) noexcept {
  const auto first = static_cast<unsigned char>(bytes[offset]);
  const auto second = static_cast<unsigned char>(bytes[offset + 1]);
  return isBigEndian ? (char32_t{first} << 8U) | second : (char32_t{second} << 8U) | first;
}

}  // namespace

Utf16 Utf16Mark(std::string_view bytes) noexcept {
  const std::string_view mark = bytes.substr(0, 2);
  return mark == "\xFF\xFE"   ? Utf16::kLittleEndian
         : mark == "\xFE\xFF" ? Utf16::kBigEndian
                              : Utf16::kNo;
}

Utf16 FindUtf16(std::string_view bytes) noexcept {
  if (const Utf16 marked = Utf16Mark(bytes); marked != Utf16::kNo) {
    return marked;
  }
  constexpr std::size_t kExamined = 4096;
  constexpr std::size_t kFewest = 4;
  std::array<std::size_t, 2> zeroes = {};
  const std::size_t examined = std::min(bytes.size(), kExamined);
  for (std::size_t i = 0; i < examined; ++i) {
    zeroes[i % 2] += bytes[i] == '\0' ? 1U : 0U;
  }
  const std::size_t pairs = examined / 2;
  if (pairs < kFewest) {
    return Utf16::kNo;
  }
  // Blanks, digits, keys and line ends have a zero byte in every script.
  if (zeroes[1] * 3 > pairs && zeroes[0] * 10 < zeroes[1]) {
    return Utf16::kLittleEndian;
  }
  return zeroes[0] * 3 > pairs && zeroes[1] * 10 < zeroes[0] ? Utf16::kBigEndian : Utf16::kNo;
}

std::string Utf8FromUtf16(std::string_view bytes, bool isBigEndian) {
  std::string utf8;
  utf8.reserve(bytes.size());
  std::size_t offset = 0;
  if (bytes.size() >= 2 && UnitAt(bytes, 0, isBigEndian) == 0xFEFF) {
    offset = 2;
  }
  for (; offset + 1 < bytes.size(); offset += 2) {
    char32_t character = UnitAt(bytes, offset, isBigEndian);
    if (IsHighSurrogate(character) && offset + 3 < bytes.size() &&
        IsLowSurrogate(UnitAt(bytes, offset + 2, isBigEndian))) {
      offset += 2;
      character =
          0x10000 + ((character - 0xD800) << 10U) + (UnitAt(bytes, offset, isBigEndian) - 0xDC00);
    } else if (IsHighSurrogate(character) || IsLowSurrogate(character)) {
      character = kReplacement;
    }
    Localize::AppendUtf8(character, utf8);
  }
  if (offset < bytes.size()) {
    Localize::AppendUtf8(kReplacement, utf8);
  }
  return utf8;
}

}  // namespace KelmoLibs::Lang
