// An order for sorting values: std::sort(values.begin(), values.end(), ComesBefore).
#pragma once

#include <cmath>
#include <tuple>

#include "kelmo_localizer.h"

/// Orders by quantity, then by the number in the base unit. Values without a unit come first; in
/// each quantity NaN comes last. If the factor is 0, as for coefficients after the start, the
/// number itself counts.
inline bool ComesBefore(const KelmoLibs::Localize::Phyval::Double& left,
                        const KelmoLibs::Localize::Phyval::Double& right) {
  const auto sortKey = [](const KelmoLibs::Localize::Phyval::Double& value) {
    const bool hasFactor = value.unit != nullptr && value.unit->factor != 0;
    const double number = hasFactor ? value.value * value.unit->factor : value.value;
    const bool isNaN = std::isnan(number);
    return std::make_tuple(value.unit == nullptr ? -1 : value.unit->GetStype(), isNaN,
                           isNaN ? 0 : number);
  };
  return sortKey(left) < sortKey(right);
}
