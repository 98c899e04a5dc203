#include <cfloat>
#include <stdexcept>

#include "kelmo_localizer.h"
#include "phyval/rounding.h"
#include "phyval/unit_catalogue.h"
#include "platform/locale.h"

namespace KelmoLibs::Localize::Phyval {

static_assert(FLT_EVAL_METHOD == 0, "each operation must round to double, or the last bits differ");

// The signatures of the exported members are fixed: operands by value, no const, no noexcept. The
// parameters do not have the names of the fields, as in the header: compilers would warn that they
// hide the fields.
// NOLINTBEGIN(performance-unnecessary-value-param, readability-inconsistent-declaration-parameter-name)
// NOLINTBEGIN(readability-make-member-function-const)

namespace {

// Functions that the members share. The members do not call each other: they take copies of their
// operands.

void RequireUnit(const ValueType* unit) {
  if (unit == nullptr) {
    throw std::invalid_argument("The physical dimension of the number is not defined.");
  }
}

constexpr int QuantityOf(int code) noexcept { return code < 100 ? code : code / 1000; }

void RequireOneQuantity(const Double& left, const Double& right) {
  RequireUnit(left.unit);
  RequireUnit(right.unit);
  if (left.unit != right.unit && QuantityOf(left.unit->code) != QuantityOf(right.unit->code)) {
    throw std::invalid_argument("Codes of physical quantities do not match.");
  }
}

// Multiplies first, also if both units are the same: another order gives other last digits.
double InUnitOfFactor(const Double& number, double factor) noexcept {
  return number.unit->factor * number.value / factor;
}

// The number of `right` in the unit of `left`. Throws if the quantities differ.
double Converted(const Double& right, const Double& left) {
  RequireOneQuantity(left, right);
  return InUnitOfFactor(right, left.unit->factor);
}

Double ConvertedTo(double absolute, double relative, int code, const Double& number) {
  Double target(0.0, absolute, relative, code);
  target.value = Converted(number, target) + 0.0;  // turns -0 into 0
  return target;
}

double ToleranceOf(const Double& number) noexcept {
  return number.relTolerance * number.value + number.absTolerance;
}

RoundedNumber Rounded(const Double& number) noexcept {
  return RoundToTolerance(number.value, ToleranceOf(number));
}

}  // namespace

Double::Double(double number, double absolute, double relative, int code)
    : value(number),
      absTolerance(absolute),
      relTolerance(relative),
      unit(FindUnit(unitCatalogue, code)) {}

Double::Double(double number, double absolute, double relative, const wchar_t* text)
    : value(number),
      absTolerance(absolute),
      relTolerance(relative),
      unit(FindUnit(unitCatalogue, text)) {}

Double& Double::operator=(const Double&) = default;

// Results are constructed by code, so their unit is the first row with that code, even if the
// operand has another row.

Double Double::operator+(Double other) {
  const double converted = Converted(other, *this);
  return {converted + value, absTolerance, relTolerance, unit->code};
}

Double Double::operator-(Double other) {
  const double converted = Converted(other, *this);
  return {value - converted, absTolerance, relTolerance, unit->code};
}

Double Double::operator*(double k) {
  RequireUnit(unit);
  return {k * value, absTolerance, relTolerance, unit->code};
}

Double Double::operator/(double k) {
  RequireUnit(unit);
  return {value / k, absTolerance, relTolerance, unit->code};
}

bool Double::operator==(Double other) { return value == Converted(other, *this); }

bool Double::operator<(Double other) { return value < Converted(other, *this); }

bool Double::operator>(Double other) { return value > Converted(other, *this); }

// A value that already has the unit keeps its tolerances.
Double Double::ConvertTo(double absolute, double relative, int code) {
  if (code == unit->code) {
    return *this;
  }
  return ConvertedTo(absolute, relative, code, *this);
}

double Double::Return() { return Rounded(*this).number; }

std::wstring Double::to_string() {
  const RoundedNumber rounded = Rounded(*this);
  return FormatUnderUserLocale(rounded.number, rounded.decimals);
}

std::wstring Double::to_string(wchar_t separator) { return FixedText(Rounded(*this), separator); }

double Double::T() { return ToleranceOf(*this); }

double Double::Ts(double x) { return ToleranceOf(*this) * x; }

double Double::Vs(double x) { return InUnitOfFactor(*this, x); }

void Double::CheckCorrect() { RequireUnit(unit); }

void Double::CheckCorrect(Double other) { RequireOneQuantity(*this, other); }

// NOLINTEND(readability-make-member-function-const)
// NOLINTEND(performance-unnecessary-value-param, readability-inconsistent-declaration-parameter-name)

}  // namespace KelmoLibs::Localize::Phyval
