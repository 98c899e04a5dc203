// Eight wide characters as the eight bytes that they have in UTF-8, as long as they are ASCII: the
// one place with instructions of a processor, and the same without them. On x86-64 they are always
// there; keys are found a sixth faster by them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "frame/word.h"

#if defined(__SSE2__) || defined(_M_X64)
#define KELMO_LOCALIZER_SSE2
#include <emmintrin.h>
#endif

namespace KelmoLibs::Localize {

class PortableAsciiWords {
 public:
  /// The word of the characters at `text`.
  std::uint64_t At(const wchar_t* text) noexcept {
    std::array<unsigned char, kWordBytes> bytes = {};
    for (std::size_t i = 0; i < kWordBytes; ++i) {
      const std::uint32_t unit = std::char_traits<wchar_t>::to_int_type(text[i]);
      seen_ |= unit;
      bytes[i] = static_cast<unsigned char>(unit);
    }
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), kWordBytes);
    return word;
  }

  /// Whether all characters so far were ASCII; else the words mean nothing.
  bool AreAll() const noexcept { return seen_ < 0x80; }

 private:
  std::uint32_t seen_ = 0;
};

#ifdef KELMO_LOCALIZER_SSE2
class Sse2AsciiWords {
 public:
  std::uint64_t At(const wchar_t* text) noexcept {
    __m128i units = Load(text);
    if constexpr (kUnitBytes == 2) {
      // not covered: wchar_t has 16 bits on Windows only
      seen_ = _mm_or_si128(seen_, units);
    } else {
      const __m128i behind = Load(text + kWordBytes / 2);
      seen_ = _mm_or_si128(seen_, _mm_or_si128(units, behind));
      units = _mm_packs_epi32(units, behind);
    }
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_packus_epi16(units, units)));
  }

  bool AreAll() const noexcept {
    const __m128i beyond = _mm_and_si128(seen_, BitsBeyondAscii());
    const __m128i none = _mm_cmpeq_epi8(beyond, _mm_setzero_si128());
    return _mm_movemask_epi8(none) == 0xFFFF;
  }

 private:
  static constexpr std::size_t kUnitBytes = sizeof(wchar_t);

  static __m128i Load(const wchar_t* text) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  }

  // Of each character.
  static __m128i BitsBeyondAscii() noexcept {
    if constexpr (kUnitBytes == 2) {
      // not covered: wchar_t has 16 bits on Windows only
      return _mm_set1_epi16(~0x7F);
    } else {
      return _mm_set1_epi32(~0x7F);
    }
  }

  __m128i seen_ = _mm_setzero_si128();
};

using AsciiWords = Sse2AsciiWords;
#else
using AsciiWords = PortableAsciiWords;
#endif

}  // namespace KelmoLibs::Localize
