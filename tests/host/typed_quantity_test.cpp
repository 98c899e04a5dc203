// typed_number_test.cpp covers the number, unit_set_test.cpp the unit. Here: how they stand together, and
// the whole lines of all problems.
#include "host/typed_quantity.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cldr/number_formats.h"
#include "tests/host/texts_of_tests.h"
#include "tests/host/units_of_tests.h"
#include "tests/support/same_bits.h"

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::FindNumberFormat;
using KelmoLibs::Cldr::NumberFormat;
using Lines = std::vector<std::string>;

const UnitSet& Units() {
  static const UnitSet units(EngineeringUnits({"de", "ru"}), nullptr);
  return units;
}

const NumberFormat& German() { return *FindNumberFormat("de"); }

struct Row {
  const char* name;
  std::string text;
  double number;
  double tolerance;
  std::int32_t code;
};

void Check(const std::vector<Row>& rows, const NumberFormat& format,
           const TypedQuantityOptions& options = {}, const LanguageChain& languages = {}) {
  for (const Row& row : rows) {
    kelmo_quantity result = {};
    ProblemList problems;
    EXPECT_EQ(ReadQuantity(Units(), languages, row.text, options, format, result, &problems),
              KELMO_OK)
        << row.name;
    EXPECT_EQ(Printed(problems), Lines()) << row.name;
    EXPECT_PRED_FORMAT2(SameBits, result.number, row.number) << row.name;
    EXPECT_PRED_FORMAT2(SameBits, result.absolute_tolerance, row.tolerance) << row.name;
    EXPECT_PRED_FORMAT2(SameBits, result.relative_tolerance, options.relativeTolerance) << row.name;
    EXPECT_EQ(result.code, row.code) << row.name;
    EXPECT_EQ(result.reserved, 0U) << row.name;
  }
}

TEST(TypedQuantity, NeedsMarksThatDiffer) {
  struct Case {
    const char* name;
    const char* decimal;
    const char* group;
    bool canBeRead;
  };
  const Case cases[] = {
      {"English", ".", ",", true},
      {"French", ",", "\u202F", true},
      {"Swiss", ".", "\u2019", true},
      {"no mark of groups", ".", "", true},
      {"equal marks", ",", ",", false},
      {"a digit", "5", ",", false},
      {"a digit of groups", ".", "0", false},
      {"a letter", "m", ",", false},
      {"a capital letter", "E", ",", false},
      {"a blank", " ", ",", false},
  };
  for (const Case& row : cases) {
    NumberFormat format;
    format.decimalMark = row.decimal;
    format.groupMark = row.group;
    EXPECT_EQ(CanBeRead(format), row.canBeRead) << row.name;
  }
}

TEST(TypedQuantity, IsANumberAndAUnit) {
  Check(
      {
          {"a blank between them", "12.5 mm", 12.5, 0.1, 10003},
          {"nothing between them", "12.5mm", 12.5, 0.1, 10003},
          {"a no-break space", "12.5\u00A0mm", 12.5, 0.1, 10003},
          {"marks of direction", "\u206812.5 mm\u2069\u200E", 12.5, 0.1, 10003},
          {"a line break at the end", "12.5 mm\r\n", 12.5, 0.1, 10003},
          {"blanks everywhere", " \t 12.5 \u202F mm \u00A0\t", 12.5, 0.1, 10003},
          {"a sign", "-12 mm", -12, 1, 10003},
          {"a minus sign", "\u22120.50 mm", -0.5, 0.01, 10003},
          {"an exponent", "3.2e-3 mm", 3.2e-3, 1e-4, 10003},
          {"groups", "1,234.5 mm", 1234.5, 0.1, 10003},
          {"a name", "12 millimetre", 12, 1, 10003},
          {"a name with a blank", "12 degree Celsius", 12, 1, 18002},
          {"a blank in a symbol", "2 US gal", 2, 1, 11011},
          {"a no-break space in a symbol", "2 US\u00A0gal", 2, 1, 11011},
          {"what is typed for a raised 3", "2 m3", 2, 1, 11001},
          {"points", "-40 \u00B0C", -40, 1, 18002},
          {"an ordinal indicator for a degree", "20 \u00BAC", 20, 1, 18002},
          {"a degree at the number", "30\u00B0", 30, 1, 40001},
          {"a minute", "30'", 30, 1, 40004},
          {"a second", "30\"", 30, 1, 40005},
          {"per cent", "5%", 5, 1, 30001},
          {"zero", "0 mm", 0, 1, 10003},
          {"minus zero", "-0.0 mm", -0.0, 0.1, 10003},
      },
      NumberFormat());
}

TEST(TypedQuantity, IsReadInTheLanguagesOfTheUser) {
  Check(
      {
          {"a decimal comma", "12,5 mm", 12.5, 0.1, 10003},
          {"groups", "1.234,5 Millimeter", 1234.5, 0.1, 10003},
          {"the units' own names", "2 metre", 2, 1, 10001},
          {"the second language", "2 \u043C", 2, 1, 10001},
      },
      German(), {}, {"de", "ru"});
}

TEST(TypedQuantity, ANumberAloneHasTheUnitOfTheOptions) {
  TypedQuantityOptions options;
  options.unit = Units().Find(10003);
  Check(
      {
          {"a number", "12.5", 12.5, 0.1, 10003},
          {"blanks behind it", "12.5 \u00A0", 12.5, 0.1, 10003},
          {"another unit", "12.5 m", 12.5, 0.1, 10001},
          {"another kind", "12.5 s", 12.5, 0.1, 12001},
      },
      NumberFormat(), options);
}

TEST(TypedQuantity, HasTheTolerancesOfTheOptions) {
  TypedQuantityOptions options;
  options.absoluteTolerance = 0.25;
  Check({{"an absolute one", "12.50 mm", 12.5, 0.25, 10003}}, NumberFormat(), options);
  options.relativeTolerance = 0.5;
  Check({{"both", "12.50 mm", 12.5, 0.25, 10003}}, NumberFormat(), options);
  options.absoluteTolerance = 0;
  Check({{"a relative one", "12.50 mm", 12.5, 0, 10003}}, NumberFormat(), options);
  options.absoluteTolerance = -0.0;
  options.relativeTolerance = 0;
  Check({{"minus zero is none", "12.50 mm", 12.5, 0.01, 10003}}, NumberFormat(), options);
}

TEST(TypedQuantity, OfTheWantedKind) {
  TypedQuantityOptions options;
  options.kind = 19;
  Check({{"a difference", "5 \u00B0C", 5, 1, 19002}}, NumberFormat(), options);
  options.kind = 18;
  Check({{"a point", "5 \u00B0C", 5, 1, 18002}}, NumberFormat(), options);
}

struct Refusal {
  const char* name;
  std::string text;
  kelmo_status status;
  std::string problem;
};

void CheckRefusals(const std::vector<Refusal>& rows, const NumberFormat& format,
                   const TypedQuantityOptions& options = {}, const LanguageChain& languages = {}) {
  const kelmo_quantity untouched = kelmo_quantity_of(1, 2, 3, 4);
  for (const Refusal& row : rows) {
    kelmo_quantity result = untouched;
    ProblemList problems;
    EXPECT_EQ(ReadQuantity(Units(), languages, row.text, options, format, result, &problems),
              row.status)
        << row.name;
    EXPECT_EQ(result.number, 1) << row.name;
    EXPECT_EQ(result.code, 4) << row.name;
    EXPECT_EQ(Printed(problems), row.problem.empty() ? Lines() : Lines{row.problem}) << row.name;
    EXPECT_EQ(ReadQuantity(Units(), languages, row.text, options, format, result, nullptr),
              row.status)
        << row.name << ", without a list";
  }
}

TEST(TypedQuantity, RefusesWhatIsNoNumber) {
  CheckRefusals(
      {
          {"nothing", "", KELMO_INVALID_TEXT,
           "column 1: error: A number is missing: the text ends here"},
          {"blanks", "  ", KELMO_INVALID_TEXT,
           "column 3: error: A number is missing: the text ends here"},
          {"a unit", " mm", KELMO_INVALID_TEXT, "column 2: error: A number is missing: \"mm\""},
          {"a sign", "- 5 mm", KELMO_INVALID_TEXT,
           "column 2: error: A number is missing: \" 5 mm\""},
          {"infinity", "\u221E mm", KELMO_INVALID_TEXT,
           "column 1: error: A number is missing: \"\u221E mm\""},
          {"a decimal comma", "12,5 mm", KELMO_INVALID_TEXT,
           "column 3: error: The digits are not grouped in this way: the decimal mark is \".\", "
           "and "
           "blanks or \",\" may stand between groups of digits"},
          {"two points", "1.2.3 mm", KELMO_INVALID_TEXT,
           "column 4: error: The decimal mark is another one: there are two"},
          {"what is not UTF-8", "12 m\xFF", KELMO_INVALID_UTF8,
           "column 5: error: A number is missing: the text is not UTF-8"},
          {"a column in characters", "\u00A0\u00A012,5 mm", KELMO_INVALID_TEXT,
           "column 5: error: The digits are not grouped in this way: the decimal mark is \".\", "
           "and "
           "blanks or \",\" may stand between groups of digits"},
          {"too large", "1e999 mm", KELMO_INVALID_TEXT,
           "column 1: error: The number is too large, too small or too long"},
          {"too small", "1e-999 mm", KELMO_INVALID_TEXT,
           "column 1: error: The number is too large, too small or too long"},
          {"too long", std::string(501, '1') + " mm", KELMO_INVALID_TEXT,
           "column 501: error: The number is too large, too small or too long"},
      },
      NumberFormat());
  CheckRefusals(
      {{"a decimal point in German", "12.5 mm", KELMO_INVALID_TEXT,
        "column 3: error: The digits are not grouped in this way: the decimal mark is \",\", and "
        "blanks or \".\" may stand between groups of digits"},
       {"a point behind the comma", "1,2.3 mm", KELMO_INVALID_TEXT,
        "column 4: error: The digits are not grouped in this way: the decimal mark is \",\", and "
        "blanks or \".\" may stand between groups of digits"}},
      German());
  NumberFormat withoutGroups;
  withoutGroups.groupSize = 0;
  withoutGroups.furtherGroupSize = 0;
  CheckRefusals(
      {{"a format without groups", "12 34 mm", KELMO_INVALID_TEXT,
        "column 3: error: The digits are not grouped in this way: the decimal mark is \".\", and "
        "blanks may stand between groups of digits"}},
      withoutGroups);
}

TEST(TypedQuantity, RefusesWhatIsNoUnit) {
  TypedQuantityOptions lengths;
  lengths.kind = 10;
  CheckRefusals(
      {
          {"no unit", "12.5", KELMO_INVALID_TEXT, "column 5: error: A unit is missing"},
          {"blanks in place of the unit", "12.5  ", KELMO_INVALID_TEXT,
           "column 5: error: A unit is missing"},
          {"an unknown unit", "12.5 furlong", KELMO_UNKNOWN_UNIT,
           "column 6: error: The unit is not known: \"furlong\""},
          {"more than a unit", " 12.5 mm wide ", KELMO_UNKNOWN_UNIT,
           "column 7: error: The unit is not known: \"mm wide\""},
          {"another kind", "12.5 s", KELMO_DIFFERENT_KINDS,
           "column 6: error: The unit is one of another quantity: \"s\" is a unit of time, not of "
           "length"},
          {"a Cyrillic letter", "12 \u043C\u043C", KELMO_AMBIGUOUS_UNIT,
           "column 4: error: The unit is ambiguous: \"\u043C\u043C\" only looks like 10003 "
           "millimetre "
           "(mm): it has letters of another script"},
      },
      NumberFormat(), lengths);
  CheckRefusals(
      {{"another kind in German", "12,5 s", KELMO_DIFFERENT_KINDS,
        "column 6: error: The unit is one of another quantity: \"s\" is a unit of Zeit, not of "
        "L\u00E4nge"}},
      German(), lengths, {"de"});
  TypedQuantityOptions unknown;
  unknown.kind = 777;
  CheckRefusals(
      {{"a kind that is not there", "1 m", KELMO_DIFFERENT_KINDS,
        "column 3: error: The unit is one of another quantity: \"m\" is a unit of length, not of "
        "kind 777"}},
      NumberFormat(), unknown);
}

TEST(TypedQuantity, TellsTheUnitsThatFit) {
  const UnitSet units(CollectUnits("12005\t60\t\tmin\tminute\n"
                                   "40003\t1/60\t\t\u2032\tminute\n"
                                   "41001\t1\t\tminute\t\n"),
                      nullptr);
  const UnitRow* found = nullptr;
  ProblemList problems;
  EXPECT_EQ(FindUnitByText(units, {}, 0, "minute", 0, found, &problems), KELMO_AMBIGUOUS_UNIT);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(
      Printed(problems),
      (Lines{"error: The unit is ambiguous: \"minute\" is 12005 minute (min), or 40003 minute "
             "(\u2032), or 41001 minute"}));
  EXPECT_EQ(FindUnitByText(units, {}, 12, "minute", 0, found, &problems), KELMO_OK);
  EXPECT_EQ(found, units.Find(12005));
  EXPECT_EQ(problems.All().size(), 1U);
}

TEST(TypedQuantity, APointHasNoRelativeTolerance) {
  TypedQuantityOptions options;
  options.relativeTolerance = 0.1;
  CheckRefusals({{"a point", "20 \u00B0C", KELMO_POINT_UNIT, ""}}, NumberFormat(), options);
  options.unit = Units().Find(18002);
  CheckRefusals({{"the unit of the options", "20", KELMO_POINT_UNIT, ""}}, NumberFormat(), options);
}

}  // namespace
