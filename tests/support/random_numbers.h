// Repeatable random numbers: the same on every system, which the distributions of the standard
// library are not.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string_view>

#include "tests/support/bits.h"

/// Where random tests begin: --seed=N on the command line, or a fixed number (test_main.cpp).
extern std::uint64_t randomSeed;

/// How often a test that can go on for ever does what it does: --rounds=N on the command line, or
/// `usually`.
std::uint64_t Rounds(std::uint64_t usually);

class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : engine_(seed) {}

  /// Numbers that somebody else has chosen, a fuzzer: `choices`, as long as there are some.
  explicit RandomNumbers(std::string_view choices) : choices_(choices) {}
  bool HasChoices() const { return !choices_.empty(); }

  std::uint64_t Bits() { return HasChoices() ? Choose(sizeof(std::uint64_t)) : engine_(); }

  /// 0 to below - 1. Of the choices it takes no more bytes than it needs: a fuzzer that changes one
  /// changes one number.
  int Below(int below) {
    const std::size_t needed = below <= 0x100 ? 1U : below <= 0x10000 ? 2U : 4U;
    const std::uint64_t bits = HasChoices() ? Choose(needed) : engine_();
    return static_cast<int>(bits % static_cast<unsigned>(below));
  }

  /// 0 to below 1, in steps of 2^-53.
  double Fraction() { return static_cast<double>(Bits() >> 11U) * 0x1p-53; }

  /// Any finite number whose magnitude is from 2^least to below 2^most; positive or negative.
  double OfMagnitude(int least, int most) {
    constexpr std::uint64_t kSignAndFraction = 0x800FFFFFFFFFFFFF;
    const auto exponent = static_cast<unsigned>(1023 + least + Below(most - least));
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
