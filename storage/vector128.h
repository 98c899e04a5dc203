// Sixteen bytes at a time, as lanes of 8, 16 or 32 bits: the one file with instructions of a processor. The
// same operations without them are here, too, and lanes_test.cpp compares both.
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

constexpr std::size_t kLanesBytes = 16;

class PortableLanes {
 public:
  PortableLanes() noexcept = default;  // zeroes
  PortableLanes(std::uint64_t low, std::uint64_t high) noexcept : low_(low), high_(high) {}

  /// The sixteen bytes at `bytes`.
  static PortableLanes At(const void* bytes) noexcept {
    return AtTwo(bytes, static_cast<const std::byte*>(bytes) + kWordBytes);
  }
  /// The eight bytes at `low`, and the eight at `high`.
  static PortableLanes AtTwo(const void* low, const void* high) noexcept {
    return {WordAt(low), WordAt(high)};
  }

  std::uint64_t Low() const noexcept { return low_; }
  std::uint64_t High() const noexcept { return high_; }
  bool IsZero() const noexcept { return (low_ | high_) == 0; }

  PortableLanes operator^(PortableLanes other) const noexcept {
    return {low_ ^ other.low_, high_ ^ other.high_};
  }
  PortableLanes operator|(PortableLanes other) const noexcept {
    return {low_ | other.low_, high_ | other.high_};
  }

  /// Adds lane by lane: 32 bits, modulo 2^32.
  PortableLanes operator+(PortableLanes other) const noexcept {
    auto sums = Each<std::uint32_t>();
    const auto others = other.Each<std::uint32_t>();
    for (std::size_t i = 0; i < sums.size(); ++i) {
      sums[i] += others[i];
    }
    return Of(sums);
  }

  /// Multiplies the signed lanes of 16 bits with those of `factors`, and adds each two neighbours to one lane of 32 bits.
  PortableLanes SumsOfProducts(PortableLanes factors) const noexcept {
    std::array<std::uint32_t, kLanesBytes / 4> sums = {};
    const auto own = Each<std::int16_t>();
    const auto others = factors.Each<std::int16_t>();
    for (std::size_t i = 0; i < own.size(); ++i) {
      sums[i / 2] += static_cast<std::uint32_t>(own[i] * others[i]);
    }
    return Of(sums);
  }

  /// Packs the signed lanes of 32 bits of both to 16 bits, with saturation.
  static PortableLanes To16Bits(PortableLanes low, PortableLanes high) noexcept {
    return Narrowed<std::int32_t, std::int16_t>(low, high);
  }
  /// Packs the signed lanes of 16 bits of both to 0 to 255, with saturation.
  static PortableLanes To8Bits(PortableLanes low, PortableLanes high) noexcept {
    return Narrowed<std::int16_t, std::uint8_t>(low, high);
  }

  /// The lower four lanes of 16 bits, or the upper four, as lanes of 32 without a sign.
  PortableLanes LowTo32Bits() const noexcept { return Widened(0); }
  PortableLanes HighTo32Bits() const noexcept { return Widened(4); }

 private:
  template <class Lane>
  std::array<Lane, kLanesBytes / sizeof(Lane)> Each() const noexcept {
    std::array<Lane, kLanesBytes / sizeof(Lane)> lanes;
    std::memcpy(lanes.data(), &low_, kWordBytes);
    std::memcpy(lanes.data() + lanes.size() / 2, &high_, kWordBytes);
    return lanes;
  }
  template <class Lane>
  static PortableLanes Of(const std::array<Lane, kLanesBytes / sizeof(Lane)>& lanes) noexcept {
    return At(lanes.data());
  }

  template <class From, class To>
  static PortableLanes Narrowed(PortableLanes low, PortableLanes high) noexcept {
    std::array<To, kLanesBytes / sizeof(To)> narrow = {};
    const auto lows = low.Each<From>();
    const auto highs = high.Each<From>();
    const auto nearest = [](From value) {
      constexpr From kLeast = std::numeric_limits<To>::min();
      constexpr From kLargest = std::numeric_limits<To>::max();
      return static_cast<To>(std::clamp(value, kLeast, kLargest));
    };
    for (std::size_t i = 0; i < lows.size(); ++i) {
      narrow[i] = nearest(lows[i]);
      narrow[lows.size() + i] = nearest(highs[i]);
    }
    return Of(narrow);
  }

  PortableLanes Widened(std::size_t first) const noexcept {
    std::array<std::uint32_t, kLanesBytes / 4> wide = {};
    const auto lanes = Each<std::uint16_t>();
    for (std::size_t i = 0; i < wide.size(); ++i) {
      wide[i] = lanes[first + i];
    }
    return Of(wide);
  }

  std::uint64_t low_ = 0;
  std::uint64_t high_ = 0;
};

#ifdef KELMO_LOCALIZER_SSE2
class Sse2Lanes {
 public:
  Sse2Lanes() noexcept : lanes_(_mm_setzero_si128()) {}
  Sse2Lanes(std::uint64_t low, std::uint64_t high) noexcept
      : lanes_(_mm_set_epi64x(static_cast<std::int64_t>(high), static_cast<std::int64_t>(low))) {}

  static Sse2Lanes At(const void* bytes) noexcept {
    return Sse2Lanes(_mm_loadu_si128(static_cast<const __m128i*>(bytes)));
  }
  static Sse2Lanes AtTwo(const void* low, const void* high) noexcept {
    return Sse2Lanes(_mm_unpacklo_epi64(_mm_loadl_epi64(static_cast<const __m128i*>(low)),
                                        _mm_loadl_epi64(static_cast<const __m128i*>(high))));
  }

  std::uint64_t Low() const noexcept {
    return static_cast<std::uint64_t>(_mm_cvtsi128_si64(lanes_));
  }
  std::uint64_t High() const noexcept {
    return Sse2Lanes(_mm_unpackhi_epi64(lanes_, lanes_)).Low();
  }
  bool IsZero() const noexcept {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(lanes_, _mm_setzero_si128())) == 0xFFFF;
  }

  Sse2Lanes operator^(Sse2Lanes other) const noexcept {
    return Sse2Lanes(_mm_xor_si128(lanes_, other.lanes_));
  }
  Sse2Lanes operator|(Sse2Lanes other) const noexcept {
    return Sse2Lanes(_mm_or_si128(lanes_, other.lanes_));
  }
  Sse2Lanes operator+(Sse2Lanes other) const noexcept {
    return Sse2Lanes(_mm_add_epi32(lanes_, other.lanes_));
  }
  Sse2Lanes SumsOfProducts(Sse2Lanes factors) const noexcept {
    return Sse2Lanes(_mm_madd_epi16(lanes_, factors.lanes_));
  }
  static Sse2Lanes To16Bits(Sse2Lanes low, Sse2Lanes high) noexcept {
    return Sse2Lanes(_mm_packs_epi32(low.lanes_, high.lanes_));
  }
  static Sse2Lanes To8Bits(Sse2Lanes low, Sse2Lanes high) noexcept {
    return Sse2Lanes(_mm_packus_epi16(low.lanes_, high.lanes_));
  }
  Sse2Lanes LowTo32Bits() const noexcept {
    return Sse2Lanes(_mm_unpacklo_epi16(lanes_, _mm_setzero_si128()));
  }
  Sse2Lanes HighTo32Bits() const noexcept {
    return Sse2Lanes(_mm_unpackhi_epi16(lanes_, _mm_setzero_si128()));
  }

 private:
  explicit Sse2Lanes(__m128i lanes) noexcept : lanes_(lanes) {}

  __m128i lanes_;
};

using Lanes = Sse2Lanes;
#else
using Lanes = PortableLanes;
#endif

/// The upper half of the product of 128 bits XOR its lower half.
inline std::uint64_t PortableFoldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
  constexpr std::uint64_t kLowerHalf = 0xFFFFFFFF;
  const std::uint64_t lowest = (a & kLowerHalf) * (b & kLowerHalf);
  const std::uint64_t first = (a >> 32U) * (b & kLowerHalf) + (lowest >> 32U);
  const std::uint64_t second = (a & kLowerHalf) * (b >> 32U) + (first & kLowerHalf);
  return (a * b) ^ ((a >> 32U) * (b >> 32U) + (first >> 32U) + (second >> 32U));
}

#ifdef _MSC_VER
inline std::uint64_t FoldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
  return PortableFoldedProduct(a, b);
}
#else
inline std::uint64_t FoldedProduct(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}
#endif

}  // namespace KelmoLibs::Localize
