// Quantities beside exact arithmetic with rational numbers of any size. --rounds=N runs longer.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "host/quantity.h"
#include "host/unit_number.h"
#include "tests/host/units_of_tests.h"
#include "tests/support/bits.h"
#include "tests/support/random_numbers.h"
#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;
using boost::multiprecision::cpp_int;
using Exact = boost::multiprecision::cpp_rational;

// Exactly the double. Precondition: it is finite.
Exact ExactOf(double number) {
  int exponent = 0;
  const double fraction = std::frexp(number, &exponent);  // 53 bits behind the point
  const cpp_int digits(static_cast<std::int64_t>(std::ldexp(fraction, 53)));
  exponent -= 53;
  return exponent < 0 ? Exact(digits, cpp_int(1) << static_cast<unsigned>(-exponent))
                      : Exact(digits << static_cast<unsigned>(exponent));
}

Exact ExactOf(const DoubleDouble& number) { return ExactOf(number.high) + ExactOf(number.low); }

// The double nearest to a number; of two, the even one. Not by a conversion of the library, but by this
// definition: the numbers are far from the limits of a double.
double Rounded(const Exact& number) {
  if (number == 0) {
    return 0;
  }
  const Exact magnitude = number < 0 ? Exact(-number) : number;
  const cpp_int top = numerator(magnitude);
  const cpp_int bottom = denominator(magnitude);
  int shift = 54 - static_cast<int>(msb(top)) + static_cast<int>(msb(bottom));
  const auto quotient = [&top, &bottom](int bits) {
    return bits < 0 ? cpp_int(top / (bottom << static_cast<unsigned>(-bits)))
                    : cpp_int((top << static_cast<unsigned>(bits)) / bottom);
  };
  cpp_int digits = quotient(shift);
  while (msb(digits) >= 53) {  // 53 digits, the last of them has the index 52
    digits = quotient(--shift);
  }
  const auto below = static_cast<double>(static_cast<std::int64_t>(digits));  // exact
  const double low = std::ldexp(below, -shift);
  const double high = std::ldexp(below + 1, -shift);
  const Exact rest = magnitude - ExactOf(low);
  const Exact other = ExactOf(high) - magnitude;
  const bool isLow = rest < other || (rest == other && digits % 2 == 0);
  const double nearest = isLow ? low : high;
  return number < 0 ? -nearest : nearest;
}

Exact Magnitude(const Exact& number) { return number < 0 ? Exact(-number) : number; }

// Whether no other double is nearer to `exact`, but for ties that are nearer than 2^-bits of `largest`.
testing::AssertionResult IsNearest(double number, const Exact& exact, const Exact& largest,
                                   unsigned bits) {
  const Exact error = Magnitude(ExactOf(number) - exact);
  const Exact least = Magnitude(ExactOf(Rounded(exact)) - exact);
  if ((error - least) * Exact(cpp_int(1) << bits) <= largest) {
    return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << std::hexfloat << number << " and not " << Rounded(exact);
}

kelmo_quantity Of(double number, std::int32_t code) {
  return kelmo_quantity_of(number, 0, 0, code);
}

std::string DecimalText(RandomNumbers& random) {
  std::string text = std::to_string(1 + random.Below(1000000000));
  if (random.Below(2) == 0) {
    text += std::to_string(random.Below(1000000));
  }
  if (random.Below(2) == 0) {
    text.insert(static_cast<std::size_t>(random.Below(static_cast<int>(text.size()) + 1)), ".");
  }
  if (random.Below(3) == 0) {
    text += "e" + std::to_string(random.Below(13) - 6);
  }
  return text;
}

// The number of a text, by its definition.
Exact ExactDecimal(const std::string& text) {
  const std::size_t e = std::min(text.find('e'), text.size());
  int exponent = e < text.size() ? std::stoi(text.substr(e + 1)) : 0;
  cpp_int digits = 0;
  bool isFraction = false;
  for (const char c : text.substr(0, e)) {
    if (c == '.') {
      isFraction = true;
    } else {
      digits = digits * 10 + (c - '0');
      exponent -= isFraction ? 1 : 0;
    }
  }
  const cpp_int power = pow(cpp_int(10), static_cast<unsigned>(std::abs(exponent)));
  return exponent < 0 ? Exact(digits, power) : Exact(digits * power);
}

TEST(QuantityExact, RoundsByItsDefinition) {
  EXPECT_EQ(Rounded(Exact(1)), 1);
  EXPECT_EQ(Rounded(Exact(1, 3)), 1.0 / 3);
  EXPECT_EQ(Rounded(Exact(-2, 3)), -2.0 / 3);
  EXPECT_EQ(Rounded(ExactOf(0.1)), 0.1);
  EXPECT_EQ(Rounded(Exact((cpp_int(1) << 53U) + 1)), 0x1p53) << "a tie";
  EXPECT_EQ(Rounded(Exact((cpp_int(1) << 53U) + 3)), 0x1p53 + 4) << "a tie";
  EXPECT_EQ(ExactDecimal("12.5e-1"), Exact(5, 4));
}

// The low part is at most one part in 2^100 away.
TEST(QuantityExact, FractionsInFilesAreTheNearestDoubles) {
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = 0; i < Rounds(3000); ++i) {
    const std::string number = DecimalText(random);
    const std::string divisor = DecimalText(random);
    const bool isFraction = random.Below(3) != 0;
    const std::string text = isFraction ? number + "/" + divisor : number;
    const Exact exact =
        isFraction ? Exact(ExactDecimal(number) / ExactDecimal(divisor)) : ExactDecimal(number);
    const auto read = ReadUnitNumber(text);
    ASSERT_TRUE(read) << text;
    ASSERT_PRED_FORMAT2(SameBits, read->high, Rounded(exact)) << text;
    ASSERT_LE(Magnitude(ExactOf(*read) - exact) * Exact(cpp_int(1) << 100U), exact) << text;
  }
}

// Kinds with random units: kind 10 is linear, 18 has points, with the differences of kind 19.
struct Table {
  explicit Table(RandomNumbers& random, bool hasLowParts)
      : units(Make(random, hasLowParts), nullptr) {}

  static UnitCollection Make(RandomNumbers& random, bool hasLowParts) {
    const auto any = [&](int from, int to) {
      DoubleDouble number = {random.OfMagnitude(from, to), 0};
      if (hasLowParts) {
        number.low = number.high * 0x1p-54 * random.Fraction();
      }
      return number;
    };
    UnitCollection collection;
    for (std::int32_t i = 1; i <= kUnits; ++i) {
      UnitRow linear;
      linear.code = 10000 + i;
      linear.factor = any(-20, 20);
      linear.factor = {std::abs(linear.factor.high),
                       linear.factor.high < 0 ? -linear.factor.low : linear.factor.low};
      linear.symbol = "u" + std::to_string(i);
      UnitRow difference = linear;
      difference.code = 19000 + i;
      UnitRow point = linear;
      point.code = 18000 + i;
      point.difference = difference.code;
      point.offset = random.Below(4) == 0 ? DoubleDouble() : any(-20, 20);
      collection.Put(linear);
      collection.Put(difference);
      collection.Put(point);
    }
    return collection;
  }

  static constexpr std::int32_t kUnits = 6;
  const UnitSet units;
};

double AnyNumber(RandomNumbers& random) {
  return random.Below(20) == 0 ? 0 : random.OfMagnitude(-60, 60);
}

std::int32_t AnyCode(RandomNumbers& random, std::int32_t kind) {
  return 1000 * kind + 1 + random.Below(Table::kUnits);
}

TEST(QuantityExact, LinearConversionHasThreeRoundings) {
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = 0; i < Rounds(3000); ++i) {
    const Table table(random, random.Below(2) == 0);
    const double number = AnyNumber(random);
    const kelmo_quantity from = Of(number, AnyCode(random, 10));
    const std::int32_t code = AnyCode(random, 10);
    kelmo_quantity to = {};
    ASSERT_EQ(Convert(table.units, &from, 1, code, &to), KELMO_OK);
    const double factor = table.units.Find(from.code)->factor.high;
    const double divisor = table.units.Find(code)->factor.high;
    const double product = Rounded(ExactOf(factor) * ExactOf(number));
    const double expected =
        code == from.code ? number : Rounded(ExactOf(product) / ExactOf(divisor));
    ASSERT_EQ(to.number, expected) << number;
  }
}

TEST(QuantityExact, OrderIsThatOfTheBaseNumbersRoundedOnce) {
  RandomNumbers random(randomSeed);
  int equal = 0;
  for (std::uint64_t i = 0; i < Rounds(6000); ++i) {
    const Table table(random, false);
    const std::int32_t kind = random.Below(2) == 0 ? 10 : 18;
    const kelmo_quantity left = Of(AnyNumber(random), AnyCode(random, kind));
    kelmo_quantity right = Of(AnyNumber(random), AnyCode(random, kind));
    if (random.Below(2) == 0) {  // near each other
      ASSERT_EQ(Convert(table.units, &left, 1, right.code, &right), KELMO_OK);
      right.number = random.Below(2) == 0 ? std::nextafter(right.number, 1e300) : right.number;
    }
    std::array<double, 2> bases = {};
    std::array<std::uint64_t, 2> hashes = {};
    for (std::size_t side = 0; side < 2; ++side) {
      const kelmo_quantity& quantity = side == 0 ? left : right;
      const UnitRow& unit = *table.units.Find(quantity.code);
      bases[side] = Rounded(ExactOf(unit.factor) * ExactOf(quantity.number) + ExactOf(unit.offset));
      ASSERT_EQ(BaseNumber(quantity.number, unit), bases[side]);
      ASSERT_EQ(HashOf(table.units, quantity, hashes[side]), KELMO_OK);
    }
    const double first = bases[0];
    const double second = bases[1];
    const std::int32_t expected = (first > second ? 1 : 0) - (first < second ? 1 : 0);
    std::int32_t result = 99;
    ASSERT_EQ(Compare(table.units, left, right, result), KELMO_OK);
    ASSERT_EQ(result, expected);
    ASSERT_EQ(hashes[0] == hashes[1], expected == 0);
    equal += expected == 0 ? 1 : 0;
  }
  EXPECT_GT(equal, 0);
}

// With low parts, the base number is the nearest double but for ties that are nearer than 2^-104.
TEST(QuantityExact, BaseNumbersWithLowPartsAreTheNearestDoubles) {
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = 0; i < Rounds(3000); ++i) {
    const Table table(random, true);
    const UnitRow& unit = *table.units.Find(AnyCode(random, 18));
    const double number = AnyNumber(random);
    const Exact product = ExactOf(unit.factor) * ExactOf(number);
    const Exact exact = product + ExactOf(unit.offset);
    const Exact largest = std::max(Magnitude(product), Magnitude(ExactOf(unit.offset)));
    ASSERT_TRUE(IsNearest(BaseNumber(number, unit), exact, largest, 104)) << number;
  }
}

// Half of the results are near 0, where nearly equal terms cancel each other. The error is at most half a
// unit of the last place, and 2^-103 of the largest term.
TEST(QuantityExact, ConversionOfPointsIsTheNearestDouble) {
  RandomNumbers random(randomSeed);
  for (std::uint64_t i = 0; i < Rounds(6000); ++i) {
    const Table table(random, random.Below(2) == 0);
    kelmo_quantity from = Of(AnyNumber(random), AnyCode(random, 18));
    const std::int32_t code = AnyCode(random, 18);
    const UnitRow& source = *table.units.Find(from.code);
    const UnitRow& target = *table.units.Find(code);
    if (random.Below(2) == 0) {
      from.number = (target.offset.high - source.offset.high) / source.factor.high;
    }
    kelmo_quantity to = {};
    ASSERT_EQ(Convert(table.units, &from, 1, code, &to), KELMO_OK);
    const Exact product = ExactOf(source.factor) * ExactOf(from.number);
    const Exact exact =
        (product + ExactOf(source.offset) - ExactOf(target.offset)) / ExactOf(target.factor);
    const Exact largest = std::max({Magnitude(product), Magnitude(ExactOf(source.offset)),
                                    Magnitude(ExactOf(target.offset))}) /
                          ExactOf(target.factor);
    if (code == from.code) {
      ASSERT_EQ(to.number, from.number);
    } else {
      ASSERT_TRUE(IsNearest(to.number, exact, largest, 103)) << from.number;
    }
  }
}

TEST(QuantityExact, TemperaturesAreTheNearestDoubles) {
  const UnitSet units(EngineeringUnits(), nullptr);
  struct Scale {
    std::int32_t code;
    Exact factor;
    Exact offset;
  };
  const std::array<Scale, 4> scales = {{{18001, Exact(1), Exact(0)},
                                        {18002, Exact(1), Exact(27315, 100)},
                                        {18003, Exact(5, 9), Exact(229835, 900)},
                                        {18004, Exact(5, 9), Exact(0)}}};
  for (int tenths = -5000; tenths <= 10000; tenths += 7) {
    for (const Scale& from : scales) {
      const double number = tenths / 10.0;
      const Exact base = ExactOf(number) * from.factor + from.offset;
      for (const Scale& to : scales) {
        const Exact exact = (base - to.offset) / to.factor;
        double result = 0;
        ASSERT_EQ(ConvertNumbers(units, from.code, to.code, &number, 1, &result), KELMO_OK);
        ASSERT_TRUE(IsNearest(result, from.code == to.code ? ExactOf(number) : exact, 1000, 100))
            << number << " of " << from.code << " in " << to.code;
      }
    }
  }
}

}  // namespace
