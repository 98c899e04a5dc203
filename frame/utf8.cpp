#include "frame/utf8.h"

#include <algorithm>

namespace KelmoLibs::Localize {
namespace {

constexpr bool kSurrogatePairs = sizeof(wchar_t) == 2;
constexpr std::size_t kUnitsOfFourBytes = kSurrogatePairs ? 2 : 1;

constexpr unsigned char Byte(char c) noexcept { return static_cast<unsigned char>(c); }

constexpr bool IsAscii(char c) noexcept { return Byte(c) < 0x80; }

constexpr bool IsContinuation(char c) noexcept { return (Byte(c) & 0xC0U) == 0x80U; }

// Length of the character that begins at the front of `bytes`, 0 when none does. Overlong forms,
// surrogates and values beyond U+10FFFF all show in the first two bytes, so that ranges for the
// second byte are the whole check.
std::size_t CharacterLength(std::string_view bytes) noexcept {
  const unsigned char lead = Byte(bytes[0]);
  if (lead < 0x80) {
    return 1;
  }
  std::size_t length = 0;
  unsigned lowest = 0x80;
  unsigned highest = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {  // C0 and C1 would be overlong
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    lowest = lead == 0xE0 ? 0xA0 : 0x80;   // below: overlong
    highest = lead == 0xED ? 0x9F : 0xBF;  // above: surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    lowest = lead == 0xF0 ? 0x90 : 0x80;   // below: overlong
    highest = lead == 0xF4 ? 0x8F : 0xBF;  // above: beyond U+10FFFF
  } else {
    return 0;
  }
  if (bytes.size() < length || Byte(bytes[1]) < lowest || Byte(bytes[1]) > highest) {
    return 0;
  }
  for (std::size_t i = 2; i < length; ++i) {
    if (!IsContinuation(bytes[i])) {
      return 0;
    }
  }
  return length;
}

std::size_t WideLength(std::string_view wellFormed) noexcept {
  std::size_t length = 0;
  for (const char c : wellFormed) {
    length += IsContinuation(c) ? 0U : Byte(c) >= 0xF0 ? kUnitsOfFourBytes : 1U;
  }
  return length;
}

// One character as the code units of a wide text.
struct CodeUnits {
  wchar_t units[2];
  std::size_t count;

  std::wstring_view View() const noexcept { return {units, count}; }
};

CodeUnits Widen(char32_t character) noexcept {
  if constexpr (kSurrogatePairs) {
    // not covered: wchar_t has 16 bits on Windows only
    if (character > 0xFFFF) {
      character -= 0x10000;
      return {{static_cast<wchar_t>(0xD800 + (character >> 10U)),
               static_cast<wchar_t>(0xDC00 + (character & 0x3FFU))},
              2};
    }
  }
  return {{static_cast<wchar_t>(character)}, 1};
}

CodeUnits TakeCharacter(std::string_view& wellFormed) noexcept {
  const unsigned char lead = Byte(wellFormed[0]);
  const std::size_t length = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
  // The lead byte's payload: 7, 5, 4 or 3 bits; each further byte adds 6.
  auto character = static_cast<char32_t>(length == 1 ? lead : lead & (0x7FU >> length));
  for (std::size_t i = 1; i < length; ++i) {
    character = (character << 6U) | (Byte(wellFormed[i]) & 0x3FU);
  }
  wellFormed.remove_prefix(length);
  return Widen(character);
}

}  // namespace

std::size_t WellFormedUtf8Length(std::string_view bytes) noexcept {
  std::size_t position = 0;
  while (position < bytes.size()) {
    const std::size_t length = CharacterLength(bytes.substr(position));
    if (length == 0) {
      break;
    }
    position += length;
  }
  return position;
}

std::wstring DecodeUtf8(std::string_view wellFormed) {
  std::wstring text;
  text.reserve(WideLength(wellFormed));
  while (!wellFormed.empty()) {
    text += TakeCharacter(wellFormed).View();
  }
  return text;
}

void AppendUtf8(char32_t character, std::string& bytes) {
  const auto continuation = [character](unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x80) {
    bytes += static_cast<char>(character);
  } else if (character < 0x800) {
    bytes += static_cast<char>(0xC0U | (character >> 6U));
    bytes += continuation(0);
  } else if (character < 0x10000) {
    bytes += static_cast<char>(0xE0U | (character >> 12U));
    bytes += continuation(6);
    bytes += continuation(0);
  } else {
    bytes += static_cast<char>(0xF0U | (character >> 18U));
    bytes += continuation(12);
    bytes += continuation(6);
    bytes += continuation(0);
  }
}

int CompareWithUtf8(std::wstring_view text, std::string_view wellFormed) noexcept {
  // Most keys are ASCII: pass over what is equal without taking characters apart.
  std::size_t equal = 0;
  const std::size_t shorter = std::min(text.size(), wellFormed.size());
  while (equal < shorter && IsAscii(wellFormed[equal]) &&
         text[equal] == static_cast<wchar_t>(wellFormed[equal])) {
    ++equal;
  }
  text.remove_prefix(equal);
  wellFormed.remove_prefix(equal);
  while (!wellFormed.empty()) {
    const CodeUnits next = TakeCharacter(wellFormed);
    const int order = text.substr(0, next.count).compare(next.View());
    if (order != 0) {
      return order;
    }
    text.remove_prefix(next.count);
  }
  return text.empty() ? 0 : 1;
}

}  // namespace KelmoLibs::Localize
