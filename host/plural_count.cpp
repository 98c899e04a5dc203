#include "host/plural_count.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <variant>

namespace KelmoLibs::Host {

bool IsExactNumber(std::string_view text) noexcept {
  constexpr std::string_view kDigits = "0123456789";
  const bool isNegative = !text.empty() && text.front() == '-';
  text.remove_prefix(isNegative ? 1 : 0);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view integer = text.substr(0, point);
  const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
  if (integer.empty() || integer.find_first_not_of(kDigits) != std::string_view::npos ||
      fraction.find_first_not_of(kDigits) != std::string_view::npos) {
    return false;
  }
  if (point != text.size()) {
    return (integer.size() == 1 || integer.front() != '0') && !fraction.empty() &&
           fraction.back() != '0';
  }
  return integer == "0" ? !isNegative : integer.front() != '0';
}

// NOLINTNEXTLINE(*-member-init): Write sets what Exact shows of the buffer
PluralCount::PluralCount(const Argument& number) noexcept {
  if (const auto* const integer = std::get_if<std::int64_t>(&number.value)) {
    const auto bits = static_cast<std::uint64_t>(*integer);
    operands_.i = *integer < 0 ? 0 - bits : bits;
    Write(*integer);
    return;
  }
  if (const auto* const integer = std::get_if<std::uint64_t>(&number.value)) {
    operands_.i = *integer;
    Write(*integer);
    return;
  }
  const double value = *std::get_if<double>(&number.value);
  if (!std::isfinite(value)) {
    isFinite_ = false;
    return;
  }
  constexpr auto kFixed = std::chars_format::fixed;
  if (number.decimals == kShortest && number.isFloat) {
    Write(static_cast<float>(value), kFixed);
  } else if (number.decimals == kShortest) {
    Write(value, kFixed);
  } else {
    Write(value, kFixed, number.decimals);
  }
  operands_ = Cldr::OperandsOf(Exact());
  if (Exact().find('.') != std::string_view::npos) {
    size_ = Exact().find_last_not_of('0') + 1;
    size_ -= Exact().back() == '.' ? 1 : 0;
  }
  if (Exact() == "-0") {
    text_[0] = '0';
    size_ = 1;
  }
}

template <class... Number>
void PluralCount::Write(Number... number) noexcept {
  char* const begin = text_.data();
  size_ =
      static_cast<std::size_t>(std::to_chars(begin, begin + text_.size(), number...).ptr - begin);
}

}  // namespace KelmoLibs::Host
