#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace KelmoLibs::Localize {
namespace {

constexpr bool kSurrogatePairs = sizeof(wchar_t) == 2;
constexpr std::size_t kLongestCharacter = 4;

constexpr unsigned char Byte(char c) noexcept { return static_cast<unsigned char>(c); }

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

const unsigned char* BytesOf(std::string_view text) noexcept {
  return reinterpret_cast<const unsigned char*>(text.data());
}

// The loops over blocks decide nothing by a branch: which character comes next cannot be guessed, and compilers
// make vector instructions of them.
constexpr std::size_t kCheckedBytes = 32;
constexpr std::size_t kDecodedBytes = 16;

template <std::size_t size>
unsigned char Largest(const unsigned char* block) noexcept {
  unsigned char largest = 0;
  for (std::size_t i = 0; i < size; ++i) {
    largest = std::max(largest, block[i]);
  }
  return largest;
}

// NOLINTBEGIN(readability-implicit-bool-conversion): && and || would be branches
constexpr bool NeedsContinuation(unsigned before, unsigned twoBefore,
                                 unsigned threeBefore) noexcept {
  return ((before >= 0xC0) | (twoBefore >= 0xE0) | (threeBefore >= 0xF0)) != 0;
}

// Whether a block holds a byte that cannot follow the three in front of it, which must be there and are well-formed as far as
// they go.
bool HasFault(const unsigned char* block) noexcept {
  const unsigned char* const one = block - 1;
  const unsigned char* const two = block - 2;
  const unsigned char* const three = block - 3;
  if (Largest<kCheckedBytes>(block) < 0x80) {
    return NeedsContinuation(*one, *two, *three);
  }
  unsigned char faults = 0;
  for (std::size_t i = 0; i < kCheckedBytes; ++i) {
    const unsigned char byte = block[i];
    const unsigned char before = one[i];
    const bool isContinuation = (byte & 0xC0U) == 0x80;
    const bool isNeeded = NeedsContinuation(before, two[i], three[i]);
    const bool isNeverUsed = ((byte & 0xFEU) == 0xC0) | (byte > 0xF4);
    const bool isOverlong = ((before == 0xE0) & (byte < 0xA0)) | ((before == 0xF0) & (byte < 0x90));
    const bool isSurrogateOrBeyond =
        ((before == 0xED) & (byte > 0x9F)) | ((before == 0xF4) & (byte > 0x8F));
    faults |= static_cast<unsigned char>((isContinuation != isNeeded) | isNeverUsed | isOverlong |
                                         isSurrogateOrBeyond);
  }
  return faults != 0;
}
// NOLINTEND(readability-implicit-bool-conversion)

// Where the last character begins that begins in front of `position`.
std::size_t LastCharacter(std::string_view bytes, std::size_t position) noexcept {
  do {
    --position;
  } while (IsContinuation(bytes[position]));
  return position;
}

char32_t TakeCharacter(std::string_view& wellFormed) noexcept {
  const unsigned char lead = Byte(wellFormed[0]);
  const std::size_t length = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
  // The lead byte's payload: 7, 5, 4 or 3 bits; each further byte adds 6.
  auto character = static_cast<char32_t>(length == 1 ? lead : lead & (0x7FU >> length));
  for (std::size_t i = 1; i < length; ++i) {
    character = (character << 6U) | (Byte(wellFormed[i]) & 0x3FU);
  }
  wellFormed.remove_prefix(length);
  return character;
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

void WidenAscii(const unsigned char* block, wchar_t* text) noexcept {
  for (std::size_t i = 0; i < kDecodedBytes; ++i) {
    text[i] = static_cast<wchar_t>(block[i]);
  }
}

// How far a character of up to three bytes that begins in a block may reach behind it.
constexpr std::size_t kBehind = 2;

// A sliding mask, which drops what begins in the first bytes of a block: sixteen zeroes, then sixteen ones.
constexpr std::array<unsigned char, 2 * kDecodedBytes> kAreWanted = {
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

// DecodeBlock, below, of characters of up to `longest` bytes, two or three.
template <std::size_t longest>
wchar_t* DecodeBlockOf(const unsigned char* block, std::size_t skipped, wchar_t* text) noexcept {
  std::array<std::uint16_t, kDecodedBytes> characters = {};  // if one began at each byte
  std::array<unsigned char, kDecodedBytes> begins = {};
  const unsigned char* const areWanted = kAreWanted.data() + kDecodedBytes - skipped;
  for (std::size_t i = 0; i < kDecodedBytes; ++i) {
    const unsigned lead = block[i];
    const unsigned second = block[i + 1] & 0x3FU;
    unsigned character = ((lead & 0x1FU) << 6U) | second;
    if constexpr (longest == 3) {
      const unsigned third = block[i + 2] & 0x3FU;
      const unsigned ofThree = (lead << 12U) | (second << 6U) | third;
      const unsigned isThree = 0U - ((lead >> 7U) & (lead >> 6U) & (lead >> 5U));
      character ^= (character ^ ofThree) & isThree;
    }
    const unsigned isAscii = (lead >> 7U) - 1U;
    character ^= (character ^ lead) & isAscii;
    characters[i] = static_cast<std::uint16_t>(character);
    // A continuation has the highest bit and not the next one.
    begins[i] = static_cast<unsigned char>(((lead >> 6U) | ~(lead >> 7U)) & areWanted[i]);
  }
  for (std::size_t i = 0; i < kDecodedBytes; ++i) {
    *text = static_cast<wchar_t>(characters[i]);
    text += begins[i];
  }
  return text;
}

// Writes the characters that begin in a block behind its first `skipped` bytes, and one place more; returns where
// the next belongs. Reads the kBehind bytes behind the block, and where the block's largest byte is the first of
// four, all of that character.
wchar_t* DecodeBlock(const unsigned char* block, unsigned char largest, std::size_t skipped,
                     wchar_t* text) noexcept {
  if (largest < 0xE0) {
    return DecodeBlockOf<2>(block, skipped, text);
  }
  if (largest < 0xF0) {
    return DecodeBlockOf<3>(block, skipped, text);
  }
  for (std::size_t i = skipped; i < kDecodedBytes; ++i) {
    if ((block[i] & 0xC0U) != 0x80) {
      std::string_view character(reinterpret_cast<const char*>(block + i), kLongestCharacter);
      text = Widen(TakeCharacter(character), text);
    }
  }
  return text;
}

// A block with nothing behind it, or the byte `behind`, whose first `skipped` bytes are decoded already.
wchar_t* DecodeLastBlock(const unsigned char* block, unsigned char behind, std::size_t skipped,
                         wchar_t* text) noexcept {
  const unsigned char largest = Largest<kDecodedBytes>(block);
  if (largest < 0x80) {
    WidenAscii(block, text - skipped);  // the skipped ones again, as they are
    return text + kDecodedBytes - skipped;
  }
  std::array<unsigned char, kDecodedBytes + kBehind> padded = {};
  std::copy_n(block, kDecodedBytes, padded.begin());
  padded[kDecodedBytes] = behind;
  return DecodeBlock(padded.data(), largest, skipped, text);
}

// A text of less than a block.
wchar_t* DecodeShort(const unsigned char* bytes, std::size_t size, wchar_t* text) noexcept {
  std::array<unsigned char, kDecodedBytes + kBehind> padded = {};
  const std::size_t skipped = kDecodedBytes - size;
  std::copy_n(bytes, size, padded.begin() + skipped);
  const unsigned char largest = Largest<kDecodedBytes>(padded.data());
  if (largest < 0x80) {
    return std::copy_n(bytes, size, text);
  }
  return DecodeBlock(padded.data(), largest, skipped, text);
}

}  // namespace

std::size_t WellFormedUtf8Length(std::string_view bytes) noexcept {
  std::size_t position = 0;
  bool areBlocksLeft = true;
  while (position < bytes.size()) {
    if (areBlocksLeft && position >= kLongestCharacter) {
      while (position + kCheckedBytes <= bytes.size() && !HasFault(BytesOf(bytes) + position)) {
        position += kCheckedBytes;
      }
      position = LastCharacter(bytes, position);
      areBlocksLeft = false;
    }
    const std::size_t length = CharacterLength(bytes.substr(position));
    if (length == 0) {
      break;
    }
    position += length;
  }
  return position;
}

std::size_t WideLength(std::string_view wellFormed) noexcept {
  std::size_t length = 0;
  for (const char c : wellFormed) {
    length += IsContinuation(c) ? 0U : 1U;
    length += kSurrogatePairs && Byte(c) >= 0xF0 ? 1U : 0U;
  }
  return length;
}

wchar_t* DecodeUtf8(std::string_view wellFormed, wchar_t* text) noexcept {
  const unsigned char* bytes = BytesOf(wellFormed);
  const unsigned char* const end = bytes + wellFormed.size();
  if (wellFormed.size() < kDecodedBytes) {
    return DecodeShort(bytes, wellFormed.size(), text);
  }
  constexpr std::ptrdiff_t kReadBytes = kDecodedBytes + kBehind;
  for (; end - bytes >= kReadBytes; bytes += kDecodedBytes) {
    const unsigned char largest = Largest<kDecodedBytes>(bytes);
    if (largest < 0x80) {
      WidenAscii(bytes, text);
      text += kDecodedBytes;
    } else {
      text = DecodeBlock(bytes, largest, 0, text);
    }
  }
  if (end - bytes > static_cast<std::ptrdiff_t>(kDecodedBytes)) {  // a block, and a byte behind it
    text = DecodeLastBlock(bytes, bytes[kDecodedBytes], 0, text);
    bytes += kDecodedBytes;
  }
  const unsigned char* const last = end - kDecodedBytes;
  return DecodeLastBlock(last, 0, static_cast<std::size_t>(bytes - last), text);
}

std::wstring DecodeUtf8(std::string_view wellFormed) {
  std::wstring text(wellFormed.size() + 1, L'\0');
  text.resize(static_cast<std::size_t>(DecodeUtf8(wellFormed, text.data()) - text.data()));
  return text;
}

void AppendUtf8(char32_t character, std::string& bytes) {
  const auto lead = [character](unsigned mark, unsigned shift) {
    return static_cast<char>(mark | (character >> shift));
  };
  const auto continuation = [character](unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x80) {
    bytes += lead(0, 0);
  } else if (character < 0x800) {
    bytes += {lead(0xC0, 6), continuation(0)};
  } else if (character < 0x10000) {
    bytes += {lead(0xE0, 12), continuation(6), continuation(0)};
  } else {
    bytes += {lead(0xF0, 18), continuation(12), continuation(6), continuation(0)};
  }
}

}  // namespace KelmoLibs::Localize
