#include "phyval/rounding.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "tests/support/random_numbers.h"

namespace {

using namespace KelmoLibs::Localize::Phyval;

constexpr int kMaxDecimals = 9;
constexpr double kNoInteger = std::numeric_limits<double>::quiet_NaN();

std::wstring ToCharsText(double number, int decimals) {
  std::array<char, 400> text = {};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, decimals);
  return {text.data(), end.ptr};
}

double PowerOfTen(int exponent) { return std::pow(10.0, exponent); }

// integer / 10^decimals, like a result of rounding.
RoundedNumber FractionOf(double integer, int decimals) {
  return {integer / PowerOfTen(decimals), decimals, integer};
}

TEST(FixedText, HasTheRequestedDecimals) {
  const struct {
    const char* name;
    RoundedNumber number;
    std::wstring text;
  } rows[] = {
      {"two decimals", FractionOf(123456789, 2), L"1234567;89"},
      {"a negative number", FractionOf(-12345679, 1), L"-1234567;9"},
      {"no decimals", FractionOf(123, 0), L"123"},
      {"zeroes after the last digit", FractionOf(500000000, 9), L"0;500000000"},
      {"zeroes before the first digit", FractionOf(7, 9), L"0;000000007"},
      {"zero", FractionOf(0, 0), L"0"},
      {"zero with decimals", FractionOf(0, 3), L"0;000"},
      {"minus zero", FractionOf(-0.0, 1), L"-0;0"},
      {"the largest integer below 2^52", FractionOf(4503599627370495, 0), L"4503599627370495"},
      {"the same with nine decimals", FractionOf(-4503599627370495, 9), L"-4503599;627370495"},
      {"2^52", FractionOf(4503599627370496, 9), L"4503599;627370496"},
      {"without an integer", {0.125, 2, kNoInteger}, L"0;12"},
      {"infinity", {std::numeric_limits<double>::infinity(), 2, kNoInteger}, L"inf"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FixedText(row.number, L';'), row.text) << row.name;
  }
  const double largest = std::numeric_limits<double>::max();
  EXPECT_EQ(FixedText({-largest, 9, kNoInteger}, L';').size(), 1U + 309U + 1U + 9U)
      << "the longest text";
}

// FixedText prints the digits itself below 2^52.
TEST(FixedText, EqualsToCharsForRandomNumbers) {
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = Rounds(100'000); i > 0; --i) {
    const int decimals = random.Below(kMaxDecimals + 1);
    const auto digits =
        static_cast<double>(random.Bits() >> (8U + static_cast<unsigned>(random.Below(50))));
    const double any = random.OfMagnitude(-60, 60);
    const double ofDecimals = PowerOfTen(-decimals);
    for (const RoundedNumber& number :
         {FractionOf(random.Below(2) == 0 ? digits : -digits, decimals),
          RoundToTolerance(any, ofDecimals), RoundToTolerance(any, 2.5 * ofDecimals),
          RoundedNumber{any, decimals, kNoInteger}}) {
      ASSERT_EQ(FixedText(number, L'.'), ToCharsText(number.number, number.decimals))
          << number.number << " " << number.decimals << " seed " << randomSeed;
    }
  }
}

TEST(FixedText, EqualsToCharsNearPowersOfTenAndTwo) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (int exponent = -25; exponent <= 60; ++exponent) {
    for (const double power : {PowerOfTen(exponent), std::ldexp(1.0, exponent)}) {
      for (const double step : {-1.0, -0.5, 0.0, 0.5, 1.0}) {
        const double middle = power + step;
        for (const double value :
             {std::nextafter(middle, -kInfinity), middle, std::nextafter(middle, kInfinity)}) {
          for (int decimals = 0; decimals <= kMaxDecimals; ++decimals) {
            for (const RoundedNumber& number :
                 {RoundToTolerance(value, PowerOfTen(-decimals)),
                  RoundToTolerance(-value * PowerOfTen(-decimals), PowerOfTen(-decimals)),
                  FractionOf(std::floor(value), decimals),
                  RoundedNumber{value, decimals, kNoInteger}}) {
              ASSERT_EQ(FixedText(number, L'.'), ToCharsText(number.number, number.decimals))
                  << value << " " << number.decimals;
            }
          }
        }
      }
    }
  }
}

TEST(RoundToTolerance, ReturnsNumberAndDecimals) {
  const struct {
    const char* name;
    double tolerance;
    double number;
    int decimals;
    double integer;
  } rows[] = {
      {"100", 100, 1200, 0, 1200},
      {"just above 1", 1.5, 1230, 0, 1230},
      {"1", 1, 1235, 0, 1235},
      {"0.5", 0.5, 1235, 1, 12350},
      {"0.1", 0.1, 1234.6, 1, 12346},
      {"0.01", 0.01, 1234.57, 2, 123457},
      {"1e-9", 1e-9, 1234.567, 9, 1234567000000},
      {"1e-10: the power of ten has wrapped", 1e-10, std::round(1410065408 * 1234.567) / 1410065408,
       9, kNoInteger},
      {"1e-11: no power of ten is left", 1e-11, 1234.567, 9, kNoInteger},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const RoundedNumber rounded = RoundToTolerance(1234.567, row.tolerance);
    EXPECT_EQ(rounded.number, row.number);
    EXPECT_EQ(rounded.decimals, row.decimals);
    EXPECT_TRUE(rounded.integer == row.integer ||
                (std::isnan(rounded.integer) && std::isnan(row.integer)))
        << rounded.integer;
  }
}

}  // namespace
