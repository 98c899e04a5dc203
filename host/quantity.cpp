#include "host/quantity.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "host/double_double.h"
#include "host/point_conversion.h"

namespace KelmoLibs::Host {
namespace {

// The operands of an operation, and their units.
struct Operands {
  const UnitRow* left = nullptr;
  const UnitRow* right = nullptr;
};

kelmo_status TakeUnits(const UnitSet& units, const kelmo_quantity& left,
                       const kelmo_quantity& right, Operands& taken) noexcept {
  const kelmo_status status = TakeUnit(units, left, taken.left);
  return status == KELMO_OK ? TakeUnit(units, right, taken.right) : status;
}

bool IsOneKind(const UnitRow& left, const UnitRow& right) noexcept {
  return KindOf(left.code) == KindOf(right.code);
}

// The first library multiplies first, also if both units are the same: another order gives other last
// digits.
double InLinearUnit(double number, const UnitRow& from, const UnitRow& to) noexcept {
  return from.factor.high * number / to.factor.high;
}

kelmo_quantity WithNumber(const kelmo_quantity& quantity, double number) noexcept {
  kelmo_quantity result = quantity;
  result.number = number;
  return result;
}

// The unit of differences of a unit of points. Sealing the units has checked that there is one.
const UnitRow& DifferenceOf(const UnitSet& units, const UnitRow& point) noexcept {
  return *units.Find(point.difference);
}

// `right` in the unit in which it is added to `left`. Checks what may be added.
kelmo_status TakeSummand(const UnitSet& units, const Operands& taken, const kelmo_quantity& right,
                         double& number) noexcept {
  if (taken.left->IsPoint() && taken.right->IsPoint()) {
    return IsOneKind(*taken.left, *taken.right) ? KELMO_POINT_UNIT : KELMO_DIFFERENT_KINDS;
  }
  const UnitRow& target = taken.left->IsPoint() ? DifferenceOf(units, *taken.left) : *taken.left;
  if (!IsOneKind(target, *taken.right)) {
    const bool isMirrored =
        taken.right->IsPoint() && KindOf(taken.right->difference) == KindOf(taken.left->code);
    return isMirrored ? KELMO_POINT_UNIT : KELMO_DIFFERENT_KINDS;
  }
  number = InLinearUnit(right.number, *taken.right, target);
  return KELMO_OK;
}

// KELMO_POINT_UNIT for all points.
kelmo_status TakeLinear(const UnitSet& units, const kelmo_quantity& quantity) noexcept {
  const UnitRow* unit = nullptr;
  const kelmo_status status = TakeUnit(units, quantity, unit);
  return status == KELMO_OK && unit->IsPoint() ? kelmo_status{KELMO_POINT_UNIT} : status;
}

// Number of quantities at the start that have the unit of the first one.
std::size_t RunLength(const kelmo_quantity* quantities, std::size_t count) noexcept {
  std::size_t length = 1;
  while (length < count && quantities[length].code == quantities[0].code) {
    ++length;
  }
  return length;
}

// Checks quantities with one unit: may they be converted to `target`? `length` becomes that of RunLength. It
// is counted here as well, because each pass over the quantities takes as long as half of the conversion.
kelmo_status CheckRun(const UnitSet& units, const kelmo_quantity* run, std::size_t count,
                      const UnitRow& target, std::size_t& length) noexcept {
  const std::int32_t code = run->code;
  std::uint32_t reserved = 0;
  bool isRelative = false;
  for (length = 0; length < count && run[length].code == code; ++length) {
    reserved |= run[length].reserved;
    isRelative |= run[length].relative_tolerance != 0;
  }
  const UnitRow* unit = nullptr;
  const kelmo_status status = reserved != 0 ? KELMO_INVALID_ARGUMENT : TakeUnit(units, *run, unit);
  if (status != KELMO_OK) {
    return status;
  }
  if (!IsOneKind(*unit, target)) {
    return KELMO_DIFFERENT_KINDS;
  }
  return unit->IsPoint() && isRelative ? KELMO_POINT_UNIT : KELMO_OK;
}

void ConvertRunOfPoints(const kelmo_quantity* run, std::size_t length, const UnitRow& from,
                        const UnitRow& to, kelmo_quantity* results) noexcept {
  const PointConversion points(from, to, length);
  std::array<double, PointConversion::kBlock> numbers;
  for (std::size_t begin = 0; begin < length; begin += numbers.size()) {
    const std::size_t count = std::min(numbers.size(), length - begin);
    for (std::size_t i = 0; i < count; ++i) {
      numbers[i] = run[begin + i].number;
    }
    points.Convert(numbers.data(), count, numbers.data());
    for (std::size_t i = 0; i < count; ++i) {
      const kelmo_quantity& point = run[begin + i];
      const double tolerance =
          from.factor.high * point.absolute_tolerance / to.factor.high + 0.0;  // -0 becomes 0
      results[begin + i] = {numbers[i], tolerance, point.relative_tolerance, to.code, 0};
    }
  }
}

// Precondition: CheckRun finds nothing.
void ConvertRun(const kelmo_quantity* run, std::size_t length, const UnitRow& from,
                const UnitRow& to, kelmo_quantity* results) noexcept {
  if (from.code == to.code) {
    if (run != results) {
      std::memcpy(results, run, length * sizeof *run);
    }
    return;
  }
  if (to.IsPoint()) {
    ConvertRunOfPoints(run, length, from, to, results);
    return;
  }
  const double factor = from.factor.high;
  const double divisor = to.factor.high;
  for (std::size_t i = 0; i < length; ++i) {
    // Number and tolerance by the same operations: compilers make one of two.
    const double number = factor * run[i].number / divisor + 0.0;  // -0 becomes 0
    const double tolerance = factor * run[i].absolute_tolerance / divisor + 0.0;
    results[i] = {number, tolerance, run[i].relative_tolerance, to.code, 0};
  }
}

}  // namespace

kelmo_status FindUnitOf(const UnitSet& units, const kelmo_quantity& quantity,
                        const UnitRow*& unit) noexcept {
  if (quantity.reserved != 0) {
    return KELMO_INVALID_ARGUMENT;
  }
  unit = units.Find(quantity.code);
  return unit != nullptr ? KELMO_OK : KELMO_UNKNOWN_UNIT;
}

kelmo_status TakeUnit(const UnitSet& units, const kelmo_quantity& quantity,
                      const UnitRow*& unit) noexcept {
  const kelmo_status status = FindUnitOf(units, quantity, unit);
  return status == KELMO_OK && unit->IsPoint() && quantity.relative_tolerance != 0
             ? kelmo_status{KELMO_POINT_UNIT}
             : status;
}

double BaseNumber(double number, const UnitRow& unit) noexcept {
  const double plain = unit.factor.high * number + unit.offset.high;
  if (!unit.IsPoint()) {
    // Arithmetic with the factor 0 of the first library gives NaN.
    return unit.factor.high == 0 ? std::numeric_limits<double>::quiet_NaN() : plain;
  }
  const double exact = MultiplyAdd(unit.factor, number, unit.offset);
  return std::isfinite(exact) ? exact : plain;
}

kelmo_status Add(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                 kelmo_quantity& result) noexcept {
  Operands taken;
  double summand = 0;
  kelmo_status status = TakeUnits(units, left, right, taken);
  status = status == KELMO_OK ? TakeSummand(units, taken, right, summand) : status;
  if (status == KELMO_OK) {
    result = WithNumber(left, summand + left.number);
  }
  return status;
}

kelmo_status Subtract(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                      kelmo_quantity& result) noexcept {
  Operands taken;
  double summand = 0;
  kelmo_status status = TakeUnits(units, left, right, taken);
  if (status == KELMO_OK && taken.left->IsPoint() && taken.right->IsPoint() &&
      IsOneKind(*taken.left, *taken.right)) {
    const std::int32_t code = taken.left->difference;
    result = WithNumber(left, left.number - InPointUnit(right.number, *taken.right, *taken.left));
    result.code = code;
    return KELMO_OK;
  }
  status = status == KELMO_OK ? TakeSummand(units, taken, right, summand) : status;
  if (status == KELMO_OK) {
    result = WithNumber(left, left.number - summand);
  }
  return status;
}

kelmo_status Multiply(const UnitSet& units, const kelmo_quantity& quantity, double factor,
                      kelmo_quantity& result) noexcept {
  const kelmo_status status = TakeLinear(units, quantity);
  if (status == KELMO_OK) {
    result = WithNumber(quantity, factor * quantity.number);
  }
  return status;
}

kelmo_status Divide(const UnitSet& units, const kelmo_quantity& quantity, double divisor,
                    kelmo_quantity& result) noexcept {
  const kelmo_status status = TakeLinear(units, quantity);
  if (status == KELMO_OK) {
    result = WithNumber(quantity, quantity.number / divisor);
  }
  return status;
}

kelmo_status RatioOf(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                     double& result) noexcept {
  Operands taken;
  const kelmo_status status = TakeUnits(units, left, right, taken);
  if (status != KELMO_OK) {
    return status;
  }
  if (!IsOneKind(*taken.left, *taken.right)) {
    return KELMO_DIFFERENT_KINDS;
  }
  if (taken.left->IsPoint()) {
    return KELMO_POINT_UNIT;
  }
  result = left.number / InLinearUnit(right.number, *taken.right, *taken.left);
  return KELMO_OK;
}

kelmo_status SumOf(const UnitSet& units, const kelmo_quantity* quantities, std::size_t count,
                   kelmo_quantity& result) noexcept {
  kelmo_status status = TakeLinear(units, *quantities);
  kelmo_quantity sum = *quantities;
  for (std::size_t i = 1; i < count && status == KELMO_OK; ++i) {
    status = Add(units, sum, quantities[i], sum);
  }
  if (status == KELMO_OK) {
    result = sum;
  }
  return status;
}

kelmo_status Compare(const UnitSet& units, const kelmo_quantity& left, const kelmo_quantity& right,
                     std::int32_t& result) noexcept {
  Operands taken;
  kelmo_status status = FindUnitOf(units, left, taken.left);
  status = status == KELMO_OK ? FindUnitOf(units, right, taken.right) : status;
  if (status != KELMO_OK) {
    return status;
  }
  if (!IsOneKind(*taken.left, *taken.right)) {
    return KELMO_DIFFERENT_KINDS;
  }
  const double first = BaseNumber(left.number, *taken.left);
  const double second = BaseNumber(right.number, *taken.right);
  if (std::isnan(first) || std::isnan(second)) {
    result = (std::isnan(first) ? 1 : 0) - (std::isnan(second) ? 1 : 0);
  } else {
    result = (first > second ? 1 : 0) - (first < second ? 1 : 0);
  }
  return KELMO_OK;
}

kelmo_status HashOf(const UnitSet& units, const kelmo_quantity& quantity,
                    std::uint64_t& result) noexcept {
  const UnitRow* unit = nullptr;
  const kelmo_status status = FindUnitOf(units, quantity, unit);
  if (status != KELMO_OK) {
    return status;
  }
  const double base = BaseNumber(quantity.number, *unit) + 0.0;  // -0 becomes 0
  std::uint64_t bits = 0;
  if (!std::isnan(base)) {
    std::memcpy(&bits, &base, sizeof bits);
  } else {
    bits = ~bits;
  }
  // Round numbers differ in their highest bits only: these must change the lowest ones.
  constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
  bits = (bits ^ static_cast<std::uint64_t>(KindOf(unit->code))) * kGoldenRatio;
  bits = (bits ^ (bits >> 32U)) * kGoldenRatio;
  result = bits ^ (bits >> 32U);
  return KELMO_OK;
}

kelmo_status Convert(const UnitSet& units, const kelmo_quantity* quantities, std::size_t count,
                     std::int32_t code, kelmo_quantity* results) noexcept {
  const UnitRow* const target = units.Find(code);
  if (target == nullptr) {
    return KELMO_UNKNOWN_UNIT;
  }
  std::size_t length = 0;
  for (std::size_t i = 0; i < count; i += length) {
    const kelmo_status status = CheckRun(units, quantities + i, count - i, *target, length);
    if (status != KELMO_OK) {
      return status;
    }
  }
  const bool isOneRun = length == count;
  for (std::size_t i = 0; i < count; i += length) {
    length = isOneRun ? count : RunLength(quantities + i, count - i);
    ConvertRun(quantities + i, length, *units.Find(quantities[i].code), *target, results + i);
  }
  return KELMO_OK;
}

kelmo_status ConvertNumbers(const UnitSet& units, std::int32_t from, std::int32_t to,
                            const double* numbers, std::size_t count, double* results) noexcept {
  const UnitRow* const source = units.Find(from);
  const UnitRow* const target = units.Find(to);
  if (source == nullptr || target == nullptr) {
    return KELMO_UNKNOWN_UNIT;
  }
  if (!IsOneKind(*source, *target)) {
    return KELMO_DIFFERENT_KINDS;
  }
  if (source == target) {
    if (numbers != results && count != 0) {
      std::memcpy(results, numbers, count * sizeof *numbers);
    }
  } else if (target->IsPoint()) {
    const PointConversion points(*source, *target, count);
    for (std::size_t i = 0; i < count; i += PointConversion::kBlock) {
      points.Convert(numbers + i, std::min(PointConversion::kBlock, count - i), results + i);
    }
  } else {
    const double factor = source->factor.high;
    const double divisor = target->factor.high;
    for (std::size_t i = 0; i < count; ++i) {
      results[i] = factor * numbers[i] / divisor + 0.0;
    }
  }
  return KELMO_OK;
}

}  // namespace KelmoLibs::Host
