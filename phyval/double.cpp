#include <cfloat>
#include <stdexcept>

#include "frame/platform.h"
#include "kelmo_localizer.h"
#include "phyval/rounding.h"
#include "phyval/unit_catalogue.h"

namespace KelmoLibs::Localize::Phyval {

static_assert(FLT_EVAL_METHOD == 0, "each operation rounds to double, or last bits differ");

// The exported members are fixed as they are: operands by value, no const, no noexcept. Here the
// parameters cannot have the names of the fields, as they have in the header: compilers warn of it.
// NOLINTBEGIN(performance-unnecessary-value-param, readability-inconsistent-declaration-parameter-name)
// NOLINTBEGIN(readability-make-member-function-const)

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

// Hosts find null in the memory of a value that has gone. A compiler may drop what is stored into
// an object at the end of its life, unless the store is volatile.
Double::~Double() { static_cast<ValueType* volatile&>(unit) = nullptr; }

// Results are built by code: their unit is the first row with it, whichever row the operand has.

Double Double::operator+(Double other) {
  CheckCorrect(other);
  return {other.Vs(unit->factor) + value, absTolerance, relTolerance, unit->code};
}

Double Double::operator-(Double other) {
  CheckCorrect(other);
  return {value - other.Vs(unit->factor), absTolerance, relTolerance, unit->code};
}

Double Double::operator*(double k) {
  CheckCorrect();
  return {k * value, absTolerance, relTolerance, unit->code};
}

Double Double::operator/(double k) {
  CheckCorrect();
  return {value / k, absTolerance, relTolerance, unit->code};
}

bool Double::operator==(Double other) {
  CheckCorrect(other);
  return value == other.Vs(unit->factor);
}

bool Double::operator<(Double other) {
  CheckCorrect(other);
  return value < other.Vs(unit->factor);
}

bool Double::operator>(Double other) {
  CheckCorrect(other);
  return value > other.Vs(unit->factor);
}

// A value that has the unit already keeps its own tolerances.
Double Double::ConvertTo(double absolute, double relative, int code) {
  if (code == unit->code) {
    return *this;
  }
  Double target(0.0, absolute, relative, code);
  return target + *this;
}

double Double::Return() { return RoundToTolerance(value, T()).number; }

std::wstring Double::to_string() {
  const auto [number, decimals] = RoundToTolerance(value, T());
  return FormatUnderUserLocale(number, decimals);
}

std::wstring Double::to_string(wchar_t separator) {
  const auto [number, decimals] = RoundToTolerance(value, T());
  return FixedText(number, decimals, separator);
}

double Double::T() { return relTolerance * value + absTolerance; }

double Double::Ts(double x) { return T() * x; }

// The product first, also between values of one unit: another order gives other last digits.
double Double::Vs(double x) { return unit->factor * value / x; }

void Double::CheckCorrect() {
  if (unit == nullptr) {
    throw std::invalid_argument("The physical dimension of the number is not defined.");
  }
}

void Double::CheckCorrect(Double other) {
  CheckCorrect();
  other.CheckCorrect();
  if (unit->GetStype() != other.unit->GetStype()) {
    throw std::invalid_argument("Codes of physical quantities do not match.");
  }
}

// NOLINTEND(readability-make-member-function-const)
// NOLINTEND(performance-unnecessary-value-param, readability-inconsistent-declaration-parameter-name)

}  // namespace KelmoLibs::Localize::Phyval
