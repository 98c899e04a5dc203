#include <cfloat>
#include <stdexcept>

#include "kelmo_localizer.h"
#include "phyval/rounding.h"
#include "phyval/unit_catalogue.h"
#include "platform/files.h"

namespace KelmoLibs::Localize::Phyval {

static_assert(FLT_EVAL_METHOD == 0, "each operation rounds to double, or last bits differ");

// The exported members are fixed as they are: operands by value, no const, no noexcept. Here the
// parameters cannot have the names of the fields, as they have in the header: compilers warn of it.
// NOLINTBEGIN(performance-unnecessary-value-param, readability-inconsistent-declaration-parameter-name)
// NOLINTBEGIN(readability-make-member-function-const)

namespace {

// What the members share. Not the exported members themselves: those take copies, and on Linux each
// call of one would look for another library that might have it.

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

// The product first, also between values of one unit: another order gives other last digits.
double InUnitOfFactor(const Double& number, double factor) noexcept {
  return number.unit->factor * number.value / factor;
}

// `right` in the unit of `left`, if both are of one quantity.
double Converted(const Double& right, const Double& left) {
  RequireOneQuantity(left, right);
  return InUnitOfFactor(right, left.unit->factor);
}

Double ConvertedTo(double absolute, double relative, int code, const Double& number) {
  Double target(0.0, absolute, relative, code);
  target.value = Converted(number, target) + 0.0;  // makes 0 of -0
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

// Results are built by code: their unit is the first row with it, whichever row the operand has.

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

// A value that has the unit already keeps its own tolerances.
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
