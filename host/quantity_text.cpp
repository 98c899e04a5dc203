#include "host/quantity_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "host/argument.h"
#include "host/number_text.h"
#include "host/quantity.h"
#include "phyval/rounding.h"

namespace KelmoLibs::Host {
namespace {

constexpr std::string_view kNoBreakSpace = "\u00A0";

// The digits of a number.
struct Digits {
  double number;
  int decimals;    // kShortest: as many as it needs
  double integer;  // `number` times 10^decimals; NaN if that is not known
};

constexpr double kNoInteger = std::numeric_limits<double>::quiet_NaN();

// Above it, and below its reciprocal, the scale of the first library overflows.
constexpr double kLargestTolerance = 1e9;

// The largest power of ten that is not above a tolerance, which a conversion may have rounded; 0 if
// there is none in the scale.
double PowerOfTenBelow(double tolerance) noexcept {
  constexpr std::array<double, 19> kScale = {1e9,  1e8,  1e7,  1e6,  1e5,  1e4,  1e3,
                                             1e2,  1e1,  1e0,  1e-1, 1e-2, 1e-3, 1e-4,
                                             1e-5, 1e-6, 1e-7, 1e-8, 1e-9};
  constexpr double kRounding = 1 + 1e-12;
  const auto* const found = std::find_if(
      kScale.begin(), kScale.end(), [=](double power) { return power <= tolerance * kRounding; });
  return found != kScale.end() ? *found : 0;
}

// Rounds as the first library does, where its loops end and its scale does not overflow.
kelmo_status Round(const kelmo_quantity& quantity, bool isFine, Digits& result) noexcept {
  if (!std::isfinite(quantity.number)) {
    result = {quantity.number, kShortest, kNoInteger};
    return KELMO_OK;
  }
  const double given = quantity.relative_tolerance * quantity.number + quantity.absolute_tolerance;
  const double tolerance = isFine && given <= kLargestTolerance ? PowerOfTenBelow(given) : given;
  if (!(tolerance > 0 && tolerance <= kLargestTolerance)) {
    return KELMO_CANNOT_ROUND;
  }
  const auto rounded = Localize::Phyval::RoundToTolerance(quantity.number, tolerance);
  if (!std::isfinite(
          rounded.integer)) {  // the scale, or its product with the number, has overflowed
    return KELMO_CANNOT_ROUND;
  }
  result = {rounded.number, rounded.decimals, rounded.integer};
  return KELMO_OK;
}

// Signs that stand at the number.
bool StandsAtNumber(std::string_view symbol) noexcept {
  return symbol == "\u00B0" || symbol == "\u2032" || symbol == "\u2033";
}

void WriteDigits(const Digits& digits, const NumberSpec* spec, const Cldr::NumberFormat& format,
                 TextSink& sink) noexcept {
  if (spec == nullptr && std::abs(digits.integer) < kDecimalLimit) {
    WriteDecimal(digits.integer, digits.decimals, format, sink);
    return;
  }
  Argument number;
  number.value = Argument::Value(digits.number);
  number.decimals = digits.decimals;
  WriteNumber(number, spec != nullptr ? *spec : NumberSpec(), format, sink);
}

void WriteUnit(const UnitLabel& label, const QuantityStyle& style, TextSink& sink) noexcept {
  if (style.isNumber) {
    return;
  }
  const std::string_view text = style.hasName && !label.name.empty() ? label.name : label.symbol;
  if (!StandsAtNumber(text)) {
    sink.Append(kNoBreakSpace);
  }
  sink.Append(text);
}

}  // namespace

kelmo_status WriteQuantity(const UnitSet& units, const LanguageChain& languages,
                           const kelmo_quantity& quantity, const QuantityStyle& style,
                           const Cldr::NumberFormat& format, TextSink& sink) noexcept {
  const UnitRow* unit = nullptr;
  if (const kelmo_status status = TakeUnit(units, quantity, unit); status != KELMO_OK) {
    return status;
  }
  Digits digits = {quantity.number, kShortest, kNoInteger};
  if (style.spec == nullptr) {
    const kelmo_status status = Round(quantity, style.isFine, digits);
    if (status != KELMO_OK && !style.hasAllDigits) {
      return status;
    }
  }
  WriteDigits(digits, style.spec, format, sink);
  WriteUnit(units.LabelOf(*unit, languages), style, sink);
  return KELMO_OK;
}

kelmo_status RoundQuantity(const UnitSet& units, const kelmo_quantity& quantity,
                           double& result) noexcept {
  const UnitRow* unit = nullptr;
  kelmo_status status = TakeUnit(units, quantity, unit);
  Digits digits = {};
  status = status == KELMO_OK ? Round(quantity, false, digits) : status;
  if (status == KELMO_OK) {
    result = digits.number;
  }
  return status;
}

}  // namespace KelmoLibs::Host
