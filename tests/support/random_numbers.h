// Repeatable random numbers. They are equal on all systems, unlike the distributions of the
// standard library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string_view>

#include "tests/support/bits.h"

/// The seed of random tests: --seed=N on the command line, or a fixed number (test_main.cpp).
extern std::uint64_t randomSeed;

/// The number of rounds of a random test: --rounds=N on the command line, or `defaultRounds`.
std::uint64_t Rounds(std::uint64_t defaultRounds);

class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : engine_(seed) {}

  /// Numbers that a fuzzer has chosen: the bytes of `choices`.
  explicit RandomNumbers(std::string_view choices) : choices_(choices) {}
  bool HasChoices() const { return !choices_.empty(); }

  std::uint64_t Bits() { return HasChoices() ? Choose(sizeof(std::uint64_t)) : engine_(); }

  /// 0 to below - 1. Uses as few bytes of the choices as possible: if a fuzzer changes a byte, it
  /// changes one number.
  int Below(int below) {
    const std::size_t needed = below <= 0x100 ? 1U : below <= 0x10000 ? 2U : 4U;
    const std::uint64_t bits = HasChoices() ? Choose(needed) : engine_();
    return static_cast<int>(bits % static_cast<unsigned>(below));
  }

  /// 0 or more and less than 1, in steps of 2^-53.
  double Fraction() { return static_cast<double>(Bits() >> 11U) * 0x1p-53; }

  /// A finite number, positive or negative, whose magnitude is at least 2^minExponent and less than
  /// 2^maxExponent.
  double OfMagnitude(int minExponent, int maxExponent) {
    constexpr std::uint64_t kSignAndFraction = 0x800FFFFFFFFFFFFF;
    const auto exponent =
        static_cast<unsigned>(1023 + minExponent + Below(maxExponent - minExponent));
    const std::uint64_t bits = (Bits() & kSignAndFraction) | (std::uint64_t{exponent} << 52U);
    return NumberOf(bits);
  }

 private:
  std::uint64_t Choose(std::size_t bytes) {
    std::uint64_t bits = 0;
    for (bytes = std::min(bytes, choices_.size()); bytes > 0; --bytes) {
      bits = (bits << 8U) | static_cast<unsigned char>(choices_.front());
      choices_.remove_prefix(1);
    }
    return bits;
  }

  std::mt19937_64 engine_;
  std::string_view choices_;
};

/// One of `items`.
template <class Items>
const auto& AnyOf(RandomNumbers& random, const Items& items) {
  return *std::next(std::begin(items), random.Below(static_cast<int>(std::size(items))));
}
