// A number rounded to what its tolerance justifies, and its text: functions of plain numbers.
#pragma once

#include <string>

namespace KelmoLibs::Localize::Phyval {

struct RoundedNumber {
  double number;
  int decimals;  // 0 to kMostDecimals: how many to print
  /// `number` is this integer over 10^decimals, rounded to a double; NaN where it is no such fraction.
  double integer;
};

/// `value` rounded to `tolerance`. Does not return when the tolerance is 0, negative or positive
/// infinity. docs/values.md has the rule by examples.
RoundedNumber RoundToTolerance(double value, double tolerance) noexcept;

/// The number in fixed notation under the global C++ locale, with `separator` for each L'.'. Throws
/// std::bad_alloc, and what a facet of that locale makes a stream throw.
std::wstring FixedText(const RoundedNumber& rounded, wchar_t separator);

}  // namespace KelmoLibs::Localize::Phyval
