#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "text/utf8_characters.h"

namespace KelmoLibs::Localize {
namespace {

constexpr bool kSurrogatePairs = sizeof(wchar_t) == 2;
constexpr std::size_t kLongestCharacter = 4;

constexpr unsigned char Byte(char c) noexcept { return static_cast<unsigned char>(c); }

// Length of the character at the start of `bytes`, or 0 if there is no well-formed one. Overlong
// sequences, surrogates and values beyond U+10FFFF all show in the first two bytes, so a range for
// the second byte is the whole check.
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

// The loops over blocks have no branch that depends on a byte: the processor cannot predict the
// next character, and compilers can make vector instructions of such loops.
constexpr std::size_t kCheckedBlock = 32;
constexpr std::size_t kDecodedBlock = 16;

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

// Whether a block of kCheckedBlock bytes has a byte that cannot follow the bytes before it.
// Precondition: there are three bytes before the block, and they are well-formed, though the last
// character may be incomplete.
bool HasFault(const unsigned char* block) noexcept {
  const unsigned char* const oneBefore = block - 1;
  const unsigned char* const twoBefore = block - 2;
  const unsigned char* const threeBefore = block - 3;
  if (Largest<kCheckedBlock>(block) < 0x80) {
    return NeedsContinuation(*oneBefore, *twoBefore, *threeBefore);
  }
  unsigned char faults = 0;
  for (std::size_t i = 0; i < kCheckedBlock; ++i) {
    const unsigned char byte = block[i];
    const unsigned char before = oneBefore[i];
    const bool isNeeded = NeedsContinuation(before, twoBefore[i], threeBefore[i]);
    const bool isNeverUsed = ((byte & 0xFEU) == 0xC0) | (byte > 0xF4);
    const bool isOverlong = ((before == 0xE0) & (byte < 0xA0)) | ((before == 0xF0) & (byte < 0x90));
    const bool isSurrogateOrBeyond =
        ((before == 0xED) & (byte > 0x9F)) | ((before == 0xF4) & (byte > 0x8F));
    faults |= static_cast<unsigned char>((IsContinuation(byte) != isNeeded) | isNeverUsed |
                                         isOverlong | isSurrogateOrBeyond);
  }
  return faults != 0;
}
// NOLINTEND(readability-implicit-bool-conversion)

// Start of the last character that starts before `position`.
std::size_t StartOfLastCharacter(std::string_view bytes, std::size_t position) noexcept {
  do {
    --position;
  } while (IsContinuation(bytes[position]));
  return position;
}

// Decodes the first character and removes it.
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
  for (std::size_t i = 0; i < kDecodedBlock; ++i) {
    text[i] = static_cast<wchar_t>(block[i]);
  }
}

// How many bytes of a character that starts in a block may lie behind the block; for characters of
// up to three bytes.
constexpr std::size_t kLookahead = 2;

// Sixteen zeroes, then sixteen ones. The sixteen values from the index 16 - n on are a mask that
// skips the first n bytes of a block.
constexpr std::array<unsigned char, 2 * kDecodedBlock> kSkipMasks = {
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

// DecodeBlock for characters of up to `maxLength` bytes: two or three.
template <std::size_t maxLength>
wchar_t* DecodeBlockOf(const unsigned char* block, std::size_t skipped, wchar_t* text) noexcept {
  std::array<std::uint16_t, kDecodedBlock> characters = {};  // as if one started at each byte
  std::array<unsigned char, kDecodedBlock> starts = {};      // 1 where a character starts
  const unsigned char* const mask = kSkipMasks.data() + kDecodedBlock - skipped;
  for (std::size_t i = 0; i < kDecodedBlock; ++i) {
    const unsigned lead = block[i];
    const unsigned second = block[i + 1] & 0x3FU;
    unsigned character = ((lead & 0x1FU) << 6U) | second;
    if constexpr (maxLength == 3) {
      const unsigned third = block[i + 2] & 0x3FU;
      const unsigned ofThree = (lead << 12U) | (second << 6U) | third;
      const unsigned isThree = 0U - ((lead >> 7U) & (lead >> 6U) & (lead >> 5U));
      character ^= (character ^ ofThree) & isThree;
    }
    const unsigned isAscii = (lead >> 7U) - 1U;
    character ^= (character ^ lead) & isAscii;
    characters[i] = static_cast<std::uint16_t>(character);
    // A continuation byte has its highest bit set, and the next one clear.
    starts[i] = static_cast<unsigned char>(((lead >> 6U) | ~(lead >> 7U)) & mask[i]);
  }
  for (std::size_t i = 0; i < kDecodedBlock; ++i) {
    *text = static_cast<wchar_t>(characters[i]);
    text += starts[i];
  }
  return text;
}

// Decodes the characters that start in a block, without its first `skipped` bytes. Returns the end
// of the characters in `text`, and may overwrite the wchar_t there. `largest` is the largest byte
// of the block. Reads kLookahead bytes behind the block, or the whole last character if the block
// has one of four bytes.
wchar_t* DecodeBlock(const unsigned char* block, unsigned char largest, std::size_t skipped,
                     wchar_t* text) noexcept {
  if (largest < 0xE0) {
    return DecodeBlockOf<2>(block, skipped, text);
  }
  if (largest < 0xF0) {
    return DecodeBlockOf<3>(block, skipped, text);
  }
  for (std::size_t i = skipped; i < kDecodedBlock; ++i) {
    if (!IsContinuation(block[i])) {
      std::string_view character(reinterpret_cast<const char*>(block + i), kLongestCharacter);
      text = Widen(TakeCharacter(character), text);
    }
  }
  return text;
}

// DecodeBlock for the last bytes of a text: at most the byte `behind` follows the block.
wchar_t* DecodeLastBlock(const unsigned char* block, unsigned char behind, std::size_t skipped,
                         wchar_t* text) noexcept {
  const unsigned char largest = Largest<kDecodedBlock>(block);
  if (largest < 0x80) {
    WidenAscii(block, text - skipped);  // writes the skipped characters again, with the same values
    return text + kDecodedBlock - skipped;
  }
  std::array<unsigned char, kDecodedBlock + kLookahead> padded = {};
  std::copy_n(block, kDecodedBlock, padded.begin());
  padded[kDecodedBlock] = behind;
  return DecodeBlock(padded.data(), largest, skipped, text);
}

// Decodes a text that is shorter than a block.
wchar_t* DecodeShort(const unsigned char* bytes, std::size_t size, wchar_t* text) noexcept {
  std::array<unsigned char, kDecodedBlock + kLookahead> padded = {};
  const std::size_t skipped = kDecodedBlock - size;
  std::copy_n(bytes, size, padded.begin() + skipped);
  const unsigned char largest = Largest<kDecodedBlock>(padded.data());
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
      while (position + kCheckedBlock <= bytes.size() && !HasFault(BytesOf(bytes) + position)) {
        position += kCheckedBlock;
      }
      position = StartOfLastCharacter(bytes, position);
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
    if constexpr (kSurrogatePairs) {
      // not covered: wchar_t has 16 bits on Windows only
      length += Byte(c) >= 0xF0 ? 1U : 0U;
    }
  }
  return length;
}

wchar_t* DecodeUtf8(std::string_view wellFormed, wchar_t* text) noexcept {
  const unsigned char* bytes = BytesOf(wellFormed);
  const unsigned char* const end = bytes + wellFormed.size();
  if (wellFormed.size() < kDecodedBlock) {
    return DecodeShort(bytes, wellFormed.size(), text);
  }
  constexpr std::ptrdiff_t kReadBytes = kDecodedBlock + kLookahead;
  for (; end - bytes >= kReadBytes; bytes += kDecodedBlock) {
    const unsigned char largest = Largest<kDecodedBlock>(bytes);
    if (largest < 0x80) {
      WidenAscii(bytes, text);
      text += kDecodedBlock;
    } else {
      text = DecodeBlock(bytes, largest, 0, text);
    }
  }
  if (end - bytes > static_cast<std::ptrdiff_t>(kDecodedBlock)) {  // a block, and a byte behind it
    text = DecodeLastBlock(bytes, bytes[kDecodedBlock], 0, text);
    bytes += kDecodedBlock;
  }
  const unsigned char* const last = end - kDecodedBlock;
  return DecodeLastBlock(last, 0, static_cast<std::size_t>(bytes - last), text);
}

std::wstring DecodeUtf8(std::string_view wellFormed) {
  std::wstring text(wellFormed.size() + 1, L'\0');
  text.resize(static_cast<std::size_t>(DecodeUtf8(wellFormed, text.data()) - text.data()));
  return text;
}

std::size_t EncodeUtf8(char32_t character, char* bytes) noexcept {
  const auto lead = [character](unsigned mark, unsigned shift) {
    return static_cast<char>(mark | (character >> shift));
  };
  const auto continuation = [character](unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x80) {
    bytes[0] = lead(0, 0);
    return 1;
  }
  if (character < 0x800) {
    bytes[0] = lead(0xC0, 6);
    bytes[1] = continuation(0);
    return 2;
  }
  if (character < 0x10000) {
    bytes[0] = lead(0xE0, 12);
    bytes[1] = continuation(6);
    bytes[2] = continuation(0);
    return 3;
  }
  bytes[0] = lead(0xF0, 18);
  bytes[1] = continuation(12);
  bytes[2] = continuation(6);
  bytes[3] = continuation(0);
  return 4;
}

void AppendUtf8(char32_t character, std::string& bytes) {
  std::array<char, kLongestCharacter> encoded = {};
  bytes.append(encoded.data(), EncodeUtf8(character, encoded.data()));
}

}  // namespace KelmoLibs::Localize
