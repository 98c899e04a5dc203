#include "host/utf16_units.h"

#include "storage/word.h"
#include "text/utf8_characters.h"

namespace KelmoLibs::Host {
namespace {

using Localize::kEveryByte;
using Localize::kHighestBits;
using Localize::kWordBytes;
using Localize::LoadWord;

unsigned ByteAt(std::string_view bytes, std::size_t index) noexcept {
  return static_cast<unsigned char>(bytes[index]);
}

unsigned Continuation(std::string_view bytes, std::size_t index) noexcept {
  return ByteAt(bytes, index) & 0x3FU;
}

bool IsAscii(std::uint64_t word) noexcept { return (word & kHighestBits) == 0; }

// The number of code units for the characters that start in a word: one for each byte but those of
// the form 10......, and one more for each 1111.....
std::size_t UnitsIn(std::uint64_t word) noexcept {
  const std::uint64_t starts = (word >> 6U | ~word >> 7U) & kEveryByte;
  const std::uint64_t pairs = (word >> 7U & word >> 6U & word >> 5U & word >> 4U) & kEveryByte;
  constexpr unsigned kSum = 56;  // the highest byte of the product is the sum of the bytes
  return static_cast<std::size_t>(((starts + pairs) * kEveryByte) >> kSum);
}

}  // namespace

std::size_t Utf16Length(std::string_view wellFormed) noexcept {
  std::size_t length = 0;
  for (; wellFormed.size() >= kWordBytes; wellFormed.remove_prefix(kWordBytes)) {
    length += UnitsIn(LoadWord(wellFormed.data()));
  }
  for (const char c : wellFormed) {
    length += Localize::IsContinuation(c) ? 0U : 1U;
    length += static_cast<unsigned char>(c) >= 0xF0U ? 1U : 0U;
  }
  return length;
}

std::uint16_t* EncodeUtf16(std::string_view wellFormed, std::uint16_t* units) noexcept {
  for (std::size_t i = 0; i < wellFormed.size();) {
    const unsigned lead = ByteAt(wellFormed, i);
    if (lead < 0x80 && wellFormed.size() - i >= kWordBytes &&
        IsAscii(LoadWord(wellFormed.data() + i))) {
      for (const std::size_t end = i + kWordBytes; i < end; ++i) {
        *units++ = static_cast<std::uint16_t>(ByteAt(wellFormed, i));
      }
    } else if (lead < 0x80) {
      *units++ = static_cast<std::uint16_t>(lead);
      i += 1;
    } else if (lead < 0xE0) {
      *units++ =
          static_cast<std::uint16_t>(((lead & 0x1FU) << 6U) | Continuation(wellFormed, i + 1));
      i += 2;
    } else if (lead < 0xF0) {
      *units++ = static_cast<std::uint16_t>(((lead & 0xFU) << 12U) |
                                            (Continuation(wellFormed, i + 1) << 6U) |
                                            Continuation(wellFormed, i + 2));
      i += 3;
    } else {
      const unsigned character = ((lead & 0x7U) << 18U) | (Continuation(wellFormed, i + 1) << 12U) |
                                 (Continuation(wellFormed, i + 2) << 6U) |
                                 Continuation(wellFormed, i + 3);
      *units++ = static_cast<std::uint16_t>(0xD7C0U + (character >> 10U));
      *units++ = static_cast<std::uint16_t>(0xDC00U | (character & 0x3FFU));
      i += 4;
    }
  }
  return units;
}

}  // namespace KelmoLibs::Host
