// The plural forms of numbers, beside all samples that CLDR gives for its rules.
#include "cldr/plural_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/support/read_file.h"

namespace KelmoLibs::Cldr {
namespace {

// The operands of "1.50" or, with an exponent, of "1.5c6", which is 1500000.
PluralOperands OperandsOfSample(const std::string& sample) {
  const std::size_t c = sample.find('c');
  if (c == std::string::npos) {
    return OperandsOf(sample);
  }
  const unsigned exponent = static_cast<unsigned>(std::stoul(sample.substr(c + 1)));
  const std::size_t dot = std::min(sample.find('.'), c);
  std::string decimals = sample.substr(std::min(dot + 1, c), c - std::min(dot + 1, c));
  decimals.resize(std::max<std::size_t>(decimals.size(), exponent), '0');
  PluralOperands operands = OperandsOf(sample.substr(0, dot) + decimals.substr(0, exponent) + '.' +
                                       decimals.substr(exponent));
  operands.e = exponent;
  return operands;
}

std::string CategoryName(const std::string& language, const std::string& number) {
  const PluralRules* const rules = FindPluralRules(language, "");
  return rules == nullptr
             ? "no rules"
             : std::string(PluralCategoryName(rules->categoryOf(OperandsOfSample(number))));
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
  std::istringstream file(ReadProjectFile("tests/data/cldr/plural_samples.txt"));
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
      {"a region that is none", "pt", "long", "one"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const PluralRules* const rules = FindPluralRules(row.language, row.region);
    ASSERT_NE(rules, nullptr);
    EXPECT_EQ(PluralCategoryName(rules->categoryOf({})), row.categoryOfZero);
  }
  for (const char* const unknown :
       {"tlh", "", "d", "de en", "de\ten", "d{", "abcdefghi", "pt_PT"}) {
    EXPECT_EQ(FindPluralRules(unknown, ""), nullptr) << unknown;
  }
}

// Such as "it pt_PT: one many".
std::string RulesOfId(std::string_view id) {
  const PluralRules& rules = PluralRulesOf(id);
  std::string text(rules.languages);
  for (std::size_t i = 0; i + 1 < kPluralCategoryCount; ++i) {
    const auto category = static_cast<PluralCategory>(i);
    if (rules.Has(category)) {
      text += std::string(PluralCategoryName(category)) + ' ';
    }
  }
  return text;
}

TEST(PluralRules, AreFoundByTheIdOfALanguage) {
  const std::string portuguese = " pt one many ";
  const std::string european = " it pt_PT one many ";
  const std::string onlyOther;
  struct Row {
    const char* name;
    const char* id;
    std::string rules;
  };
  const Row rows[] = {
      {"language", "pt", portuguese},
      {"region without own rules", "pt-BR", portuguese},
      {"region with own rules", "pt-PT", european},
      {"underscore", "pt_PT", european},
      {"upper case", "PT-PT", european},
      {"lower case", "pt-pt", european},
      {"script before the region", "pt-Latn-PT", european},
      {"variant behind the region", "pt-PT-ao1990", european},
      {"region of three digits", "pt-620", portuguese},
      {"extension that looks like a region", "pt-u-pt-x", portuguese},
      {"hyphens at the end", "pt--", portuguese},
      {"script", "cs-Latn", " cs sk one few many "},
      {"language of three letters", "shi-MA", " shi one few "},
      {"unknown language", "tlh", onlyOther},
      {"unknown language in a known region", "tlh-PT", onlyOther},
      {"empty id", "", onlyOther},
      {"only a hyphen", "-", onlyOther},
      {"several languages of the table", "cs sk", onlyOther},
      {"long language", "abcdefghijklmnopqrstuvwxyz", onlyOther},
      {"long region", "pt-ABCDEFGHIJKLMNOPQRSTUVWXYZ", portuguese},
      {"signs in the region", "pt-\xFF\xFE", portuguese},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(RulesOfId(row.id), row.rules) << row.name;
  }
  EXPECT_EQ(PluralRulesOf("tlh").categoryOf(OperandsOf("1")), PluralCategory::kOther);
  EXPECT_TRUE(PluralRulesOf("tlh").Has(PluralCategory::kOther));
}

TEST(PluralRules, ReadOperandsFromTheShownNumber) {
  struct Row {
    const char* name;
    std::string number;
    PluralOperands operands;
  };
  constexpr std::uint64_t kMore = 1000000000000000000;  // stands for digits before the last 18
  const std::string zeros(98, '0');
  const Row rows[] = {
      {"integer", "12", {12, 0, 0, 0, 0}},
      {"sign", "-1", {1, 0, 0, 0, 0}},
      {"other characters", "1'2:3", {123, 0, 0, 0, 0}},
      {"decimals with a zero at the end", "1.50", {1, 2, 50, 5, 0}},
      {"decimals with a zero in front", "0.05", {0, 2, 5, 5, 0}},
      {"only zeros as decimals", "3.00", {3, 2, 0, 0, 0}},
      {"18 digits", "123456789012345678", {123456789012345678, 0, 0, 0, 0}},
      {"19 digits", "9123456789012345678", {kMore + 123456789012345678, 0, 0, 0, 0}},
      {"20 digits", "99123456789012345678", {kMore + 123456789012345678, 0, 0, 0, 0}},
      {"100 digits", "1" + zeros + "1", {kMore + 1, 0, 0, 0, 0}},
      {"99 decimals", "0." + zeros + "1", {0, 99, 1, 1, 0}},
  };
  for (const Row& row : rows) {
    const PluralOperands found = OperandsOf(row.number);
    EXPECT_EQ(found.i, row.operands.i) << row.name;
    EXPECT_EQ(found.v, row.operands.v) << row.name;
    EXPECT_EQ(found.f, row.operands.f) << row.name;
    EXPECT_EQ(found.t, row.operands.t) << row.name;
  }
}

TEST(PluralRules, KnowTheNamesOfCategories) {
  for (std::size_t i = 0; i < kPluralCategoryCount; ++i) {
    const auto category = static_cast<PluralCategory>(i);
    EXPECT_EQ(PluralCategoryOf(PluralCategoryName(category)), category);
  }
  EXPECT_EQ(PluralCategoryOf("One"), std::nullopt);
  EXPECT_EQ(PluralCategoryOf(""), std::nullopt);
}

}  // namespace
}  // namespace KelmoLibs::Cldr
