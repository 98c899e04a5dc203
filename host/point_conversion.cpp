// point_conversion_test.cpp compares blocks with single points.
#include "host/point_conversion.h"

#include <array>
#include <cmath>

namespace KelmoLibs::Host {
namespace {

// With factors and offsets in this range, and numbers below kLargestNumber, nothing overflows, and what
// underflows is below kErrorOfSmallNumbers.
constexpr double kLargest = 1e60;
constexpr double kLargestNumber = 1e150;
constexpr double kErrorOfSmallNumbers = 2e-241;
constexpr double kError = 3.3e-27;  // relative, of both ways; the true ones are below 2^-96

bool IsModerate(const UnitRow& unit) noexcept {
  return unit.factor.high < kLargest && unit.factor.high > 1 / kLargest &&
         std::abs(unit.offset.high) < kLargest;
}

}  // namespace

double InPointUnit(double number, const UnitRow& from, const UnitRow& to) noexcept {
  if (&from == &to) {
    return number;
  }
  const DoubleDouble base = Sum(Product(from.factor, number), from.offset);
  const DoubleDouble moved = Sum(base, {-to.offset.high, -to.offset.low});
  const double result = Quotient(moved, to.factor).high;
  if (std::isfinite(result)) {
    return result;
  }
  // Infinity, NaN, and numbers near the largest double.
  return (from.factor.high * number + (from.offset.high - to.offset.high)) / to.factor.high;
}

PointConversion::PointConversion(const UnitRow& from, const UnitRow& to, std::size_t count) noexcept
    : from_(from), to_(to), isFast_(count >= kBlock && IsModerate(from) && IsModerate(to)) {
  if (isFast_) {
    factor_ = Quotient(from.factor, to.factor);
    offset_ = Quotient(Sum(from.offset, {-to.offset.high, -to.offset.low}), to.factor);
    leastError_ =
        kError * (std::abs(from.offset.high) + std::abs(to.offset.high)) / to.factor.high +
        kErrorOfSmallNumbers;
  }
}

void PointConversion::Convert(const double* numbers, std::size_t count,
                              double* results) const noexcept {
  if (!isFast_ || count != kBlock) {
    for (std::size_t i = 0; i < count; ++i) {
      results[i] = InPointUnit(numbers[i], from_, to_);
    }
    return;
  }
  std::array<double, kBlock> lower;
  std::array<double, kBlock> upper;
  for (std::size_t i = 0; i < kBlock; ++i) {  // without a branch: compilers use vectors
    const DoubleDouble product = ExactProduct(factor_.high, numbers[i]);
    const DoubleDouble sum = ExactSum(product.high, offset_.high);
    const double low = sum.low + (product.low + (factor_.low * numbers[i] + offset_.low));
    const double error = kError * std::abs(product.high) + leastError_;
    lower[i] = sum.high + (low - error);
    upper[i] = sum.high + (low + error);
  }
  // One of ten points in degrees Celsius is in the middle between two doubles in degrees Fahrenheit.
  for (std::size_t i = 0; i < kBlock; ++i) {
    const bool isSure = lower[i] == upper[i] && std::abs(numbers[i]) < kLargestNumber;
    results[i] = isSure ? lower[i] : InPointUnit(numbers[i], from_, to_);
  }
}

}  // namespace KelmoLibs::Host
