#include "phyval/rounding.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using namespace KelmoLibs::Localize::Phyval;

TEST(FixedText, ShowsEveryDigitThatIsAskedFor) {
  const struct {
    double number;
    int decimals;
    std::wstring text;
  } rows[] = {
      {1234567.89, 2, L"1234567;89"},
      {-1234567.89, 1, L"-1234567;9"},
      {123, 0, L"123"},
      {0.5, 9, L"0;500000000"},
      {-0.0, 1, L"-0;0"},
      {0.125, 2, L"0;12"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FixedText(row.number, row.decimals, L';'), row.text);
  }
  EXPECT_EQ(FixedText(-std::numeric_limits<double>::max(), 9, L';').size(), 1U + 309U + 1U + 9U)
      << "the longest text of all";
}

TEST(RoundToTolerance, GivesNumberAndDecimals) {
  const struct {
    const char* name;
    double tolerance;
    double number;
    int decimals;
  } rows[] = {
      {"100", 100, 1200, 0},       {"just above 1", 1.5, 1230, 0},
      {"1", 1, 1235, 0},           {"0.5", 0.5, 1235, 1},
      {"0.1", 0.1, 1234.6, 1},     {"0.01", 0.01, 1234.57, 2},
      {"1e-9", 1e-9, 1234.567, 9}, {"1e-11: no power of ten is left", 1e-11, 1234.567, 9},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const RoundedNumber rounded = RoundToTolerance(1234.567, row.tolerance);
    EXPECT_EQ(rounded.number, row.number);
    EXPECT_EQ(rounded.decimals, row.decimals);
  }
}

}  // namespace
