#include "host/quantity.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "tests/host/units_of_tests.h"
#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargest = std::numeric_limits<double>::max();

constexpr std::int32_t kMetre = 10001;
constexpr std::int32_t kInch = 10002;
constexpr std::int32_t kMillimetre = 10003;
constexpr std::int32_t kSecond = 12001;
constexpr std::int32_t kKelvin = 18001;
constexpr std::int32_t kCelsius = 18002;
constexpr std::int32_t kFahrenheit = 18003;
constexpr std::int32_t kKelvins = 19001;  // differences
constexpr std::int32_t kCelsiusDegrees = 19002;
constexpr std::int32_t kFahrenheitDegrees = 19003;
constexpr std::int32_t kUnknown = 77001;

const UnitSet& Units() {
  static const UnitSet units(EngineeringUnits(), nullptr);
  return units;
}

kelmo_quantity Of(double number, std::int32_t code, double absolute = 0, double relative = 0) {
  return kelmo_quantity_of(number, absolute, relative, code);
}

// With a `reserved` that is not allowed.
kelmo_quantity Reserved(double number, std::int32_t code) {
  kelmo_quantity quantity = Of(number, code);
  quantity.reserved = 1;
  return quantity;
}

void ExpectSame(const kelmo_quantity& actual, const kelmo_quantity& expected, const char* row) {
  EXPECT_PRED_FORMAT2(SameBits, actual.number, expected.number) << row;
  EXPECT_PRED_FORMAT2(SameBits, actual.absolute_tolerance, expected.absolute_tolerance) << row;
  EXPECT_PRED_FORMAT2(SameBits, actual.relative_tolerance, expected.relative_tolerance) << row;
  EXPECT_EQ(actual.code, expected.code) << row;
  EXPECT_EQ(actual.reserved, expected.reserved) << row;
}

using Operation = kelmo_status(const UnitSet&, const kelmo_quantity&, const kelmo_quantity&,
                               kelmo_quantity&) noexcept;

struct Row {
  const char* name;
  kelmo_quantity left;
  kelmo_quantity right;
  kelmo_status status;
  kelmo_quantity sum;  // if the status is KELMO_OK
};

const kelmo_quantity kNothing = Of(0, 0);
const kelmo_quantity kUntouched = Of(-123, 456, 7, 8);

// The result may be another object, or either operand.
void Check(Operation* operation, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const bool isDone = row.status == KELMO_OK;
    kelmo_quantity result = kUntouched;
    EXPECT_EQ(operation(Units(), row.left, row.right, result), row.status) << row.name;
    ExpectSame(result, isDone ? row.sum : kUntouched, row.name);

    kelmo_quantity left = row.left;
    EXPECT_EQ(operation(Units(), left, row.right, left), row.status) << row.name;
    ExpectSame(left, isDone ? row.sum : row.left, row.name);

    kelmo_quantity right = row.right;
    EXPECT_EQ(operation(Units(), row.left, right, right), row.status) << row.name;
    ExpectSame(right, isDone ? row.sum : row.right, row.name);
  }
}

TEST(Quantity, SumsHaveTheUnitAndTheTolerancesOfTheLeftOperand) {
  Check(
      Add,
      {
          {"one unit", Of(1, kMetre), Of(2, kMetre), KELMO_OK, Of(3, kMetre)},
          {"two units", Of(1, kMetre, 0.1, 0.2), Of(10, kInch, 3, 4), KELMO_OK,
           Of(0.0254 * 10 / 1 + 1, kMetre, 0.1, 0.2)},
          {"the other order", Of(10, kInch, 3, 4), Of(1, kMetre, 0.1, 0.2), KELMO_OK,
           Of(1.0 * 1 / 0.0254 + 10, kInch, 3, 4)},
          {"one unit is converted, too", Of(0, kInch), Of(1.5, kInch), KELMO_OK,
           Of(0.0254 * 1.5 / 0.0254, kInch)},
          {"infinities", Of(kInfinity, kMetre), Of(1, kInch), KELMO_OK, Of(kInfinity, kMetre)},
          {"an overflow", Of(kLargest, kMetre), Of(kLargest, kMetre), KELMO_OK,
           Of(kInfinity, kMetre)},
          {"negative zeroes", Of(-0.0, kMetre), Of(-0.0, kMetre), KELMO_OK, Of(-0.0, kMetre)},
          {"another kind", Of(1, kMetre), Of(1, kSecond), KELMO_DIFFERENT_KINDS, kNothing},
          {"an unknown unit on the left", Of(1, kUnknown), Of(1, kMetre), KELMO_UNKNOWN_UNIT,
           kNothing},
          {"an unknown unit on the right", Of(1, kMetre), Of(1, kUnknown), KELMO_UNKNOWN_UNIT,
           kNothing},
          {"the code of a kind", Of(1, 10000), Of(1, kMetre), KELMO_UNKNOWN_UNIT, kNothing},
          {"a reserved field on the left", Reserved(1, kMetre), Of(1, kMetre),
           KELMO_INVALID_ARGUMENT, kNothing},
          {"a reserved field on the right", Of(1, kMetre), Reserved(1, kMetre),
           KELMO_INVALID_ARGUMENT, kNothing},

          // Points
          {"a point and a difference", Of(20, kCelsius, 0.1), Of(5, kCelsiusDegrees), KELMO_OK,
           Of(25, kCelsius, 0.1)},
          {"a difference of another unit", Of(20, kCelsius), Of(9, kFahrenheitDegrees), KELMO_OK,
           Of(5.0 / 9 * 9 / 1 + 20, kCelsius)},
          {"two points", Of(20, kCelsius), Of(5, kCelsius), KELMO_POINT_UNIT, kNothing},
          {"two points of two units", Of(20, kCelsius), Of(5, kKelvin), KELMO_POINT_UNIT, kNothing},
          {"a difference and a point", Of(5, kCelsiusDegrees), Of(20, kCelsius), KELMO_POINT_UNIT,
           kNothing},
          {"a difference and a point of two units", Of(5, kKelvins), Of(20, kFahrenheit),
           KELMO_POINT_UNIT, kNothing},
          {"a point and another kind", Of(20, kCelsius), Of(1, kMetre), KELMO_DIFFERENT_KINDS,
           kNothing},
          {"another kind and a point", Of(1, kMetre), Of(20, kCelsius), KELMO_DIFFERENT_KINDS,
           kNothing},
          {"a point with a relative tolerance", Of(20, kCelsius, 0, 0.1), Of(5, kCelsiusDegrees),
           KELMO_POINT_UNIT, kNothing},
          {"a difference with a relative tolerance", Of(20, kCelsius),
           Of(5, kCelsiusDegrees, 0, 0.1), KELMO_OK, Of(25, kCelsius)},
          {"a negative relative tolerance", Of(20, kCelsius, 0, -0.1), Of(5, kCelsiusDegrees),
           KELMO_POINT_UNIT, kNothing},
          {"a relative tolerance that is NaN", Of(20, kCelsius, 0, kNaN), Of(5, kCelsiusDegrees),
           KELMO_POINT_UNIT, kNothing},
      });
}

TEST(Quantity, DifferencesOfPointsAreDifferences) {
  Check(Subtract,
        {
            {"one unit", Of(1, kMetre, 0.1), Of(3, kMetre), KELMO_OK, Of(-2, kMetre, 0.1)},
            {"two units", Of(1, kMetre), Of(10, kInch), KELMO_OK, Of(1 - 0.0254 * 10 / 1, kMetre)},
            {"another kind", Of(1, kMetre), Of(1, kSecond), KELMO_DIFFERENT_KINDS, kNothing},
            {"two points", Of(20, kCelsius, 0.1), Of(5, kCelsius, 9), KELMO_OK,
             Of(15, kCelsiusDegrees, 0.1)},
            {"two points of two units", Of(0, kCelsius), Of(32, kFahrenheit), KELMO_OK,
             Of(0, kCelsiusDegrees)},
            {"in the unit of the left one", Of(212, kFahrenheit), Of(0, kCelsius), KELMO_OK,
             Of(180, kFahrenheitDegrees)},
            {"a point and a difference", Of(20, kCelsius), Of(5, kKelvins), KELMO_OK,
             Of(15, kCelsius)},
            {"a difference and a point", Of(5, kCelsiusDegrees), Of(20, kCelsius), KELMO_POINT_UNIT,
             kNothing},
            {"points with a relative tolerance", Of(20, kCelsius), Of(5, kCelsius, 0, 1),
             KELMO_POINT_UNIT, kNothing},
            {"a point and another kind", Of(20, kCelsius), Of(1, kMetre), KELMO_DIFFERENT_KINDS,
             kNothing},
            {"an unknown unit", Of(20, kCelsius), Of(1, kUnknown), KELMO_UNKNOWN_UNIT, kNothing},
            {"a reserved field", Of(1, kMetre), Reserved(1, kMetre), KELMO_INVALID_ARGUMENT,
             kNothing},
        });
}

TEST(Quantity, IsScaledWithItsTolerances) {
  struct Case {
    const char* name;
    kelmo_quantity quantity;
    double number;
    kelmo_status status;
    double product;
    double quotient;
  };
  const Case cases[] = {
      {"a number", Of(3, kInch, 0.1, 0.2), 2, KELMO_OK, 6, 1.5},
      {"a tenth", Of(3, kInch), 0.1, KELMO_OK, 0.1 * 3, 3 / 0.1},
      {"zero", Of(3, kInch), 0, KELMO_OK, 0, kInfinity},
      {"minus zero", Of(3, kInch), -0.0, KELMO_OK, -0.0, -kInfinity},
      {"infinity", Of(3, kInch), kInfinity, KELMO_OK, kInfinity, 0},
      {"a difference", Of(3, kKelvins), 2, KELMO_OK, 6, 1.5},
      {"a point", Of(3, kKelvin), 2, KELMO_POINT_UNIT, 0, 0},
      {"an unknown unit", Of(3, kUnknown), 2, KELMO_UNKNOWN_UNIT, 0, 0},
      {"a reserved field", Reserved(3, kInch), 2, KELMO_INVALID_ARGUMENT, 0, 0},
  };
  for (const Case& row : cases) {
    kelmo_quantity expected = row.quantity;
    kelmo_quantity result = row.quantity;
    EXPECT_EQ(Multiply(Units(), result, row.number, result), row.status) << row.name;
    expected.number = row.status == KELMO_OK ? row.product : row.quantity.number;
    ExpectSame(result, expected, row.name);

    result = row.quantity;
    EXPECT_EQ(Divide(Units(), result, row.number, result), row.status) << row.name;
    expected.number = row.status == KELMO_OK ? row.quotient : row.quantity.number;
    ExpectSame(result, expected, row.name);
  }
  kelmo_quantity result;
  ASSERT_EQ(Divide(Units(), Of(0, kInch), 0, result), KELMO_OK);
  EXPECT_TRUE(std::isnan(result.number));
}

TEST(Quantity, RatiosArePlainNumbers) {
  struct Case {
    const char* name;
    kelmo_quantity left;
    kelmo_quantity right;
    kelmo_status status;
    double ratio;
  };
  const Case cases[] = {
      {"one unit", Of(6, kMetre), Of(2, kMetre), KELMO_OK, 3},
      {"two units", Of(1, kMetre), Of(10, kInch), KELMO_OK, 1 / (0.0254 * 10 / 1)},
      {"zero", Of(1, kMetre), Of(0, kMetre), KELMO_OK, kInfinity},
      {"differences", Of(10, kKelvins), Of(5, kCelsiusDegrees), KELMO_OK, 2},
      {"points", Of(10, kKelvin), Of(5, kCelsius), KELMO_POINT_UNIT, 0},
      {"a point and a difference", Of(10, kKelvin), Of(5, kKelvins), KELMO_DIFFERENT_KINDS, 0},
      {"another kind", Of(1, kMetre), Of(1, kSecond), KELMO_DIFFERENT_KINDS, 0},
      {"an unknown unit", Of(1, kUnknown), Of(1, kMetre), KELMO_UNKNOWN_UNIT, 0},
      {"a reserved field", Of(1, kMetre), Reserved(1, kMetre), KELMO_INVALID_ARGUMENT, 0},
  };
  for (const Case& row : cases) {
    double result = 99;
    EXPECT_EQ(RatioOf(Units(), row.left, row.right, result), row.status) << row.name;
    EXPECT_PRED_FORMAT2(SameBits, result, row.status == KELMO_OK ? row.ratio : 99) << row.name;
  }
}

TEST(Quantity, SumsOfManyAreThoseOfOneAfterTheOther) {
  struct Case {
    const char* name;
    std::vector<kelmo_quantity> summands;
    kelmo_status status;
    kelmo_quantity sum;
  };
  const Case cases[] = {
      {"one", {Of(3, kInch, 1, 2)}, KELMO_OK, Of(3, kInch, 1, 2)},
      {"one that is minus zero", {Of(-0.0, kInch)}, KELMO_OK, Of(-0.0, kInch)},
      {"three units",
       {Of(1, kMetre, 0.5), Of(10, kInch), Of(7, kMillimetre)},
       KELMO_OK,
       Of(0.001 * 7 / 1 + (0.0254 * 10 / 1 + 1), kMetre, 0.5)},
      {"one that is too small to count",
       {Of(0x1p53, kMetre), Of(1, kMetre), Of(1, kMetre)},
       KELMO_OK,
       Of(0x1p53, kMetre)},
      {"differences", {Of(1, kKelvins), Of(2, kCelsiusDegrees)}, KELMO_OK, Of(3, kKelvins)},
      {"a point", {Of(1, kKelvin)}, KELMO_POINT_UNIT, kNothing},
      {"a point and a difference", {Of(1, kKelvin), Of(1, kKelvins)}, KELMO_POINT_UNIT, kNothing},
      {"a difference and a point", {Of(1, kKelvins), Of(1, kKelvin)}, KELMO_POINT_UNIT, kNothing},
      {"another kind at the end",
       {Of(1, kMetre), Of(1, kMetre), Of(1, kSecond)},
       KELMO_DIFFERENT_KINDS,
       kNothing},
      {"an unknown unit", {Of(1, kMetre), Of(1, kUnknown)}, KELMO_UNKNOWN_UNIT, kNothing},
      {"a reserved field", {Of(1, kMetre), Reserved(1, kMetre)}, KELMO_INVALID_ARGUMENT, kNothing},
  };
  for (const Case& row : cases) {
    kelmo_quantity result = kUntouched;
    EXPECT_EQ(SumOf(Units(), row.summands.data(), row.summands.size(), result), row.status)
        << row.name;
    ExpectSame(result, row.status == KELMO_OK ? row.sum : kUntouched, row.name);

    std::vector<kelmo_quantity> aliased = row.summands;
    EXPECT_EQ(SumOf(Units(), aliased.data(), aliased.size(), aliased.back()), row.status);
    ExpectSame(aliased.back(), row.status == KELMO_OK ? row.sum : row.summands.back(), row.name);
  }
}

TEST(Quantity, ComparesNumbersOfTheBaseUnit) {
  struct Case {
    const char* name;
    kelmo_quantity left;
    kelmo_quantity right;
    std::int32_t result;
  };
  const Case cases[] = {
      {"less", Of(1, kMetre), Of(2, kMetre), -1},
      {"more", Of(1, kMetre), Of(10, kInch), 1},
      {"equal in two units", Of(1, kInch), Of(25.4, kMillimetre), 0},
      {"one value is equal to itself", Of(40.1, kInch), Of(40.1, kInch), 0},
      {"tolerances play no part", Of(1, kMetre, 1, 2), Of(1, kMetre, 3, 4), 0},
      {"minus zero", Of(-0.0, kMetre), Of(0, kInch), 0},
      {"infinity", Of(kInfinity, kMetre), Of(kLargest, kMetre), 1},
      {"infinities", Of(kInfinity, kMetre), Of(kInfinity, kInch), 0},
      {"two infinities", Of(-kInfinity, kMetre), Of(kInfinity, kInch), -1},
      {"NaN is above all others", Of(kNaN, kMetre), Of(kInfinity, kMetre), 1},
      {"and they are below", Of(kInfinity, kMetre), Of(kNaN, kInch), -1},
      {"NaN is equal to itself", Of(kNaN, kMetre), Of(-kNaN, kInch), 0},
      {"points", Of(0, kCelsius), Of(32, kFahrenheit), 0},
      {"the point where two scales meet", Of(-40, kCelsius), Of(-40, kFahrenheit), 0},
      {"points that differ by less than a bit of the base number", Of(-40, kCelsius),
       Of(std::nextafter(-40, 0), kFahrenheit), 0},
      {"points beside it", Of(-40, kCelsius), Of(-39.9999999999999, kFahrenheit), -1},
      {"kelvins", Of(273.15, kKelvin), Of(0, kCelsius), 0},
      {"infinite points", Of(kInfinity, kCelsius), Of(kInfinity, kFahrenheit), 0},
      {"the largest points", Of(kLargest, kCelsius), Of(kLargest, kKelvin), 0},
      {"points that are NaN", Of(kNaN, kCelsius), Of(kInfinity, kFahrenheit), 1},
  };
  for (const Case& row : cases) {
    std::int32_t result = 99;
    std::int32_t reverse = 99;
    EXPECT_EQ(Compare(Units(), row.left, row.right, result), KELMO_OK) << row.name;
    EXPECT_EQ(Compare(Units(), row.right, row.left, reverse), KELMO_OK) << row.name;
    EXPECT_EQ(result, row.result) << row.name;
    EXPECT_EQ(reverse, -row.result) << row.name;
    std::uint64_t left = 0;
    std::uint64_t right = 0;
    EXPECT_EQ(HashOf(Units(), row.left, left), KELMO_OK) << row.name;
    EXPECT_EQ(HashOf(Units(), row.right, right), KELMO_OK) << row.name;
    EXPECT_EQ(left == right, row.result == 0) << row.name;
  }
}

TEST(Quantity, ComparesOneKindOnly) {
  struct Case {
    const char* name;
    kelmo_quantity left;
    kelmo_quantity right;
    kelmo_status status;
  };
  const Case cases[] = {
      {"two kinds", Of(1, kMetre), Of(1, kSecond), KELMO_DIFFERENT_KINDS},
      {"a point and its difference", Of(1, kKelvin), Of(1, kKelvins), KELMO_DIFFERENT_KINDS},
      {"an unknown unit", Of(1, kMetre), Of(1, kUnknown), KELMO_UNKNOWN_UNIT},
      {"a reserved field", Of(1, kMetre), Reserved(1, kMetre), KELMO_INVALID_ARGUMENT},
  };
  for (const Case& row : cases) {
    std::int32_t result = 99;
    std::uint64_t hash = 99;
    EXPECT_EQ(Compare(Units(), row.left, row.right, result), row.status) << row.name;
    EXPECT_EQ(Compare(Units(), row.right, row.left, result), row.status) << row.name;
    EXPECT_EQ(result, 99) << row.name;
    if (row.status != KELMO_DIFFERENT_KINDS) {
      EXPECT_EQ(HashOf(Units(), row.right, hash), row.status) << row.name;
      EXPECT_EQ(hash, 99U) << row.name;
    }
  }
  std::int32_t result = 99;
  EXPECT_EQ(Compare(Units(), Of(1, kKelvin), Of(1, kKelvin, 0, 1), result), KELMO_OK);
  EXPECT_EQ(result, 0) << "tolerances play no part, also those that points do not have";
  std::uint64_t metres = 0;
  std::uint64_t seconds = 0;
  ASSERT_EQ(HashOf(Units(), Of(1, kMetre), metres), KELMO_OK);
  ASSERT_EQ(HashOf(Units(), Of(1, kSecond), seconds), KELMO_OK);
  EXPECT_NE(metres, seconds) << "kinds have other hashes";
}

// The factor 0 of the first library.
TEST(Quantity, AFactorOfZeroGivesNaN) {
  const UnitSet units(UnitsAtStart(UnitStart::kAfterInit), nullptr);
  const kelmo_quantity one = Of(1, 30001, 0.1);
  kelmo_quantity result;
  ASSERT_EQ(Add(units, one, one, result), KELMO_OK);
  EXPECT_TRUE(std::isnan(result.number));
  ASSERT_EQ(Multiply(units, one, 2, result), KELMO_OK);
  EXPECT_EQ(result.number, 2);
  std::int32_t compared = 99;
  ASSERT_EQ(Compare(units, one, Of(2, 30001), compared), KELMO_OK);
  EXPECT_EQ(compared, 0) << "both are NaN in the base unit";
  ASSERT_EQ(Convert(units, &one, 1, 30001, &result), KELMO_OK);
  ExpectSame(result, one, "it has this unit already");
}

struct Conversion {
  const char* name;
  kelmo_quantity from;
  std::int32_t code;
  kelmo_quantity to;
};

const Conversion kConversions[] = {
    {"the same unit stays as it is", Of(-0.0, kInch, 1, 2), kInch, Of(-0.0, kInch, 1, 2)},
    {"metres and inches", Of(1, kMetre, 0.1, 0.2), kInch,
     Of(1.0 * 1 / 0.0254, kInch, 1.0 * 0.1 / 0.0254, 0.2)},
    {"inches and metres", Of(10, kInch, 0.1), kMetre, Of(0.0254 * 10 / 1, kMetre, 0.0254 * 0.1)},
    {"minus zero becomes zero", Of(-0.0, kMetre, -0.0), kInch, Of(0, kInch, 0)},
    {"infinity", Of(-kInfinity, kMetre, kInfinity), kInch, Of(-kInfinity, kInch, kInfinity)},
    {"an overflow", Of(kLargest, kMetre), kInch, Of(kInfinity, kInch)},
    {"a product that overflows", Of(kLargest, 10006), kMillimetre, Of(kInfinity, kMillimetre)},
    {"the smallest number", Of(0x1p-1074, kInch), kMetre, Of(0, kMetre)},
    {"-40 degrees", Of(-40, kCelsius, 0.5), kFahrenheit,
     Of(-40, kFahrenheit, 1.0 * 0.5 / (5.0 / 9))},
    {"-40 degrees, back", Of(-40, kFahrenheit), kCelsius, Of(-40, kCelsius)},
    {"0 degrees", Of(0, kCelsius), kFahrenheit, Of(32, kFahrenheit)},
    {"0 degrees, back", Of(32, kFahrenheit), kCelsius, Of(0, kCelsius)},
    {"100 degrees", Of(100, kCelsius), kFahrenheit, Of(212, kFahrenheit)},
    {"100 degrees, back", Of(212, kFahrenheit), kCelsius, Of(100, kCelsius)},
    {"0 degrees in kelvins", Of(0, kCelsius), kKelvin, Of(273.15, kKelvin)},
    {"absolute zero", Of(0, kKelvin), kCelsius, Of(-273.15, kCelsius)},
    {"absolute zero of two scales", Of(0, kKelvin), kFahrenheit, Of(-459.67, kFahrenheit)},
    {"an infinite point", Of(kInfinity, kCelsius), kFahrenheit, Of(kInfinity, kFahrenheit)},
    {"a point near the largest double", Of(kLargest, kCelsius), kKelvin, Of(kLargest, kKelvin)},
    {"a point of the same unit", Of(-0.0, kCelsius), kCelsius, Of(-0.0, kCelsius)},
};

TEST(Quantity, ConvertsNumberAndTolerance) {
  for (const Conversion& row : kConversions) {
    kelmo_quantity result = kUntouched;
    EXPECT_EQ(Convert(Units(), &row.from, 1, row.code, &result), KELMO_OK) << row.name;
    ExpectSame(result, row.to, row.name);
    double number = row.from.number;
    EXPECT_EQ(ConvertNumbers(Units(), row.from.code, row.code, &number, 1, &number), KELMO_OK)
        << row.name;
    EXPECT_PRED_FORMAT2(SameBits, number, row.to.number) << row.name << ", a plain number";
  }
  kelmo_quantity result = kUntouched;
  const kelmo_quantity nan = Of(kNaN, kCelsius);
  ASSERT_EQ(Convert(Units(), &nan, 1, kKelvin, &result), KELMO_OK);
  EXPECT_TRUE(std::isnan(result.number));
}

TEST(Quantity, ConvertsArraysOfSeveralUnits) {
  const std::vector<kelmo_quantity> given = {Of(1, kMetre),
                                             Of(2, kInch, 1),
                                             Of(3, kInch, 2),
                                             Of(-0.0, kMillimetre),
                                             Of(5, kMillimetre, 0, 0.5),
                                             Of(6, kMetre)};
  std::vector<kelmo_quantity> expected;
  for (const kelmo_quantity& quantity : given) {
    expected.push_back(kUntouched);
    ASSERT_EQ(Convert(Units(), &quantity, 1, kMillimetre, &expected.back()), KELMO_OK);
  }
  ASSERT_EQ(std::signbit(expected[3].number), true) << "this unit already";
  std::vector<kelmo_quantity> results(given.size(), kUntouched);
  ASSERT_EQ(Convert(Units(), given.data(), given.size(), kMillimetre, results.data()), KELMO_OK);
  std::vector<kelmo_quantity> aliased = given;
  ASSERT_EQ(Convert(Units(), aliased.data(), given.size(), kMillimetre, aliased.data()), KELMO_OK);
  for (std::size_t i = 0; i < given.size(); ++i) {
    ExpectSame(results[i], expected[i], "another array");
    ExpectSame(aliased[i], expected[i], "the same array");
  }
}

TEST(Quantity, ConvertsNothingIfOneQuantityIsNotAllowed) {
  struct Case {
    const char* name;
    kelmo_quantity wrong;
    std::int32_t code;
    kelmo_status status;
  };
  const Case cases[] = {
      {"another kind", Of(1, kSecond), kMetre, KELMO_DIFFERENT_KINDS},
      {"an unknown unit", Of(1, kUnknown), kMetre, KELMO_UNKNOWN_UNIT},
      {"a reserved field", Reserved(1, kInch), kMetre, KELMO_INVALID_ARGUMENT},
      {"a point with a relative tolerance", Of(1, kCelsius, 0, 1), kKelvin, KELMO_POINT_UNIT},
      {"a point of the same unit with a relative tolerance", Of(1, kKelvin, 0, 1), kKelvin,
       KELMO_POINT_UNIT},
      {"a point and differences", Of(1, kKelvin), kKelvins, KELMO_DIFFERENT_KINDS},
      {"an unknown target", Of(1, kMetre), kUnknown, KELMO_UNKNOWN_UNIT},
      {"a kind as the target", Of(1, kMetre), 10000, KELMO_UNKNOWN_UNIT},
  };
  for (const Case& row : cases) {
    const UnitRow* const target = Units().Find(row.code);
    for (std::size_t place = 0; place < 4; ++place) {
      std::vector<kelmo_quantity> given(4, Of(1, target != nullptr ? row.code : kMetre));
      given[1].code = given[1].code == kMetre ? kInch : given[1].code;
      given[place] = row.wrong;
      const std::vector<kelmo_quantity> before = given;
      EXPECT_EQ(Convert(Units(), given.data(), given.size(), row.code, given.data()), row.status)
          << row.name << " at " << place;
      for (std::size_t i = 0; i < given.size(); ++i) {
        ExpectSame(given[i], before[i], row.name);
      }
    }
  }
  EXPECT_EQ(Convert(Units(), nullptr, 0, kMetre, nullptr), KELMO_OK);
  EXPECT_EQ(Convert(Units(), nullptr, 0, kUnknown, nullptr), KELMO_UNKNOWN_UNIT);
}

TEST(Quantity, ConvertsPlainNumbers) {
  const std::vector<double> given = {1, -0.0, 2.5, kInfinity};
  std::vector<double> results(given.size(), 99);
  EXPECT_EQ(ConvertNumbers(Units(), kInch, kMetre, given.data(), given.size(), results.data()),
            KELMO_OK);
  const std::vector<double> expected = {0.0254, 0, 0.0254 * 2.5 / 1, kInfinity};
  for (std::size_t i = 0; i < given.size(); ++i) {
    EXPECT_PRED_FORMAT2(SameBits, results[i], expected[i]) << i;
  }
  EXPECT_EQ(ConvertNumbers(Units(), kInch, kInch, given.data(), given.size(), results.data()),
            KELMO_OK);
  EXPECT_PRED_FORMAT2(SameBits, results[1], -0.0) << "the same unit";
  EXPECT_EQ(ConvertNumbers(Units(), kInch, kUnknown, given.data(), 1, results.data()),
            KELMO_UNKNOWN_UNIT);
  EXPECT_EQ(ConvertNumbers(Units(), kUnknown, kInch, given.data(), 1, results.data()),
            KELMO_UNKNOWN_UNIT);
  EXPECT_EQ(ConvertNumbers(Units(), kInch, kSecond, given.data(), 1, results.data()),
            KELMO_DIFFERENT_KINDS);
  EXPECT_EQ(ConvertNumbers(Units(), kKelvin, kKelvins, given.data(), 1, results.data()),
            KELMO_DIFFERENT_KINDS);
  EXPECT_EQ(results[0], 1) << "failures change nothing";
  EXPECT_EQ(ConvertNumbers(Units(), kInch, kMetre, nullptr, 0, nullptr), KELMO_OK);
  double none = 7;
  EXPECT_EQ(ConvertNumbers(Units(), kInch, kInch, nullptr, 0, &none), KELMO_OK);
  EXPECT_EQ(none, 7);
}

TEST(Quantity, PointsOfTwoKindsHaveNoDifference) {
  const UnitSet units(CollectUnits("18001\t1\t\tK\t\t19001\n19001\t1\t\tdK\t\n"
                                   "50001\t1\t\tdate\t\t12001\n12001\t1\t\ts\t\n"),
                      nullptr);
  kelmo_quantity result = kUntouched;
  EXPECT_EQ(Subtract(units, Of(1, 18001), Of(1, 50001), result), KELMO_DIFFERENT_KINDS);
  EXPECT_EQ(Add(units, Of(1, 18001), Of(1, 50001), result), KELMO_DIFFERENT_KINDS);
  ExpectSame(result, kUntouched, "both");
}

TEST(Quantity, ConvertsPartsOfBlocksOfPoints) {
  for (std::size_t count = 1; count < 40; ++count) {
    std::vector<double> numbers(count);
    for (std::size_t i = 0; i < count; ++i) {
      numbers[i] = 0.1 * static_cast<double>(i) - 1;
    }
    std::vector<double> results(count + 1, 99);
    ASSERT_EQ(ConvertNumbers(Units(), kCelsius, kFahrenheit, numbers.data(), count, results.data()),
              KELMO_OK);
    for (std::size_t i = 0; i < count; ++i) {
      double single = 0;
      ASSERT_EQ(ConvertNumbers(Units(), kCelsius, kFahrenheit, &numbers[i], 1, &single), KELMO_OK);
      EXPECT_PRED_FORMAT2(SameBits, results[i], single) << i << " of " << count;
    }
    EXPECT_EQ(results[count], 99) << count;
  }
}

}  // namespace
