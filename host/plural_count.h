// A number that chooses the plural form of a text.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "cldr/plural_rules.h"
#include "host/argument.h"
#include "host/number_spec.h"

namespace KelmoLibs::Host {

/// Whether a number can have this text as PluralCount::Exact. "1.0" and "01" are no such texts.
bool IsExactNumber(std::string_view text) noexcept;

class PluralCount {
 public:
  /// Precondition: `number` is not a text.
  explicit PluralCount(const Argument& number) noexcept;

  /// Infinity and what is not a number have the category `other`.
  Cldr::PluralCategory CategoryIn(const Cldr::PluralRules& rules) const noexcept {
    return isFinite_ ? rules.categoryOf(operands_) : Cldr::PluralCategory::kOther;
  }

  /// The number as a key names it: "5", "-1", "1.5"; without zeroes at its end, so that 1.0 is "1".
  /// Empty if it is not finite.
  std::string_view Exact() const noexcept { return {text_.data(), size_}; }

 private:
  template <class... Number>
  void Write(Number... number) noexcept;  // with the arguments of std::to_chars behind the buffer

  // A double has at most 309 digits before its point, and the shortest form at most 324 behind it.
  static constexpr std::size_t kLongestNumber = 1 + 309 + 1 + 324;

  Cldr::PluralOperands operands_;
  bool isFinite_ = true;
  std::array<char, kLongestNumber> text_;
  std::size_t size_ = 0;
};

}  // namespace KelmoLibs::Host
