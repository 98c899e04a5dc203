#include "lang/unicode/plural_samples.h"

namespace KelmoLibs::Lang {
namespace {

PluralCategory CategoryOf(const PluralRules& rules, unsigned number) noexcept {
  Cldr::PluralOperands operands;
  operands.i = number;
  return rules.categoryOf(operands);
}

}  // namespace

std::vector<unsigned> SmallestOf(const PluralRules& rules, PluralCategory category,
                                 std::size_t count) {
  constexpr unsigned kEnd = 1000;
  std::vector<unsigned> smallest;
  for (unsigned number = 0; number < kEnd && smallest.size() < count; ++number) {
    if (CategoryOf(rules, number) == category) {
      smallest.push_back(number);
    }
  }
  return smallest;
}

std::string SamplesOf(const PluralRules& rules, PluralCategory category) {
  constexpr std::size_t kSamples = 4;
  std::string samples;
  for (const unsigned number : SmallestOf(rules, category, kSamples)) {
    samples += samples.empty() ? "" : ", ";
    samples += std::to_string(number);
  }
  return samples.empty() ? "1.5" : samples;
}

bool IsForOneNumber(const PluralRules& rules, PluralCategory category) noexcept {
  constexpr unsigned kEnd = 103;  // 101 and 102 are the second numbers of Slovenian forms
  const auto itsNumber = static_cast<unsigned>(category);
  for (unsigned number = 0; number < kEnd; ++number) {
    const bool isItsNumber =
        number == itsNumber || (number == 0 && category == PluralCategory::kOne);
    if (!isItsNumber && CategoryOf(rules, number) == category) {
      return false;
    }
  }
  return true;
}

}  // namespace KelmoLibs::Lang
