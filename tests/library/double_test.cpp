// The number with tolerances and a unit, through the exports: units, arithmetic, comparison and
// conversion. double_text_test.cpp tests its text.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "kelmo_localizer.h"
#include "tests/support/private_members.h"
#include "tests/support/same_bits.h"

using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::ValueType;

namespace {

constexpr const char* kNoUnit = "The physical dimension of the number is not defined.";
constexpr const char* kOtherQuantity = "Codes of physical quantities do not match.";

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

static_assert(!std::is_default_constructible_v<Double>);

int CodeOf(const Double& value) { return value.unit != nullptr ? value.unit->code : 0; }

void ExpectValue(const Double& actual, double value, double absTolerance, double relTolerance,
                 int code) {
  EXPECT_PRED_FORMAT2(SameBits, actual.value, value);
  EXPECT_EQ(actual.absTolerance, absTolerance);
  EXPECT_EQ(actual.relTolerance, relTolerance);
  EXPECT_EQ(CodeOf(actual), code);
}

// The text of the std::invalid_argument that `call` throws.
template <class Call>
std::string Refusal(Call call) {
  try {
    call();
  } catch (const std::invalid_argument& refusal) {
    return refusal.what();
  }
  return "nothing was thrown";
}

// ---- Units

TEST(DoubleUnit, IsFoundByCode) {
  const struct {
    const char* name;
    int code;
    int found;
  } rows[] = {
      {"meter", 10001, 10001},
      {"inch", 10002, 10002},
      {"square meter", 20001, 20001},
      {"coefficient", 30001, 30001},
      {"degree", 40001, 40001},
      {"radian", 40002, 40002},
      {"a quantity, in the catalogue", 10, 0},
      {"a quantity in its long form", 10000, 0},
      {"another quantity", 40, 0},
      {"a quantity that is not in the catalogue", 30, 0},
      {"a unit that is not in the catalogue", 10003, 0},
      {"a unit of the quantity 0", 100, 0},
      {"zero", 0, 0},
      {"negative", -10001, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectValue(Double(1.5, 0.25, 0.125, row.code), 1.5, 0.25, 0.125, row.found);
  }
}

TEST(DoubleUnit, IsFoundByNameOrSymbol) {
  const struct {
    const char* name;
    const wchar_t* text;
    int found;
  } rows[] = {
      {"a name", L"inch", 10002},
      {"a symbol", L"in", 10002},
      {"the meter's symbol, a Cyrillic em", L"\u043C", 10001},
      {"the Latin letter", L"m", 0},
      {"the meter's name", L"meter", 10001},
      {"two words", L"square meter", 20001},
      {"the area's symbol has the Latin letter", L"m2", 20001},
      {"the same with the Cyrillic letter", L"\u043C2", 0},
      {"percent sign", L"%", 30001},
      {"the name in the table's spelling", L"koefficient", 30001},
      {"degree sign", L"\u00B0", 40001},
      {"degree", L"degree", 40001},
      {"the radian's symbol", L"rad", 40002},
      {"its name without the blank", L"radian", 0},
      {"its name with the blank", L"radian ", 40002},
      {"with two blanks", L"radian  ", 0},
      {"a quantity's name", L"length", 0},
      {"a quantity's symbol", L"L", 0},
      {"another quantity's symbol", L"angl", 0},
      {"another case", L"Meter", 0},
      {"another case of a symbol", L"IN", 0},
      {"another case of a letter that is not Latin", L"\u041C", 0},
      {"a blank in front", L" meter", 0},
      {"empty", L"", 0},
      {"null", nullptr, 0},
      {"unknown", L"furlong", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectValue(Double(1.5, 0.25, 0.125, row.text), 1.5, 0.25, 0.125, row.found);
  }
}

TEST(DoubleUnit, IsTheLibrarysRowWithItsFields) {
  const Double byCode(1, 0, 0, 40002);
  const Double bySymbol(1, 0, 0, L"rad");
  ASSERT_NE(byCode.unit, nullptr);
  EXPECT_EQ(byCode.unit, bySymbol.unit);
  EXPECT_EQ(byCode.unit->code, 40002);
  EXPECT_EQ(byCode.unit->factor, 57.29577951308232);
  EXPECT_EQ(byCode.unit->symbol, L"rad");
  EXPECT_EQ(byCode.unit->name, L"radian ");
  EXPECT_EQ(byCode.unit->GetStype(), 40);
  EXPECT_EQ(byCode.unit->GetSid(), 2);
}

// Nine rows in a fixed order, including quantities. A host can step through them with a pointer.
TEST(DoubleUnit, RowsAreInTheOrderOfTheTable) {
  const ValueType* const meter = Double(1, 0, 0, 10001).unit;
  ASSERT_NE(meter, nullptr);
  const int codes[] = {10, 10001, 10002, 20, 20001, 30001, 40, 40001, 40002};
  for (std::size_t i = 0; i < std::size(codes); ++i) {
    EXPECT_EQ((meter - 1)[i].code, codes[i]);
  }
}

// Hosts can write to the rows, so each lookup reads their current fields.
class ChangedRow : public testing::Test {
 protected:
  ChangedRow() : meter_(Double(1, 0, 0, 10001).unit), inch_(Double(1, 0, 0, 10002).unit) {}
  void TearDown() override {
    meter_->code = 10001;
    meter_->factor = 1.0;
    meter_->symbol = L"\u043C";
    inch_->code = 10002;
    inch_->factor = 0.0273;
  }

  ValueType* meter_;
  ValueType* inch_;
};

TEST_F(ChangedRow, IsFoundByItsNewFields) {
  meter_->code = 10007;
  meter_->symbol = L"M";
  EXPECT_EQ(Double(1, 0, 0, 10001).unit, nullptr);
  EXPECT_EQ(Double(1, 0, 0, 10007).unit, meter_);
  EXPECT_EQ(Double(1, 0, 0, L"\u043C").unit, nullptr);
  EXPECT_EQ(Double(1, 0, 0, L"M").unit, meter_);
  meter_->code = 7;
  EXPECT_EQ(Double(1, 0, 0, 7).unit, nullptr);
  EXPECT_EQ(Double(1, 0, 0, L"M").unit, nullptr);
}

TEST_F(ChangedRow, GivesItsFactorToTheNextConversion) {
  Double meters(1, 0, 0, 10001);
  meter_->factor = 0.5;
  ExpectValue(meters + Double(1, 0, 0, 10002), 0.0273 / 0.5 + 1, 0, 0, 10001);
}

TEST_F(ChangedRow, WithAnEqualFactorIsStillAnotherUnit) {
  inch_->factor = 1;
  ExpectValue(Double(2, 0.1, 0.2, 10001).ConvertTo(3, 4, 10002), 2, 3, 4, 10002);
}

// The result of every operation has the first row with the code, not the operand's row.
TEST_F(ChangedRow, IsReplacedInResultsByAnEarlierRowWithItsCode) {
  Double inches(3, 0.5, 0.01, L"in");
  inch_->code = 10001;
  ASSERT_EQ(inches.unit, inch_);
  EXPECT_EQ((inches + inches).unit, meter_);
  EXPECT_EQ((inches - inches).unit, meter_);
  EXPECT_EQ((inches * 2).unit, meter_);
  EXPECT_EQ((inches / 2).unit, meter_);
  EXPECT_EQ(inches.ConvertTo(0, 0, 10001).unit, inch_) << "an unchanged copy";
}

// ---- Copies and destruction

TEST(Double, CopiesAreEqualFieldByField) {
  Double source(1.5, 0.25, 0.125, 10002);
  const Double copy(source);
  ExpectValue(copy, 1.5, 0.25, 0.125, 10002);
  Double assigned(7, 7, 7, 99999);
  EXPECT_EQ(&(assigned = source), &assigned);
  ExpectValue(assigned, 1.5, 0.25, 0.125, 10002);
  ExpectValue(source, 1.5, 0.25, 0.125, 10002);
  const Double& itself = source;
  source = itself;
  ExpectValue(source, 1.5, 0.25, 0.125, 10002);
}

TEST(Double, CopiesAMissingUnitAsWell) {
  const Double none(1.5, 0.25, 0.125, 99999);
  Double assigned(7, 7, 7, 10001);
  assigned = none;
  EXPECT_EQ(assigned.unit, nullptr);
  EXPECT_EQ(Double(none).unit, nullptr);
}

TEST(Double, DestructorClearsTheUnitAndKeepsTheNumbers) {
  alignas(Double) unsigned char memory[sizeof(Double)];
  auto* const value = new (memory) Double(1.5, 0.25, 0.125, 10001);
  ASSERT_NE(value->unit, nullptr);
  value->~Double();
  double numbers[3];
  std::memcpy(numbers, memory, sizeof(numbers));
  void* unit = memory;
  std::memcpy(static_cast<void*>(&unit), memory + sizeof(numbers), sizeof(unit));
  EXPECT_EQ(unit, nullptr);
  EXPECT_EQ(numbers[0], 1.5);
  EXPECT_EQ(numbers[1], 0.25);
  EXPECT_EQ(numbers[2], 0.125);
}

// ---- Arithmetic

TEST(Double, AddsAndSubtractsInTheLeftUnitWithTheLeftTolerances) {
  Double meters(1, 0.5, 0.01, 10001);
  Double inches(1, 0.25, 0.02, 10002);
  ExpectValue(meters + inches, 1.0273, 0.5, 0.01, 10001);
  ExpectValue(inches + meters, 37.63003663003663, 0.25, 0.02, 10002);
  ExpectValue(meters - inches, 1 - 0.0273, 0.5, 0.01, 10001);
  ExpectValue(inches - meters, 1 - 1 / 0.0273, 0.25, 0.02, 10002);
  ExpectValue(meters + meters, 2, 0.5, 0.01, 10001);
  ExpectValue(meters - meters, 0.0, 0.5, 0.01, 10001);
  ExpectValue(meters, 1, 0.5, 0.01, 10001);
  ExpectValue(inches, 1, 0.25, 0.02, 10002);
}

TEST(Double, ScalesTheValueAndNothingElse) {
  Double length(3, 0.5, 0.01, 10001);
  ExpectValue(length * 2, 6, 0.5, 0.01, 10001);
  ExpectValue(length / 2, 1.5, 0.5, 0.01, 10001);
  ExpectValue(length * 0, 0, 0.5, 0.01, 10001);
  ExpectValue(length * -1, -3, 0.5, 0.01, 10001);
  ExpectValue(length * -0.0, -0.0, 0.5, 0.01, 10001);
  ExpectValue(length / 3e300, 1e-300, 0.5, 0.01, 10001);
  ExpectValue(length, 3, 0.5, 0.01, 10001);
}

TEST(Double, DividesByZero) {
  ExpectValue(Double(1, 0, 0, 10001) / 0, kInfinity, 0, 0, 10001);
  ExpectValue(Double(-1, 0, 0, 10001) / 0, -kInfinity, 0, 0, 10001);
  ExpectValue(Double(1, 0, 0, 10001) / -0.0, -kInfinity, 0, 0, 10001);
  const Double undefined = Double(0, 0, 0, 10001) / 0;
  EXPECT_TRUE(std::isnan(undefined.value));
  EXPECT_EQ(CodeOf(undefined), 10001);
}

// The required steps are (other's factor * value) / own factor. Each row excludes at least one
// other way: a shortcut between equal units, a ratio of the factors, a reciprocal.
TEST(Double, ConvertsByTheProductFirstAndThenTheQuotient) {
  const struct {
    double value;
    double from;
    double to;
    double converted;
  } rows[] = {
      {69.2, 1.0, 0.0273, 2534.798534798535},
      {40.1, 0.0273, 0.0273, 40.10000000000001},
      {43.3, 0.0273, 0.0273, 43.300000000000004},
      {61.9, 57.29577951308232, 57.29577951308232, 61.9},
      {71.5, 57.29577951308232, 57.29577951308232, 71.50000000000001},
      {7.5, 57.29577951308232, 57.29577951308232, 7.499999999999999},
      {11.3, 1.0, 57.29577951308232, 0.19722220547535924},
      {33.5, 0.3048, 0.9144, 11.166666666666668},
      {21.0, 0.3048, 0.9144, 7.0},
      {44.7, 0.0254, 1609.344, 0.0007054924242424242},
      {94.7, 0.0254, 1609.344, 0.0014946338383838385},
      {1e300, 1e10, 1e10, kInfinity},                  // the product overflows
      {1e-300, 1e-10, 1e-10, 9.999999999999969e-301},  // the product is denormal
      {-0.0, 0.0273, 1.0, -0.0},
      {7.5, 1.0, 0.0, kInfinity},  // a factor of 0 is not refused
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.value << " from " << row.from << " to " << row.to);
    ValueType fromUnit(10002, row.from, L"", L"");
    ValueType toUnit(10001, row.to, L"", L"");
    Double other(row.value, 0, 0, 10002);
    other.unit = &fromUnit;
    Double zero(0.0, 0, 0, 10001);
    zero.unit = &toUnit;
    EXPECT_PRED_FORMAT2(SameBits, (zero + other).value, row.converted + 0.0);
    EXPECT_PRED_FORMAT2(SameBits, (zero - other).value, 0.0 - row.converted);
    EXPECT_PRED_FORMAT2(SameBits, Vs(other, row.to), row.converted);
    Double converted(row.converted, 0, 0, 10001);
    converted.unit = &toUnit;
    EXPECT_TRUE(converted == other);
    EXPECT_FALSE(converted < other || converted > other);
    other.unit = nullptr;
    zero.unit = nullptr;
    converted.unit = nullptr;
  }
}

// ---- Comparison

TEST(Double, ComparesInTheLeftUnit) {
  const struct {
    const char* name;
    Double left;
    Double right;
    int order;  // of left to right; 2: unordered
  } rows[] = {
      {"equal across units", {0.0273, 0, 0, 10001}, {1, 0, 0, 10002}, 0},
      {"below", {0.0272, 0, 0, 10001}, {1, 0, 0, 10002}, -1},
      {"above", {0.0274, 0, 0, 10001}, {1, 0, 0, 10002}, 1},
      {"one last digit below", {0.027299999999999998, 0, 0, 10001}, {1, 0, 0, 10002}, -1},
      {"one last digit above", {0.027300000000000005, 0, 0, 10001}, {1, 0, 0, 10002}, 1},
      {"tolerances do not count", {1, 100, 10, 10001}, {2, 100, 10, 10001}, -1},
      {"equal with other tolerances", {1, 100, 10, 10001}, {1, 0, 0, 10001}, 0},
      {"zero and the smallest number", {0.0, 0, 0, 10001}, {5e-324, 0, 0, 10001}, -1},
      {"zero and minus zero", {0.0, 0, 0, 10001}, {-0.0, 0, 0, 10001}, 0},
      {"infinities", {kInfinity, 0, 0, 10001}, {kInfinity, 0, 0, 10002}, 0},
      {"NaN on the left", {kNaN, 0, 0, 10001}, {1, 0, 0, 10001}, 2},
      {"NaN on the right", {1, 0, 0, 10001}, {kNaN, 0, 0, 10001}, 2},
      {"NaN on both sides", {kNaN, 0, 0, 10001}, {kNaN, 0, 0, 10001}, 2},
      {"one unit is converted too", {40.1, 0, 0, 10002}, {40.1, 0, 0, 10002}, -1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Double left = row.left;
    EXPECT_EQ(left == row.right, row.order == 0);
    EXPECT_EQ(left < row.right, row.order == -1);
    EXPECT_EQ(left > row.right, row.order == 1);
  }
}

// ---- Conversion

TEST(Double, ConvertsToAnotherUnitWithTheTolerancesGiven) {
  Double angle(90, 0.5, 0.25, 40001);
  ExpectValue(angle.ConvertTo(0.001, 0, 40002), 1.5707963267948966, 0.001, 0, 40002);
  ExpectValue(angle, 90, 0.5, 0.25, 40001);
  ExpectValue(Double(1, 0, 0, 10002).ConvertTo(0.0001, 0.5, 10001), 0.0273, 0.0001, 0.5, 10001);
  ExpectValue(Double(1, 0, 0, 10001).ConvertTo(0, 0, 10002), 36.63003663003663, 0, 0, 10002);
  // Adding 0 to the converted value turns -0 into 0.
  ExpectValue(Double(-0.0, 0, 0, 10002).ConvertTo(0, 0, 10001), 0.0, 0, 0, 10001);
}

TEST(Double, ConvertsToItsOwnUnitByAnUnchangedCopyWithItsOwnTolerances) {
  ExpectValue(Double(1.234, 0.01, 0, 10001).ConvertTo(0.5, 0, 10001), 1.234, 0.01, 0, 10001);
  ExpectValue(Double(40.1, 0.01, 0.5, 10002).ConvertTo(3, 4, 10002), 40.1, 0.01, 0.5, 10002);
  ExpectValue(Double(-0.0, 0.01, 0.5, 10002).ConvertTo(3, 4, 10002), -0.0, 0.01, 0.5, 10002);
}

// ---- Refused operands

TEST(Double, RefusesOperandsThatDoNotFit) {
  const Double meter(1, 0.5, 0.25, 10001);
  const Double inch(2, 0.5, 0.25, 10002);
  const Double degree(3, 0.5, 0.25, 40001);
  const Double none(4, 0.5, 0.25, 10);
  const struct {
    const char* name;
    Double left;
    Double right;
    std::string refusal;
  } rows[] = {
      {"two quantities", meter, degree, kOtherQuantity},
      {"two quantities, the other way round", degree, meter, kOtherQuantity},
      {"no unit on the right", meter, none, kNoUnit},
      {"no unit on the left", none, meter, kNoUnit},
      {"no unit on either side", none, none, kNoUnit},
      {"two units of one quantity", meter, inch, "nothing was thrown"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Double left = row.left;
    const Double right = row.right;
    EXPECT_EQ(Refusal([&] { (void)(left + right); }), row.refusal);
    EXPECT_EQ(Refusal([&] { (void)(left - right); }), row.refusal);
    EXPECT_EQ(Refusal([&] { (void)(left == right); }), row.refusal);
    EXPECT_EQ(Refusal([&] { (void)(left < right); }), row.refusal);
    EXPECT_EQ(Refusal([&] { (void)(left > right); }), row.refusal);
    EXPECT_EQ(Refusal([&] { CheckCorrect(left, right); }), row.refusal);
    ExpectValue(left, row.left.value, 0.5, 0.25, CodeOf(row.left));
    ExpectValue(right, row.right.value, 0.5, 0.25, CodeOf(row.right));
  }
}

TEST(Double, RefusesToScaleWithoutAUnit) {
  Double none(5, 0, 0, 10);
  EXPECT_EQ(Refusal([&] { (void)(none * 2); }), kNoUnit);
  EXPECT_EQ(Refusal([&] { (void)(none / 2); }), kNoUnit);
  EXPECT_EQ(Refusal([&] { CheckCorrect(none); }), kNoUnit);
  ExpectValue(none, 5, 0, 0, 0);
  Double one(5, 0, 0, 10001);
  EXPECT_EQ(Refusal([&] { CheckCorrect(one); }), "nothing was thrown");
}

TEST(Double, RefusesToConvertToNoUnitOrAnotherQuantity) {
  const struct {
    const char* name;
    int code;
    const char* refusal;
  } rows[] = {
      {"another quantity", 40001, kOtherQuantity},
      {"a quantity instead of a unit", 10, kNoUnit},
      {"the same in its long form", 10000, kNoUnit},
      {"unknown", 99999, kNoUnit},
      {"negative", -1, kNoUnit},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Double meter(1, 0.5, 0.25, 10001);
    EXPECT_EQ(Refusal([&] { (void)meter.ConvertTo(0, 0, row.code); }), row.refusal);
    ExpectValue(meter, 1, 0.5, 0.25, 10001);
  }
}

TEST(Double, DeterminesQuantitiesFromCodesOnly) {
  ValueType zero1(100, 1.0, L"", L"");
  ValueType zero2(999, 2.0, L"", L"");
  Double left(1, 0, 0, 10001);
  Double right(1, 0, 0, 10001);
  left.unit = &zero1;
  right.unit = &zero2;
  EXPECT_TRUE(left < right) << "both of the quantity 0";
  zero1.code = 10;
  zero2.code = 20;
  EXPECT_EQ(Refusal([&] { (void)(left < right); }), kOtherQuantity) << "codes of quantities";
  zero1.code = 100;
  zero2.code = 1001;
  EXPECT_EQ(Refusal([&] { (void)(left < right); }), kOtherQuantity);
}

// ---- The private members, exported as well

TEST(DoublePrivate, ToleranceIsTheSumOfBothParts) {
  const struct {
    const char* name;
    double value;
    double absTolerance;
    double relTolerance;
    double tolerance;
  } rows[] = {
      {"absolute", 1234.5678, 0.01, 0, 0.01},
      {"relative", 1234.5678, 0, 0.001, 1.2345678},
      {"both", 100, 0.5, 0.01, 1.5},
      {"smaller with a negative value", -100, 1.5, 0.01, 0.5},
      {"negative with a negative value", -5, 0, 0.01, -0.05},
      {"product and sum are rounded one after the other", 28.417, 0.319, 0.047, 1.654599},
      {"the same, up", 325.818, 0.511, 0.015, 5.39827},
      {"the same, down", 162.023, 0.715, 0.076, 13.028747999999998},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Double value(row.value, row.absTolerance, row.relTolerance, 10);
    EXPECT_PRED_FORMAT2(SameBits, T(value), row.tolerance);
    EXPECT_PRED_FORMAT2(SameBits, Ts(value, 3), row.tolerance * 3);
  }
  Double infinite(kInfinity, 0.5, 0, 10);
  EXPECT_TRUE(std::isnan(T(infinite))) << "0 times infinity";
}

TEST(DoublePrivate, VsIsTheValueInAUnitOfAnyFactor) {
  Double angle(2, 0, 0, L"rad");
  EXPECT_PRED_FORMAT2(SameBits, Vs(angle, 1.0), 114.59155902616465);
  EXPECT_PRED_FORMAT2(SameBits, Vs(angle, 0.5), 229.1831180523293);
  EXPECT_PRED_FORMAT2(SameBits, Vs(angle, 0), kInfinity);
}

}  // namespace
