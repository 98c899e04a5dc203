#include "frame/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "frame/word.h"

namespace KelmoLibs::Localize {
namespace {

constexpr bool kSurrogatePairs = sizeof(wchar_t) == 2;
constexpr std::size_t kUnitsOfFourBytes = kSurrogatePairs ? 2 : 1;
constexpr char32_t kLastCharacter = 0x10FFFF;

constexpr unsigned char Byte(char c) noexcept { return static_cast<unsigned char>(c); }

constexpr bool IsContinuation(char c) noexcept { return (Byte(c) & 0xC0U) == 0x80U; }

// Whether these eight bytes or more begin with four characters of two bytes each: letters of most
// alphabets. Of well-formed bytes every other one tells, being the lead byte of a pair.
bool BeginsWithFourPairs(std::string_view wellFormed) noexcept {
  const auto isLead = [wellFormed](std::size_t i) {
    return (Byte(wellFormed[i]) & 0xE0U) == 0xC0U;
  };
  return (static_cast<unsigned>(isLead(0)) & static_cast<unsigned>(isLead(2)) &
          static_cast<unsigned>(isLead(4)) & static_cast<unsigned>(isLead(6))) != 0;
}

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

// Length of a front part of `bytes` that is whole characters of one byte and of two, well-formed: eight
// bytes at a time and without a guess at which comes next. What a byte is, its highest bit says.
std::size_t FrontOfOneAndTwoBytes(std::string_view bytes) noexcept {
  constexpr std::uint64_t kAboveOverlong = 0x1E * kEveryByte;  // bits that C0 and C1 have not
  constexpr std::uint64_t kCarry = 0x7E * kEveryByte;          // any of those to the highest bit
  std::size_t position = 0;
  std::uint64_t open = 0;  // the word before ended with the lead byte of a pair
  for (; position + kWordBytes <= bytes.size(); position += kWordBytes) {
    const std::uint64_t word = WordAt(bytes.data() + position);
    const std::uint64_t beyondAscii = word & kHighestBits;
    const std::uint64_t second = (word << 1U) & kHighestBits;
    const std::uint64_t third = (word << 2U) & kHighestBits;
    const std::uint64_t continuation = beyondAscii & ~second;
    const std::uint64_t lead = beyondAscii & second;
    const std::uint64_t overlong = ~((word & kAboveOverlong) + kCarry);
    const bool arePairs = continuation == ((lead << 8U) | open);
    if (!arePairs || (lead & (third | overlong)) != 0) {
      break;
    }
    open = lead >> 56U;
  }
  return position - (open != 0 ? 1 : 0);
}

// The character of two bytes at the front.
constexpr wchar_t Pair(std::string_view wellFormed) noexcept {
  return static_cast<wchar_t>(((Byte(wellFormed[0]) & 0x1FU) << 6U) |
                              (Byte(wellFormed[1]) & 0x3FU));
}

char32_t TakeCharacter(std::string_view& wellFormed) noexcept {
  const unsigned char lead = Byte(wellFormed[0]);
  if (lead >= 0xC0 && lead < 0xE0) {
    const wchar_t pair = Pair(wellFormed);
    wellFormed.remove_prefix(2);
    return static_cast<char32_t>(pair);
  }
  const std::size_t length = lead < 0x80 ? 1U : lead < 0xF0 ? 3U : 4U;
  // The lead byte's payload: 7, 4 or 3 bits; each further byte adds 6.
  auto character = static_cast<char32_t>(length == 1 ? lead : lead & (0x7FU >> length));
  for (std::size_t i = 1; i < length; ++i) {
    character = (character << 6U) | (Byte(wellFormed[i]) & 0x3FU);
  }
  wellFormed.remove_prefix(length);
  return character;
}

// The character at the front of a wide text that is not empty: of a pair the two halves, of anything
// else the code unit as it stands.
char32_t TakeCharacter(std::wstring_view& text) noexcept {
  const auto unit = static_cast<char32_t>(text[0]);
  text.remove_prefix(1);
  if constexpr (kSurrogatePairs) {
    // not covered: wchar_t has 16 bits on Windows only
    if (unit >= 0xD800 && unit < 0xDC00 && !text.empty()) {
      const auto low = static_cast<char32_t>(text[0]);
      if (low >= 0xDC00 && low < 0xE000) {
        text.remove_prefix(1);
        return 0x10000 + ((unit - 0xD800) << 10U) + (low - 0xDC00);
      }
    }
  }
  return unit;
}

bool IsCharacter(char32_t unit) noexcept {
  return unit < 0xD800 || (unit > 0xDFFF && unit <= kLastCharacter);
}

wchar_t* Widen(char32_t character, wchar_t* text) noexcept {
  if constexpr (kSurrogatePairs) {
    // not covered: wchar_t has 16 bits on Windows only
    if (character > 0xFFFF) {
      character -= 0x10000;
      *text++ = static_cast<wchar_t>(0xD800 + (character >> 10U));
      character = 0xDC00 + (character & 0x3FFU);
    }
  }
  *text++ = static_cast<wchar_t>(character);
  return text;
}

struct EncodedCharacter {
  std::array<char, 4> bytes;
  std::size_t count;

  std::string_view View() const noexcept { return {bytes.data(), count}; }
};

EncodedCharacter Encode(char32_t character) noexcept {
  const auto lead = [character](unsigned mark, unsigned shift) {
    return static_cast<char>(mark | (character >> shift));
  };
  const auto continuation = [character](unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x80) {
    return {{lead(0, 0)}, 1};
  }
  if (character < 0x800) {
    return {{lead(0xC0, 6), continuation(0)}, 2};
  }
  if (character < 0x10000) {
    return {{lead(0xE0, 12), continuation(6), continuation(0)}, 3};
  }
  return {{lead(0xF0, 18), continuation(12), continuation(6), continuation(0)}, 4};
}

}  // namespace

std::size_t WellFormedUtf8Length(std::string_view bytes) noexcept {
  std::size_t position = 0;
  for (;;) {
    position += FrontOfOneAndTwoBytes(bytes.substr(position));
    if (position == bytes.size()) {
      return position;
    }
    const std::size_t length = CharacterLength(bytes.substr(position));
    if (length == 0) {
      return position;
    }
    position += length;
  }
}

std::size_t WideLength(std::string_view wellFormed) noexcept {
  std::size_t length = 0;
  for (const char c : wellFormed) {
    length += IsContinuation(c) ? 0U : Byte(c) >= 0xF0 ? kUnitsOfFourBytes : 1U;
  }
  return length;
}

void DecodeUtf8(std::string_view wellFormed, wchar_t* text, std::size_t length) noexcept {
  const wchar_t* const end = text + length;
  while (!wellFormed.empty()) {
    if (wellFormed.size() >= kWordBytes && BeginsWithFourPairs(wellFormed)) {
      for (std::size_t i = 0; i < kWordBytes / 2; ++i) {
        text[i] = Pair(wellFormed.substr(2 * i));
      }
      text += kWordBytes / 2;
      wellFormed.remove_prefix(kWordBytes);
    } else if (wellFormed.size() >= kWordBytes && Byte(wellFormed[0]) < 0x80 &&
               end - text >= std::ptrdiff_t{kWordBytes}) {
      // Eight as if they were ASCII, and on as far as they are: how many that will be cannot be
      // guessed, as often as letters of other alphabets stand between.
      const std::uint64_t beyondAscii = WordAt(wellFormed.data()) & kHighestBits;
      for (std::size_t i = 0; i < kWordBytes; ++i) {
        text[i] = static_cast<wchar_t>(Byte(wellFormed[i]));
      }
      const std::size_t ascii = beyondAscii != 0 ? LowestByte(beyondAscii) : kWordBytes;
      text += ascii;
      wellFormed.remove_prefix(ascii);
    } else {
      text = Widen(TakeCharacter(wellFormed), text);
    }
  }
}

std::wstring DecodeUtf8(std::string_view wellFormed) {
  std::wstring text(WideLength(wellFormed), L'\0');
  DecodeUtf8(wellFormed, text.data(), text.size());
  return text;
}

std::optional<std::size_t> WriteUtf8(std::wstring_view text, char* bytes,
                                     std::size_t size) noexcept {
  std::size_t used = 0;
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    const EncodedCharacter encoded = Encode(character);
    if (!IsCharacter(character) || encoded.count > size - used) {
      return std::nullopt;
    }
    used += encoded.View().copy(bytes + used, encoded.count);
  }
  return used;
}

void AppendUtf8(char32_t character, std::string& bytes) { bytes += Encode(character).View(); }

int CompareWithUtf8(std::wstring_view text, std::string_view wellFormed) noexcept {
  while (!text.empty() && !wellFormed.empty()) {
    const char32_t left = TakeCharacter(text);
    const char32_t right = TakeCharacter(wellFormed);
    if (left != right) {
      return left < right ? -1 : 1;
    }
  }
  return static_cast<int>(!text.empty()) - static_cast<int>(!wellFormed.empty());
}

}  // namespace KelmoLibs::Localize
