// Rounds a number by its tolerance, and prints it. Pure functions of numbers.
#pragma once

#include <string>

namespace KelmoLibs::Localize::Phyval {

struct RoundedNumber {
  double number;
  int decimals;  // how many to print: 0 to kMaxDecimals
  /// `number` is integer / 10^decimals, rounded to double. NaN if there is no such integer.
  double integer;
};

/// Rounds `value` to the power of ten that `tolerance` justifies; docs/values.md has the rule and
/// examples. Never returns if the tolerance is 0, negative or infinity.
RoundedNumber RoundToTolerance(double value, double tolerance) noexcept;

/// The number in fixed notation under the global C++ locale, with `separator` in place of each
/// L'.'. Throws std::bad_alloc, and any exception that a facet of that locale makes a stream throw.
std::wstring FixedText(const RoundedNumber& rounded, wchar_t separator);

}  // namespace KelmoLibs::Localize::Phyval
