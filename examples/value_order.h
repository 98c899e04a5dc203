// An order to sort values by: std::sort(values.begin(), values.end(), ComesBefore).
#pragma once

#include <cmath>
#include <tuple>

#include "kelmo_localizer.h"

/// By quantity, and within one by the number in its base unit. Values without a unit come first, and the NaN of
/// a quantity last. Where a factor is 0, as that of coefficients after the start, the number itself counts.
inline bool ComesBefore(const KelmoLibs::Localize::Phyval::Double& left,
                        const KelmoLibs::Localize::Phyval::Double& right) {
  const auto place = [](const KelmoLibs::Localize::Phyval::Double& value) {
    const bool hasFactor = value.unit != nullptr && value.unit->factor != 0;
    const double number = hasFactor ? value.value * value.unit->factor : value.value;
    const bool isNaN = std::isnan(number);
    return std::make_tuple(value.unit == nullptr ? -1 : value.unit->GetStype(), isNaN,
                           isNaN ? 0 : number);
  };
  return place(left) < place(right);
}
