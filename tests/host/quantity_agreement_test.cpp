// Units and quantities of kelmo beside the class Double of the first library: the same bits, and the same
// characters. Known differences: kelmo converts the tolerance, and compares by base numbers; a number
// that cannot be rounded is a status, also if its product with the scale overflows. --rounds=N runs
// longer.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "host/quantity.h"
#include "host/quantity_text.h"
#include "kelmo_localizer.h"
#include "phyval/unit_catalogue.h"
#include "tests/host/units_of_tests.h"
#include "tests/support/bits.h"
#include "tests/support/random_numbers.h"
#include "unittables/default_table.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Localize::LoadDefaultUnitTable;
using KelmoLibs::Localize::Phyval::BuiltInUnits;
using KelmoLibs::Localize::Phyval::Double;
using KelmoLibs::Localize::Phyval::NamesAUnit;
using KelmoLibs::Localize::Phyval::unitCatalogue;
using KelmoLibs::Localize::Phyval::ValueType;

// The units of the process are those of the start during its life.
class FirstLibrary {
 public:
  explicit FirstLibrary(UnitStart start) {
    unitCatalogue = BuiltInUnits();
    if (start == UnitStart::kAfterInit) {
      EXPECT_EQ(LoadDefaultUnitTable(false, unitCatalogue), 0);
    }
  }
  FirstLibrary(const FirstLibrary&) = delete;
  FirstLibrary& operator=(const FirstLibrary&) = delete;
  ~FirstLibrary() { unitCatalogue = BuiltInUnits(); }
};

double AnyNumber(RandomNumbers& random) {
  constexpr std::array<double, 12> kSpecial = {0.0,
                                               -0.0,
                                               1.0,
                                               -1.0,
                                               0.1,
                                               std::numeric_limits<double>::infinity(),
                                               -std::numeric_limits<double>::infinity(),
                                               std::numeric_limits<double>::quiet_NaN(),
                                               std::numeric_limits<double>::max(),
                                               std::numeric_limits<double>::min(),
                                               std::numeric_limits<double>::denorm_min(),
                                               0x1p53};
  switch (random.Below(8)) {
    case 0:
      return AnyOf(random, kSpecial);
    case 1:
      return NumberOf(random.Bits());  // of all magnitudes, NaN and subnormal numbers
    case 2:
      return random.Below(2000001) / 1000.0 - 1000;
    default:
      return random.OfMagnitude(-30, 30);
  }
}

double AnyTolerance(RandomNumbers& random) {
  constexpr std::array<double, 12> kUsual = {1,    0.1,  0.01, 0.001, 1e-6, 1e-9,
                                             10.0, 1000, 0.05, 0.5,   1e9,  1e-10};
  switch (random.Below(4)) {
    case 0:
      return AnyNumber(random);
    case 1:
      return 0;
    default:
      return AnyOf(random, kUsual);
  }
}

bool IsSame(double left, double right) {
  return BitsOf(left) == BitsOf(right) || (std::isnan(left) && std::isnan(right));
}

class QuantityAgreement : public testing::TestWithParam<UnitStart> {
 protected:
  QuantityAgreement() {
    for (const UnitRow* const unit : units_.UnitsOf(0)) {
      codes_.push_back(unit->code);
    }
  }

  static Double FirstOf(const kelmo_quantity& quantity) {
    return {quantity.number, quantity.absolute_tolerance, quantity.relative_tolerance,
            static_cast<int>(quantity.code)};
  }

  kelmo_quantity AnyQuantity(RandomNumbers& random) const {
    return kelmo_quantity_of(AnyNumber(random), AnyTolerance(random),
                             random.Below(3) == 0 ? AnyTolerance(random) : 0,
                             AnyOf(random, codes_));
  }

  static void ExpectSame(const char* what, const kelmo_quantity& result, const Double& expected) {
    EXPECT_TRUE(IsSame(result.number, expected.value))
        << what << ": " << testing::PrintToString(result.number) << " and not "
        << testing::PrintToString(expected.value);
    EXPECT_TRUE(IsSame(result.absolute_tolerance, expected.absTolerance)) << what;
    EXPECT_TRUE(IsSame(result.relative_tolerance, expected.relTolerance)) << what;
    ASSERT_NE(expected.unit, nullptr) << what;
    EXPECT_EQ(result.code, expected.unit->code) << what;
  }

  void CheckArithmetic(const kelmo_quantity& left, const kelmo_quantity& right, double k) const {
    Double first = FirstOf(left);
    const Double second = FirstOf(right);
    kelmo_quantity result = {};
    ASSERT_EQ(Multiply(units_, left, k, result), KELMO_OK);
    ExpectSame("*", result, first * k);
    ASSERT_EQ(Divide(units_, left, k, result), KELMO_OK);
    ExpectSame("/", result, first / k);
    double plain = 0;
    if (KindOf(left.code) != KindOf(right.code)) {
      EXPECT_EQ(Add(units_, left, right, result), KELMO_DIFFERENT_KINDS);
      EXPECT_EQ(Subtract(units_, left, right, result), KELMO_DIFFERENT_KINDS);
      EXPECT_EQ(RatioOf(units_, left, right, plain), KELMO_DIFFERENT_KINDS);
      EXPECT_THROW(first + second, std::invalid_argument);
      return;
    }
    ASSERT_EQ(Add(units_, left, right, result), KELMO_OK);
    ExpectSame("+", result, first + second);
    ASSERT_EQ(Subtract(units_, left, right, result), KELMO_OK);
    ExpectSame("-", result, first - second);
    ASSERT_EQ(RatioOf(units_, left, right, plain), KELMO_OK);
    Double zero = FirstOf(kelmo_quantity_of(-0.0, 0, 0, left.code));  // changes no summand
    EXPECT_TRUE(IsSame(plain, left.number / (zero + second).value)) << "ratio";
    CheckConversion(left, right.code);
  }

  // The known difference: the tolerance is converted, too.
  void CheckConversion(const kelmo_quantity& from, std::int32_t code) const {
    Double first = FirstOf(from);
    const Double expected = first.ConvertTo(0, from.relative_tolerance, static_cast<int>(code));
    kelmo_quantity result = {};
    ASSERT_EQ(Convert(units_, &from, 1, code, &result), KELMO_OK);
    EXPECT_TRUE(IsSame(result.number, expected.value))
        << testing::PrintToString(result.number) << " and not "
        << testing::PrintToString(expected.value);
    double number = 0;
    ASSERT_EQ(ConvertNumbers(units_, from.code, code, &from.number, 1, &number), KELMO_OK);
    EXPECT_TRUE(IsSame(number, expected.value));
    Double tolerance = FirstOf(kelmo_quantity_of(from.absolute_tolerance, 0, 0, from.code));
    EXPECT_TRUE(
        IsSame(result.absolute_tolerance, tolerance.ConvertTo(0, 0, static_cast<int>(code)).value));
  }

  // Whether kelmo has rounded it. The first library never returns from some of the others.
  bool CheckText(const kelmo_quantity& quantity) const {
    if (!std::isfinite(quantity.number)) {
      return false;
    }
    double rounded = 0;
    const kelmo_status status = RoundQuantity(units_, quantity, rounded);
    Double first = FirstOf(quantity);
    const double tolerance =
        quantity.relative_tolerance * quantity.number + quantity.absolute_tolerance;
    const bool isInRange = tolerance >= 1.0000001e-9 && tolerance <= 1e9;
    if (status != KELMO_OK) {
      EXPECT_EQ(status, KELMO_CANNOT_ROUND);
      EXPECT_TRUE(!isInRange || std::abs(quantity.number) > 1e298)
          << testing::PrintToString(quantity.number) << " with the tolerance "
          << testing::PrintToString(tolerance);
      return false;
    }
    EXPECT_TRUE(tolerance > 0.99e-9 && tolerance <= 1e9) << testing::PrintToString(tolerance);
    EXPECT_TRUE(IsSame(rounded, first.Return())) << "rounded";
    std::array<char, 500> buffer = {};
    TextSink sink(buffer.data(), buffer.size());
    QuantityStyle style;
    style.isNumber = true;
    EXPECT_EQ(WriteQuantity(units_, {}, quantity, style, {}, sink), KELMO_OK);
    const std::string_view text(buffer.data(), sink.Finish());
    const std::wstring expected = first.to_string(L'.');
    EXPECT_EQ(std::wstring(text.begin(), text.end()), expected)
        << testing::PrintToString(quantity.number) << " with the tolerance "
        << testing::PrintToString(tolerance);
    return true;
  }

  const FirstLibrary first_{GetParam()};
  const UnitSet units_{UnitsAtStart(GetParam()), nullptr};
  std::vector<std::int32_t> codes_;
};

TEST_P(QuantityAgreement, OfTheUnits) {
  std::vector<std::int32_t> expected;
  for (const ValueType& row : unitCatalogue) {
    if (!NamesAUnit(row.code)) {
      continue;
    }
    expected.push_back(row.code);
    const UnitRow* const unit = units_.Find(row.code);
    ASSERT_NE(unit, nullptr) << row.code;
    EXPECT_EQ(BitsOf(unit->factor.high), BitsOf(row.factor)) << row.code;
  }
  EXPECT_EQ(codes_, expected);
}

TEST_P(QuantityAgreement, OfArithmeticConversionAndText) {
  RandomNumbers random(randomSeed);
  const std::uint64_t rounds = Rounds(60000);  // with about five operations each, for each start
  std::uint64_t rounded = 0;
  for (std::uint64_t i = 0; i < rounds && !HasFailure(); ++i) {
    SCOPED_TRACE(testing::Message() << "--seed=" << randomSeed << ", round " << i);
    const kelmo_quantity left = AnyQuantity(random);
    CheckArithmetic(left, AnyQuantity(random), AnyNumber(random));
    rounded += CheckText(left) ? 1U : 0U;
  }
  EXPECT_TRUE(HasFailure() || rounded > rounds / 4) << rounded << " of " << rounds;
}

INSTANTIATE_TEST_SUITE_P(Starts, QuantityAgreement,
                         testing::Values(UnitStart::kBuiltIn, UnitStart::kAfterInit),
                         [](const testing::TestParamInfo<UnitStart>& start) {
                           return start.param == UnitStart::kBuiltIn ? "BuiltIn" : "AfterInit";
                         });

}  // namespace
