// Vectors of 128 bits with lanes of 8, 16 or 32 bits. This is the only file with instructions of
// one processor family (SSE2). The portable class has the same operations, and vector128_test.cpp
// compares both.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "storage/word.h"

#if defined(__SSE2__) || defined(_M_X64)  // on x86-64 always
#define KELMO_LOCALIZER_SSE2
#include <emmintrin.h>
#endif

namespace KelmoLibs::Localize {

constexpr std::size_t kVectorBytes = 16;

class PortableVector128 {
 public:
  PortableVector128() noexcept = default;  // all bits are 0
  PortableVector128(std::uint64_t low, std::uint64_t high) noexcept : low_(low), high_(high) {}

  /// The 16 bytes at `bytes`, which need no alignment.
  static PortableVector128 Load(const void* bytes) noexcept {
    return LoadHalves(bytes, static_cast<const std::byte*>(bytes) + kWordBytes);
  }
  /// The 8 bytes at `low`, and the 8 bytes at `high`.
  static PortableVector128 LoadHalves(const void* low, const void* high) noexcept {
    return {LoadWord(low), LoadWord(high)};
  }

  std::uint64_t Low() const noexcept { return low_; }
  std::uint64_t High() const noexcept { return high_; }
  bool IsZero() const noexcept { return (low_ | high_) == 0; }

  PortableVector128 operator^(PortableVector128 other) const noexcept {
    return {low_ ^ other.low_, high_ ^ other.high_};
  }
  PortableVector128 operator|(PortableVector128 other) const noexcept {
    return {low_ | other.low_, high_ | other.high_};
  }

  /// Adds the lanes of 32 bits, modulo 2^32.
  PortableVector128 operator+(PortableVector128 other) const noexcept {
    auto sums = Lanes<std::uint32_t>();
    const auto others = other.Lanes<std::uint32_t>();
    for (std::size_t i = 0; i < sums.size(); ++i) {
      sums[i] += others[i];
    }
    return FromLanes(sums);
  }

  /// Multiplies the signed lanes of 16 bits by those of `factors`. Each lane of 32 bits of the
  /// result is the sum of two neighbouring products.
  PortableVector128 MultiplyAddPairs(PortableVector128 factors) const noexcept {
    std::array<std::uint32_t, kVectorBytes / 4> sums = {};
    const auto own = Lanes<std::int16_t>();
    const auto others = factors.Lanes<std::int16_t>();
    for (std::size_t i = 0; i < own.size(); ++i) {
      sums[i / 2] += static_cast<std::uint32_t>(own[i] * others[i]);
    }
    return FromLanes(sums);
  }

  /// Packs the signed lanes of 32 bits of both vectors to signed lanes of 16 bits, with saturation.
  static PortableVector128 PackTo16Bits(PortableVector128 low, PortableVector128 high) noexcept {
    return Pack<std::int32_t, std::int16_t>(low, high);
  }
  /// Packs the signed lanes of 16 bits of both vectors to unsigned lanes of 8 bits, with
  /// saturation.
  static PortableVector128 PackTo8Bits(PortableVector128 low, PortableVector128 high) noexcept {
    return Pack<std::int16_t, std::uint8_t>(low, high);
  }

  /// The lower (upper) four lanes of 16 bits, without a sign, as lanes of 32 bits.
  PortableVector128 WidenLow() const noexcept { return Widen(0); }
  PortableVector128 WidenHigh() const noexcept { return Widen(4); }

 private:
  template <class Lane>
  std::array<Lane, kVectorBytes / sizeof(Lane)> Lanes() const noexcept {
    std::array<Lane, kVectorBytes / sizeof(Lane)> lanes;
    std::memcpy(lanes.data(), &low_, kWordBytes);
    std::memcpy(lanes.data() + lanes.size() / 2, &high_, kWordBytes);
    return lanes;
  }
  template <class Lane>
  static PortableVector128 FromLanes(
      const std::array<Lane, kVectorBytes / sizeof(Lane)>& lanes) noexcept {
    return Load(lanes.data());
  }

  template <class From, class To>
  static PortableVector128 Pack(PortableVector128 low, PortableVector128 high) noexcept {
    std::array<To, kVectorBytes / sizeof(To)> narrow = {};
    const auto lows = low.Lanes<From>();
    const auto highs = high.Lanes<From>();
    const auto saturate = [](From value) {
      constexpr From kMin = std::numeric_limits<To>::min();
      constexpr From kMax = std::numeric_limits<To>::max();
      return static_cast<To>(std::clamp(value, kMin, kMax));
    };
    for (std::size_t i = 0; i < lows.size(); ++i) {
      narrow[i] = saturate(lows[i]);
      narrow[lows.size() + i] = saturate(highs[i]);
    }
    return FromLanes(narrow);
  }

  PortableVector128 Widen(std::size_t first) const noexcept {
    std::array<std::uint32_t, kVectorBytes / 4> wide = {};
    const auto lanes = Lanes<std::uint16_t>();
    for (std::size_t i = 0; i < wide.size(); ++i) {
      wide[i] = lanes[first + i];
    }
    return FromLanes(wide);
  }

  std::uint64_t low_ = 0;
  std::uint64_t high_ = 0;
};

#ifdef KELMO_LOCALIZER_SSE2
class Sse2Vector128 {
 public:
  Sse2Vector128() noexcept : lanes_(_mm_setzero_si128()) {}
  Sse2Vector128(std::uint64_t low, std::uint64_t high) noexcept
      : lanes_(_mm_set_epi64x(static_cast<std::int64_t>(high), static_cast<std::int64_t>(low))) {}

  static Sse2Vector128 Load(const void* bytes) noexcept {
    return Sse2Vector128(_mm_loadu_si128(static_cast<const __m128i*>(bytes)));
  }
  static Sse2Vector128 LoadHalves(const void* low, const void* high) noexcept {
    return Sse2Vector128(_mm_unpacklo_epi64(_mm_loadl_epi64(static_cast<const __m128i*>(low)),
                                            _mm_loadl_epi64(static_cast<const __m128i*>(high))));
  }

  std::uint64_t Low() const noexcept {
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(lanes_));
  }
  std::uint64_t High() const noexcept {
    return Sse2Vector128(_mm_unpackhi_epi64(lanes_, lanes_)).Low();
  }
  bool IsZero() const noexcept {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(lanes_, _mm_setzero_si128())) == 0xFFFF;
  }

  Sse2Vector128 operator^(Sse2Vector128 other) const noexcept {
    return Sse2Vector128(_mm_xor_si128(lanes_, other.lanes_));
  }
  Sse2Vector128 operator|(Sse2Vector128 other) const noexcept {
    return Sse2Vector128(_mm_or_si128(lanes_, other.lanes_));
  }
  Sse2Vector128 operator+(Sse2Vector128 other) const noexcept {
    return Sse2Vector128(_mm_add_epi32(lanes_, other.lanes_));
  }
  Sse2Vector128 MultiplyAddPairs(Sse2Vector128 factors) const noexcept {
    return Sse2Vector128(_mm_madd_epi16(lanes_, factors.lanes_));
  }
  static Sse2Vector128 PackTo16Bits(Sse2Vector128 low, Sse2Vector128 high) noexcept {
    return Sse2Vector128(_mm_packs_epi32(low.lanes_, high.lanes_));
  }
  static Sse2Vector128 PackTo8Bits(Sse2Vector128 low, Sse2Vector128 high) noexcept {
    return Sse2Vector128(_mm_packus_epi16(low.lanes_, high.lanes_));
  }
  Sse2Vector128 WidenLow() const noexcept {
    return Sse2Vector128(_mm_unpacklo_epi16(lanes_, _mm_setzero_si128()));
  }
  Sse2Vector128 WidenHigh() const noexcept {
    return Sse2Vector128(_mm_unpackhi_epi16(lanes_, _mm_setzero_si128()));
  }

 private:
  explicit Sse2Vector128(__m128i lanes) noexcept : lanes_(lanes) {}

  __m128i lanes_;
};

using Vector128 = Sse2Vector128;
#else
using Vector128 = PortableVector128;
#endif

/// The upper 64 bits of the product, XOR its lower 64 bits.
inline std::uint64_t PortableFoldedMultiply(std::uint64_t a, std::uint64_t b) noexcept {
  constexpr std::uint64_t kLowerHalf = 0xFFFFFFFF;
  const std::uint64_t lowest = (a & kLowerHalf) * (b & kLowerHalf);
  const std::uint64_t first = (a >> 32U) * (b & kLowerHalf) + (lowest >> 32U);
  const std::uint64_t second = (a & kLowerHalf) * (b >> 32U) + (first & kLowerHalf);
  return (a * b) ^ ((a >> 32U) * (b >> 32U) + (first >> 32U) + (second >> 32U));
}

#ifdef _MSC_VER
inline std::uint64_t FoldedMultiply(std::uint64_t a, std::uint64_t b) noexcept {
  return PortableFoldedMultiply(a, b);
}
#else
inline std::uint64_t FoldedMultiply(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}
#endif

}  // namespace KelmoLibs::Localize
