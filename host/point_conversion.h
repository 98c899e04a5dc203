// Converts points of scales, such as temperatures, rounded once.
#pragma once

#include <cstddef>

#include "host/double_double.h"
#include "host/unit_row.h"

namespace KelmoLibs::Host {

/// `number` in the unit `to`. Both are units of points, of one kind. The same unit changes no bit.
double InPointUnit(double number, const UnitRow& from, const UnitRow& to) noexcept;

/// Converts many points, with the bits of InPointUnit.
///
/// In place of two sums and a quotient it computes number * factor + offset, with about 100 bits. Where the
/// result minus and plus a bound of the errors of both ways rounds to one double, both ways give that double.
/// Elsewhere InPointUnit decides.
class PointConversion {
 public:
  static constexpr std::size_t kBlock = 16;

  /// Of `count` points. The units are others, and outlive it.
  PointConversion(const UnitRow& from, const UnitRow& to, std::size_t count) noexcept;

  /// At most kBlock of them. `results` may be `numbers`.
  void Convert(const double* numbers, std::size_t count, double* results) const noexcept;

 private:
  const UnitRow& from_;
  const UnitRow& to_;
  bool isFast_;
  DoubleDouble factor_;
  DoubleDouble offset_;
  double leastError_ = 0;  // that does not depend on the number
};

}  // namespace KelmoLibs::Host
