// The text and the rounded number of a value, through the exports. regional_settings_test.cpp tests
// the separator of the user's settings.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

#include "kelmo_localizer.h"
#include "tests/support/global_locale.h"
#include "tests/support/nan_text.h"
#include "tests/support/page_table.h"
#include "tests/support/private_members.h"
#include "tests/support/same_bits.h"
#include "tests/support/test_platform.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

struct Row {
  const char* name;
  double value;
  double absTolerance;
  double relTolerance;
  double rounded;
  std::wstring text;  // with a point
};

// Compares both texts and Return, with and without a unit. None of them may change the value. The
// program's locale is the classic one, the user's has a point (CMakeLists.txt).
void ExpectRows(std::initializer_list<Row> rows) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::wstring withComma = row.text;
    std::replace(withComma.begin(), withComma.end(), L'.', L',');
    for (const int code : {10001, 99999}) {
      Double value(row.value, row.absTolerance, row.relTolerance, code);
      const Double before = value;
      EXPECT_PRED_FORMAT2(SameBits, value.Return(), row.rounded);
      EXPECT_EQ(value.to_string(), row.text);
      EXPECT_EQ(value.to_string(L'.'), row.text);
      EXPECT_EQ(value.to_string(L','), withComma);
      EXPECT_PRED_FORMAT2(SameBits, value.value, before.value);
      EXPECT_PRED_FORMAT2(SameBits, value.absTolerance, before.absTolerance);
      EXPECT_PRED_FORMAT2(SameBits, value.relTolerance, before.relTolerance);
      EXPECT_EQ(value.unit, before.unit);
    }
  }
}

TEST(DoubleText, ShowsTheDigitsThatTheToleranceJustifies) {
  ExpectRows({
      {"absolute 0.01", 1234.5678, 0.01, 0, 1234.57, L"1234.57"},
      {"relative: tens", 1234.5678, 0, 0.001, 1230, L"1230"},
      {"1: whole units", 1234.5678, 1, 0, 1235, L"1235"},
      {"150: thousands", 1234.5678, 150, 0, 1000, L"1000"},
      {"0.1: the rounding and the decimals agree", 12.34, 0.1, 0, 12.3, L"12.3"},
      {"0.05: the last digit is always 0", 12.34, 0.05, 0, 12.3, L"12.30"},
      {"0.5: whole units, with a decimal", 12.34, 0.5, 0, 12, L"12.0"},
      {"a small number", 0.000123, 0, 0.01, 0.00012, L"0.000120"},
      {"three decimals, two of them rounded", 3.14159, 0, 0.001, 3.14, L"3.140"},
      {"zero", 0, 0.5, 0, 0, L"0.0"},
      {"negative", -5, 0.1, 0, -5, L"-5.0"},
      {"a half goes up", 2.5, 1, 0, 3, L"3"},
      {"a negative half goes down", -2.5, 1, 0, -3, L"-3"},
      {"more decimals than digits", 123, 0.001, 0, 123, L"123.000"},
      {"both tolerances", -100, 1.5, 0.01, -100, L"-100.0"},
      {"rounding makes a digit more", 99.95, 0.1, 0, 100, L"100.0"},
      {"rounding carries through", 999.999, 0.01, 0, 1000, L"1000.00"},
      {"exactly half a step, up", 5, 10, 0, 10, L"10"},
      {"below half a step", 4.9, 10, 0, 0, L"0"},
      {"one and a half steps", 15, 10, 0, 20, L"20"},
      {"one and a half steps, negative", -15, 10, 0, -20, L"-20"},
      {"one last digit above 1", 12, 1.0000000000000002, 0, 10, L"10"},
      {"one last digit below 1", 12, 0.9999999999999999, 0, 12, L"12.0"},
      {"the smallest tolerance with a power of ten", 1.5, 1e-9, 0, 1.5, L"1.500000000"},
      {"the largest one", 123456789012.0, 1e9, 0, 123e9, L"123000000000"},
      {"an angle", 1.5707963267948966, 0.001, 0, 1.571, L"1.571"},
  });
}

TEST(DoubleText, AgreesWithItsPage) {
  const std::vector<Cells> rows = TableOfPage("values.md", "`value`");
  EXPECT_EQ(rows.size(), 20U);
  for (const Cells& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row));
    ASSERT_EQ(row.size(), 5U);
    const auto number = [&row](std::size_t column) { return std::stod(row[column]); };
    Double value(number(0), number(1), number(2), 10001);
    EXPECT_DOUBLE_EQ(T(value), number(3));
    EXPECT_EQ(L'`' + value.to_string(L'.') + L'`', std::wstring(row[4].begin(), row[4].end()));
  }
}

TEST(DoubleText, RoundsToTheNearestIntegerInEveryBuild) {
  ExpectRows({
      {"the largest below one half", 0.49999999999999994, 1, 0, 0, L"0"},
      {"one half", 0.5, 1, 0, 1, L"1"},
      {"minus one half", -0.5, 1, 0, -1, L"-1"},
      {"the largest below minus one half", -0.49999999999999994, 1, 0, -0.0, L"-0"},
      {"one and a half", 1.5, 1, 0, 2, L"2"},
      {"below one and a half", 1.4999999999999998, 1, 0, 1, L"1"},
      {"minus zero keeps its sign", -0.0, 1, 0, -0.0, L"-0"},
      {"a value rounded to zero keeps its sign", -0.3, 1, 0, -0.0, L"-0"},
      {"the smallest number", kDenormal, 1, 0, 0, L"0"},
      {"the largest with a half", 4503599627370495.5, 1, 0, 4503599627370496, L"4503599627370496"},
      {"the same, negative", -4503599627370495.5, 1, 0, -4503599627370496, L"-4503599627370496"},
      {"odd, without decimals left", 4503599627370497, 1, 0, 4503599627370497, L"4503599627370497"},
      {"as large as a 64-bit integer", 9223372036854775808.0, 1, 0, 9223372036854775808.0,
       L"9223372036854775808"},
      {"larger than any integer", 1e20, 1, 0, 1e20, L"100000000000000000000"},
  });
}

// All digits of 1e300.
const std::wstring kDigitsOf1e300 =
    L"100000000000000005250476025520442024870446858110815915491585411551180245798890819578637137"
    L"508044786404370444383288387817694252323536043057564479218478670698284838720092657580373783"
    L"023379478809005936895323497079994508111903896764088007465274278014249457925878882005684283"
    L"8115669472196386865459400540160";

TEST(DoubleText, PrintsEveryDigit) {
  ExpectRows({
      {"1e300", 1e300, 1, 0, 1e300, kDigitsOf1e300},
      {"1e300 with decimals", -1e300, 0.001, 0, -1e300, L"-" + kDigitsOf1e300 + L".000"},
      {"99 characters", -1e98, 1, 0, -1e98,
       L"-99999999999999999769037024514370800696612547992403838920556863966097586548129676"
       L"477911932478685184"},
      {"100 characters", -1e99, 1, 0, -1e99,
       L"-99999999999999996733616880411669127384953318580655547291796177947129584592172786"
       L"2608739868455469056"},
      {"a tie goes to the even digit", 0.0009765625, 1e-10, 0, 0.0009765625, L"0.000976562"},
  });
}

// Beyond nine powers of ten the counters wrap around. Hosts rely on the results.
TEST(DoubleText, OverflowsBeyondNinePowersOfTen) {
  ExpectRows({
      {"1e-10: up is 1410065408", 2.0 / 3, 1e-10, 0, 0.6666666664302711, L"0.666666666"},
      {"1e-12: up is 1316134912", 2.0 / 3, 1e-12, 0, 0.6666666631209309, L"0.666666663"},
      {"2e-14: up is 276447232, which has 8 decimals", 2.0 / 3, 2e-14, 0, 0.6666666497858079,
       L"0.66666665"},
      {"1e-11: up is negative, the value is not rounded", 2.0 / 3, 1e-11, 0, 2.0 / 3,
       L"0.666666667"},
      {"2e-15: negative again", 2.0 / 3, 2e-15, 0, 2.0 / 3, L"0.666666667"},
      {"1e-40: up is 0", 2.0 / 3, 1e-40, 0, 2.0 / 3, L"0.666666667"},
      {"the smallest tolerance of all", 2.0 / 3, kDenormal, 0, 2.0 / 3, L"0.666666667"},
      {"1.5e9: down is 1410065408", 123456789012.0, 1.5e9, 0, 124085755904.0, L"124085755904"},
      {"5e10: down is 1215752192", 123456789012.0, 5e10, 0, 124006723584.0, L"124006723584"},
      {"1e25: down is 1241513984", 1e9, 1e25, 0, 1241513984, L"1241513984"},
      {"2e11: down is -727379968", 123456789012.0, 2e11, 0, 123654594560.0, L"123654594560"},
      {"negative value, negative down", -1e12, 2e11, 0, -1000147456000.0, L"-1000147456000"},
      {"rounded to zero by a negative down", 1, 2e11, 0, 0, L"0"},
  });
}

TEST(DoubleText, ShowsNonFiniteNumbersAsTheSystemDoes) {
  EXPECT_EQ(Double(12.6, kNaN, 0, 10001).Return(), 13) << "a tolerance of NaN gives whole units";
  EXPECT_EQ(Double(12.6, kNaN, 0, 10001).to_string(L','), L"13");
  EXPECT_EQ(Double(12.6, kNaN, 0, 10001).to_string(), L"13");
  EXPECT_EQ(Double(kInfinity, 1, 0, 10001).Return(), kInfinity);
  EXPECT_EQ(Double(-kInfinity, 1, 0, 10001).Return(), -kInfinity);
  EXPECT_TRUE(std::isnan(Double(kNaN, 1, 0, 10001).Return()));
  EXPECT_TRUE(std::isnan(Double(1e40, 1e33, 0, 10001).Return())) << "down is 0";
  EXPECT_EQ(Double(1e308, 0.1, 0, 10001).Return(), kInfinity) << "the product overflows";
  EXPECT_EQ(Double(kInfinity, 1, 0, 10001).to_string(L','), L"inf");
  EXPECT_EQ(Double(-kInfinity, 1, 0, 10001).to_string(), L"-inf");
  EXPECT_EQ(NormalizeNaN(Double(kNaN, 1, 0, 10001).to_string(L',')), L"nan");
  EXPECT_EQ(NormalizeNaN(Double(kNaN, 1, 0, 10001).to_string()), L"nan");
}

TEST(DoubleText, MayHave320Characters) {
  Double value(std::numeric_limits<double>::lowest(), 1e-11, 0, 10001);
  const std::wstring text = value.to_string(L'.');
  EXPECT_EQ(text.size(), 320U);
  EXPECT_EQ(value.to_string(), text);
}

TEST(DoubleText, TakesAnySeparator) {
  using namespace std::string_literals;
  Double value(1234.5678, 0.01, 0, 10001);
  EXPECT_EQ(value.to_string(L'\u066B'), L"1234\u066B57"s);
  EXPECT_EQ(value.to_string(L'0'), L"1234057"s);
  EXPECT_EQ(value.to_string(L'\0'),
            L"1234\0"
            L"57"s);
  constexpr auto kBeyond16Bits = static_cast<wchar_t>(0x1F600);  // if wchar_t has 32 bits
  EXPECT_EQ(value.to_string(kBeyond16Bits), L"1234"s + kBeyond16Bits + L"57");
  EXPECT_EQ(Double(7, 1, 0, 10001).to_string(L'x'), L"7"s) << "without decimals there is none";
}

TEST(DoubleText, ConvertedValuesPrintByTheToleranceGiven) {
  EXPECT_EQ(Double(90, 0, 0, 40001).ConvertTo(0.001, 0, 40002).to_string(L'.'), L"1.571");
  EXPECT_EQ(Double(1, 0, 0, 10002).ConvertTo(0.0001, 0, 10001).to_string(L'.'), L"0.0273");
  EXPECT_EQ(Double(1.234, 0.01, 0, 10001).ConvertTo(0.5, 0, 10001).to_string(L'.'), L"1.23")
      << "its own unit: its own tolerance";
}

// ---- The global C++ locale of the host

TEST(DoubleText, ShowsTheGroupingOfTheGlobalLocaleAndReplacesOnlyPoints) {
  Double value(1234567.891, 0.01, 0, 10001);
  {
    const GlobalLocale grouped(LocaleGroupedByPoints());
    if (librarySharesTheGlobalLocale) {
      EXPECT_EQ(value.to_string(L';'), L"1;234;567!89");
    } else {
      EXPECT_EQ(value.to_string(L';'), L"1234567;89") << "the library has its own global locale";
    }
    EXPECT_EQ(value.to_string(), L"1234567.89") << "not affected by the global locale";
    EXPECT_EQ(value.Return(), 1234567.89);
  }
  EXPECT_EQ(value.to_string(L';'), L"1234567;89");
}

// ---- Tolerances with which a value cannot be rounded

TEST(DoubleText, CallsDoNotReturnWithoutAPositiveFiniteTolerance) {
  const struct {
    const char* name;
    double value;
    double absTolerance;
    double relTolerance;
  } rows[] = {
      {"zero", 1, 0, 0},
      {"a relative tolerance of zero", 0, 0, 0.01},
      {"negative by the value", -5, 0, 0.01},
      {"minus infinity", 1, -kInfinity, 0},
      {"the largest below zero", 1, -kDenormal, 0},
      {"infinity", 1, kInfinity, 0},
  };
  constexpr std::chrono::milliseconds kMoment(200);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Double value(row.value, row.absTolerance, row.relTolerance, 10001);
    EXPECT_FALSE(ReturnsWithin(kMoment, [&value] { value.Return(); }));
    EXPECT_FALSE(ReturnsWithin(kMoment, [&value] { value.to_string(); }));
    EXPECT_FALSE(ReturnsWithin(kMoment, [&value] { value.to_string(L','); }));
  }
  Double value(1, 1, 0, 10001);
  EXPECT_TRUE(ReturnsWithin(50 * kMoment, [&value] { value.to_string(); }))
      << "ReturnsWithin never sees a call return";
}

}  // namespace
