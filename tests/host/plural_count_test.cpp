#include "host/plural_count.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using KelmoLibs::Cldr::PluralCategory;
using KelmoLibs::Cldr::PluralRulesOf;
using KelmoLibs::Host::Argument;
using KelmoLibs::Host::IsExactNumber;
using KelmoLibs::Host::kShortest;
using KelmoLibs::Host::PluralCount;

template <class Number>
Argument CountOf(Number number, int decimals = kShortest) {
  Argument argument;
  argument.value = number;
  argument.decimals = decimals;
  return argument;
}

Argument FloatOf(float number, int decimals = kShortest) {
  Argument argument = CountOf(static_cast<double>(number), decimals);
  argument.isFloat = true;
  return argument;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();
constexpr std::uint64_t kLargest = std::numeric_limits<std::uint64_t>::max();

TEST(PluralCount, NamesTheExactNumberWithoutZeroesAtItsEnd) {
  struct Case {
    const char* name;
    Argument count;
    std::string exact;
  };
  const std::vector<Case> cases = {
      {"zero", CountOf(std::int64_t{0}), "0"},
      {"negative", CountOf(std::int64_t{-1}), "-1"},
      {"the smallest integer", CountOf(kSmallest), "-9223372036854775808"},
      {"the largest integer", CountOf(kLargest), "18446744073709551615"},
      {"a whole double", CountOf(1.0), "1"},
      {"a whole double with decimals", CountOf(1.0, 2), "1"},
      {"a double whose last integer digit is 0", CountOf(100.0), "100"},
      {"a fraction", CountOf(1.5), "1.5"},
      {"a fraction with zeroes behind it", CountOf(1.5, 3), "1.5"},
      {"a fraction that is cut by its decimals", CountOf(1.26, 1), "1.3"},
      {"negative zero", CountOf(-0.0), "0"},
      {"a negative number that its decimals make zero", CountOf(-0.001, 2), "0"},
      {"large", CountOf(1e21), "1000000000000000000000"},
      {"small", CountOf(1e-7), "0.0000001"},
      {"a double that is no float", CountOf(static_cast<double>(0.1F)), "0.10000000149011612"},
      {"the same as a float", FloatOf(0.1F), "0.1"},
      {"a float with decimals", FloatOf(0.1F, 12), "0.10000000149"},
      {"the smallest", CountOf(-std::numeric_limits<double>::denorm_min()),
       "-0." + std::string(323, '0') + "5"},
      {"infinity", CountOf(kInfinity), ""},
      {"not a number", CountOf(std::numeric_limits<double>::quiet_NaN()), ""},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(PluralCount(row.count).Exact(), row.exact) << row.name;
  }
}

TEST(PluralCount, HasTheCategoryOfTheNumberThatIsSeen) {
  struct Case {
    const char* name;
    const char* language;
    Argument count;
    PluralCategory category;
  };
  const std::vector<Case> cases = {
      {"one in English", "en", CountOf(std::int64_t{1}), PluralCategory::kOne},
      {"minus one in English", "en", CountOf(std::int64_t{-1}), PluralCategory::kOne},
      {"1.0 in English", "en", CountOf(1.0, 1), PluralCategory::kOther},
      {"1.0 without decimals in English", "en", CountOf(1.0), PluralCategory::kOne},
      {"2 in Russian", "ru", CountOf(std::int64_t{2}), PluralCategory::kFew},
      {"1.5 in Russian", "ru", CountOf(1.5), PluralCategory::kOther},
      {"a million in Spanish", "es", CountOf(std::uint64_t{1000000}), PluralCategory::kMany},
      {"an integer of 22 digits that ends with 1 in Russian", "ru", CountOf(1e21),
       PluralCategory::kMany},
      {"the smallest integer in Polish", "pl", CountOf(kSmallest), PluralCategory::kMany},
      {"infinity", "en", CountOf(kInfinity), PluralCategory::kOther},
      {"not a number in a language with one for all", "ru",
       CountOf(std::numeric_limits<double>::quiet_NaN()), PluralCategory::kOther},
      {"a language that is unknown", "xx", CountOf(std::int64_t{1}), PluralCategory::kOther},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(PluralCount(row.count).CategoryIn(PluralRulesOf(row.language)), row.category)
        << row.name;
  }
}

TEST(IsExactNumber, TakesTheTextsThatCountsHave) {
  for (const char* const text : {"0", "1", "10", "-1", "1.5", "-0.25", "0.05", "123456789.125"}) {
    EXPECT_TRUE(IsExactNumber(text)) << text;
  }
  for (const char* const text : {"", "-", "-0", "00", "01", "-01", "1.", ".5", "-.5", "1.0", "0.50",
                                 "01.5", "1.5.2", "1e5", "+1", " 1", "1 ", "--1", "1,5"}) {
    EXPECT_FALSE(IsExactNumber(text)) << text;
  }
}

}  // namespace
