// Properties of every value, tested through the exports with random values.

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <iostream>
#include <string>

#include "kelmo_localizer.h"
#include "tests/support/exact_decimal.h"
#include "tests/support/private_members.h"
#include "tests/support/random_numbers.h"
#include "tests/support/same_bits.h"

using KelmoLibs::Localize::Phyval::Double;

namespace {

constexpr int kValues = 20000;
constexpr double kEpsilon = 0x1p-53;  // relative error of one rounding

// Units that convert into each other.
struct Units {
  int from;
  int to;
};
constexpr Units kUnits[] = {{10001, 10002}, {10002, 10001}, {40001, 40002}, {40002, 40001}};

class DoubleProperties : public testing::Test {
 protected:
  static void SetUpTestSuite() { std::cout << "--seed=" << randomSeed << '\n'; }

  // Prints the seed that repeats a failure.
  testing::ScopedTrace seedTrace_{__FILE__, __LINE__,
                                  testing::Message() << "--seed=" << randomSeed};
  RandomNumbers random_{randomSeed};
};

// Each conversion is a product, a quotient, and a sum with 0, which rounds nothing.
TEST_F(DoubleProperties, RoundTripIsWithinOneRoundingPerStep) {
  for (int i = 0; i < kValues; ++i) {
    const Units& units = kUnits[random_.Below(4)];
    const double number = random_.OfMagnitude(-900, 900);
    Double value(number, 1, 0, units.from);
    Double there = value.ConvertTo(1, 0, units.to);
    const double back = there.ConvertTo(1, 0, units.from).value;
    const double factor = value.unit->factor / there.unit->factor;
    ASSERT_NEAR(there.value / number / factor, 1, 5 * kEpsilon) << std::hexfloat << number;
    ASSERT_LE(std::abs(back - number), 4.0000001 * kEpsilon * std::abs(number))
        << std::hexfloat << number;
  }
}

TEST_F(DoubleProperties, ExactlyOneOfLessEqualAndGreaterHolds) {
  for (int i = 0; i < kValues; ++i) {
    const Units& units = kUnits[random_.Below(4)];
    Double a(random_.OfMagnitude(-50, 50), 1, 0, units.from);
    // A distant value, a neighbour or the same.
    Double b = a.ConvertTo(1, 0, units.to);
    switch (random_.Below(4)) {
      case 0:
        b.value = random_.OfMagnitude(-50, 50);
        break;
      case 1:
        b.value = std::nextafter(b.value, 1e300);
        break;
      case 2:
        b.value = std::nextafter(b.value, -1e300);
        break;
      default:
        break;
    }
    ASSERT_FALSE(a < b && b < a) << std::hexfloat << a.value << ' ' << b.value;
    ASSERT_FALSE(a > b && b > a) << std::hexfloat << a.value << ' ' << b.value;
    ASSERT_EQ((a < b) + (a == b) + (a > b), 1) << std::hexfloat << a.value << ' ' << b.value;
    ASSERT_EQ(a < b, a.value < b.ConvertTo(1, 0, units.from).value);
  }
}

TEST_F(DoubleProperties, SumAndDifferenceUseTheConvertedValue) {
  for (int i = 0; i < kValues; ++i) {
    const Units& units = kUnits[random_.Below(4)];
    Double a(random_.OfMagnitude(-50, 50), 0.5, 0.25, units.from);
    Double b(random_.OfMagnitude(-50, 50), 0.125, 2, units.to);
    const double converted = b.ConvertTo(1, 0, units.from).value;
    ASSERT_PRED_FORMAT2(SameBits, (a + b).value, converted + a.value);
    ASSERT_PRED_FORMAT2(SameBits, (a - b).value, a.value - converted);
    ASSERT_EQ((a + b).unit, a.unit);
    ASSERT_EQ((a + b).absTolerance, 0.5);
    ASSERT_EQ((a + b).relTolerance, 0.25);
  }
}

// For finite values with a tolerance from 1e-9 to 1e9.
TEST_F(DoubleProperties, TextsShowTheRoundedNumberToItsLastDigit) {
  for (int i = 0; i < kValues; ++i) {
    const double tolerance = std::pow(10, 18 * random_.Fraction() - 9);
    const double number = random_.OfMagnitude(-40, 60);
    const bool relative = random_.Below(2) == 0;
    Double value(number, relative ? 0 : tolerance, relative ? tolerance / number : 0, 10001);
    const double t = T(value);
    if (!(t > 1e-9 && t < 1e9)) {
      continue;
    }
    const double rounded = value.Return();
    const std::wstring text = value.to_string(L'.');
    const std::size_t point = text.find(L'.');
    const int decimals =
        point == std::wstring::npos ? 0 : static_cast<int>(text.size() - point - 1);
    ASSERT_EQ(text, ExactDecimal(rounded, decimals)) << std::hexfloat << number << ' ' << t;
    ASSERT_EQ(value.to_string(), text) << "the user's separator is a point here";
    std::wstring withComma = text;
    if (decimals > 0) {
      withComma[point] = L',';
    }
    ASSERT_EQ(value.to_string(L','), withComma);
    // The decimals scale the tolerance up to at least 1. The rounding step is one power of ten
    // larger, unless the scaled tolerance is exactly 1.
    int expected = 0;
    double scaled = t;
    for (; scaled < 1; scaled *= 10) {
      ++expected;
    }
    ASSERT_EQ(decimals, expected) << std::hexfloat << number << ' ' << t;
    double step = scaled == 1 ? std::pow(10, -decimals) : std::pow(10, 1 - decimals);
    for (; step < t && t > 1; step *= 10) {
    }
    ASSERT_LE(std::abs(rounded - number),
              0.5 * step * (1 + 1e-12) + 8 * kEpsilon * std::abs(number))
        << std::hexfloat << number << ' ' << t;
  }
}

// Also for lengths at which streams and runtimes may lose digits.
TEST_F(DoubleProperties, LongTextsHaveEveryDigit) {
  for (int i = 0; i < 200; ++i) {
    Double value(random_.OfMagnitude(60, 1000), 1, 0, 10001);
    const std::wstring text = ExactDecimal(value.Return(), 0);
    ASSERT_EQ(value.to_string(L'.'), text);
    ASSERT_EQ(value.to_string(), text);
  }
}

TEST(ExactDecimal, PrintsKnownNumbers) {
  EXPECT_EQ(ExactDecimal(0, 0), L"0");
  EXPECT_EQ(ExactDecimal(-0.0, 2), L"-0.00");
  EXPECT_EQ(ExactDecimal(1234.5, 2), L"1234.50");
  EXPECT_EQ(ExactDecimal(0.125, 2), L"0.12");
  EXPECT_EQ(ExactDecimal(0.375, 2), L"0.38");
  EXPECT_EQ(ExactDecimal(0.1, 20), L"0.10000000000000000555");
  EXPECT_EQ(ExactDecimal(999.96, 1), L"1000.0");
  EXPECT_EQ(ExactDecimal(-0.01, 1), L"-0.0");
  EXPECT_EQ(ExactDecimal(0x1p70, 1), L"1180591620717411303424.0");
  EXPECT_EQ(ExactDecimal(5e-324, 3), L"0.000");
}

}  // namespace
