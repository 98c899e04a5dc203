// Arithmetic of physical values. Pure functions; they never fail half-way: a result is written last.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/unit_set.h"
#include "kelmo/kelmo.h"

namespace KelmoLibs::Host {

// The results are KELMO_OK or the statuses that kelmo.h lists for the function of the same name.

kelmo_status Add(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                 kelmo_quantity& result) noexcept;
kelmo_status Subtract(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                      kelmo_quantity& result) noexcept;
kelmo_status Multiply(const UnitSet& units, const kelmo_quantity& quantity, double factor,
                      kelmo_quantity& result) noexcept;
kelmo_status Divide(const UnitSet& units, const kelmo_quantity& quantity, double divisor,
                    kelmo_quantity& result) noexcept;
kelmo_status RatioOf(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                     double& result) noexcept;
kelmo_status SumOf(const UnitSet& units, const kelmo_quantity* quantities, std::size_t count,
                   kelmo_quantity& result) noexcept;
kelmo_status Compare(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                     std::int32_t& result) noexcept;
kelmo_status HashOf(const UnitSet& units, const kelmo_quantity& quantity,
                    std::uint64_t& result) noexcept;
kelmo_status Convert(const UnitSet& units, const kelmo_quantity* quantities, std::size_t count,
                     std::int32_t code, kelmo_quantity* results) noexcept;
kelmo_status ConvertNumbers(const UnitSet& units, std::int32_t from, std::int32_t to,
                            const double* numbers, std::size_t count, double* results) noexcept;

/// Finds the unit of a quantity, and checks all but its tolerances: KELMO_OK, KELMO_INVALID_ARGUMENT or
/// KELMO_UNKNOWN_UNIT.
kelmo_status FindUnitOf(const UnitSet& units, const kelmo_quantity& quantity,
                        const UnitRow*& unit) noexcept;

/// The same, and KELMO_POINT_UNIT for a point with a relative tolerance.
kelmo_status TakeUnit(const UnitSet& units, const kelmo_quantity& quantity,
                      const UnitRow*& unit) noexcept;

/// factor * number + offset, rounded once.
double BaseNumber(double number, const UnitRow& unit) noexcept;

}  // namespace KelmoLibs::Host
