// The compiled plural rules beside the conditions of CLDR as texts, which are read here word by word.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "cldr/plural_rules.h"
#include "tests/support/read_file.h"

namespace KelmoLibs::Cldr {
namespace {

std::uint64_t ValueOf(char operand, const PluralOperands& number) {
  switch (operand) {
    case 'v':
      return number.v;
    case 'f':
      return number.f;
    case 't':
      return number.t;
    case 'e':
      return number.e;
    default:  // i, and n of an integer
      return number.i;
  }
}

// Whether `value` is in "11..14,20".
bool IsIn(std::uint64_t value, const std::string& ranges) {
  std::istringstream parts(ranges);
  for (std::string part; std::getline(parts, part, ',');) {
    const std::size_t dots = part.find("..");
    const std::uint64_t first = std::stoull(part.substr(0, dots));
    const std::uint64_t last =
        dots != std::string::npos ? std::stoull(part.substr(dots + 2)) : first;
    if (first <= value && value <= last) {
      return true;
    }
  }
  return false;
}

// Whether a condition such as "n % 10 = 1 and n % 100 != 11 or v = 2" is true. "or" binds weaker.
bool IsTrue(const std::string& condition, const PluralOperands& number) {
  std::istringstream words(condition);
  bool areAllTrue = true;
  for (std::string operand; words >> operand;) {
    if (operand == "or") {
      if (areAllTrue) {
        return true;
      }
      areAllTrue = true;
    } else if (operand != "and") {
      std::uint64_t value = ValueOf(operand[0], number);
      std::string sign;
      std::string ranges;
      words >> sign;
      if (sign == "%") {
        std::uint64_t modulus = 0;
        words >> modulus >> sign;
        value %= modulus;
      }
      words >> ranges;
      const bool isInteger = operand != "n" || number.t == 0;
      areAllTrue = areAllTrue && (isInteger && IsIn(value, ranges)) == (sign == "=");
    }
  }
  return areAllTrue;
}

// Numbers of all kinds that the conditions tell apart.
std::vector<PluralOperands> Numbers() {
  std::vector<std::uint64_t> integers;
  for (std::uint64_t i = 0; i <= 130; ++i) {
    integers.push_back(i);
  }
  for (std::uint64_t power = 1000; power <= 10000000; power *= 10) {
    for (std::uint64_t i = 1; i <= 25; ++i) {
      integers.push_back(power * i);
      integers.push_back(power * i + 1);
    }
  }
  std::vector<PluralOperands> numbers;
  for (const std::uint64_t integer : integers) {
    for (const char* const decimals : {"", ".0", ".1", ".2", ".4", ".5", ".9", ".00", ".01", ".10",
                                       ".11", ".12", ".14", ".20", ".22", ".001", ".011"}) {
      numbers.push_back(OperandsOf(std::to_string(integer) + decimals));
    }
    PluralOperands number = OperandsOf(std::to_string(integer));
    for (const unsigned exponent : {3U, 6U}) {  // of "2 million"
      number.e = exponent;
      numbers.push_back(number);
    }
  }
  return numbers;
}

TEST(PluralConditions, AreThoseOfCldr) {
  std::map<std::string, std::vector<std::pair<PluralCategory, std::string>>> languages;
  std::istringstream file(ReadProjectFile("tests/data/cldr/plural_conditions.txt"));
  std::string language;
  std::string category;
  for (std::string condition; file >> language >> category && std::getline(file, condition);) {
    languages[language].emplace_back(PluralCategoryOf(category).value(), condition);
  }
  EXPECT_GT(languages.size(), 30U);
  const std::vector<PluralOperands> numbers = Numbers();
  for (const auto& [id, conditions] : languages) {
    const PluralRules& rules = PluralRulesOf(id);
    std::size_t differences = 0;
    for (const PluralOperands& number : numbers) {
      PluralCategory expected = PluralCategory::kOther;
      for (const auto& [of, condition] : conditions) {
        if (IsTrue(condition, number)) {
          expected = of;
          break;
        }
      }
      differences += rules.categoryOf(number) != expected ? 1 : 0;
    }
    EXPECT_EQ(differences, 0U) << id;
  }
}

}  // namespace
}  // namespace KelmoLibs::Cldr
