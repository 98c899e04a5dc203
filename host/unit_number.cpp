#include "host/unit_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <system_error>

#include "host/powers_of_ten.h"
#include "text/ascii_digit.h"

namespace KelmoLibs::Host {
namespace {

// digits * 10^exponent, if that is all of the number.
struct Decimal {
  std::int64_t digits = 0;
  int exponent = 0;
};

// Nothing if the number has more than 18 digits or a large exponent.
std::optional<Decimal> SplitDecimal(std::string_view text) noexcept {
  constexpr std::int64_t kLimit = 100000000000000000;  // 10^17
  Decimal decimal;
  const bool isNegative = text.front() == '-';
  bool isFraction = false;
  std::size_t i = isNegative ? 1 : 0;
  for (; i < text.size() && text[i] != 'e' && text[i] != 'E'; ++i) {
    if (text[i] == '.') {
      isFraction = true;
      continue;
    }
    if (decimal.digits >= kLimit) {
      return std::nullopt;
    }
    decimal.digits = decimal.digits * 10 + (text[i] - '0');
    decimal.exponent -= isFraction ? 1 : 0;
  }
  if (decimal.digits == 0) {
    return Decimal();  // whatever its exponent is, which may be too large for an int
  }
  if (i < text.size()) {
    i += text[i + 1] == '+' ? 2 : 1;  // std::from_chars reads no plus
    int exponent = 0;
    std::from_chars(text.data() + i, text.data() + text.size(), exponent);
    decimal.exponent += exponent;
  }
  decimal.digits = isNegative ? -decimal.digits : decimal.digits;
  if (std::abs(decimal.exponent) >= static_cast<int>(kPowersOfTen.size())) {
    return std::nullopt;
  }
  return decimal;
}

// A decimal number without a fraction.
std::optional<DoubleDouble> ReadDecimal(std::string_view text) noexcept {
  const std::size_t first = !text.empty() && text.front() == '-' ? 1 : 0;
  if (first == text.size() || !(Localize::IsAsciiDigit(text[first]) || text[first] == '.')) {
    return std::nullopt;  // std::from_chars reads "inf" and "nan"
  }
  double nearest = 0;
  const char* const end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, nearest);
  if (read.ec != std::errc() || read.ptr != end) {
    return std::nullopt;
  }
  const auto decimal = SplitDecimal(text);
  if (!decimal) {
    return DoubleDouble{nearest, 0};
  }
  const auto rounded = static_cast<double>(decimal->digits);
  const auto rest = static_cast<double>(decimal->digits - static_cast<std::int64_t>(rounded));
  const DoubleDouble digits = {rounded, rest};
  const double power = kPowersOfTen[static_cast<std::size_t>(std::abs(decimal->exponent))];
  const DoubleDouble exact =
      decimal->exponent < 0 ? Quotient(digits, {power, 0}) : Product(digits, power);
  return DoubleDouble{nearest, (exact.high - nearest) + exact.low};
}

}  // namespace

std::optional<DoubleDouble> ReadUnitNumber(std::string_view text) noexcept {
  const std::size_t slash = text.find('/');
  const auto number = ReadDecimal(text.substr(0, slash));
  if (slash == std::string_view::npos || !number) {
    return number;
  }
  const auto divisor = ReadDecimal(text.substr(slash + 1));
  if (!divisor || divisor->high == 0) {
    return std::nullopt;
  }
  const DoubleDouble quotient = Quotient(*number, *divisor);
  const double plain = number->high / divisor->high;
  if (!std::isfinite(quotient.high)) {
    return std::isfinite(plain) ? std::optional(DoubleDouble{plain, 0}) : std::nullopt;
  }
  return quotient;
}

}  // namespace KelmoLibs::Host
