#include "host/quantity_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "cldr/number_formats.h"
#include "tests/host/units_of_tests.h"
#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::FindNumberFormat;
using KelmoLibs::Cldr::NumberFormat;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr std::int32_t kMillimetre = 10003;

const UnitSet& Units() {
  static const UnitSet units(EngineeringUnits({"de", "ru"}), nullptr);
  return units;
}

kelmo_quantity Of(double number, double absolute, double relative = 0,
                  std::int32_t code = kMillimetre) {
  return kelmo_quantity_of(number, absolute, relative, code);
}

// The text, or the name of the status.
std::string Printed(const kelmo_quantity& quantity, const QuantityStyle& style = {},
                    const NumberFormat& format = {}, const LanguageChain& languages = {}) {
  std::array<char, 500> buffer = {'#'};
  TextSink sink(buffer.data(), buffer.size());
  const kelmo_status status = WriteQuantity(Units(), languages, quantity, style, format, sink);
  if (status != KELMO_OK) {
    EXPECT_EQ(buffer[0], '#') << "nothing is written";
    return kelmo_status_name(status);
  }
  const std::size_t size = sink.Finish();
  return {buffer.data(), size};
}

QuantityStyle Numbers() {
  QuantityStyle style;
  style.isNumber = true;
  return style;
}

QuantityStyle AllDigits() {
  QuantityStyle style = Numbers();
  style.hasAllDigits = true;
  return style;
}

struct Row {
  const char* name;
  kelmo_quantity quantity;
  const char* text;
  const char* allDigits;  // null: the same text
  double rounded;         // if it can be rounded
};

constexpr const char* kCannot = "KELMO_CANNOT_ROUND";

const Row kRows[] = {
    {"two decimals", Of(1234.5678, 0.01), "1234.57", nullptr, 1234.57},
    {"no decimals", Of(1234.5678, 1), "1235", nullptr, 1235},
    {"tens", Of(1234.5678, 10), "1230", nullptr, 1230},
    {"thousands", Of(1234.5678, 1000), "1000", nullptr, 1000},
    {"a tolerance above the number", Of(1234.5678, 10000), "0", nullptr, 0},
    {"between two powers of ten", Of(1234.5678, 0.05), "1234.60", nullptr, 1234.6},
    {"a half is rounded away from zero", Of(-2.5, 1), "-3", nullptr, -3},
    {"minus zero", Of(-0.3, 1), "-0", nullptr, -0.0},
    {"zeroes behind the number", Of(2, 0.001), "2.000", nullptr, 2},
    {"a relative tolerance", Of(1234.5678, 0, 0.001), "1230", nullptr, 1230},
    {"both tolerances", Of(1000.04, -0.9, 0.001), "1000.0", nullptr, 1000.0},
    {"the smallest tolerance", Of(1.23456789012, 1e-9), "1.234567890", nullptr, 1.23456789},
    {"the largest tolerance", Of(5e9, 1e9), "5000000000", nullptr, 5e9},
    {"infinity", Of(kInfinity, 0), "\u221E", nullptr, kInfinity},
    {"minus infinity", Of(-kInfinity, kNaN), "-\u221E", nullptr, -kInfinity},

    {"the tolerance 0", Of(1.5, 0), kCannot, "1.5", kNaN},
    {"a negative tolerance", Of(1.5, -1), kCannot, "1.5", kNaN},
    {"an infinite tolerance", Of(1.5, kInfinity), kCannot, "1.5", kNaN},
    {"a tolerance that is NaN", Of(1.5, kNaN), kCannot, "1.5", kNaN},
    {"a tolerance that is too small", Of(1.5, 9e-11), kCannot, "1.5", kNaN},
    {"the smallest double", Of(1.5, 0x1p-1074), kCannot, "1.5", kNaN},
    {"a tolerance that is too large", Of(1.5, std::nextafter(1e9, 2e9)), kCannot, "1.5", kNaN},
    {"a negative number with a relative tolerance", Of(-1.5, 0, 0.1), kCannot, "-1.5", kNaN},
    {"zero with a relative tolerance", Of(0, 0, 0.1), kCannot, "0", kNaN},
    {"a product that overflows", Of(1e308, 1e-9), kCannot, nullptr, kNaN},
};

TEST(QuantityText, HasTheDigitsThatTheToleranceJustifies) {
  for (const Row& row : kRows) {
    EXPECT_EQ(Printed(row.quantity, Numbers()), row.text) << row.name;
    double rounded = 99;
    const bool isRounded = row.text != kCannot;
    EXPECT_EQ(RoundQuantity(Units(), row.quantity, rounded),
              isRounded ? KELMO_OK : KELMO_CANNOT_ROUND)
        << row.name;
    EXPECT_PRED_FORMAT2(SameBits, rounded, isRounded ? row.rounded : 99) << row.name;
  }
  double rounded = 99;
  EXPECT_EQ(Printed(Of(kNaN, 0), Numbers()), "NaN");
  EXPECT_EQ(RoundQuantity(Units(), Of(kNaN, 0), rounded), KELMO_OK);
  EXPECT_TRUE(std::isnan(rounded));
}

// By the power of ten at or below the tolerance.
TEST(QuantityText, IsRoundedFine) {
  struct Case {
    double number;
    double tolerance;
    const char* text;
  };
  const Case cases[] = {
      {25.4, 25.4, "30"},
      {1.524, 0.3048, "1.5"},
      {97.88, 0.18, "97.9"},
      {1234.5678, 0.05, "1234.57"},
      {1234.5678, 1, "1235"},
      {1250, 9.999999999999998, "1250"},
      {1250, 10.000000000000002, "1250"},
      {1234.5678, 99, "1230"},
      {1.5e9, 1e9, "2000000000"},
      {1.5e9, 1.1e9, "KELMO_CANNOT_ROUND"},
      {1, 1e-9, "1.000000000"},
      {1, 9e-10, "KELMO_CANNOT_ROUND"},
      {1, 0, "KELMO_CANNOT_ROUND"},
      {1, -1, "KELMO_CANNOT_ROUND"},
      {1, kInfinity, "KELMO_CANNOT_ROUND"},
      {1, kNaN, "KELMO_CANNOT_ROUND"},
      {kInfinity, 0, "\u221E"},
  };
  QuantityStyle style = Numbers();
  style.isFine = true;
  for (const Case& row : cases) {
    EXPECT_EQ(Printed(Of(row.number, row.tolerance), style), row.text)
        << row.number << " \u00B1 " << row.tolerance;
  }
}

TEST(QuantityText, HasAllDigitsIfTheToleranceJustifiesNone) {
  for (const Row& row : kRows) {
    if (row.allDigits != nullptr || row.text != kCannot) {
      EXPECT_EQ(Printed(row.quantity, AllDigits()),
                row.allDigits != nullptr ? row.allDigits : row.text)
          << row.name;
    }
  }
  EXPECT_EQ(Printed(Of(1e308, 1e-9), AllDigits()), "1e+308");
}

TEST(QuantityText, HasTheSymbolOrTheNameBehindANoBreakSpace) {
  QuantityStyle names;
  names.hasName = true;
  struct Case {
    const char* name;
    std::int32_t code;
    LanguageChain languages;
    const char* symbol;
    const char* text;
  };
  const Case cases[] = {
      {"millimetres", kMillimetre, {}, "5.0\u00A0mm", "5.0\u00A0millimetre"},
      {"in German", kMillimetre, {"de"}, "5.0\u00A0mm", "5.0\u00A0Millimeter"},
      {"in Russian",
       kMillimetre,
       {"xx", "ru", "de"},
       "5.0\u00A0\u043C\u043C",
       "5.0\u00A0\u043C\u0438\u043B\u043B\u0438\u043C\u0435\u0442\u0440"},
      {"degrees stand at the number", 40001, {}, "5.0\u00B0", "5.0\u00A0degree"},
      {"minutes, too", 40004, {}, "5.0\u2032", "5.0\u00A0minute of arc"},
      {"and seconds", 40005, {}, "5.0\u2033", "5.0\u00A0second of arc"},
      {"degrees Celsius do not", 18002, {}, "5.0\u00A0\u00B0C", "5.0\u00A0degree Celsius"},
      {"per cent", 30001, {}, "5.0\u00A0%", "5.0\u00A0percent"},
  };
  for (const Case& row : cases) {
    const kelmo_quantity quantity = Of(5, 0.1, 0, row.code);
    EXPECT_EQ(Printed(quantity, {}, {}, row.languages), row.symbol) << row.name;
    EXPECT_EQ(Printed(quantity, names, {}, row.languages), row.text) << row.name;
    EXPECT_EQ(Printed(quantity, Numbers(), {}, row.languages), "5.0") << row.name;
  }
}

TEST(QuantityText, OfAUnitWithoutANameHasItsSymbol) {
  const UnitSet units(CollectUnits("10001\t1\t\tm\t\n"), nullptr);
  QuantityStyle names;
  names.hasName = true;
  std::array<char, 20> buffer = {};
  TextSink sink(buffer.data(), buffer.size());
  ASSERT_EQ(WriteQuantity(units, {}, Of(5, 1, 0, 10001), names, {}, sink), KELMO_OK);
  sink.Finish();
  EXPECT_STREQ(buffer.data(), "5\u00A0m");
}

TEST(QuantityText, IsWrittenInTheFormatOfNumbers) {
  NumberFormat german = *FindNumberFormat("de");
  german.isGrouped = true;
  EXPECT_EQ(Printed(Of(-1234.5678, 0.01), {}, german), "-1.234,57\u00A0mm");
  EXPECT_EQ(Printed(Of(-1234.5678, 0.01), {}, *FindNumberFormat("ar")),
            "\u061C-\u0661\u0662\u0663\u0664\u066B\u0665\u0667\u00A0mm");
}

TEST(QuantityText, OfAFormatHasItsDigits) {
  NumberSpec spec;
  spec.decimals = 3;
  spec.type = 'f';
  QuantityStyle style;
  style.spec = &spec;
  EXPECT_EQ(Printed(Of(1.5, 1), style), "1.500\u00A0mm");
  EXPECT_EQ(Printed(Of(1.5, 0), style), "1.500\u00A0mm") << "the tolerance plays no part";
}

TEST(QuantityText, RefusesWhatHasNoUnit) {
  double rounded = 99;
  kelmo_quantity reserved = Of(1, 1);
  reserved.reserved = 1;
  struct Case {
    const char* name;
    kelmo_quantity quantity;
    kelmo_status status;
  };
  const Case cases[] = {
      {"an unknown unit", Of(1, 1, 0, 77001), KELMO_UNKNOWN_UNIT},
      {"a kind", Of(1, 1, 0, 10000), KELMO_UNKNOWN_UNIT},
      {"a point with a relative tolerance", Of(1, 1, 1, 18002), KELMO_POINT_UNIT},
      {"a reserved field", reserved, KELMO_INVALID_ARGUMENT},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(Printed(row.quantity, AllDigits()), kelmo_status_name(row.status)) << row.name;
    EXPECT_EQ(RoundQuantity(Units(), row.quantity, rounded), row.status) << row.name;
    EXPECT_EQ(rounded, 99) << row.name;
  }
}

}  // namespace
