// A hash of bytes, the same in every process and on every system: runs can be repeated, and what
// somebody makes collide on purpose is left to the bound of HashIndex.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "frame/word.h"

namespace KelmoLibs::Localize {

constexpr std::size_t kFourWordsBytes = 4 * kWordBytes;

/// Where the four words of `length` characters begin that stand for them all: side by side as far as
/// they fit, the last one at the end. For 8 to 32 characters, without a branch.
struct WordPlaces {
  explicit constexpr WordPlaces(std::size_t length) noexcept
      : last(length - kWordBytes),
        second(std::min(kWordBytes, last)),
        third(std::min(2 * kWordBytes, last)) {}

  static constexpr bool Cover(std::size_t length) noexcept {
    return length >= kWordBytes && length <= kFourWordsBytes;
  }

  std::size_t last;
  std::size_t second;
  std::size_t third;
};

struct FourWords {
  std::uint64_t first;
  std::uint64_t second;
  std::uint64_t third;
  std::uint64_t last;
};

inline FourWords WordsAt(const char* bytes, const WordPlaces& places) noexcept {
  return {WordAt(bytes), WordAt(bytes + places.second), WordAt(bytes + places.third),
          WordAt(bytes + places.last)};
}

inline bool AreSame(const FourWords& a, const FourWords& b) noexcept {
  return ((a.first ^ b.first) | (a.second ^ b.second) | (a.third ^ b.third) | (a.last ^ b.last)) ==
         0;
}

/// Mixes four words and a seed: each word by a multiplication of its own, which do not wait for one
/// another. Every bit of the result depends on every bit that goes in.
inline std::uint64_t HashWords(const FourWords& words, std::uint64_t seed) noexcept {
  constexpr std::uint64_t kA = 0x9E3779B97F4A7C15;  // odd, half of the bits set, without a pattern
  constexpr std::uint64_t kB = 0xC2B2AE3D27D4EB4F;
  constexpr std::uint64_t kC = 0x165667B19E3779F9;
  constexpr std::uint64_t kD = 0x27D4EB2F165667C5;
  const auto fold = [](std::uint64_t x) { return x ^ (x >> 32U); };
  const auto rotate = [](std::uint64_t x, unsigned by) { return (x << by) | (x >> (64U - by)); };
  const std::uint64_t front =
      fold((words.first ^ (seed * kC)) * kA) + rotate(fold((words.second ^ kD) * kB), 17);
  const std::uint64_t back =
      fold((words.third ^ kB) * kC) + rotate(fold((words.last ^ kA) * kD), 23);
  return fold((front ^ rotate(back, 32)) * kA);
}

/// Hash of `bytes`.
std::uint64_t HashBytes(std::string_view bytes) noexcept;

/// Hash of a wide text: of its bytes, so that it is not that of the same text as UTF-8.
inline std::uint64_t HashText(std::wstring_view text) noexcept {
  return HashBytes({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)});
}

}  // namespace KelmoLibs::Localize
