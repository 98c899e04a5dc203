// Evaluates the conditions of CLDR, such as "v = 0 and i % 10 = 2..4 and i % 100 != 12..14".
// tests/lang/plural_rules_test.cpp compares the result with all numbers that CLDR gives as samples.
#include "lang/unicode/plural_rules.h"

#include <algorithm>
#include <string>

#include "lang/unicode/plural_table.h"

namespace KelmoLibs::Lang {
namespace {

constexpr std::array<std::string_view, kPluralCategoryCount> kNames = {"zero", "one",  "two",
                                                                       "few",  "many", "other"};

// Reads one condition from left to right. The conditions are those of the table, so none is wrong.
class Condition {
 public:
  Condition(std::string_view text, const PluralOperands& number) noexcept
      : rest_(text), number_(number) {}

  // Alternatives with "or" of relations with "and".
  bool IsTrue() noexcept {
    bool isTrue = false;
    do {
      bool areAllTrue = true;
      do {
        areAllTrue = Relation() && areAllTrue;
      } while (Skip("and"));
      isTrue = isTrue || areAllTrue;
    } while (Skip("or"));
    return isTrue;
  }

 private:
  // Such as "i % 100 != 12..14,20".
  bool Relation() noexcept {
    const char operand = rest_.front();
    rest_.remove_prefix(1);
    std::uint64_t value = ValueOf(operand);
    SkipBlanks();
    if (Skip("%")) {
      value %= Number();
      SkipBlanks();
    }
    const bool isNegated = Skip("!=");
    if (!isNegated) {
      Skip("=");
    }
    bool isInRange = false;
    do {
      const std::uint64_t first = Number();
      const std::uint64_t last = Skip("..") ? Number() : first;
      isInRange = isInRange || (first <= value && value <= last);
    } while (Skip(","));
    SkipBlanks();
    if (operand == 'n' && number_.t != 0) {
      isInRange = false;  // the ranges are integers, and the number is none
    }
    return isInRange != isNegated;
  }

  std::uint64_t ValueOf(char operand) const noexcept {
    switch (operand) {
      case 'v':
        return number_.v;
      case 'w':
        return number_.w;
      case 'f':
        return number_.f;
      case 't':
        return number_.t;
      case 'c':
      case 'e':
        return number_.e;
      default:  // i, and n of an integer
        return number_.i;
    }
  }

  std::uint64_t Number() noexcept {
    constexpr unsigned kBase = 10;
    std::uint64_t number = 0;
    while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
      number = number * kBase + static_cast<unsigned>(rest_.front() - '0');
      rest_.remove_prefix(1);
    }
    return number;
  }

  bool Skip(std::string_view sign) noexcept {
    if (rest_.substr(0, sign.size()) != sign) {
      return false;
    }
    rest_.remove_prefix(sign.size());
    SkipBlanks();
    return true;
  }

  void SkipBlanks() noexcept {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
  }

  std::string_view rest_;
  const PluralOperands& number_;
};

const PluralRules* FindByName(const std::string& name) noexcept {
  const auto* const found =
      std::find_if(std::begin(kPluralTable), std::end(kPluralTable), [&](const PluralRules& rules) {
        return rules.languages.find(name) != std::string_view::npos;
      });
  return found != std::end(kPluralTable) ? found : nullptr;
}

}  // namespace

std::string_view PluralCategoryName(PluralCategory category) noexcept {
  return kNames[static_cast<std::size_t>(category)];
}

std::optional<PluralCategory> PluralCategoryOf(std::string_view name) noexcept {
  const auto* const found = std::find(kNames.begin(), kNames.end(), name);
  return found != kNames.end() ? std::optional(static_cast<PluralCategory>(found - kNames.begin()))
                               : std::nullopt;
}

const PluralRules* FindPluralRules(std::string_view language, std::string_view region) {
  const std::string name = " " + std::string(language);
  const PluralRules* const ofRegion =
      region.empty() ? nullptr : FindByName(name + "_" + std::string(region) + " ");
  return ofRegion != nullptr ? ofRegion : FindByName(name + " ");
}

PluralCategory CategoryOf(const PluralRules& rules, const PluralOperands& number) noexcept {
  for (std::size_t i = 0; i < rules.conditions.size(); ++i) {
    if (!rules.conditions[i].empty() && Condition(rules.conditions[i], number).IsTrue()) {
      return static_cast<PluralCategory>(i);
    }
  }
  return PluralCategory::kOther;
}

std::vector<unsigned> SmallestOf(const PluralRules& rules, PluralCategory category,
                                 std::size_t count) {
  constexpr unsigned kEnd = 1000;
  std::vector<unsigned> smallest;
  for (unsigned number = 0; number < kEnd && smallest.size() < count; ++number) {
    PluralOperands operands;
    operands.i = number;
    if (CategoryOf(rules, operands) == category) {
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
    PluralOperands operands;
    operands.i = number;
    if (!isItsNumber && CategoryOf(rules, operands) == category) {
      return false;
    }
  }
  return true;
}

}  // namespace KelmoLibs::Lang
