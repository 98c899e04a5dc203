#include "host/plural_count.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <variant>

namespace KelmoLibs::Host {

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
