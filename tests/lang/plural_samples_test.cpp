#include "lang/unicode/plural_samples.h"

#include <gtest/gtest.h>

#include <vector>

namespace KelmoLibs::Lang {
namespace {

TEST(PluralSamples, AreTheSmallestNumbers) {
  const PluralRules* const russian = FindPluralRules("ru", "");
  ASSERT_NE(russian, nullptr);
  EXPECT_EQ(SmallestOf(*russian, PluralCategory::kFew, 4), (std::vector<unsigned>{2, 3, 4, 22}));
  EXPECT_EQ(SmallestOf(*russian, PluralCategory::kOther, 4), std::vector<unsigned>{});
  EXPECT_FALSE(russian->Has(PluralCategory::kTwo));
}

TEST(PluralSamples, KnowFormsOfOneNumber) {
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

TEST(PluralSamples, HaveDecimalsIfNoIntegerHasTheCategory) {
  EXPECT_EQ(SamplesOf(*FindPluralRules("pl", ""), PluralCategory::kMany), "0, 5, 6, 7");
  EXPECT_EQ(SamplesOf(*FindPluralRules("pl", ""), PluralCategory::kOther), "1.5");
}

}  // namespace
}  // namespace KelmoLibs::Lang
