// Blocks of points get the bits that single points get, also where the result lies in the middle between two
// doubles and where it overflows or underflows.
#include "host/point_conversion.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "tests/support/bits.h"
#include "tests/support/random_numbers.h"

namespace {

using namespace KelmoLibs::Host;

constexpr int kChoices = 5;  // of factors and offsets

using Block = std::array<double, PointConversion::kBlock>;

UnitRow Scale(DoubleDouble factor, DoubleDouble offset) {
  UnitRow unit;
  unit.factor = factor;
  unit.offset = offset;
  return unit;
}

const UnitRow kKelvin = Scale({1}, {0});
const UnitRow kCelsius = Scale({1}, Quotient({27315}, {100}));
const UnitRow kFahrenheit = Scale(Quotient({5}, {9}), Quotient({229835}, {900}));

void ExpectBitsOfSinglePoints(const Block& numbers, const UnitRow& from, const UnitRow& to) {
  Block results = numbers;
  PointConversion(from, to, results.size()).Convert(results.data(), results.size(), results.data());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const double expected = InPointUnit(numbers[i], from, to);
    const bool areNan = std::isnan(expected) && std::isnan(results[i]);
    EXPECT_TRUE(areNan || BitsOf(results[i]) == BitsOf(expected))
        << std::hexfloat << numbers[i] << " * " << from.factor.high << " + " << from.offset.high
        << " in " << to.factor.high << ", " << to.offset.high << ": " << results[i] << ", not "
        << expected;
  }
}

TEST(PointConversion, GivesTheKnownTemperatures) {
  Block numbers;
  numbers.fill(20);
  numbers[3] = -40;
  Block expected;
  expected.fill(68);
  expected[3] = -40;
  PointConversion(kCelsius, kFahrenheit, numbers.size())
      .Convert(numbers.data(), numbers.size(), numbers.data());
  EXPECT_EQ(numbers, expected);
}

TEST(PointConversion, GivesTheBitsOfSinglePoints) {
  RandomNumbers random(randomSeed);
  const auto any = [&random](const std::array<double, kChoices>& numbers) {
    return DoubleDouble{numbers[static_cast<std::size_t>(random.Below(kChoices))]};
  };
  const auto unit = [&random, any] {
    DoubleDouble factor = Quotient(any({1, 5, 7, 9, 1000}), any({1, 3, 5, 9, 100}));
    if (random.Below(4) == 0) {
      const int exponent = random.Below(1600) - 800;
      factor = {std::ldexp(factor.high, exponent), std::ldexp(factor.low, exponent)};
    }
    return Scale(factor, random.Below(2) == 0
                             ? DoubleDouble()
                             : Quotient(any({32, 27315, 45967, 1, -7}), any({1, 3, 9, 100, 900})));
  };
  const auto number = [&random] {
    switch (random.Below(4)) {
      case 0:  // integers of all bits: products in the middle between two doubles
        return static_cast<double>(static_cast<std::int64_t>(random.Bits()) >> 10);
      case 1:
        return random.OfMagnitude(-1022, 1023);
      case 2:
        return random.Below(100000) / 8.0;
      default:
        return random.OfMagnitude(-20, 20);
    }
  };
  for (std::uint64_t round = Rounds(20000); round > 0; --round) {
    const UnitRow from = unit();
    const UnitRow to = unit();
    Block numbers;
    for (double& each : numbers) {
      each = number();
    }
    ExpectBitsOfSinglePoints(numbers, from, to);
  }
}

TEST(PointConversion, GivesTheBitsOfSinglePointsForExtremeScales) {
  Block numbers;
  numbers.fill(20);
  for (const UnitRow& scale :
       {Scale({1e300}, {1}), Scale({1e-300}, {1}), Scale({1}, {1e300}), Scale({1}, {-1e300})}) {
    ExpectBitsOfSinglePoints(numbers, scale, kCelsius);
    ExpectBitsOfSinglePoints(numbers, kCelsius, scale);
  }
}

TEST(PointConversion, GivesTheBitsOfSinglePointsAtTheEdges) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  for (const double edge :
       {0.0, -0.0, 273.15, -273.15, std::nextafter(273.15, 0), -459.67, 0x1p-1074, 0x1p-800,
        0x1p500, 0x1.fp499, 0x1p996, 0x1.fffffffffffffp1023, kInfinity, -kInfinity, kNan}) {
    for (const UnitRow& from : {kKelvin, kCelsius, kFahrenheit}) {
      for (const UnitRow& to : {kKelvin, kCelsius, kFahrenheit}) {
        Block numbers;
        numbers.fill(edge);
        ExpectBitsOfSinglePoints(numbers, from, to);
      }
    }
  }
}

}  // namespace
