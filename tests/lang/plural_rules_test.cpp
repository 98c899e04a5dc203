// The plural forms of numbers, beside all samples that CLDR gives for its rules.
#include "lang/unicode/plural_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

#include "tests/support/read_file.h"

namespace KelmoLibs::Lang {
namespace {

// The operands of "1.50" or, with an exponent, of "1.5c6", which is 1500000.
PluralOperands OperandsOf(const std::string& number) {
  PluralOperands operands;
  const std::size_t exponent = number.find('c');
  std::string digits = number.substr(0, exponent);
  std::size_t dot = digits.find('.');
  std::string decimals = dot != std::string::npos ? digits.substr(dot + 1) : "";
  digits.resize(std::min(dot, digits.size()));
  if (exponent != std::string::npos) {
    operands.e = static_cast<unsigned>(std::stoul(number.substr(exponent + 1)));
    decimals.resize(std::max<std::size_t>(decimals.size(), operands.e), '0');
    digits += decimals.substr(0, operands.e);
    decimals = decimals.substr(operands.e);
  }
  operands.i = std::stoull(digits);
  operands.v = static_cast<unsigned>(decimals.size());
  operands.f = decimals.empty() ? 0 : std::stoull(decimals);
  while (!decimals.empty() && decimals.back() == '0') {
    decimals.pop_back();
  }
  operands.w = static_cast<unsigned>(decimals.size());
  operands.t = decimals.empty() ? 0 : std::stoull(decimals);
  return operands;
}

std::string CategoryName(const std::string& language, const std::string& number) {
  const PluralRules* const rules = FindPluralRules(language, "");
  return rules == nullptr ? "no rules"
                          : std::string(PluralCategoryName(CategoryOf(*rules, OperandsOf(number))));
}

std::string Next(const std::string& number) {
  const std::size_t dot = number.find('.');
  if (dot == std::string::npos) {
    return std::to_string(std::stoul(number) + 1);
  }
  const std::size_t decimals = number.size() - dot - 1;
  std::ostringstream next;
  next.precision(static_cast<std::streamsize>(decimals));
  next << std::fixed << std::stod(number) + std::pow(10, -static_cast<double>(decimals));
  return next.str();
}

TEST(PluralRules, GiveTheSamplesOfCldr) {
  std::istringstream file(ReadProjectFile("tests/data/lang/plural_samples.txt"));
  std::size_t numbers = 0;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string language;
    std::string category;
    words >> language >> category;
    for (std::string word; words >> word;) {
      const std::size_t range = word.find('~');
      std::string number = word.substr(0, range);
      const std::string last = range != std::string::npos ? word.substr(range + 1) : number;
      EXPECT_EQ(CategoryName(language, number), category) << language << ' ' << number;
      for (++numbers; number != last; ++numbers) {
        number = Next(number);
        EXPECT_EQ(CategoryName(language, number), category) << language << ' ' << number;
      }
    }
  }
  EXPECT_GT(numbers, 2000U);
}

TEST(PluralRules, BelongToLanguages) {
  struct Row {
    const char* name;
    const char* language;
    const char* region;
    const char* categoryOfZero;
  };
  const Row rows[] = {
      {"Portuguese of Brazil counts 0 as 1", "pt", "BR", "one"},
      {"Portuguese of Portugal does not", "pt", "PT", "other"},
      {"Arabic has a form for 0", "ar", "", "zero"},
      {"Chinese has one form", "zh", "TW", "other"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const PluralRules* const rules = FindPluralRules(row.language, row.region);
    ASSERT_NE(rules, nullptr);
    EXPECT_EQ(PluralCategoryName(CategoryOf(*rules, {})), row.categoryOfZero);
  }
  EXPECT_EQ(FindPluralRules("tlh", ""), nullptr);
  EXPECT_EQ(FindPluralRules("", ""), nullptr);
}

TEST(PluralRules, GiveSmallestNumbers) {
  const PluralRules* const russian = FindPluralRules("ru", "");
  ASSERT_NE(russian, nullptr);
  EXPECT_EQ(SmallestOf(*russian, PluralCategory::kFew, 4), (std::vector<unsigned>{2, 3, 4, 22}));
  EXPECT_EQ(SmallestOf(*russian, PluralCategory::kOther, 4), std::vector<unsigned>{});
  EXPECT_FALSE(russian->Has(PluralCategory::kTwo));
}

TEST(PluralRules, KnowFormsOfOneNumber) {
  struct Row {
    const char* name;
    const char* language;
    PluralCategory category;
    bool isForOneNumber;
  };
  const Row rows[] = {
      {"1", "en", PluralCategory::kOne, true},
      {"0 and 1", "fr", PluralCategory::kOne, true},
      {"1, 21, 31", "ru", PluralCategory::kOne, false},
      {"1, 101", "sl", PluralCategory::kOne, false},
      {"2, 102", "sl", PluralCategory::kTwo, false},
      {"2", "ar", PluralCategory::kTwo, true},
      {"0", "ar", PluralCategory::kZero, true},
      {"0, 10, 11", "lv", PluralCategory::kZero, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(IsForOneNumber(*FindPluralRules(row.language, ""), row.category), row.isForOneNumber)
        << row.language << ' ' << row.name;
  }
}

TEST(PluralRules, GiveSamplesForPeople) {
  EXPECT_EQ(SamplesOf(*FindPluralRules("pl", ""), PluralCategory::kMany), "0, 5, 6, 7");
  EXPECT_EQ(SamplesOf(*FindPluralRules("pl", ""), PluralCategory::kOther), "1.5");
}

}  // namespace
}  // namespace KelmoLibs::Lang
