#include "host/number_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace KelmoLibs::Host;
using KelmoLibs::Cldr::NumberFormat;

Argument Integer(std::int64_t integer) { return {{}, integer}; }
Argument Unsigned(std::uint64_t integer) { return {{}, integer}; }
Argument Double(double number, int decimals = kShortest) { return {{}, number, decimals}; }
Argument Float(float number) {
  Argument argument = Double(number);
  argument.isFloat = true;
  return argument;
}

std::string Write(const Argument& number, std::string_view specText, const NumberFormat& format) {
  NumberSpec spec;
  EXPECT_EQ(ReadNumberSpec(specText, spec), SpecError::kNone) << specText;
  EXPECT_TRUE(Fits(spec, number)) << specText;
  std::string text(4000, '?');
  TextSink sink(text.data(), text.size());
  WriteNumber(number, spec, format, sink);
  text.resize(sink.Finish());
  return text;
}

struct WriteCase {
  const char* name;
  Argument number;
  const char* spec;
  std::string expected;
};

void Check(const std::vector<WriteCase>& cases, const NumberFormat& format = {}) {
  for (const WriteCase& row : cases) {
    EXPECT_EQ(Write(row.number, row.spec, format), row.expected) << row.name;
  }
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(WriteNumber, WritesIntegersPlainly) {
  Check({
      {"zero", Integer(0), "", "0"},
      {"negative", Integer(-1), "", "-1"},
      {"smallest", Integer(INT64_MIN), "", "-9223372036854775808"},
      {"largest", Integer(INT64_MAX), "", "9223372036854775807"},
      {"largest unsigned", Unsigned(UINT64_MAX), "", "18446744073709551615"},
      {"sign of an unsigned", Unsigned(5), "+", "+5"},
  });
}

TEST(WriteNumber, WritesIntegersAsDoublesIfTheFormatIsForDoubles) {
  Check({
      {"decimals without a type are digits", Integer(-1234), ".2", "-1.2e+03"},
      {"f", Integer(1234), "f", "1234.000000"},
      {"f with decimals", Unsigned(1234), ".1f", "1234.0"},
      {"e", Unsigned(1234), "e", "1.234000e+03"},
      {"g", Integer(1234567), "g", "1.23457e+06"},
      {"d is for integers", Integer(1234567), "d", "1234567"},
  });
}

TEST(WriteNumber, WritesDoublesWithTheirDecimals) {
  Check({
      {"shortest", Double(0.1), "", "0.1"},
      {"shortest without a fraction", Double(100000), "", "100000"},
      {"largest without an exponent", Double(9999999999999998), "", "9999999999999998"},
      {"smallest with an exponent", Double(1e16), "", "1e+16"},
      {"smallest fraction without an exponent", Double(0.0001), "", "0.0001"},
      {"a fraction with an exponent", Double(0.00001), "", "1e-05"},
      {"just below", Double(std::nextafter(0.0001, 0)), "", "9.999999999999999e-05"},
      {"three digits in the exponent", Double(-DBL_MAX), "", "-1.7976931348623157e+308"},
      {"zero", Double(0), "", "0"},
      {"minus zero", Double(-0.0), "", "-0"},
      {"no decimals", Double(2.5, 0), "", "2"},
      {"half to even of the exact value", Double(3.5, 0), "", "4"},
      {"exactly below the half", Double(1.005, 2), "", "1.00"},
      {"more decimals than digits", Double(1, 2), "", "1.00"},
      {"large with decimals", Double(1e22, 1), "", "10000000000000000000000.0"},
      {"width keeps the decimals", Double(1.5, 2), "6", "  1.50"},
      {"f without decimals takes the argument's", Double(1.5, 2), "f", "1.50"},
      {"f without any", Double(1.5), "f", "1.500000"},
      {"decimals of the format win", Double(1.5, 2), ".0f", "2"},
      {"decimals without a type are digits", Double(1234.5, 2), ".2", "1.2e+03"},
      {"e", Double(1234.5, 2), "e", "1.234500e+03"},
      {"g", Double(1234567, 2), "g", "1.23457e+06"},
  });
  EXPECT_EQ(Write(Double(-DBL_MAX, 99), "", {}).size(), 1 + 309 + 1 + 99U);
}

// The last has three decimals as a double.
TEST(WriteNumber, WritesFloatsWithTheDigitsOfAFloat) {
  Check({
      {"shortest", Float(0.1F), "", "0.1"},
      {"zero", Float(0), "", "0"},
      {"minus zero", Float(-0.0F), "", "-0"},
      {"one", Float(1), "", "1"},
      {"fewer digits than a double", Float(131072.125F), "", "131072.12"},
  });
}

TEST(WriteNumber, WritesWhatIsNotFinite) {
  Check({
      {"infinity", Double(kInfinity, 2), "", "\u221E"},
      {"minus infinity", Double(-kInfinity), "", "-\u221E"},
      {"not a number", Double(kNan, 2), "", "NaN"},
      {"not a number has no sign", Double(std::copysign(kNan, -1)), "+", "NaN"},
      {"a plus", Double(kInfinity), "+.3e", "+\u221E"},
      {"the width counts characters", Double(-kInfinity), "4", "  -\u221E"},
      {"zeroes become blanks", Double(kInfinity), "04", "   \u221E"},
      {"aligned", Double(kNan), "*^6", "*NaN**"},
  });
}

TEST(WriteNumber, PadsBetweenSignAndDigitsOnlyWithoutAlignment) {
  Check({
      {"zeroes", Integer(-7), "05", "-0007"},
      {"zeroes behind a blank", Integer(7), " 05", " 0007"},
      {"an alignment wins", Integer(-7), "<05", "-7   "},
      {"a fill wins", Integer(-7), "*>05", "***-7"},
      {"zero width", Integer(7), "0", "7"},
      {"odd padding in the centre", Integer(7), "^4", " 7  "},
      {"the widest", Integer(7), "0255", std::string(254, '0') + "7"},
  });
}

// Marks and digits of several bytes, and groups of other sizes.
NumberFormat Hindi() {
  NumberFormat format;
  format.zeroDigit = U'\u0966';
  format.furtherGroupSize = 2;
  format.isGrouped = true;
  return format;
}

NumberFormat Polish() {
  NumberFormat format;
  format.decimalMark = ",";
  format.groupMark = "\u00A0";
  format.minusSign = "\u2212";
  format.minimumFirstGroup = 2;
  format.isGrouped = true;
  return format;
}

TEST(WriteNumber, GroupsDigits) {
  Check(
      {
          {"too few", Integer(999), "", "\u096F\u096F\u096F"},
          {"one group", Integer(1000), "", "\u0967,\u0966\u0966\u0966"},
          {"further groups", Integer(-12345678), "",
           "-\u0967,\u0968\u0969,\u096A\u096B,\u096C\u096D\u096E"},
          {"full first group", Integer(1234567), "",
           "\u0967\u0968,\u0969\u096A,\u096B\u096C\u096D"},
          {"the fraction has no groups", Double(1234.56789), "",
           "\u0967,\u0968\u0969\u096A.\u096B\u096C\u096D\u096E\u096F"},
          {"digits of an exponent", Double(1.5e300), "", "\u0967.\u096Be+\u0969\u0966\u0966"},
          {"digits of an exponent of e", Double(1.5e300), ".1e",
           "\u0967.\u096Be+\u0969\u0966\u0966"},
          {"zeroes are digits and have no groups", Integer(-1000), "09",
           "-\u0966\u0966\u0966\u0967,\u0966\u0966\u0966"},
          {"not finite", Double(kInfinity), "", "\u221E"},
          {"not finite, with a width", Double(-kInfinity), "4", "  -\u221E"},
      },
      Hindi());
  Check(
      {
          {"first group too short", Integer(-1234), "", "\u22121234"},
          {"first group long enough", Integer(12345), "", "12\u00A0345"},
          {"the width counts characters", Double(-12345.5), "12", "   \u221212\u00A0345,5"},
          {"the width counts a group mark behind a full first group", Integer(123456), "9",
           "  123\u00A0456"},
          {"a negative exponent", Double(1e-7), "7", "  1e\u221207"},
      },
      Polish());
}

TEST(WriteNumber, WritesADecimalMarkOfSeveralBytes) {
  NumberFormat format;
  format.decimalMark = "\u066B";
  Check({{"a fraction", Double(-1.5), "", "-1\u066B5"}, {"none", Double(2), "", "2"}}, format);
}

TEST(WriteNumber, WritesADecimalMarkOfOneByte) {
  NumberFormat format;
  format.decimalMark = ",";
  Check({{"a fraction", Double(-1.5), "", "-1,5"}, {"none", Double(2), "", "2"}}, format);
}

TEST(WriteNumber, CountsTheCharactersOfLongMarks) {
  NumberFormat format;
  format.groupMark = "''";
  format.minusSign = "\u200E-";
  format.isGrouped = true;
  Check(
      {
          {"group marks", Integer(1234567), "12", " 1''234''567"},
          {"the sign of an exponent", Double(1e-7), "8", "  1e\u200E-07"},
          {"a plus in front of an exponent", Double(1e20), "8", "   1e+20"},
      },
      format);
  format.minusSign = "~-";
  Check({{"a sign of two bytes", Integer(-5), "", "~-5"}}, format);
}

TEST(WriteNumber, TakesOddGroupSizes) {
  NumberFormat format;
  format.isGrouped = true;
  format.groupSize = 1;
  format.furtherGroupSize = 1;
  Check({{"ones", Integer(123), "", "1,2,3"}}, format);
  format.groupSize = 2;
  format.furtherGroupSize = 3;
  Check({{"twos and threes", Integer(1234567), "", "12,345,67"}}, format);
  format.groupSize = 4;
  format.furtherGroupSize = 4;
  Check({{"fours", Integer(123456789), "12", " 1,2345,6789"}}, format);
  format.groupSize = UINT32_MAX;
  format.minimumFirstGroup = UINT32_MAX;
  Check({{"huge", Integer(123456789), "", "123456789"}}, format);
  format.groupSize = 0;
  Check({{"none", Integer(123456789), "", "123456789"}}, format);
  NumberFormat ungrouped;
  Check({{"not grouped", Integer(123456789), "", "123456789"}}, ungrouped);
}

TEST(WriteDecimal, WritesTheTextOfWriteNumber) {
  NumberFormat grouped;
  grouped.decimalMark = ",";
  grouped.groupMark = "\u00A0";
  grouped.minusSign = "\u2212";
  grouped.isGrouped = true;
  const double largest = kDecimalLimit - 1;
  for (const double integer : {0.0, 1.0, 9.0, 10.0, 99.0, 100.0, 1234567.0, 999999999.0, 1e9,
                               1000000001.0, 1234567890123.0, 1e15, largest - 1, largest}) {
    double scale = 1;
    for (int decimals = 0; decimals <= 9; ++decimals, scale *= 10) {
      for (const double sign : {1.0, -1.0}) {
        for (const NumberFormat& format : {NumberFormat(), grouped}) {
          std::string text(100, '?');
          TextSink sink(text.data(), text.size());
          WriteDecimal(sign * integer, decimals, format, sink);
          text.resize(sink.Finish());
          EXPECT_EQ(text, Write(Double(sign * integer / scale, decimals), "", format))
              << integer << " with decimals: " << decimals;
        }
      }
    }
  }
}

}  // namespace
