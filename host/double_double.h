// Numbers with twice the digits of a double, for the conversion of temperatures: so -40 degrees
// Celsius are -40 degrees Fahrenheit, and not -40.000000000000007.
//
// The algorithms are those of Dekker, Knuth, and Boldo and Melquiond. They need arithmetic that
// rounds each operation to double, and no std::fma: that of MinGW-w64 rounds some results wrongly.
#pragma once

#include <cfloat>
#include <cstdint>
#include <cstring>

namespace KelmoLibs::Host {

static_assert(FLT_EVAL_METHOD == 0, "each operation must round to double");

/// The number high + low. `high` is the double nearest to it.
struct DoubleDouble {
  double high = 0;
  double low = 0;
};

/// The exact sum, if it is finite.
inline DoubleDouble ExactSum(double a, double b) noexcept {
  const double sum = a + b;
  const double partOfB = sum - a;
  const double partOfA = sum - partOfB;
  return {sum, (a - partOfA) + (b - partOfB)};
}

/// The exact product, if the factors are below 2^996 and it is 0 or above 2^-960.
inline DoubleDouble ExactProduct(double a, double b) noexcept {
  const auto split = [](double x) noexcept -> DoubleDouble {
    constexpr double kSplitter = 134217729;  // 2^27 + 1
    const double scaled = kSplitter * x;
    const double high = scaled - (scaled - x);
    return {high, x - high};
  };
  const double product = a * b;
  const DoubleDouble x = split(a);
  const DoubleDouble y = split(b);
  const double low =
      ((x.high * y.high - product) + x.high * y.low + x.low * y.high) + x.low * y.low;
  return {product, low};
}

inline DoubleDouble Sum(DoubleDouble a, DoubleDouble b) noexcept {
  const DoubleDouble high = ExactSum(a.high, b.high);
  const DoubleDouble low = ExactSum(a.low, b.low);
  const DoubleDouble sum = ExactSum(high.high, high.low + low.high);
  return ExactSum(sum.high, sum.low + low.low);
}

inline DoubleDouble Product(DoubleDouble a, double b) noexcept {
  const DoubleDouble product = ExactProduct(a.high, b);
  return ExactSum(product.high, product.low + a.low * b);
}

inline DoubleDouble Quotient(DoubleDouble a, DoubleDouble b) noexcept {
  const double first = a.high / b.high;
  const DoubleDouble taken = Product(b, first);
  const DoubleDouble rest = Sum(a, {-taken.high, -taken.low});
  const double second = rest.high / b.high;
  const DoubleDouble takenToo = Product(b, second);
  const double third = (rest.high - takenToo.high + rest.low - takenToo.low) / b.high;
  const DoubleDouble quotient = ExactSum(first, second);
  return ExactSum(quotient.high, quotient.low + third);
}

/// The sum, rounded to the neighbour whose last bit is 1 unless it is exact. If it is rounded once
/// more, to a number with fewer digits, the result is that of rounding the exact sum.
inline double SumRoundedToOdd(double a, double b) noexcept {
  const DoubleDouble sum = ExactSum(a, b);
  std::uint64_t bits = 0;
  std::memcpy(&bits, &sum.high, sizeof bits);
  if (sum.low == 0 || (bits & 1U) != 0) {
    return sum.high;
  }
  // The neighbour away from 0 has the next bits. std::nextafter would need a library more.
  bits += (sum.low > 0) == (sum.high > 0) ? 1U : ~std::uint64_t{0};
  double odd = 0;
  std::memcpy(&odd, &bits, sizeof odd);
  return odd;
}

/// factor * x + offset, rounded once. Exact in the same range as ExactProduct, if the low parts are 0;
/// with them, it differs from rounding the exact result only where that is extremely close to the
/// middle of two doubles.
inline double MultiplyAdd(DoubleDouble factor, double x, DoubleDouble offset) noexcept {
  const DoubleDouble product = ExactProduct(factor.high, x);
  const DoubleDouble tail = ExactSum(offset.high, product.low + (factor.low * x + offset.low));
  const DoubleDouble head = ExactSum(product.high, tail.high);
  return head.high + SumRoundedToOdd(head.low, tail.low);
}

}  // namespace KelmoLibs::Host
