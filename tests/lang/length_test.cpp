// The rule length.
#include <gtest/gtest.h>

#include "tests/lang/text_rule_results.h"

namespace KelmoLibs::Lang {
namespace {

TEST(Length, ReportsMoreThanTwiceTheBaseAndTwentyColumns) {
  const TextRow rows[] = {
      {"24 columns for 2", "de", "OK", std::string(24, 'a'), ""},
      {"25 columns for 2", "de", "OK", std::string(25, 'a'), "note length.message (all)"},
      {"100 columns for 40", "de", std::string(40, 'b'), std::string(100, 'a'), ""},
      {"101 columns for 40", "de", std::string(40, 'b'), std::string(101, 'a'),
       "note length.message (all)"},
      {"wide characters count twice", "zh", "OK", u8"同意所有更改并保存项目", ""},
      {"13 wide characters", "zh", "OK", u8"同意所有更改并保存当前项目",
       "note length.message (all)"},
      {"marks do not count", "th", "OK", u8"ที่ที่ที่ที่ที่ที่ที่ที่ที่ที่ที่ที่", ""},
      {"bytes do not count", "ru", "OK", u8"согласен с изменениями", ""},
      {"no base", "de", "", std::string(1000, 'a'), ""},
  };
  ExpectResults(CheckLength, rows);
}

TEST(Length, KeepsTheFirstLimitThatFitsTheKey) {
  RuleSettings settings;
  settings.limits = {{"other", 1}, {"k*", 8}, {"key", 1}};
  const TextRow rows[] = {
      {"8 code points", "ru", "", u8"Насосный", ""},
      {"9 code points", "ru", "", u8"Насосный1", "note length.limit (all)"},
  };
  ExpectResults(CheckLength, rows, settings);
}

TEST(Length, ALimitTakesThePlaceOfTheComparisonWithTheBase) {
  RuleSettings settings;
  settings.limits = {{"*", 100}};
  EXPECT_EQ(ResultsOf(CheckLength, {"", "de", "OK", std::string(100, 'a'), ""}, settings), "");
}

}  // namespace
}  // namespace KelmoLibs::Lang
